// Alerts that wait for an answer. The caller's looper handles no messages meanwhile.
#pragma once

#include <SupportDefs.h>

class BAlert;

// Boxes with a text and an "OK" button. Each returns when the user has answered.
void LibError(const char* text);
void LibInfo(const char* text);
void LibWarning(const char* text);

// Shows the alert, which deletes itself, and returns the index of the button that was pressed; -1
// if it was closed without an answer, by LibCloseAlerts() or by the user with its close box or, if
// that is no button's shortcut, Escape. Of what the buttons offer, -1 is the harmless one.
[[nodiscard]] int32 LibAnswer(BAlert* alert);

// Closes the alerts that wait, unanswered: the application quits, and they hold up their windows.
void LibCloseAlerts();
