#include "results/RelatedDevices.h"

#include <cstdio>

void RelatedDevices::Description(const int& newType, const char* text)
{
    type = newType;
    description = text;
}

void RelatedDevices::PrintToStream() const
{
    const char* text = description;
    fprintf(stderr, "RelatedDevices:: <%s>, type %d\n", text, type);
}
