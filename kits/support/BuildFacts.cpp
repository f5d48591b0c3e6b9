#include "BuildFacts.h"

const BuildFacts& ThisBuild()
{
    static const BuildFacts facts { TARVEX_BUILD_VERSION, TARVEX_BUILD_COMPILER, TARVEX_BUILD_TYPE,
        TARVEX_BUILD_FLAGS, TARVEX_BUILD_KERNEL_FLAGS, TARVEX_BUILD_TARGET };
    return facts;
}
