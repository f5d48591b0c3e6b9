#include "ListView.h"

#include "AppDefs.h"
#include "ScrollBar.h"
#include "server/Accessibility.h"
#include "server/DisplayServer.h"
#include "server/DrawnText.h"
#include "server/ViewWidget.h"
#include "Window.h"

#include <algorithm>

namespace {

constexpr uint32 kMsgAdjustBars = '_ABL';

// Cut to its range, a bar scrolls its target; where nothing changes nothing is asked of it.
void AdjustBar(BScrollBar* bar, float visible, float content, float smallStep)
{
    if (bar == nullptr)
        return;
    const float max = std::max(content - visible, 0.0f);
    float oldMin, oldMax, oldSmall, oldLarge;
    bar->GetRange(&oldMin, &oldMax);
    bar->GetSteps(&oldSmall, &oldLarge);
    const float proportion = content > visible ? visible / content : 1;
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
}

bool BListView::AddItem(BListItem* item)
{
    return AddItem(item, CountItems());
}

bool BListView::AddItem(BListItem* item, int32 atIndex)
{
    if (item == nullptr || atIndex < 0 || atIndex > CountItems())
        return false;
    fItems.insert(fItems.begin() + atIndex, item);
    if (fAnchor >= atIndex)
        fAnchor++;
    if (fCursor >= atIndex)
        fCursor++;
    if (Window() != nullptr)
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
    if (item == nullptr)
        return nullptr;
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
    const auto below = std::upper_bound(fItems.begin(), fItems.end(), point.y,
        [](float y, const BListItem* item) { return y < item->fTop; });
    const auto index = static_cast<int32>(below - fItems.begin()) - 1;
    return index >= 0 && point.y < ContentHeight() ? index : -1;
}

BRect BListView::ItemFrame(int32 index)
{
    const BListItem* item = ItemAt(index);
    if (item == nullptr)
        return BRect();
    const BRect bounds = Bounds();
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
    if (item != nullptr && item->fTop <= bounds.bottom)
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
    if (ScrollBar(B_HORIZONTAL) != nullptr) {
        for (const BListItem* item : fItems)
            width = std::max(width, item->fWidth + 1);
    }
    return width;
}

// Adjusting the bars costs trips to the display server, too many for each of thousands of rows.
void BListView::RowsChanged()
{
    if (fBarsAreOld || Window() == nullptr)
        return;
    fBarsAreOld = Window()->PostMessage(kMsgAdjustBars, this) == B_OK;
    if (!fBarsAreOld)
        UpdateScrollBars();
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
    const float row = fItems.empty() ? 1 : fItems.front()->fHeight + 1;
    AdjustBar(ScrollBar(B_VERTICAL), bounds.Height() + 1, ContentHeight(), row);
    AdjustBar(ScrollBar(B_HORIZONTAL), bounds.Width() + 1, ContentWidth(), row);
    if (IsRead()) // of rows that came and went out of sight
        Invalidate();
}

void BListView::Draw(BRect updateRect)
{
    const bool complete = ViewColor() == B_TRANSPARENT_COLOR;
    int32 index = std::max(IndexOf(BPoint(0, std::max(updateRect.top, 0.0f))), 0);
    if (updateRect.top >= ContentHeight())
        return;
    for (; index < CountItems() && fItems[index]->fTop <= updateRect.bottom; index++) {
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
    if (Window() != nullptr)
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
