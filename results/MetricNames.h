// The types of metrics. Results files hold the number only.
#pragma once

#include <SupportDefs.h>

// The name of a metric type, which is the description of its metrics; "" for an unknown one.
[[nodiscard]] const char* MetricName(const int32& id);

// The unit of its rates, which is in no results file either; "" for an unknown type.
[[nodiscard]] const char* MetricUnits(const int32& id);
