#include "engine/Dhrystone.h"

#include "tests/support/Test.h"

#include <regex>

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

TEST(Dhrystone, CountsWithSixteenBitsAndPrintsItsCheckToTheLetter)
{
    Dhrystone dhrystone;
    EXPECT_EQ(Printed(dhrystone, 65536 + 32001),
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
    std::string arrays;
    for (int i = 0; i < 50; i++) {
        if (dhrystone.array_1[i] != 0)
            arrays += std::to_string(i) + ":" + std::to_string(dhrystone.array_1[i]) + " ";
        for (int j = 0; j < 50; j++)
            if (const int32 value = dhrystone.array_2[i][j]; value != 0)
                arrays +=
                    std::to_string(i) + "," + std::to_string(j) + ":" + std::to_string(value) + " ";
    }
    EXPECT_EQ(arrays, "8:7 8,7:11 8,8:7 8,9:8 9:7 38:8 ") << "not row 28";
}

TEST(Dhrystone, GoesTheOtherWaysOfThePublishedTextToo)
{
    Dhrystone dhrystone;
    dhrystone.ptr_glob->discr = kIdent2;
    Printed(dhrystone, 32001);
    for (const auto& each : { dhrystone.ptr_glob.get(), dhrystone.next_ptr_glob.get() })
        EXPECT_TRUE(each->discr == kIdent2 && each->int_comp == 5);
    std::string told;
    for (const int32 global : { 100, 101 }) {
        for (const Enumeration value : { kIdent1, kIdent2, kIdent3, kIdent4, kIdent5 }) {
            Enumeration reference = kIdent5;
            dhrystone.int_glob = global;
            dhrystone.Procedure_6(value, reference);
            told += std::to_string(reference + 1);
        }
    }
    EXPECT_EQ(told,
        "14243"
        "11243");
    int32 value = 7;
    dhrystone.Procedure_2(value);
    EXPECT_EQ(value, 7 + 10 - 1 - 101);
    EXPECT_TRUE(dhrystone.Function_2("ABCZ", "ABCD"));
    EXPECT_EQ(dhrystone.int_glob, 3 + 7);
    EXPECT_FALSE(dhrystone.Function_2("ABCD", "ABCD"));
    dhrystone.bool_glob = false;
    dhrystone.char_1 = 'B';
    dhrystone.Procedure_2(value = 7);
    dhrystone.Procedure_4();
    EXPECT_TRUE(value == 7 && !dhrystone.bool_glob) << "no A";
    EXPECT_EQ(dhrystone.Function_1('C', 'C'), kIdent2);
    EXPECT_EQ(dhrystone.char_1, 'C');
}

} // namespace
