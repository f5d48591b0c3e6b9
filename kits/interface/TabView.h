// Contents of which one is seen at a time, chosen by a row of tabs. By the keyboard: Tab to the
// row, then the arrow keys.
#pragma once

#include "View.h"

#include <string>

class BTabRow;

// One of them: a label and its contents.
class BTab {
public:
    explicit BTab(BView* contents = nullptr);
    virtual ~BTab() = default;

    const char* Label() const { return fLabel.c_str(); }
    virtual void SetLabel(const char* label); // at first the contents' name
    BView* View() const { return fView; }
    bool IsSelected() const { return fSelected; }

private:
    friend class BTabView;

    BView* fView;
    std::string fLabel;
    bool fSelected = false;
};

class BTabView : public BView {
public:
    // B_WIDTH_FROM_WIDEST: all tabs as wide as the widest label needs; otherwise each as its own.
    BTabView(BRect frame, const char* name, button_width width = B_WIDTH_AS_USUAL,
        uint32 resizeMode = B_FOLLOW_ALL, uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS);
    ~BTabView() override;

    // Appends a tab, owned from here on as its contents are; null: with a tab of its own. Contents
    // lie at their frame in ContainerView(). The first one added is selected.
    virtual void AddTab(BView* contents, BTab* tab = nullptr);
    int32 CountTabs() const { return static_cast<int32>(fTabs.size()); }
    BTab* TabAt(int32 index) const; // null beyond the last
    virtual void Select(int32 index); // nothing beyond the last
    int32 Selection() const { return fSelection; } // -1 without tabs
    BView* ContainerView() const { return fContainer; } // below the tabs
    float TabHeight() const;

    void AttachedToWindow() override; // takes the parent's view colour
    void SetViewColor(rgb_color color) override; // of the contents' background too
    using BView::SetViewColor;

private:
    friend class BTabRow;

    std::vector<std::unique_ptr<BTab>> fTabs;
    int32 fSelection = -1;
    BTabRow* fRow;
    BView* fContainer;
};
