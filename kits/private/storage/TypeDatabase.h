// The shared MIME database. It is asked by a library of its own, see CMakeLists.txt.
#pragma once

#include <string>

// Sets type to what the database says to a file's name and contents; file is open for reading, or
// -1 where it is to go by the name alone. "application/octet-stream": it knows none.
extern "C" void tarvex_ask_type_database(const std::string& path, int file, std::string& type);
