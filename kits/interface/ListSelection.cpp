// A list's selection: by the program, the mouse and the keyboard.
#include "AppDefs.h"
#include "ListView.h"
#include "ScrollBar.h"
#include "Window.h"

#include <algorithm>

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
    if (ItemAt(index) == nullptr)
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
    if (fType != B_MULTIPLE_SELECTION_LIST || ItemAt(from) == nullptr || ItemAt(to) == nullptr)
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
    if (ItemAt(index) != nullptr && SetSelected(index, false))
        TellSelection();
}

void BListView::DeselectAll()
{
    if (DeselectAllBut(0, -1))
        TellSelection();
}

bool BListView::IsItemSelected(int32 index) const
{
    const BListItem* item = ItemAt(index);
    return item != nullptr && item->IsSelected();
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
    if (fSelectionMessage != nullptr)
        Invoke(fSelectionMessage.get());
}

status_t BListView::Invoke(BMessage* message)
{
    const BMessage* model = message != nullptr ? message : Message();
    if (model == nullptr)
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
    const int32 anchor = ItemAt(fAnchor) != nullptr ? fAnchor : index;
    Select(anchor, index);
}

void BListView::KeyDown(const char* bytes, int32 numBytes)
{
    const int32 last = CountItems() - 1;
    switch (numBytes == 1 ? bytes[0] : 0) {
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
    while (ItemAt(index) != nullptr && !fItems[index]->IsEnabled())
        index += step;
    if (ItemAt(index) == nullptr)
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

int32 BListView::RowsOnPage() const
{
    const float row = fItems.empty() ? 1 : fItems.front()->Height() + 1;
    return std::max(static_cast<int32>((Bounds().Height() + 1) / row) - 1, 1);
}
