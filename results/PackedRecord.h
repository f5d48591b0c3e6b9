// A machine's record as it was read, from which one metric is made when it is wanted: of thousands
// of machines a chart shows one metric each, and all of them as objects take eight times the memory
// of their text.
#pragma once

#include "results/Metric.h"

#include <memory>
#include <string>
#include <string_view>

class PackedRecord {
public:
    // Takes the record over if it is exactly what Results::Write() makes of the machine that
    // Results::Read() finds in it, so that no word is to be said of it and nothing is lost; else
    // the object stays empty.
    static PackedRecord Of(std::string_view record);

    [[nodiscard]] bool IsEmpty() const { return text.empty(); }
    [[nodiscard]] const std::string& Text() const { return text; }
    [[nodiscard]] std::string_view Machine() const; // in front of the first tab
    [[nodiscard]] std::string_view Devices() const; // "type:text" and a tab for each
    // The first metric of this description; null if there is none.
    [[nodiscard]] std::unique_ptr<Metric> Find(const Metric& probe) const;
    // Null if it has no metric.
    [[nodiscard]] std::unique_ptr<Metric> First() const;

private:
    std::string text; // with its room cut to size
};
