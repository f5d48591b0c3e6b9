// The type of a file that nobody gave one.
#pragma once

#include <string>

// Of what is open, in whatever way; by kind, then by what the shared MIME database says to its name
// and contents. "application/octet-stream": it knows none.
[[nodiscard]] std::string GuessTypeOf(int descriptor);
