// What few runs of a program need lies in files of its own: another program, or libraries, of which
// one is loaded when one of its functions is first asked for, and stays loaded.
#pragma once

#include <string>

// Where a file of the program's own is: beside it, else in the folder where the libraries were
// installed, whether or not it is there.
[[nodiscard]] std::string find_own_file(const std::string& name);

// Null, with a line on standard error, where libtarvex-LIBRARY.so cannot be loaded or has no such
// function.
void* find_own_function(const char* library, const char* function);

// The same as a pointer to a function of that type.
template <typename Function>
Function OwnFunction(const char* library, const char* function)
{
    return reinterpret_cast<Function>(find_own_function(library, function));
}
