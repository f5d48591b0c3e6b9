// The platform's file manager, application/x-vnd.Be-TRAK, as programs know it: they send it
// messages. Here a looper takes them and passes them on to the desktop's own file manager over
// D-Bus or, where none answers, to xdg-open.
//
//   B_REFS_RECEIVED   entries "refs": shows a folder's contents, any other entry in its folder
//   'Tinf'            entries "refs": shows what is known of each; xdg-open shows its folder
//
// Both are answered with B_REPLY and an int32 "error": B_OK, or B_ERROR if something could not be
// shown, which a line on standard error also says.
#pragma once

#include "Messenger.h"

extern const char* const kFileManagerSignature;

// Where its messages go. Starts the looper at first; at the end of the program messages that wait
// are passed on before. Without a target if it cannot be started.
BMessenger FileManagerMessenger();
