// Drives this program's windows as a user does, with real X events (by xdotool), and looks at what
// its widgets show; where there is no display, the tests are skipped. Widgets are found by the
// names of their views, in any shown window or only in the one with a title. Call it from a thread
// that holds no window's lock.
#pragma once

#include "GraphicsDefs.h"
#include "Rect.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace screen {

// What a widget shows now.
struct Widget {
    bool exists = false; // of that name, in a shown window, and visible itself
    bool exposed = false; // its window is on the screen
    bool minimized = false; // its window, and the display knows
    bool enabled = false;
    bool focused = false; // has the keyboard while its window is the active one
    std::string text; // label, title or contents
    BRect frame; // on the screen
};

Widget Find(const std::string& name, const std::string& window = "");

// What a screen reader gets of a shown window, by its title, and how it looks: a line for each
// part, indented below what holds it, with role, name of the view, text, place in the window and
// size, then its states and what is its own of tip, font and colours. In detail also with what it
// lets the user do and how it fills its place.
std::string Tree(const std::string& window, bool inDetail = false);
// Whether that comes to be what the file tests/NAME.tree says, the words of with replaced there.
testing::AssertionResult ShowsTree(const std::string& window, const std::string& name,
    const std::map<std::string, std::string>& with = {});
// Whether a widget comes to show that text.
testing::AssertionResult Shows(const std::string& name, const std::string& text);
// The lines that a view which draws itself shows.
std::string Lines(const std::string& view);
// Whether a shown window has that title, and the keyboard.
bool IsActive(const std::string& window);
// Where a menu or item by its label can be clicked; of an item only while its menu is open.
Widget FindMenuItem(const std::string& label);

// Polls until condition holds, at most seconds; its last value.
inline bool WaitFor(const std::function<bool()>& condition, double seconds = 20)
{
    return WaitUntil(condition, seconds, 10);
}

// Whether the window of that title comes to have the keyboard.
testing::AssertionResult BecomesActive(const std::string& window, double seconds = 20);

// That a condition, asked again and again, comes true.
#define EXPECT_SOON(...)                                                                           \
    EXPECT_TRUE(screen::WaitFor([&] { return __VA_ARGS__; })) << #__VA_ARGS__ << "\n"
#define ASSERT_SOON(...)                                                                           \
    ASSERT_TRUE(screen::WaitFor([&] { return __VA_ARGS__; })) << #__VA_ARGS__ << "\n"

// The user's hand. False where there is nothing of that name for 20 seconds. Clicks at a widget go
// to its middle; button 1 is the left one, 4 and 5 turn the wheel up and down.
bool Click(const std::string& name, const std::string& window = "", int button = 1);
void ClickAt(BPoint where, int button = 1); // on the screen
void DoubleClickAt(BPoint where);
void MoveTo(BPoint where);
// Opens the menus one after the other and chooses the last: {"Benchmark", "All"}.
bool ClickMenu(const std::vector<std::string>& labels);
void Type(const std::string& text);
void Key(const std::string& combination); // "ctrl+t", "Return", "Escape", "alt+F4"

// Where a widget stays once the window manager has placed its window; invalid if it is nowhere.
BRect Settled(const std::string& name);
// What this program has copied, by its MIME type; "" where there is nothing of it.
std::string Copied(const char* type);
// Another program's way with the window of that title.
void MoveWindow(const std::string& title, BPoint corner);
void ResizeWindow(const std::string& title, BPoint size);

// What the screen shows: 0xrrggbb of each pixel of the rectangle, the top row first.
std::vector<uint32> PixelsIn(BRect rect);
rgb_color PixelAt(BPoint where);
int ContrastIn(BRect rect); // between the brightest and the darkest grey there, 0 to 255

} // namespace screen
