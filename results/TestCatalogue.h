// Every test and every group of tests, a row each: the one place that knows what they are called,
// where they stand, what they measure and what a complete run holds. The engine puts a flag and a
// function beside each group (kGroupRuns); all else that speaks of tests reads it here.
#pragma once

#include <SupportDefs.h>

#include <iterator>
#include <string_view>

enum class GroupBox { kNone, kArchitecture, kDisk }; // of the main window

struct TestGroup {
    const char* key; // names it on the command line
    const char* status; // what a run calls it
    const char* label; // of its check box
    const char* viewName; // of its check box, and of its help
    uint32 what; // the message of its check box
    GroupBox box; // kNone: no check box, and no part of "all" and of a complete run
    int32 seconds; // how long one pass takes, as the window tells it before a run
    double takes; // seconds of one pass on a machine of today, until one was timed
    // The share by which its estimates may differ between two sittings of one machine although no
    // span shows it, measured over 35 sittings: memory that is full or fragmented is another
    // memory.
    double apart;
    const char* tip;
    const char* help; // paragraphs with an empty line between them
};

// In the order of a run. Creation and deletion of files come before their output and input.
inline constexpr TestGroup kTestGroups[] = {
    { "graphics", "Graphics", "Graphics", "cpugraphics", 2000, GroupBox::kArchitecture, 80, 1, 0.05,
        "Lines, ellipses, rectangles, triangles and text in a window",
        "Thirteen tests draw thousands of lines, ellipses, rectangles, triangles and words of "
        "random colour and place. In the flushed tests each shape is sent to the screen at once, "
        "in the others they leave in bundles.\n\nTo compare with other machines set the screen to "
        "1024x768. The question before the run asks for 8 bits per pixel too, but the windows of "
        "Tarvex need 15 at least: leave the colours at 24 or 32 bits and choose Continue. On a "
        "screen with 8 bits per pixel tarvex-run draws the same tests: \"tarvex-run --groups "
        "graphics --output Tarvex.results\" in a terminal." },
    { "strings", "Strings", "Strings", "cpustring", 2001, GroupBox::kArchitecture, 4, 0.02, 0.02,
        "Copies and compares a text",
        "Copies a text of 42 characters three million times, then compares it as often: how fast "
        "the processor moves bytes within its cache." },
    { "memory", "Memory", "Memory", "cpumemory", 2002, GroupBox::kArchitecture, 2, 0.01, 0.04,
        "Allocates, clears and frees blocks of memory",
        "Allocates, clears and frees 400,000 blocks of 512 bytes." },
    { "savage", "Savage", "Savage", "cpusavage", 2003, GroupBox::kArchitecture, 2, 0.03, 0.02,
        "Square root, logarithm, exponential and tangent in turn",
        "Sends a number through square root, logarithm, exponential, arc tangent and tangent, and "
        "back again, 300,000 times." },
    { "ackerman", "Ackerman", "Ackerman", "cpuackerman", 2004, GroupBox::kArchitecture, 2, 0.02,
        0.02, "A function that calls itself very often",
        "Evaluates Ackermann's function A(3, 3) 6,000 times: hardly any arithmetic, but a great "
        "many calls." },
    { "dhrystone", "Dhrystone", "", "", 0, GroupBox::kNone, 0, 0.02, 0.02, "", "" },
    { "fourier", "Fourier", "Fourier", "cpufourier", 2008, GroupBox::kArchitecture, 4, 0.05, 0.02,
        "Coefficients of a Fourier series",
        "Computes the coefficients of a Fourier series by numerical integration: powers, sines "
        "and cosines." },
    { "whetstone", "Whetstone", "Whetstone", "cpuwhetstone", 2006, GroupBox::kArchitecture, 2, 0.2,
        0.02, "The classic mix of floating-point work, alone and on ten threads",
        "The classic mix of floating-point work, once, ten times one after the other, and on ten "
        "threads at once. The last two are in seconds: with several processors the threads take "
        "less time than the sequence." },
    { "sieve", "Sieve", "Sieve", "cpusieve", 2007, GroupBox::kArchitecture, 4, 5, 0.02,
        "Walks over an array of flags for five seconds",
        "Walks over an array of 8,190 flags, as a sieve for prime numbers does, for five seconds, "
        "and counts the rounds." },
    { "lifecycle", "Disk LifeCycle", "LifeCycle", "disklifecycle", 3001, GroupBox::kDisk, 11, 0.2,
        0.06, "Creates and removes a thousand files",
        "Creates a thousand empty files in the folder for temporary files, then removes them." },
    { "io", "Disk Input/Output", "Input/Output", "disio", 3000, GroupBox::kDisk, 8, 0.1, 0.25,
        "Writes and reads a file of 40 megabytes",
        "Writes a file of 40 megabytes in the folder for temporary files, reads it, and removes "
        "it." },
};

inline constexpr size_t kNbrTestGroups = std::size(kTestGroups);

// Does not compile for a key of no group.
consteval size_t GroupIndex(std::string_view key)
{
    size_t index = 0;
    while (kTestGroups[index].key != key)
        index++;
    return index;
}

constexpr int32 kOlderVersions = -1; // in place of a group: only they had the test

enum class Better { kMore, kLess };

struct TestType {
    int32 id; // results files hold this only
    const char* name;
    const char* units;
    long work; // units of work in one timing; 0: known afterwards, or the figure is the time itself
    int32 group; // index of the group that measures it, or kOlderVersions
    Better better;
    const char* measures;
    const char* measuresNot;
};

namespace catalogue {
constexpr auto kGraphics = int32(GroupIndex("graphics"));
constexpr auto kStrings = int32(GroupIndex("strings"));
constexpr auto kWhetstone = int32(GroupIndex("whetstone"));
constexpr auto kLifeCycle = int32(GroupIndex("lifecycle"));
constexpr auto kInputOutput = int32(GroupIndex("io"));

inline constexpr char kNotTheCard[] =
    "Not the graphics card alone: the display server, its driver and the screen's width and depth "
    "count as much.";
inline constexpr char kNotVectors[] = "Not sums and products, nor vector units.";
inline constexpr char kNotTheDisk[] =
    "Not the disk: all stays in the page cache, or in memory where the temporary folder does.";
inline constexpr char kFiles[] = "files/second";

inline constexpr TestType kTestTypes[] = {
    { 100, "Strings Copy", "MegaChars/sec", 126, kStrings, Better::kMore,
        "Characters that strcpy copies, text and copy in the first-level cache.",
        "Not the speed of memory, nor that of long texts." },
    { 101, "Strings Compare", "MegaChars/sec", 126, kStrings, Better::kMore,
        "Characters that strcmp compares, both texts in the first-level cache.",
        "Not the speed of memory, nor that of long texts." },
    { 200, "Memory", "MB/sec", 195, GroupIndex("memory"), Better::kMore,
        "Blocks of 512 bytes allocated, cleared and freed: the allocator and the first-level "
        "cache.",
        "Not the bandwidth of main memory, which no block ever reaches." },
    { 300, "Savage", "KIPS", 300, GroupIndex("savage"), Better::kMore,
        "Functions of the mathematical library, each waiting for the one before.", kNotVectors },
    { 400, "Ackerman", "IPS", 6000, GroupIndex("ackerman"), Better::kMore,
        "Calls and returns of a function that calls itself.",
        "Not arithmetic, nor calls that a compiler could foresee." },
    { 500, "Dhrystone", "IPS", 1600000, GroupIndex("dhrystone"), Better::kMore,
        "What this program has always timed under that name: the report of the work, hardly the "
        "work.",
        "Not what any other program calls Dhrystone." },
    { 550, "Fourier", "FLOPS", 100, GroupIndex("fourier"), Better::kMore,
        "Powers, sines and cosines of the mathematical library.", kNotVectors },
    { 600, "Whetstone", "MWIPS", 100, kWhetstone, Better::kMore,
        "A fixed mix of floating-point work on one processor, in millions of Whetstone "
        "instructions a second.",
        "Not several processors at once, nor vector units." },
    { 601, "Ten Sequential Whetstones", "seconds", 0, kWhetstone, Better::kLess,
        "Ten Whetstones one after the other, to hold the ten threads against.",
        "Not several processors at once." },
    { 602, "Ten Threaded Whetstones", "seconds", 0, kWhetstone, Better::kLess,
        "Ten Whetstones on ten threads at once: what each further processor brings.",
        "Not what programs bring that wait for memory or for each other." },
    { 700, "Sieve", "IPS", 0, GroupIndex("sieve"), Better::kMore,
        "Short loops over an array of flags in the first-level cache.",
        "Not the speed of memory, nor the finding of primes: the walk marks nothing." },
    { 800, "Disk File Output", "KB/sec", 40000, kInputOutput, Better::kMore,
        "A file of 40 megabytes written in blocks of 4 kilobytes.", kNotTheDisk },
    { 801, "Disk File Input", "KB/sec", 40000, kInputOutput, Better::kMore,
        "The same file read again in blocks of 4 kilobytes.", kNotTheDisk },
    { 900, "Disk File Creation", kFiles, 1000, kLifeCycle, Better::kMore,
        "A thousand empty files created: the file system's directories.", kNotTheDisk },
    { 901, "Disk File Deletion", kFiles, 1000, kLifeCycle, Better::kMore,
        "The same files removed: the file system's directories.", kNotTheDisk },
    { 902, "Disk File/Thread Creation", kFiles, 0, kOlderVersions, Better::kMore,
        "Files created by a thread each, in older versions.", kNotTheDisk },
    { 903, "Disk File/Thread Deletion", kFiles, 0, kOlderVersions, Better::kMore,
        "Files removed by a thread each, in older versions.", kNotTheDisk },
    { 1010, "Graphics Lines Flushed", "vectors/sec", 10000, kGraphics, Better::kMore,
        "Lines of random place and colour, each sent at once.", kNotTheCard },
    { 1011, "Graphics Lines Unflushed", "vectors/sec", 20000, kGraphics, Better::kMore,
        "Lines of random place and colour, sent in bundles.", kNotTheCard },
    { 1020, "Graphics Ellipses Flushed", "ellipses/sec", 10000, kGraphics, Better::kMore,
        "Outlines of ellipses, each sent at once.", kNotTheCard },
    { 1021, "Graphics Ellipses Unflushed", "ellipses/sec", 10000, kGraphics, Better::kMore,
        "Outlines of ellipses, sent in bundles.", kNotTheCard },
    { 1022, "Graphics Ellipses Unflushed Filled", "ellipses/sec", 10000, kGraphics, Better::kMore,
        "Filled ellipses, sent in bundles.", kNotTheCard },
    { 1030, "Graphics Rectangles Flushed", "rectangles/sec", 10000, kGraphics, Better::kMore,
        "Outlines of rectangles, each sent at once.", kNotTheCard },
    { 1031, "Graphics Rectangles Unflushed", "rectangles/sec", 50000, kGraphics, Better::kMore,
        "Outlines of rectangles, sent in bundles.", kNotTheCard },
    { 1032, "Graphics Rectangles Unflushed Filled", "rectangles/sec", 10000, kGraphics,
        Better::kMore, "Filled rectangles, sent in bundles.", kNotTheCard },
    { 1040, "Graphics Polygons Flushed", "polygons/sec", 10000, kGraphics, Better::kMore,
        "Outlines of triangles, each sent at once.", kNotTheCard },
    { 1041, "Graphics Polygons Unflushed", "polygons/sec", 10000, kGraphics, Better::kMore,
        "Outlines of triangles, sent in bundles.", kNotTheCard },
    { 1042, "Graphics Polygons Unflushed Filled", "polygons/sec", 10000, kGraphics, Better::kMore,
        "Filled triangles, sent in bundles.", kNotTheCard },
    { 1050, "Graphics Strings Flushed", "KiloChars/sec", 90, kGraphics, Better::kMore,
        "Words of six letters, each sent at once, nine characters counted a word as in all "
        "published figures.",
        kNotTheCard },
    { 1051, "Graphics Strings Unflushed", "KiloChars/sec", 180, kGraphics, Better::kMore,
        "Words of six letters, sent in bundles, nine characters counted a word as in all "
        "published figures.",
        kNotTheCard },
};
} // namespace catalogue

using catalogue::kTestTypes;

// Does not compile for the name of no test.
consteval const TestType& TestNamed(std::string_view name)
{
    size_t index = 0;
    while (kTestTypes[index].name != name)
        index++;
    return kTestTypes[index];
}

// Null for a type that no version knows.
[[nodiscard]] const TestType* FindTestType(int32 id);

// The share below which a difference of the test's times tells nothing, see TestGroup::apart; 0 for
// those of older versions only.
[[nodiscard]] double LeastDifference(const TestType& test);

// Its name, which is the description of its metrics; "" for an unknown one.
[[nodiscard]] const char* MetricName(const int32& id);
// The unit of its rates, which is in no results file either; "" for an unknown type.
[[nodiscard]] const char* MetricUnits(const int32& id);

// How many metrics a run of all groups with a check box leaves.
[[nodiscard]] int32 CompleteRunSize();
