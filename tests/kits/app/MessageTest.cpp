#include "tests/support/Test.h"

#include <Entry.h>
#include <Message.h>

#include <type_traits>

namespace {

template <typename A, typename B>
bool Same(const A& a, const B& b)
{
    return a == b;
}

bool Same(const char* a, const char* b)
{
    return strcmp(a, b) == 0;
}

bool Same(const entry_ref* a, const entry_ref& b)
{
    return *a == b && a->directoryPath == b.directoryPath;
}

bool Same(const BMessage* a, const BMessage& b)
{
    return a->what == b.what;
}

BMessage FlattenedAndBack(const BMessage& message)
{
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));
    BMessage result;
    EXPECT_EQ(message.Flatten(bytes.data(), message.FlattenedSize()), B_OK);
    EXPECT_EQ(result.Unflatten(bytes.data(), ssize_t(bytes.size())), B_OK);
    return result;
}

// Two values of a type are found as they were added, also in a copy and after flattening.
template <typename In, typename Out>
void CheckType(type_code code, status_t (BMessage::*add)(const char*, In),
    status_t (BMessage::*find)(const char*, int32, Out*) const, std::type_identity_t<In> first,
    std::type_identity_t<In> second)
{
    BMessage message('what');
    EXPECT_EQ((message.*add)("x", first), B_OK);
    EXPECT_EQ((message.*add)("x", second), B_OK);
    for (const BMessage& each : { message, BMessage(message), FlattenedAndBack(message) }) {
        EXPECT_EQ(each.what, uint32('what'));
        Out found[2] {};
        EXPECT_EQ((each.*find)("x", 0, &found[0]), B_OK);
        EXPECT_EQ((each.*find)("x", 1, &found[1]), B_OK);
        EXPECT_TRUE(Same(first, found[0]) && Same(second, found[1]));
        type_code type = 0;
        EXPECT_EQ(each.GetInfo("x", &type), B_OK);
        EXPECT_EQ(type, code);
    }
}

} // namespace

#define CHECK_TYPE(Name, code, first, second)                                                      \
    {                                                                                              \
        SCOPED_TRACE(#Name);                                                                       \
        CheckType(code, &BMessage::Add##Name, &BMessage::Find##Name, first, second);               \
    }

TEST(Message, HoldsValuesOfEveryType)
{
    const entry_ref refs[] = { { 3, 4, "leaf" }, { 3, 4, nullptr } };
    const BMessage messages[] = { BMessage('abcd'), BMessage('efgh') };
    CHECK_TYPE(Bool, B_BOOL_TYPE, true, false);
    CHECK_TYPE(Int32, B_INT32_TYPE, INT32_MIN, 1);
    CHECK_TYPE(Int64, B_INT64_TYPE, INT64_MIN, 1);
    CHECK_TYPE(Float, B_FLOAT_TYPE, 0.1f, -1e30f);
    CHECK_TYPE(String, B_STRING_TYPE, "", "a longer text than fits into a short one");
    CHECK_TYPE(Rect, B_RECT_TYPE, BRect(1, 2, 3, 4.5f), BRect());
    CHECK_TYPE(Pointer, B_POINTER_TYPE, messages, refs);
    CHECK_TYPE(Ref, B_REF_TYPE, &refs[0], &refs[1]);
    CHECK_TYPE(Message, B_MESSAGE_TYPE, &messages[0], &messages[1]);
}

TEST(Message, TellsAWrongNameIndexAndTypeAndChangesNothing)
{
    BMessage message;
    message.AddData("other", 'othr', "abcd", 4);
    message.AddInt32("x", 5);
    const BMessage copy(message);
    int32 found = 0;
    EXPECT_EQ(message.FindInt32("other", &found), B_BAD_TYPE);
    EXPECT_EQ(message.AddInt32("other", 1), B_BAD_TYPE);
    EXPECT_EQ(message.FindInt32("none", &found), B_NAME_NOT_FOUND);
    for (const int32 index : { -1, 1 }) {
        EXPECT_EQ(message.FindInt32("x", index, &found), B_BAD_INDEX);
        EXPECT_FALSE(message.HasInt32("x", index));
    }
    EXPECT_EQ(message.FindInt32("x", &found), B_OK);
    EXPECT_EQ(found, 5);
    EXPECT_EQ(message.MakeEmpty(), B_OK);
    EXPECT_EQ(copy.FindInt32("x", &found), B_OK);
    EXPECT_EQ(found, 5) << "the copy has fields of its own";
}

TEST(Message, DataThatIsNoValueOfItsTypeIsNotFound)
{
    BMessage message;
    message.AddData("number", B_INT32_TYPE, "abc", 3);
    message.AddData("ref", B_REF_TYPE, "0123456701234567/tmp", 21, false); // no name
    message.AddData("truth", B_BOOL_TYPE, "\x02", 1);
    int32 number = 17;
    EXPECT_EQ(message.FindInt32("number", &number), B_BAD_VALUE);
    EXPECT_EQ(number, 17);
    entry_ref ref;
    EXPECT_EQ(message.FindRef("ref", &ref), B_BAD_VALUE);
    bool truth = false;
    EXPECT_EQ(message.FindBool("truth", &truth), B_OK);
    EXPECT_TRUE(truth);
}

TEST(Message, DataKeepsItsSizeWhereTheFieldIsOfFixedSize)
{
    BMessage message;
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, "four", 4), B_OK);
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, "long!", 5), B_BAD_VALUE);
    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData("color", B_ANY_TYPE, &data, &size), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), size_t(size)), "four");
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, nullptr, 0, false), B_OK);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, "longer", 7, false), B_OK);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, nullptr, 1, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, "x", -1, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddBool(std::string(255, 'n').c_str(), true), B_OK);
    EXPECT_EQ(message.AddBool(std::string(256, 'n').c_str(), true), B_BAD_VALUE);
}
