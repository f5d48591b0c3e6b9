#include "foundation/LibStringIterator.h"

#include "tests/support/Test.h"

namespace {

// What that many calls give for a text, each with "+" or "-" for the result and the new position.
template <class Delimiter>
std::string FieldsOf(const char* text, Delimiter delimiter, int calls)
{
    LibStringIterator reader(text);
    std::string fields;
    for (int i = 0; i < calls; i++) {
        LibString field("before");
        fields += reader.GetNextField(delimiter, field) ? "+" : "-";
        fields += static_cast<const char*>(field) + std::to_string(reader.Position()) + " ";
    }
    return fields;
}

} // namespace

TEST(LibStringIterator, LastFieldEndsALoopByItsLastCharacter)
{
    const std::tuple<const char*, int, const char*> rows[] = { { "a\tb\tcd", 5,
                                                                   "+a2 +b4 +cd5 -d5 -d5 " },
        { "a\t\tb", 3, "+a2 +3 -b3 " }, { "ab\t", 2, "+ab3 -3 " }, { "\t\t", 3, "+1 +2 -2 " },
        { "abc", 2, "+abc2 -c2 " }, { "", 2, "-0 -0 " }, { nullptr, 1, "-0 " } };
    for (const auto& [text, calls, fields] : rows)
        EXPECT_EQ(FieldsOf(text, '\t', calls), fields);
    // Of several delimiters any ends a field, and the rest stays.
    EXPECT_EQ(FieldsOf("1.5,2;x", ",;", 4), "+1.54 +26 -x6 -x6 ");
    EXPECT_EQ(FieldsOf("ab", static_cast<const char*>(nullptr), 1), "-ab0 ");
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
