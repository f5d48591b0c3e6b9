#include "results/TestCatalogue.h"

#include <algorithm>

const TestType* FindTestType(int32 id)
{
    const auto* found = std::find_if(std::begin(kTestTypes), std::end(kTestTypes),
        [id](const TestType& type) { return type.id == id; });
    return found != std::end(kTestTypes) ? found : nullptr;
}

double LeastDifference(const TestType& test)
{
    return test.group != kOlderVersions ? kTestGroups[test.group].apart : 0;
}

const char* MetricName(const int32& id)
{
    const TestType* type = FindTestType(id);
    return type ? type->name : "";
}

const char* MetricUnits(const int32& id)
{
    const TestType* type = FindTestType(id);
    return type ? type->units : "";
}

int32 CompleteRunSize()
{
    return static_cast<int32>(
        std::count_if(std::begin(kTestTypes), std::end(kTestTypes), [](const TestType& type) {
            return type.group != kOlderVersions && kTestGroups[type.group].box != GroupBox::kNone;
        }));
}
