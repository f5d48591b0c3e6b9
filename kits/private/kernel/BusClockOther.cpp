#include "BusClock.h"

namespace kernel {
int64 ReadBusClock()
{
    return 0;
}
} // namespace kernel
