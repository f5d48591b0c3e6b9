// A home directory for the tests of this program: nothing of the user's own is touched.
#pragma once

#include "tests/support/TempFolder.h"

// $HOME and the XDG folders lie below it from the start of the program on.
const TempFolder& TestHome();
// Runs commands with the folder as their working directory; a failure is one of the test.
void Shell(const TempFolder& folder, const std::string& commands);
// What commands print in the folder, on one line.
std::string Said(const TempFolder& folder, const std::string& commands);
