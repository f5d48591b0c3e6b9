#include "results/ResultsFile.h"

#include <WholeFile.h>

#include <cstring>

#include "results/Results.h"

bool WriteResultsFile(const char* path, const Results& results)
{
    char record[kRecordSize];
    results.Write(record);
    WholeFile file(path);
    if (file.Stream())
        fprintf(file.Stream(), "1.0\n%d\n%s\n", static_cast<int>(strlen(record)), record);
    if (file.Commit())
        return true;
    fprintf(stderr, "Error writing <%s>: %s\n", path, file.Error().c_str());
    return false;
}
