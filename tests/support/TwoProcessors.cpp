// Linked into a test program, lets runs in it and in what it starts have two processors: there
// every kind of pass is made, and with each further processor the same test takes a second or two
// longer.
#include <sched.h>

namespace {
[[maybe_unused]] const bool gIsBound = [] {
    cpu_set_t all, two;
    CPU_ZERO(&two);
    if (sched_getaffinity(0, sizeof all, &all) != 0)
        return false;
    for (size_t number = 0; number < CPU_SETSIZE && CPU_COUNT(&two) < 2; number++) {
        if (CPU_ISSET(number, &all))
            CPU_SET(number, &two);
    }
    return sched_setaffinity(0, sizeof two, &two) == 0;
}();
} // namespace
