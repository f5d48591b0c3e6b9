// "About BeOS System": what the machine is, on three tabs, as it was when the window was made.
#pragma once

#include "toolkit/LibWindow.h"

class BLooper;

// Told its target by 'SYSQ' when the user closes it.
class AboutSysWindow : public LibWindow {
public:
    explicit AboutSysWindow(BLooper* target); // hidden
    bool QuitRequested() override;

private:
    BLooper* target;
};
