#include "toolkit/LibControls.h"

#include <Font.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <StringView.h>
#include <TextView.h>

#include <cstring>
#include <strings.h>
#include <utility>

namespace {

constexpr uint32 kMsgTextChanged = 'EdTC';

bool IsLongerWith(const std::string& name, const std::string& beginning)
{
    return name.size() > beginning.size()
        && strncasecmp(name.c_str(), beginning.c_str(), beginning.size()) == 0;
}

} // namespace

LibEditEntry::LibEditEntry(BRect frame, const char* name, const char* text, int32 maxCharacters)
    : BTextControl(frame, name, nullptr, text, nullptr)
{
    TextView()->SetMaxCharacters(maxCharacters);
    SetModificationMessage(new BMessage(kMsgTextChanged));
}

void LibEditEntry::SetCompletions(const std::string& bestName, std::shared_ptr<const Names> names)
{
    best = bestName;
    others = std::move(names);
}

void LibEditEntry::AttachedToWindow()
{
    BTextControl::AttachedToWindow();
    // Behind the base, which makes the window the target of a control that has none.
    SetTarget(this);
}

void LibEditEntry::MessageReceived(BMessage* message)
{
    if (message->what == kMsgTextChanged)
        TextChanged(*message);
    else
        BTextControl::MessageReceived(message);
}

// Only what is typed at the end is completed: whoever deletes does not want it back.
void LibEditEntry::TextChanged(const BMessage& message)
{
    const std::string text = Text();
    const char* reported = "";
    bool isInserted = false;
    message.FindString("be:text", &reported);
    message.FindBool("be:inserted", &isInserted);
    int32 start = 0, end = 0;
    TextView()->GetSelection(&start, &end);
    const auto size = static_cast<int32>(text.size());
    // A report that is older than the text says nothing of it: a newer one is on its way.
    if (!isInserted || text != reported || start != size || end != size)
        return;
    if (const std::string* name = NameFor(text)) {
        TextView()->Insert(name->c_str() + text.size());
        // Selected, it goes with the next letter that is typed.
        TextView()->Select(size, TextView()->TextLength());
    }
}

const std::string* LibEditEntry::NameFor(const std::string& beginning) const
{
    // First what this very device is called; the others are all that it might be.
    if (IsLongerWith(best, beginning))
        return &best;
    if (!others)
        return nullptr;
    for (const std::string& name : *others) {
        if (IsLongerWith(name, beginning))
            return &name;
    }
    return nullptr;
}

LibLabelFrame::LibLabelFrame(
    BRect frame, const char* label, float labelWidth, float inset, BView* content)
    : BView(frame, nullptr, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0)
{
    BRect place = Bounds();
    place.right = labelWidth - 1;
    auto* title = new BStringView(place, nullptr, label);
    BFont font;
    content->GetFont(&font);
    title->SetFont(&font);
    AddChild(title);
    place = Bounds();
    place.left = labelWidth;
    place.InsetBy(inset, inset);
    content->MoveTo(place.LeftTop());
    content->ResizeTo(place.Width(), place.Height());
    AddChild(content);
}

void LibLabelFrame::AttachedToWindow()
{
    if (Parent())
        SetViewColor(Parent()->ViewColor());
}

LibMenuButton::LibMenuButton(BRect frame, const char* name, const char* label, uint32 resizeMode)
    : BMenuField(frame, name, label, new BPopUpMenu(""), resizeMode)
{
    SetDivider(be_plain_font->StringWidth(label) + 10);
}

void LibMenuButton::AddItem(const char* text, BMessage* message)
{
    BMenuItem* item = new BMenuItem(text, message);
    // The field shows the marked item, and nothing where none is.
    item->SetMarked(Menu()->CountItems() == 0);
    Menu()->AddItem(item);
}

void LibMenuButton::MakeEmpty()
{
    // A removed item is the caller's. The cast tells the index 0 from a null item.
    while (BMenuItem* item = Menu()->RemoveItem(static_cast<int32>(0)))
        delete item;
}

bool LibMenuButton::Choose(const char* text)
{
    BMenuItem* item = Menu()->FindItem(text);
    if (item)
        item->SetMarked(true);
    return item;
}

const char* LibMenuButton::Text() const
{
    const BMenuItem* item = Menu()->FindMarked();
    return item ? item->Label() : "";
}
