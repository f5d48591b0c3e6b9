#include "foundation/LibStringIterator.h"

#include "tests/support/Test.h"

namespace {

using Fields = std::vector<std::pair<std::string, bool>>;

// What that many calls give for a text.
template <class Delimiter>
Fields FieldsOf(const char* text, Delimiter delimiter, int calls)
{
    LibStringIterator reader(text);
    Fields fields;
    for (int i = 0; i < calls; i++) {
        LibString field("before");
        const bool found = reader.GetNextField(delimiter, field);
        fields.emplace_back(static_cast<const char*>(field), found);
    }
    return fields;
}

} // namespace

TEST(LibStringIterator, LastFieldEndsALoopByItsLastCharacter)
{
    const std::pair<const char*, Fields> rows[] = {
        { "a\tb\tcd",
            { { "a", true }, { "b", true }, { "cd", true }, { "d", false }, { "d", false } } },
        { "a\t\tb", { { "a", true }, { "", true }, { "b", false } } },
        { "ab\t", { { "ab", true }, { "", false } } },
        { "\t\t", { { "", true }, { "", true }, { "", false } } },
        { "abc", { { "abc", true }, { "c", false } } },
        { "", { { "", false }, { "", false } } },
        { nullptr, { { "", false } } },
    };
    for (const auto& [text, fields] : rows)
        EXPECT_EQ(FieldsOf(text, '\t', static_cast<int>(fields.size())), fields);
    // Of several delimiters any ends a field, and the rest stays.
    EXPECT_EQ(FieldsOf("1.5,2;x", ",;", 4),
        (Fields { { "1.5", true }, { "2", true }, { "x", false }, { "x", false } }));
    EXPECT_EQ(FieldsOf("ab", static_cast<const char*>(nullptr), 1), (Fields { { "ab", false } }));
}

TEST(LibStringIterator, FieldOfAnIndexIsOneThatComesWithTrue)
{
    LibStringIterator reader("x,yz,w");
    LibString field("kept");
    EXPECT_FALSE(reader.GetIndexField(',', 2, field));
    EXPECT_STREQ(field, "kept");
    EXPECT_TRUE(reader.GetIndexField(',', 1, field)); // it starts over by itself
    EXPECT_STREQ(field, "yz");
}
