#include "OwnLibrary.h"

#include <climits>
#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

// From the program's place, wherever that was moved and whatever link it was started by.
std::string find_own_file(const std::string& name)
{
    char program[PATH_MAX] = "";
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    const std::string path(program, length > 0 ? static_cast<size_t>(length) : 0);
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const std::string beside = folder + name;
    return access(beside.c_str(), F_OK) == 0 ? beside : folder + TARVEX_LIBRARY_FOLDER "/" + name;
}

void* find_own_function(const char* library, const char* function)
{
    const std::string name = std::string("libtarvex-") + library + ".so";
    // A library that is loaded already is found again.
    void* const loaded = dlopen(find_own_file(name).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = loaded ? dlsym(loaded, function) : nullptr;
    if (!symbol) {
        const char* why = dlerror();
        fprintf(stderr, "Cannot load <%s>: %s\n", name.c_str(), why ? why : "");
    }
    return symbol;
}
