// The toolkit's tab view: one with contents that begin inside its border.
#pragma once

#include <TabView.h>

class LibTabView : public BTabView {
public:
    using BTabView::BTabView;

    // The room that a tab's contents have, in the coordinates that they are added with.
    BRect ContentFrame() const
    {
        constexpr float kInset = 5;
        BRect frame = Bounds().InsetByCopy(kInset, kInset);
        frame.bottom -= TabHeight();
        return frame;
    }
    using BTabView::AddTab;
    void AddTab(BView* contents, const char* label)
    {
        BTab* tab = new BTab;
        tab->SetLabel(label);
        BTabView::AddTab(contents, tab);
    }
};
