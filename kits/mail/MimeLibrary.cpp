#include "Errors.h"
#include "MimeMessage.h"

#include <cstdio>
#include <dlfcn.h>

status_t WriteMimeMessage(const MailParts& parts, int file)
{
    // Beside the program; it stays loaded.
    static void* const library = dlopen("libtarvex-mime.so", RTLD_NOW | RTLD_LOCAL);
    void* const symbol = library ? dlsym(library, "tarvex_write_mime_message") : nullptr;
    if (!symbol) {
        fprintf(stderr, "Cannot load <libtarvex-mime.so>: %s\n", dlerror());
        return B_LAUNCH_FAILED;
    }
    return reinterpret_cast<decltype(&tarvex_write_mime_message)>(symbol)(parts, file);
}
