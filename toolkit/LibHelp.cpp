#include "toolkit/LibHelp.h"

#include "foundation/LibAppResource.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "foundation/xmlParser.h"
#include "toolkit/OwnedWindow.h"

#include <Autolock.h>
#include <ListView.h>
#include <Message.h>
#include <Messenger.h>
#include <ScrollView.h>
#include <TextView.h>
#include <TypeConstants.h>
#include <View.h>
#include <Window.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int32 kFirstFile = 5000; // resource ids of help files: this one and those after it

const char* Attribute(const xmlTag& tag, const char* name)
{
    const char* value = nullptr;
    return tag.modifiers.FindString(name, &value) == B_OK ? value : "";
}

using Bold = std::vector<std::pair<int32, int32>>;

// Appends the text of an element and, each where it stands, of those inside.
void Append(std::string& text, Bold& bold, const xmlTag& tag)
{
    std::string own(tag.content.operator const char*());
    const size_t begin = text.size();
    size_t done = 0;
    for (const xmlTag& child : tag.children) {
        // The blanks before one that comes last are not in the text any more.
        const size_t place = std::max(done, static_cast<size_t>(child.parentLocation));
        own.resize(std::max(own.size(), place), ' ');
        text.append(own, done, place - done);
        done = place;
        Append(text, bold, child);
    }
    text.append(own, done);
    if (tag.name.Compare("b") == 0)
        bold.emplace_back(static_cast<int32>(begin), static_cast<int32>(text.size()));
}

LibHelpTopic TopicOf(const xmlTag& tag)
{
    LibHelpTopic topic { Attribute(tag, "name"), Attribute(tag, "title"), "" };
    std::string text;
    for (const xmlTag& child : tag.children) {
        if (!text.empty())
            text += "\n\n";
        Append(text, topic.bold, child);
    }
    topic.text = text.c_str();
    return topic;
}

template <class Items>
auto Find(Items& items, const char* name)
{
    return std::find_if(items.begin(), items.end(),
        [name](const auto& item) { return item.name.Compare(name, false) == 0; });
}

LibString TemporaryPath()
{
    BPath path;
    LibUniqueName(path, "help");
    return path.Path() ? path.Path() : ""; // no folder for it
}

// Never held while a window is locked. Never destroyed: windows may outlive static objects.
BLocker& gLock = *new BLocker;
std::shared_ptr<const LibHelp>& gHelp GUARDED_BY(gLock) = *new std::shared_ptr<const LibHelp>;
bool gShow GUARDED_BY(gLock) = true;
std::vector<BMessenger> gWindows GUARDED_BY(gLock);

void Apply(BView* view, const LibHelp& help, bool show)
{
    const char* name = view->Name();
    if (const char* tip = name ? help.TipFor(name) : nullptr)
        view->SetToolTip(show ? tip : nullptr);
    for (int32 i = 0; i < view->CountChildren(); i++)
        Apply(view->ChildAt(i), help, show);
}

} // namespace

bool LibHelp::ReadFile(const char* path)
{
    xmlParser parser(path);
    xmlTag tag;
    bool found = false;
    for (; parser.FindTag("topic", tag); found = true) {
        AddTopic(TopicOf(tag));
        if (const char* tip = Attribute(tag, "tip"); *tip)
            SetTip(Attribute(tag, "name"), tip);
    }
    // Tips in a second pass: one that stands alone takes the place of a topic's, wherever it is in
    // the file.
    parser.Rewind();
    for (; parser.FindTag("tip", tag); found = true)
        SetTip(Attribute(tag, "name"), tag.content);
    return found;
}

void LibHelp::AddTopic(const char* name, const char* title, const char* text, const char* tip)
{
    AddTopic({ name, title, text });
    if (*tip)
        SetTip(name, tip);
}

void LibHelp::AddTopic(const LibHelpTopic& topic)
{
    const auto before = Find(topics, topic.name);
    if (before == topics.end())
        topics.push_back(topic);
    else
        *before = topic;
}

void LibHelp::SetTip(const char* name, const char* text)
{
    auto tip = Find(tips, name);
    if (tip == tips.end())
        tip = tips.emplace(tips.end());
    tip->name = name;
    tip->text = text;
}

bool LibHelp::ReadText(const char* xml)
{
    const LibString path = TemporaryPath();
    // Only as a new file: a link that somebody has put there would be followed.
    FILE* file = fopen(path, "wx");
    const bool isWritten = file && fputs(xml, file) >= 0;
    if (!file || fclose(file) != 0 || !isWritten)
        fprintf(stderr, "Error writing <%s>\n", path.operator const char*());
    if (!file)
        return false;
    const bool found = ReadFile(path); // on a full disk as far as it goes
    remove(path);
    return found;
}

void LibHelp::ReadResources()
{
    LibAppResource resources(B_READ_ONLY);
    // The ids have no gap: what lies behind one would never be found.
    for (int32 id = kFirstFile; resources.HasResource(B_RAW_TYPE, id); id++) {
        const LibString path = TemporaryPath();
        if (resources.ExtractEntry(id, path, true) && LibExists(path))
            ReadFile(path);
        LibUnlink(path);
    }
}

bool LibHelp::AddToResources(const char* path)
{
    // What is no help is refused: it would be unpacked in vain whenever the help is first read.
    if (!LibHelp().ReadFile(path)) {
        fprintf(stderr, "<%s> is no help file\n", path);
        return false;
    }
    const BPath file(path);
    LibAppResource resources(B_READ_WRITE);
    int32 id = kFirstFile;
    for (; resources.HasResource(B_RAW_TYPE, id); id++) {
        const char* name = nullptr;
        size_t size = 0;
        if (resources.GetResourceInfo(B_RAW_TYPE, id, &name, &size) && name
            && strcmp(name, file.Leaf()) == 0)
            break;
    }
    if (resources.AddEntry(file.Path(), id, file.Leaf()))
        return true;
    fprintf(stderr, "<%s> could not be added to the application's help\n", path);
    return false;
}

const LibHelpTopic* LibHelp::TopicAt(int32 index) const
{
    return index >= 0 && index < CountTopics() ? &topics[static_cast<size_t>(index)] : nullptr;
}

int32 LibHelp::IndexOf(const char* name) const
{
    const auto topic = Find(topics, name);
    return topic != topics.end() ? static_cast<int32>(topic - topics.begin()) : -1;
}

const char* LibHelp::TipFor(const char* name) const
{
    const auto tip = Find(tips, name);
    return tip != tips.end() ? tip->text.operator const char*() : nullptr;
}

void LibSetToolTips(const LibHelp* help)
{
    const auto copy = help ? std::make_shared<const LibHelp>(*help) : nullptr;
    const BAutolock lock(gLock);
    gHelp = copy;
}

void LibApplyToolTips(BWindow* window)
{
    // Held on to, as the display server is asked for each view: that takes a while, and every
    // window needs this lock.
    std::shared_ptr<const LibHelp> help;
    bool show = false;
    {
        const BAutolock lock(gLock);
        help = gHelp;
        show = gShow;
    }
    for (int32 i = 0; help && i < window->CountChildren(); i++)
        Apply(window->ChildAt(i), *help, show);
    const BAutolock lock(gLock);
    // Those that have gone are forgotten here, else the list would grow with every window.
    std::erase_if(gWindows, [](const BMessenger& known) { return !known.IsValid(); });
    gWindows.push_back(BMessenger(window));
}

void LibShowToolTips(bool show)
{
    std::vector<BMessenger> windows;
    {
        const BAutolock lock(gLock);
        gShow = show;
        // Taken out, as LibApplyToolTips() enters each again that is still there.
        windows.swap(gWindows);
    }
    for (const BMessenger& target : windows) {
        const LibTargetLock lock(target);
        if (lock.IsLocked())
            LibApplyToolTips(static_cast<BWindow*>(lock.Looper()));
    }
}

namespace {

constexpr uint32 kMsgTopic = 'HTop';
constexpr float kMargin = 10;
constexpr float kListWidth = 150;
constexpr float kHeadingSize = 18; // half as large again as the text
constexpr float kBorder = 2;

} // namespace

LibHelpWindow::LibHelpWindow(const LibHelp& shown)
    : LibWindow(BRect(0, 0, 559, 379), "Help", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0),
      help(shown)
{
    SetName("LibHelpWindow");
    CloseOnEscape();
    HideOnClose();
    SetSizeLimits(360, 4000, 160, 4000);
    BView* background = new BView(Bounds(), "bgview", B_FOLLOW_ALL_SIDES, 0);
    background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(background);
    BRect frame = Bounds().InsetByCopy(kMargin + kBorder, kMargin + kBorder);
    frame.right = frame.left + kListWidth;
    AddTopics(frame);
    frame.left = frame.right + B_V_SCROLL_BAR_WIDTH + kMargin + 2 * kBorder;
    frame.right = Bounds().right - kMargin - kBorder - B_V_SCROLL_BAR_WIDTH;
    AddText(frame);
    SetPosition(kBesideMain);
}

LibHelpWindow::~LibHelpWindow()
{
    // The platform's lists do not own their items.
    while (BListItem* item = topics->RemoveItem(topics->CountItems() - 1))
        delete item;
}

void LibHelpWindow::AddTopics(BRect frame)
{
    topics = new BListView(
        frame, "topics", B_SINGLE_SELECTION_LIST, B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM);
    topics->SetViewColor(ui_color(B_DOCUMENT_BACKGROUND_COLOR));
    topics->SetSelectionMessage(new BMessage(kMsgTopic));
    for (int32 i = 0; i < help.CountTopics(); i++)
        topics->AddItem(new BStringItem(help.TopicAt(i)->title));
    ChildAt(0)->AddChild(new BScrollView(
        "topics_scroll", topics, B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, 0, false, true));
    // The arrow keys go through the topics from the start.
    topics->MakeFocus();
}

void LibHelpWindow::AddText(BRect frame)
{
    BRect inside = frame.OffsetToCopy(0, 0);
    inside.InsetBy(6, 6);
    text = new BTextView(frame, "help_text", inside, B_FOLLOW_ALL_SIDES);
    text->MakeEditable(false);
    ChildAt(0)->AddChild(new BScrollView("text_scroll", text, B_FOLLOW_ALL_SIDES, 0, false, true));
}

void LibHelpWindow::ShowTopic(int32 index)
{
    topics->Select(index);
    topics->ScrollToSelection();
    // At once: the list's own message comes later, when the window may show another text already.
    TopicSelected();
}

void LibHelpWindow::TopicSelected()
{
    const LibHelpTopic* topic = help.TopicAt(topics->CurrentSelection());
    if (!topic)
        return;
    const std::string title(topic->title.operator const char*());
    const auto start = static_cast<int32>(title.size()) + 2;
    const std::string shown = title + "\n\n" + topic->text.operator const char*();
    text->SetText(shown.c_str());
    BFont font(be_bold_font);
    for (const auto& [first, last] : topic->bold)
        text->SetFontAndColor(start + first, start + last, &font);
    font.SetSize(kHeadingSize);
    text->SetFontAndColor(0, static_cast<int32>(title.size()), &font);
}

void LibHelpWindow::MessageReceived(BMessage* message)
{
    if (message->what == kMsgTopic)
        TopicSelected();
    else
        LibWindow::MessageReceived(message);
}
