#include "ListView.h"

#include "AppDefs.h"
#include "MessageDelivery.h"
#include "ScrollBar.h"
#include "server/Accessibility.h"
#include "server/DisplayServer.h"
#include "server/ViewWidget.h"
#include "Window.h"

#include <algorithm>

namespace {

constexpr uint32 kMsgAdjustBars = '_ABL';

// Cut to its range, a bar scrolls its target; where nothing changes nothing is asked of it.
void AdjustBar(BScrollBar* bar, float visible, float content, float smallStep)
{
    if (!bar)
        return;
    const float max = std::max(content - visible, 0.0f);
    float oldMin, oldMax, oldSmall, oldLarge;
    bar->GetRange(&oldMin, &oldMax);
    bar->GetSteps(&oldSmall, &oldLarge);
    const float proportion = content > visible ? visible / content : 1;
    // A page less one row: what was the last in sight is the first, and nothing is passed over.
    const float largeStep = std::max(visible - smallStep, smallStep);
    if (bar->Proportion() != proportion)
        bar->SetProportion(proportion);
    if (oldMin != 0 || oldMax != max)
        bar->SetRange(0, max);
    if (oldSmall != smallStep || oldLarge != largeStep)
        bar->SetSteps(smallStep, largeStep);
}

} // namespace

BListView::BListView(
    BRect frame, const char* name, list_view_type type, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FRAME_EVENTS), fType(type)
{
    // Frame events whatever the caller's flags say: the bars' ranges depend on the size.
}

bool BListView::AddItem(BListItem* item)
{
    return AddItem(item, CountItems());
}

bool BListView::AddItem(BListItem* item, int32 atIndex)
{
    if (!item || atIndex < 0 || atIndex > CountItems())
        return false;
    fItems.insert(fItems.begin() + atIndex, item);
    // The keys go on from the row where they were, whatever its number is now.
    if (fAnchor >= atIndex)
        fAnchor++;
    if (fCursor >= atIndex)
        fCursor++;
    // Outside a window AttachedToWindow() will do it, for all rows with the font they then have.
    if (Window())
        Measure(item);
    PlaceFrom(atIndex);
    RowsChanged();
    InvalidateFrom(atIndex);
    return true;
}

bool BListView::RemoveItem(BListItem* item)
{
    return RemoveItem(IndexOf(item)) != nullptr;
}

BListItem* BListView::RemoveItem(int32 index)
{
    BListItem* item = ItemAt(index);
    if (!item)
        return nullptr;
    // While the row still has its place.
    InvalidateFrom(index);
    item->Deselect();
    fItems.erase(fItems.begin() + index);
    for (int32* kept : { &fAnchor, &fCursor }) {
        if (*kept == index)
            *kept = -1;
        else if (*kept > index)
            --*kept;
    }
    PlaceFrom(index);
    RowsChanged();
    return item;
}

void BListView::MakeEmpty()
{
    for (BListItem* item : fItems)
        item->Deselect();
    fItems.clear();
    fAnchor = fCursor = -1;
    ScrollTo(B_ORIGIN);
    UpdateScrollBars();
    Invalidate();
}

BListItem* BListView::ItemAt(int32 index) const
{
    return index >= 0 && index < CountItems() ? fItems[index] : nullptr;
}

int32 BListView::IndexOf(BListItem* item) const
{
    const auto found = std::find(fItems.begin(), fItems.end(), item);
    return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}

int32 BListView::IndexOf(BPoint point) const
{
    // Each top is larger than the one before it, so thousands of rows cost a dozen steps.
    const auto below = std::upper_bound(fItems.begin(), fItems.end(), point.y,
        [](float y, const BListItem* item) { return y < item->fTop; });
    const auto index = static_cast<int32>(below - fItems.begin()) - 1;
    return index >= 0 && point.y < ContentHeight() ? index : -1;
}

BRect BListView::ItemFrame(int32 index)
{
    const BListItem* item = ItemAt(index);
    if (!item)
        return BRect();
    const BRect bounds = Bounds();
    // To the edge of what is in sight, so that a selected row is grey all the way.
    const float right = std::max(bounds.right, ContentWidth() - 1);
    return BRect(0, item->fTop, right, item->fTop + item->fHeight);
}

void BListView::InvalidateItem(int32 index)
{
    const BRect frame = ItemFrame(index);
    if (frame.Intersects(Bounds()))
        Invalidate(frame & Bounds());
    else if (IsRead()) // a row out of sight is read as well
        Invalidate();
}

void BListView::InvalidateFrom(int32 index)
{
    const BListItem* item = ItemAt(index);
    const BRect bounds = Bounds();
    if (item && item->fTop <= bounds.bottom)
        Invalidate(
            BRect(bounds.left, std::max(item->fTop, bounds.top), bounds.right, bounds.bottom));
}

void BListView::Measure(BListItem* item)
{
    BFont font;
    GetFont(&font);
    item->Update(this, &font);
}

void BListView::UpdateItems()
{
    BFont font;
    GetFont(&font);
    for (BListItem* item : fItems)
        item->Update(this, &font);
    PlaceFrom(0);
    UpdateScrollBars();
    Invalidate();
}

void BListView::PlaceFrom(int32 index)
{
    // Plus 1 for each: a BRect that is h high covers h + 1 rows of pixels.
    float top = index > 0 ? fItems[index - 1]->fTop + fItems[index - 1]->fHeight + 1 : 0;
    for (; index < CountItems(); index++) {
        fItems[index]->fTop = top;
        top += fItems[index]->fHeight + 1;
    }
}

float BListView::ContentHeight() const
{
    return fItems.empty() ? 0 : fItems.back()->fTop + fItems.back()->fHeight + 1;
}

// Only a list with a horizontal bar shows more than its own width.
float BListView::ContentWidth() const
{
    float width = 0;
    if (ScrollBar(B_HORIZONTAL)) {
        for (const BListItem* item : fItems)
            width = std::max(width, item->fWidth + 1);
    }
    return width;
}

// Adjusting the bars costs trips to the display server, too many for each of thousands of rows.
void BListView::RowsChanged()
{
    if (fBarsAreOld || !Window())
        return;
    fBarsAreOld = true;
    PostAlways(BMessenger(this, Window()), BMessage(kMsgAdjustBars));
}

void BListView::MessageReceived(BMessage* message)
{
    if (message->what == kMsgAdjustBars)
        UpdateScrollBars();
    else
        BView::MessageReceived(message);
}

void BListView::ScrollTo(BPoint where)
{
    if (fBarsAreOld)
        UpdateScrollBars();
    BView::ScrollTo(where);
}

void BListView::UpdateScrollBars()
{
    fBarsAreOld = false;
    const BRect bounds = Bounds();
    const float row = RowHeight();
    AdjustBar(ScrollBar(B_VERTICAL), bounds.Height() + 1, ContentHeight(), row);
    AdjustBar(ScrollBar(B_HORIZONTAL), bounds.Width() + 1, ContentWidth(), row);
    if (IsRead()) // of rows that came and went out of sight
        Invalidate();
}

void BListView::Draw(BRect updateRect)
{
    // A list with a colour of its own finds its ground cleared, by the update.
    const bool complete = ViewColor() == B_TRANSPARENT_COLOR;
    int32 index = IndexOf(BPoint(0, std::max(updateRect.top, 0.0f)));
    for (; ItemAt(index) && fItems[index]->fTop <= updateRect.bottom; index++) {
        const BListItem& item = *fItems[index];
        if (DrawnText* text = DrawnText::Noting()) {
            text->BeginRow({ "", ItemFrame(index), true, item.IsSelected(), item.IsEnabled(),
                index == fCursor });
        }
        DrawItem(fItems[index], ItemFrame(index), complete);
    }
}

void BListView::DrawItem(BListItem* item, BRect frame, bool complete)
{
    item->DrawItem(this, frame, complete);
}

void BListView::SetFont(const BFont* font, uint32 mask)
{
    BView::SetFont(font, mask);
    if (Window())
        UpdateItems();
}

void BListView::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (!Messenger().IsValid())
        SetTarget(Window());
    display::Call([this] { static_cast<ViewWidget*>(Peer()->widget)->BecomeList(); });
    UpdateItems();
}

void BListView::FrameResized(float /*width*/, float /*height*/)
{
    UpdateScrollBars();
}

// --- Selection

bool BListView::SetSelected(int32 index, bool selected)
{
    BListItem* item = fItems[index];
    if (item->IsSelected() == selected || (selected && !item->IsEnabled()))
        return false;
    item->fSelected = selected;
    InvalidateItem(index);
    return true;
}

// True if that changed anything.
bool BListView::DeselectAllBut(int32 from, int32 to)
{
    bool changed = false;
    for (int32 i = 0; i < CountItems(); i++) {
        if (i < from || i > to)
            changed |= SetSelected(i, false);
    }
    return changed;
}

void BListView::Select(int32 index, bool extend)
{
    if (!ItemAt(index))
        return;
    bool changed = false;
    if (!extend || fType == B_SINGLE_SELECTION_LIST)
        changed = DeselectAllBut(index, index);
    changed |= SetSelected(index, true);
    fAnchor = fCursor = index;
    if (changed)
        TellSelection();
}

void BListView::Select(int32 from, int32 to, bool extend)
{
    if (fType != B_MULTIPLE_SELECTION_LIST || !ItemAt(from) || !ItemAt(to))
        return;
    const auto [first, last] = std::minmax(from, to);
    bool changed = !extend && DeselectAllBut(first, last);
    for (int32 i = first; i <= last; i++)
        changed |= SetSelected(i, true);
    fAnchor = from;
    fCursor = to;
    if (changed)
        TellSelection();
}

void BListView::Deselect(int32 index)
{
    if (ItemAt(index) && SetSelected(index, false))
        TellSelection();
}

void BListView::DeselectAll()
{
    // Beyond the last: all rows are outside of it.
    if (DeselectAllBut(CountItems(), CountItems()))
        TellSelection();
}

bool BListView::IsItemSelected(int32 index) const
{
    const BListItem* item = ItemAt(index);
    return item && item->IsSelected();
}

int32 BListView::CurrentSelection(int32 index) const
{
    for (int32 i = 0; i < CountItems(); i++) {
        if (fItems[i]->IsSelected() && index-- == 0)
            return i;
    }
    return -1;
}

void BListView::TellSelection()
{
    SelectionChanged();
    if (fSelectionMessage)
        Invoke(fSelectionMessage.get());
}

status_t BListView::Invoke(BMessage* message)
{
    const BMessage* model = message ? message : Message();
    if (!model)
        return B_BAD_VALUE;
    BMessage copy(*model);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", this);
    for (int32 i = 0; i < CountItems(); i++) {
        if (fItems[i]->IsSelected())
            copy.AddInt32("index", i);
    }
    return BInvoker::Invoke(&copy);
}

void BListView::ScrollToItem(int32 index)
{
    const BRect frame = ItemFrame(index);
    const BRect bounds = Bounds();
    if (!frame.IsValid())
        return;
    // A row higher than the list shows its beginning.
    if (frame.top < bounds.top)
        ScrollTo(BPoint(bounds.left, frame.top));
    else if (frame.bottom > bounds.bottom)
        ScrollTo(BPoint(bounds.left, std::min(frame.bottom - bounds.Height(), frame.top)));
}

void BListView::ScrollToSelection()
{
    ScrollToItem(CurrentSelection());
}

void BListView::MouseDown(BPoint where)
{
    // Called by a program, outside a click's message, it counts as one plain click.
    int32 clicks = 1;
    int32 modifiers = 0;
    if (const BMessage* event = Window()->CurrentMessage()) {
        event->FindInt32("clicks", &clicks);
        event->FindInt32("modifiers", &modifiers);
    }
    if ((Flags() & B_NAVIGABLE) != 0)
        MakeFocus();
    const int32 index = IndexOf(where);
    if (index >= 0)
        Click(index, clicks, modifiers);
    else if ((modifiers & (B_SHIFT_KEY | B_OPTION_KEY | B_COMMAND_KEY)) == 0)
        DeselectAll();
}

void BListView::Click(int32 index, int32 clicks, uint32 modifiers)
{
    const bool multiple = fType == B_MULTIPLE_SELECTION_LIST;
    // Both clicks on the same row: one that came under the pointer in between was not meant.
    if (clicks > 1 && index == fCursor && IsItemSelected(index)) {
        Invoke();
    } else if (multiple && (modifiers & B_SHIFT_KEY) != 0) {
        SelectToCursor(index);
    } else if (multiple && (modifiers & (B_OPTION_KEY | B_COMMAND_KEY)) != 0) {
        if (IsItemSelected(index))
            Deselect(index);
        else
            Select(index, true);
    } else {
        Select(index);
    }
}

// From the anchor, which stays.
void BListView::SelectToCursor(int32 index)
{
    const int32 anchor = ItemAt(fAnchor) ? fAnchor : index;
    Select(anchor, index);
}

void BListView::KeyDown(const char* bytes, int32 numBytes)
{
    // Keys that jump to a disabled row go on inwards from there, so that they never leave the list
    // without effect; the arrows go on in their own direction.
    const int32 last = CountItems() - 1;
    switch (bytes[0]) { // one beyond ASCII begins like none of these
        case B_UP_ARROW: MoveCursor(fCursor < 0 ? last : fCursor - 1, -1); break;
        case B_DOWN_ARROW: MoveCursor(fCursor + 1, 1); break;
        case B_PAGE_UP: MoveCursor(std::max(fCursor - RowsOnPage(), 0), 1); break;
        case B_PAGE_DOWN: MoveCursor(std::min(fCursor + RowsOnPage(), last), -1); break;
        case B_HOME: MoveCursor(0, 1); break;
        case B_END: MoveCursor(last, -1); break;
        case B_ENTER:
        case B_SPACE:
            if (CurrentSelection() >= 0 && InvocationMessage())
                Invoke();
            else
                BView::KeyDown(bytes, numBytes); // Enter may press the window's default button
            break;
        default: BView::KeyDown(bytes, numBytes); break;
    }
}

// To the first row from index on, in steps of 1 or -1, that can be selected.
void BListView::MoveCursor(int32 index, int32 step)
{
    while (ItemAt(index) && !fItems[index]->IsEnabled())
        index += step;
    if (!ItemAt(index))
        return;
    int32 modifiers = 0;
    if (const BMessage* event = Window()->CurrentMessage())
        event->FindInt32("modifiers", &modifiers);
    if (fType == B_MULTIPLE_SELECTION_LIST && (modifiers & B_SHIFT_KEY) != 0)
        SelectToCursor(index);
    else
        Select(index);
    ScrollToItem(index);
}

// As if all rows were as high as the first.
float BListView::RowHeight() const
{
    return fItems.empty() ? 1 : fItems.front()->fHeight + 1;
}

int32 BListView::RowsOnPage() const
{
    // One of them stays in sight on a new page.
    return std::max(static_cast<int32>((Bounds().Height() + 1) / RowHeight()) - 1, 1);
}
