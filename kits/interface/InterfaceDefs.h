// Constants of windows, views and controls.
#pragma once

#include "GraphicsDefs.h"
#include "SupportDefs.h"

enum orientation { B_HORIZONTAL, B_VERTICAL };
enum border_style { B_PLAIN_BORDER, B_FANCY_BORDER, B_NO_BORDER };
enum alignment { B_ALIGN_LEFT, B_ALIGN_RIGHT, B_ALIGN_CENTER };
enum button_width { B_WIDTH_AS_USUAL, B_WIDTH_FROM_WIDEST, B_WIDTH_FROM_LABEL };
enum button_spacing { B_EVEN_SPACING, B_OFFSET_SPACING };
enum alert_type { B_EMPTY_ALERT, B_INFO_ALERT, B_IDEA_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

// States of a control with two of them.
constexpr int32 B_CONTROL_OFF = 0;
constexpr int32 B_CONTROL_ON = 1;

// Bytes that B_KEY_DOWN messages carry for keys without a letter.
enum {
    B_HOME = 0x01,
    B_END = 0x04,
    B_INSERT = 0x05,
    B_BACKSPACE = 0x08,
    B_TAB = 0x09,
    B_RETURN = 0x0a,
    B_ENTER = 0x0a,
    B_PAGE_UP = 0x0b,
    B_PAGE_DOWN = 0x0c,
    B_FUNCTION_KEY = 0x10, // which one is in the message's "key"
    B_ESCAPE = 0x1b,
    B_LEFT_ARROW = 0x1c,
    B_RIGHT_ARROW = 0x1d,
    B_UP_ARROW = 0x1e,
    B_DOWN_ARROW = 0x1f,
    B_SPACE = 0x20,
    B_DELETE = 0x7f,
};

// The "key" of B_KEY_DOWN messages whose byte is B_FUNCTION_KEY.
enum {
    B_F1_KEY = 0x02,
    B_F2_KEY,
    B_F3_KEY,
    B_F4_KEY,
    B_F5_KEY,
    B_F6_KEY,
    B_F7_KEY,
    B_F8_KEY,
    B_F9_KEY,
    B_F10_KEY,
    B_F11_KEY,
    B_F12_KEY,
};

// "modifiers" of key and mouse messages. The command key is Ctrl, the control key Alt, the option
// key the one with the desktop's sign.
enum {
    B_SHIFT_KEY = 0x00000001,
    B_COMMAND_KEY = 0x00000002,
    B_CONTROL_KEY = 0x00000004,
    B_OPTION_KEY = 0x00000040,
};

// "buttons" of mouse messages.
enum {
    B_PRIMARY_MOUSE_BUTTON = 0x01,
    B_SECONDARY_MOUSE_BUTTON = 0x02,
    B_TERTIARY_MOUSE_BUTTON = 0x04,
};

// Where the pointer is at BView::MouseMoved().
enum { B_ENTERED_VIEW, B_INSIDE_VIEW, B_EXITED_VIEW, B_OUTSIDE_VIEW };

// What a view's edges follow when its parent is resized: one horizontal and one vertical mode,
// or'ed. In the four digits, from the highest: the parent's edge (1 top, 2 left, 3 bottom, 4 right,
// 5 middle) that the view's top, left, bottom and right edge follow.
constexpr uint32 B_FOLLOW_NONE = 0x0000;
constexpr uint32 B_FOLLOW_ALL_SIDES = 0x1234;
constexpr uint32 B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES;
constexpr uint32 B_FOLLOW_LEFT = 0x0202;
constexpr uint32 B_FOLLOW_RIGHT = 0x0404;
constexpr uint32 B_FOLLOW_LEFT_RIGHT = 0x0204;
constexpr uint32 B_FOLLOW_H_CENTER = 0x0505;
constexpr uint32 B_FOLLOW_TOP = 0x1010;
constexpr uint32 B_FOLLOW_BOTTOM = 0x3030;
constexpr uint32 B_FOLLOW_TOP_BOTTOM = 0x1030;
constexpr uint32 B_FOLLOW_V_CENTER = 0x5050;

// View flags.
constexpr uint32 B_FULL_UPDATE_ON_RESIZE = 0x80000000; // invalidated as a whole when resized
constexpr uint32 B_WILL_DRAW = 0x20000000; // gets Draw()
constexpr uint32 B_NAVIGABLE_JUMP = 0x08000000; // a group; Tab goes through all the same
constexpr uint32 B_FRAME_EVENTS = 0x04000000; // gets FrameMoved() and FrameResized()
constexpr uint32 B_NAVIGABLE = 0x02000000; // reached with the Tab key

enum window_type {
    B_UNTYPED_WINDOW = 0,
    B_TITLED_WINDOW = 1,
    B_MODAL_WINDOW = 3,
    B_DOCUMENT_WINDOW = 11,
    B_BORDERED_WINDOW = 20,
    B_FLOATING_WINDOW = 21,
};

enum window_look {
    B_TITLED_WINDOW_LOOK = 1,
    B_MODAL_WINDOW_LOOK = 3,
    B_FLOATING_WINDOW_LOOK = 7,
    B_DOCUMENT_WINDOW_LOOK = 11,
    B_NO_BORDER_WINDOW_LOOK = 19,
    B_BORDERED_WINDOW_LOOK = 20,
};

enum window_feel {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_APP_WINDOW_FEEL = 1, // the program's other windows get no input meanwhile
    B_MODAL_SUBSET_WINDOW_FEEL = 2,
    B_MODAL_ALL_WINDOW_FEEL = 3,
    B_FLOATING_APP_WINDOW_FEEL = 4,
    B_FLOATING_SUBSET_WINDOW_FEEL = 5,
    B_FLOATING_ALL_WINDOW_FEEL = 6,
};

// Window flags.
constexpr uint32 B_NOT_MOVABLE = 0x00000001;
constexpr uint32 B_NOT_RESIZABLE = 0x00000002;
constexpr uint32 B_NOT_H_RESIZABLE = 0x00000004;
constexpr uint32 B_NOT_V_RESIZABLE = 0x00000008;
constexpr uint32 B_WILL_ACCEPT_FIRST_CLICK = 0x00000010; // always so on this platform
constexpr uint32 B_NOT_CLOSABLE = 0x00000020;
constexpr uint32 B_NOT_ZOOMABLE = 0x00000040;
constexpr uint32 B_AVOID_FOCUS = 0x00002000;
constexpr uint32 B_NOT_MINIMIZABLE = 0x00004000;
constexpr uint32 B_ASYNCHRONOUS_CONTROLS = 0x00080000; // always so on this platform
constexpr uint32 B_QUIT_ON_WINDOW_CLOSE = 0x00100000; // closing it quits the application

constexpr uint32 B_CURRENT_WORKSPACE = 0;
constexpr uint32 B_ALL_WORKSPACES = 0xffffffff;

// Sizes of scroll bars, in view units less 1 as a BRect counts.
constexpr float B_V_SCROLL_BAR_WIDTH = 14;
constexpr float B_H_SCROLL_BAR_HEIGHT = 14;

enum color_which {
    B_PANEL_BACKGROUND_COLOR = 1,
    B_MENU_BACKGROUND_COLOR = 2,
    B_MENU_SELECTED_BACKGROUND_COLOR = 6,
    B_MENU_ITEM_TEXT_COLOR = 7,
    B_PANEL_TEXT_COLOR = 10,
    B_DOCUMENT_BACKGROUND_COLOR = 13, // of lists, and of texts to read or write
};

// A colour of the desktop's theme; without a display the platform's usual one.
rgb_color ui_color(color_which which);

// Begins what the first window would have to wait for, in the background; that window waits for the
// rest of it. Only where there is a display. Until the window is there the program's other threads
// may find the user's decimal point in numbers, as Qt sets the user's locale.
void prepare_windows();
