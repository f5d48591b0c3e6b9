// A list of rows that the user selects by mouse and keyboard. In a BScrollView it keeps the
// vertical bar's range, proportion and steps right. All calls with the window locked once the list
// is in one.
#pragma once

#include "Invoker.h"
#include "ListItem.h"
#include "View.h"

#include <vector>

class BScrollView;

enum list_view_type {
    B_SINGLE_SELECTION_LIST,
    B_MULTIPLE_SELECTION_LIST, // Shift selects up to a row, the option or command key one more
};

// The rows are the caller's: neither removing them nor deleting the list deletes them.
class BListView : public BView, public BInvoker {
public:
    BListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
        uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
        uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);

    // Rows. False or null, and nothing done, where the index or item is none of the list's, and
    // for adding null. Added rows come unselected unless they were selected before.
    virtual bool AddItem(BListItem* item); // as the last
    virtual bool AddItem(BListItem* item, int32 atIndex);
    virtual bool RemoveItem(BListItem* item);
    virtual BListItem* RemoveItem(int32 index);
    virtual void MakeEmpty();
    BListItem* ItemAt(int32 index) const;
    int32 IndexOf(BListItem* item) const; // -1 where it is none of the list's
    int32 IndexOf(BPoint point) const; // the row at a place, in the list's coordinates; -1: none
    BListItem* FirstItem() const { return ItemAt(0); }
    BListItem* LastItem() const { return ItemAt(CountItems() - 1); }
    bool HasItem(BListItem* item) const { return IndexOf(item) >= 0; }
    int32 CountItems() const { return static_cast<int32>(fItems.size()); }
    bool IsEmpty() const { return fItems.empty(); }

    BRect ItemFrame(int32 index); // invalid where there is no such row
    void InvalidateItem(int32 index); // redraws it; after its height changed call UpdateItems()
    void UpdateItems(); // measures all rows anew with the list's font and redraws

    // Selection. Select() drops the rest of it unless extend, which a single selection list
    // ignores. Rows that are not enabled are passed over.
    void Select(int32 index, bool extend = false);
    void Select(int32 from, int32 to, bool extend = false); // multiple selection lists only
    void Deselect(int32 index);
    void DeselectAll();
    bool IsItemSelected(int32 index) const;
    // The index of the n-th selected row, counted from the first; -1: no more.
    int32 CurrentSelection(int32 index = 0) const;
    void ScrollToSelection();
    virtual void SelectionChanged() { } // after each change by the user or by Select()

    // Sent when the selection changes. Owned by the list.
    virtual void SetSelectionMessage(BMessage* message) { fSelectionMessage.reset(message); }
    BMessage* SelectionMessage() const { return fSelectionMessage.get(); }
    // Sent on a double click, Enter or the space bar on the selection. Owned by the list.
    virtual void SetInvocationMessage(BMessage* message) { SetMessage(message); }
    BMessage* InvocationMessage() const { return Message(); }
    // Sends message, or the invocation message for null, with "when" (int64), "source" (pointer)
    // and "index" (int32) for each selected row. B_BAD_VALUE where there is no message.
    status_t Invoke(BMessage* message = nullptr) override;

    virtual void SetListType(list_view_type type) { fType = type; }
    list_view_type ListType() const { return fType; }

    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void FrameResized(float width, float height) override;
    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;
    void ScrollTo(BPoint where) override;
    using BView::ScrollTo;

protected:
    // Draws one row; frame in the list's coordinates.
    virtual void DrawItem(BListItem* item, BRect frame, bool complete = false);

private:
    void PlaceFrom(int32 index);
    void Measure(BListItem* item);
    float ContentHeight() const;
    float ContentWidth() const;
    void RowsChanged();
    void UpdateScrollBars();
    void InvalidateFrom(int32 index);
    bool SetSelected(int32 index, bool selected);
    bool DeselectAllBut(int32 from, int32 to);
    void TellSelection();
    void Click(int32 index, int32 clicks, uint32 modifiers);
    void SelectToCursor(int32 index);
    void MoveCursor(int32 index, int32 step);
    void ScrollToItem(int32 index);
    float RowHeight() const;
    int32 RowsOnPage() const;

    list_view_type fType;
    std::vector<BListItem*> fItems;
    int32 fAnchor = -1; // where a range that Shift selects begins
    int32 fCursor = -1; // the row that the keys move on from; -1 after it was taken out
    std::unique_ptr<BMessage> fSelectionMessage;
    bool fBarsAreOld = false; // the message that adjusts them is on its way
};
