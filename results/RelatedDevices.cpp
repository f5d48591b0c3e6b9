#include "results/RelatedDevices.h"

#include <cstdio>

#include "foundation/Utf8.h"

void RelatedDevices::Description(const int& newType, const char* text)
{
    type = newType;
    description = text;
}

void RelatedDevices::PrintToStream() const
{
    fprintf(stderr, "RelatedDevices:: <%s>, type %d\n", LibPrintable(description).c_str(), type);
}
