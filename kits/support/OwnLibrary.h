// Functions of the program's own libraries that few runs of it need: a library is loaded when one
// of its functions is first asked for, and stays loaded.
#pragma once

// Null, with a line on standard error, where libtarvex-LIBRARY.so cannot be loaded or has no such
// function. The library lies beside the program, or where both were installed.
void* find_own_function(const char* library, const char* function);

// The same as a pointer to a function of that type.
template <typename Function>
Function OwnFunction(const char* library, const char* function)
{
    return reinterpret_cast<Function>(find_own_function(library, function));
}
