#include "engine/ThisBuild.h"

BuildDetails ThisBuild()
{
    return { TARVEX_VERSION, TARVEX_COMPILER, TARVEX_KERNEL_FLAGS };
}
