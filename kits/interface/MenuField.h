// A label and beside it a button that opens a menu. By the keyboard: Tab to it, space bar, arrows.
#pragma once

#include "Menu.h"
#include "View.h"

#include <string>

class BMenuField : public BView {
public:
    // Owns menu. Its items' messages go to the window unless they have another target.
    BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BMenuField() override;

    BMenu* Menu() const { return fMenu.get(); }
    virtual void SetLabel(const char* label); // null is an empty one
    const char* Label() const { return fLabel.c_str(); }
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const { return fEnabled; }
    // Where the button begins, in pixels from the left. At first the middle if there is a label.
    virtual void SetDivider(float divider);
    float Divider() const { return fDivider; }

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void GetPreferredSize(float* width, float* height) override;

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    void ShowState();
    void ShowStateIn(ViewPeer& peer);

    std::unique_ptr<BMenu> fMenu;
    std::string fLabel;
    float fDivider;
    bool fEnabled = true;
};
