#include "results/ResultsFile.h"

#include <cstdio>
#include <cstring>

#include "results/Results.h"

bool WriteResultsFile(const char* path, Results& results)
{
    char record[kRecordSize];
    results.Write(record);
    FILE* file = fopen(path, "w");
    if (file == nullptr) {
        fprintf(stderr, "Error writing <%s>\n", path);
        return false;
    }
    const bool written =
        fprintf(file, "1.0\n%d\n%s\n", static_cast<int>(strlen(record)), record) >= 0;
    const bool closed = fclose(file) == 0; // a full disk may only show here
    if (!written || !closed)
        fprintf(stderr, "Error writing <%s>\n", path);
    return written && closed;
}
