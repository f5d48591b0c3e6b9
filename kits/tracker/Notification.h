// Beside the platform's calls: tells a user who is elsewhere.
#pragma once

#include <string>

// Shows a title and a line of text in the desktop's way of telling what has happened, unless one of
// this program's windows has the keyboard: then the user sees it there. Returns whether the desktop
// has taken it within so many milliseconds.
bool NotifyAbsentUser(const std::string& title, const std::string& text, int mostMillis = 1000);
