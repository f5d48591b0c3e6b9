#include "Errors.h"
#include "MimeMessage.h"

#include <climits>
#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

namespace {

// Beside the program, wherever that was moved.
std::string LibraryPath()
{
    char program[PATH_MAX] = "";
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    const std::string path(program, length > 0 ? static_cast<size_t>(length) : 0);
    return path.substr(0, path.rfind('/') + 1) + "libtarvex-mime.so";
}

} // namespace

status_t WriteMimeMessage(const MailParts& parts, int file)
{
    static void* const library =
        dlopen(LibraryPath().c_str(), RTLD_NOW | RTLD_LOCAL); // stays loaded
    void* const symbol = library ? dlsym(library, "tarvex_write_mime_message") : nullptr;
    if (!symbol) {
        const char* why = dlerror();
        fprintf(stderr, "Cannot load <libtarvex-mime.so>: %s\n", why ? why : "");
        return B_LAUNCH_FAILED;
    }
    return reinterpret_cast<decltype(&tarvex_write_mime_message)>(symbol)(parts, file);
}
