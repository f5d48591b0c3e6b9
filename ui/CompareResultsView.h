// The comparison chart: a row for each machine with a bar for each processor count, above a grid.
#pragma once

#include "results/Comparison.h"

#include <View.h>

#include <memory>
#include <string>

class BMenuItem;
class BPopUpMenu;

// Draws a comparison. Clicks at machines, or the arrow keys and Enter, select them and show their
// devices; the other mouse button, or Shift-F10, selects one and opens a menu of what can be done
// with it. Where the pointer rests a tip tells all of a machine. Lies in a scroll view; what it
// draws may be higher than itself. All calls with the window locked.
class CompareResultsView : public BView {
public:
    // To the window: what was chosen.
    static constexpr uint32 kMsgSave = 1001;
    static constexpr uint32 kMsgCopy = 1010;
    static constexpr uint32 kMsgSavePicture = 1011;
    static constexpr uint32 kMsgForget = 1012;
    static constexpr uint32 kMsgForgetOthers = 1013;
    static constexpr uint32 kMsgRestore = 1014;
    static constexpr uint32 kMsgOrder = 1015; // int32 "order", a ChartOrder

    CompareResultsView(BRect frame, Comparison& comparison);
    ~CompareResultsView() override;

    // Whether bars show percents of the selected machine's best rate.
    void CompareByRatio(const bool& ratio);
    // Measures the scale anew; Redraw() shows it.
    void UpdateMaxScale() { comparison.UpdateScale(); }
    // Asks the window for the table, by kMsgSave.
    void Save();
    // Redraws all of it, with the scroll bar for the height that it has then.
    void Redraw();

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focus = true) override;
    void WindowActivated(bool active) override;
    void FrameResized(float width, float height) override;

private:
    float ChartHeight() const;
    void Scroll(float distance);
    void Select(Results* machine);
    void DrawFocus();
    bool Open(Results* machine, BPoint where);
    std::string TipAt(BPoint where);
    void AddMenu();
    void OpenMenu(BPoint where);

    Comparison& comparison;
    std::unique_ptr<BPopUpMenu> menu;
    BMenuItem* copyItem = nullptr;
    BMenuItem* pictureItem = nullptr;
    BMenuItem* forgetItem = nullptr;
    BMenuItem* forgetOthersItem = nullptr;
    BMenuItem* restoreItem = nullptr;
    std::string usualTip; // what it says where there is no machine
    std::string shownTip;
};
