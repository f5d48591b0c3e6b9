#include "engine/Dhrystone.h"

#include "tests/support/Test.h"

namespace {

// What it prints, with every address as #.
std::string Printed(Dhrystone& dhrystone, long iterations)
{
    testing::internal::CaptureStderr();
    dhrystone.Run(iterations);
    return std::regex_replace(
        testing::internal::GetCapturedStderr(), std::regex("ptr_comp = -?\\d+"), "ptr_comp = #");
}

TEST(Dhrystone, CountsWithSixteenBitsAndPrintsItsCheckToTheLetter)
{
    Dhrystone dhrystone;
    std::string told = Printed(dhrystone, 65536 + 32001);
    EXPECT_EQ(dhrystone.ptr_glob->ptr_comp, dhrystone.next_ptr_glob.get());
    for (int i = 0; i < 50; i++) {
        if (dhrystone.array_1[i] != 0)
            told += std::to_string(i) + ":" + std::to_string(dhrystone.array_1[i]) + " ";
        for (int j = 0; j < 50; j++)
            if (const int32 value = dhrystone.array_2[i][j]; value != 0)
                told += std::to_string(i * 100 + j) + ":" + std::to_string(value) + " ";
    }
    EXPECT_EQ(told, ReadFile(TARVEX_TESTS "/engine/data/dhrystone")) << "not row 28";
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
    EXPECT_TRUE(dhrystone.Function_2("ABCE", "ABCD"));
    EXPECT_EQ(dhrystone.int_glob, 3 + 7);
    EXPECT_FALSE(dhrystone.Function_2("ABCD", "ABCD"));
    told.clear();
    for (const char letter : { 'B', 'A' }) {
        dhrystone.char_1 = letter;
        dhrystone.Procedure_2(value = 7);
        for (const bool before : { false, true }) {
            dhrystone.bool_glob = before;
            dhrystone.Procedure_4();
            told += std::to_string(value) + (dhrystone.bool_glob ? "true " : "false ");
        }
    }
    EXPECT_EQ(told, "7false 7true 6true 6true ");
    EXPECT_EQ(dhrystone.Function_1('C', 'C'), kIdent2);
    EXPECT_EQ(dhrystone.char_1, 'C');
    dhrystone.Procedure_5();
    EXPECT_TRUE(dhrystone.char_1 == 'A' && !dhrystone.bool_glob);
}

} // namespace
