#include "engine/Benchmark.h"
#include "engine/IntegerKernels.h"
#include "engine/Sink.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr long kRounds = 3000000;
// Characters per length of the text in the result: millions, as the unit is.
constexpr long kMillionRounds = kRounds / 1000000;

typedef uint64_t Word;
constexpr Word kOnes = 0x0101010101010101;
constexpr Word kHighBits = 0x8080808080808080;

} // namespace

size_t WordwiseLength(const char* text)
{
    size_t length = 0;
    for (;; length += sizeof(Word)) {
        Word word;
        memcpy(&word, text + length, sizeof word);
        if ((word - kOnes) & ~word & kHighBits) // some byte is 0
            break;
    }
    while (text[length] != '\0')
        length++;
    return length;
}

void CopyText(char* copy, const char* text, long rounds)
{
    for (long round = 0; round < rounds; round++) {
        strcpy(copy, text);
        Sink(copy);
    }
}

int CompareText(const char* copy, const char* text, long rounds)
{
    int result = 0;
    for (long round = 0; round < rounds; round++) {
        result = strcmp(copy, text);
        Sink(result);
    }
    return result;
}

void Benchmark::RunStrings()
{
    // Aligned to a cache line, so that the rate does not depend on where the stack begins.
    alignas(64) char text[48] = "Tarvex tests system resources of the BeOS.";
    alignas(64) char copy[sizeof text] = "";
    static_assert(sizeof text % sizeof(Word) == 0);
    const char* source = text;
    Opaque(source);
    const long length = long(WordwiseLength(source));

    const auto measure = [&](const TestType& test, const auto& kernel, const auto& isDone) {
        Measure(test, kRounds, kernel, [&](Metric& metric) {
            metric.NbrCycles(kMillionRounds * length);
            return Unless(isDone(), "the copy is not the text");
        });
    };
    int difference = -1;
    measure(
        TestNamed("Strings Copy"), [&] { CopyText(copy, source, kRounds); },
        [&] { return memcmp(copy, text, sizeof text) == 0; });
    measure(
        TestNamed("Strings Compare"), [&] { difference = CompareText(copy, source, kRounds); },
        [&] { return difference == 0; });
}
