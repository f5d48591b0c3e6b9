#include "foundation/LibStringIterator.h"

#include "tests/support/Rows.h"
#include "tests/support/Test.h"

TEST(LibStringIterator, LastFieldEndsALoopByItsLastCharacter)
{
    for (const Row& row : RowsOf("foundation/data/fields.txt", 3)) {
        const auto textOf = [](const std::string& s) { return s == "null" ? nullptr : s.c_str(); };
        LibStringIterator reader(textOf(row[0]));
        std::string fields;
        while (fields.size() < row[2].size()) {
            LibString field("before");
            const bool isFound = row[1].size() == 1 ? reader.GetNextField(row[1][0], field)
                                                    : reader.GetNextField(textOf(row[1]), field);
            fields += (fields.empty() ? "" : " ") + std::string(isFound ? "+" : "-");
            fields += static_cast<const char*>(field) + std::to_string(reader.Position());
        }
        EXPECT_EQ(fields, row[2]) << row[0];
    }
}

TEST(LibStringIterator, FieldOfAnIndexIsOneThatComesWithTrue)
{
    LibStringIterator reader("x,yz,w");
    LibString field("kept");
    EXPECT_FALSE(reader.GetIndexField(',', 2, field));
    EXPECT_STREQ(field, "kept");
    EXPECT_TRUE(reader.GetIndexField(',', 1, field)); // it starts over by itself
    EXPECT_STREQ(field, "yz");
    LibStringIterator same(reader), again, early(reader);
    again = reader;
    early.Reset(-7);
    reader = LibString("new");
    testing::internal::CaptureStderr();
    for (LibStringIterator* each : { &same, &again, &early, &reader }) {
        each->PrintToStream();
        each->GetNextField(',', field);
        field.PrintToStream();
    }
    const std::string whole = "LibString:: <x,yz,w>, buffer 7\nposition ";
    const std::string last = whole + "5\nLibString:: <w>, buffer 2\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        last + last + whole + "-7\nLibString:: <x>, buffer 2\n"
            + "LibString:: <new>, buffer 4\nposition 0\nLibString:: <new>, buffer 4\n");
    again = "text";
    EXPECT_EQ(again.Position(), 0);
}
