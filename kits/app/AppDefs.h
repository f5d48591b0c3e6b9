// Codes of the messages that the kits send and of those that every program understands, and the
// platform's own pointers.
#pragma once

#include "SupportDefs.h"

// A picture for the pointer, 68 bytes: size (16), depth (1), hot spot row, hot spot column, 16 rows
// of 16 bits of image (1: black), 16 rows of 16 bits of mask (1: drawn); highest bit leftmost.
extern const unsigned char B_HAND_CURSOR[];

// Messages of the system: a kit class answers them with a function of its own where it has one
// (BApplication::ReadyToRun(), BView::MouseDown(), ...).
enum {
    B_ABOUT_REQUESTED = '_ABR',
    B_APP_ACTIVATED = '_APA',
    B_ARGV_RECEIVED = '_ARG',
    B_CANCEL = '_CNC',
    B_KEY_DOWN = '_KYD',
    B_KEY_UP = '_KYU',
    B_MINIMIZE = '_WMN',
    B_MODIFIERS_CHANGED = '_MCH',
    B_MOUSE_DOWN = '_MDN',
    B_MOUSE_MOVED = '_MMV',
    B_MOUSE_UP = '_MUP',
    B_MOUSE_WHEEL_CHANGED = '_MWC',
    B_PULSE = '_PUL',
    B_QUIT_REQUESTED = '_QRQ',
    B_READY_TO_RUN = '_RTR',
    B_REFS_RECEIVED = '_RRC',
    B_SCREEN_CHANGED = '_SCH',
    B_UNMAPPED_KEY_DOWN = '_UKD',
    B_UNMAPPED_KEY_UP = '_UKU',
    B_VALUE_CHANGED = '_VCH',
    B_VIEW_MOVED = '_VMV',
    B_VIEW_RESIZED = '_VRS',
    B_WINDOW_ACTIVATED = '_ACT',
    B_WINDOW_MOVED = '_WMV',
    B_WINDOW_RESIZED = '_WRS',
    B_WORKSPACE_ACTIVATED = '_WAC',
    B_WORKSPACES_CHANGED = '_WCG',
    B_ZOOM = '_WZO',
    _UPDATE_ = '_UPD', // a part of a window has to be drawn
    _QUIT_ = '_QIT', // ends a looper without asking it; sent by BLooper::Quit()
};

// Messages that any program may send or understand.
enum {
    B_CONTROL_INVOKED = 'CIVK',
    B_CONTROL_MODIFIED = 'CMOD',
    B_COPY = 'COPY',
    B_CUT = 'CCUT',
    B_PASTE = 'PSTE',
    B_SELECT_ALL = 'SALL',
    B_SAVE_REQUESTED = 'SAVE',
    B_SIMPLE_DATA = 'DATA',
    B_MIME_DATA = 'MIME',
    B_MESSAGE_NOT_UNDERSTOOD = 'MNOT', // an answer: nobody handled the message
    B_NO_REPLY = 'NONE', // an answer: the message was deleted without one
    B_REPLY = 'RPLY',
};
