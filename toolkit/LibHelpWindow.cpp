#include "toolkit/LibHelpWindow.h"

#include "toolkit/LibHelp.h"

#include <ListView.h>
#include <Message.h>
#include <ScrollView.h>
#include <TextView.h>

namespace {

constexpr uint32 kMsgTopic = 'HTop';
constexpr float kMargin = 10;
constexpr float kListWidth = 150;
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
    LibString shown(topic->title);
    shown.Concat("\n\n");
    shown.Concat(topic->text);
    text->SetText(shown);
}

void LibHelpWindow::MessageReceived(BMessage* message)
{
    if (message->what == kMsgTopic)
        TopicSelected();
    else
        LibWindow::MessageReceived(message);
}
