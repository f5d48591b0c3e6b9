#include "engine/Dhrystone.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

// What it prints, with every address as #.
std::string Printed(Dhrystone& dhrystone, long iterations)
{
    testing::internal::CaptureStderr();
    dhrystone.Run(iterations);
    return std::regex_replace(
        testing::internal::GetCapturedStderr(), std::regex("ptr_comp = -?\\d+"), "ptr_comp = #");
}

std::string Record(const char* enumeration, const char* integer)
{
    return "\tptr_comp = #, should be impl dependent\n\tdiscr = 0, should be 0\n\tenum comp = "
        + std::string(enumeration) + "\n\tint comp = " + integer
        + "\n\tstr compt = 'DHRYSTONE PROGRAM, SOME STRING', should be "
          "'DHRYSTONE PROGRAM, SOME STRING\n";
}

TEST(Dhrystone, PrintsItsCheckToTheLetterAfterOneBody)
{
    Dhrystone dhrystone;
    EXPECT_EQ(Printed(dhrystone, 32001),
        "Dhrystone: iter 32001, outer 1, inner 1\n"
        "value = 5, should be 5\n"
        "test_state = 1, should be 1\n"
        "char_1 = 'A', should be 'A'\n"
        "char_2 = 'B', should be 'B'\n"
        "array_1[8] = 7, should be 7\n"
        "array_2[8][7] = 11, should be number_of_runs + 10\n"
        "pointer:\n"
            + Record("2, sould be 2", "17, should be 17") + "next_pointer\n"
            + Record("1, sould be 1", "18, should be 18"));
    EXPECT_EQ(dhrystone.ptr_glob->ptr_comp, dhrystone.next_ptr_glob.get());
    EXPECT_EQ(dhrystone.array_2[8][8], 7); // not row 28
    EXPECT_EQ(dhrystone.array_2[28][8], 0);
}

TEST(Dhrystone, CountsWithSixteenBits)
{
    const struct {
        long iterations;
        const char* counts;
        int value; // of array_2[8][7]: 10, and one more by each body of the last middle round
    } rows[] = {
        { 1600000, "iter 27136, outer 0, inner 27136", 0 },
        { 65536 + 32771, "iter 32771, outer 1, inner 771", 11 },
    };
    for (const auto& row : rows) {
        Dhrystone dhrystone;
        const std::string printed = Printed(dhrystone, row.iterations);
        EXPECT_EQ(printed.find("Dhrystone: " + std::string(row.counts) + "\nvalue"), 0u) << printed;
        EXPECT_EQ(dhrystone.array_2[8][7], row.value);
    }
}

} // namespace
