#include "Errors.h"
#include "MimeMessage.h"

#include <climits>
#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

namespace {

// Beside the program in the build's folder, else where it is installed; from the program's place,
// wherever that was moved and whatever link it was started by.
void* LoadLibrary()
{
    char program[PATH_MAX] = "";
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    const std::string path(program, length > 0 ? static_cast<size_t>(length) : 0);
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const std::string beside = folder + "libtarvex-mime.so";
    if (access(beside.c_str(), F_OK) == 0)
        return dlopen(beside.c_str(), RTLD_NOW | RTLD_LOCAL);
    return dlopen(
        (folder + TARVEX_MIME_FOLDER "/libtarvex-mime.so").c_str(), RTLD_NOW | RTLD_LOCAL);
}

} // namespace

status_t WriteMimeMessage(const MailParts& parts, int file)
{
    static void* const library = LoadLibrary(); // stays loaded
    void* const symbol = library ? dlsym(library, "tarvex_write_mime_message") : nullptr;
    if (!symbol) {
        const char* why = dlerror();
        fprintf(stderr, "Cannot load <libtarvex-mime.so>: %s\n", why ? why : "");
        return B_LAUNCH_FAILED;
    }
    return reinterpret_cast<decltype(&tarvex_write_mime_message)>(symbol)(parts, file);
}
