// What a BAlert needs of the display server: its icon, the room its text takes, and the screen.
#pragma once

#include "View.h"

class AlertIcon : public BView {
public:
    static constexpr float kSize = 32;

    AlertIcon(BPoint where, alert_type type);

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    const alert_type fType;
};

// In view units, as counts of pixels.
struct AlertText {
    float width;
    float height; // of the whole text
    float shownHeight; // as much as the screen has room for
};

// Lays the text out in the default font: no wider than reads well, unless it would not fit the
// screen's height; at least minWidth.
AlertText LayOutAlertText(const char* text, float minWidth);

// The part of the screen that windows may cover.
BRect AlertRoom();
