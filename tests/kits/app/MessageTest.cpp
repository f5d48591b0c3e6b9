#include "TestLooper.h"

#include <Entry.h>
#include <Message.h>

#include <climits>
#include <type_traits>

using namespace std::string_literals;

namespace {

template <typename A, typename B>
bool Same(const A& a, const B& b)
{
    if constexpr (std::is_same_v<B, const char*>)
        return strcmp(a, b) == 0;
    else
        return a == b;
}

bool Same(const entry_ref* a, const entry_ref& b)
{
    return *a == b && a->directoryPath == b.directoryPath;
}

bool Same(const BMessage* a, const BMessage& b)
{
    return a->what == b.what && a->IsEmpty() == b.IsEmpty();
}

BMessage FlattenedAndBack(const BMessage& message)
{
    const std::string bytes = Flat(message);
    BMessage result;
    EXPECT_EQ(result.Unflatten(bytes.data(), ssize_t(bytes.size())), B_OK);
    return result;
}

// Two values of a type are found as they were added, also in a copy and after flattening.
template <typename In, typename Out>
void CheckType(type_code code, status_t (BMessage::*add)(const char*, In),
    status_t (BMessage::*findFirst)(const char*, Out*) const,
    status_t (BMessage::*find)(const char*, int32, Out*) const,
    bool (BMessage::*has)(const char*, int32) const, std::type_identity_t<In> first,
    std::type_identity_t<In> second)
{
    BMessage message('what');
    message.AddData("other", 'othr', "abcd", 4);
    EXPECT_EQ((message.*add)("x", first), B_OK);
    EXPECT_EQ((message.*add)("x", second), B_OK);
    for (const BMessage& each : { message, BMessage(message), FlattenedAndBack(message) }) {
        EXPECT_EQ(each.what, uint32('what'));
        Out found[3] {};
        EXPECT_EQ((each.*findFirst)("x", &found[0]), B_OK);
        EXPECT_EQ((each.*find)("x", 1, &found[1]), B_OK);
        EXPECT_TRUE(Same(first, found[0]) && Same(second, found[1]));
        EXPECT_EQ((each.*find)("x", 2, &found[2]), B_BAD_INDEX);
        EXPECT_EQ((each.*find)("x", 1, nullptr), B_BAD_VALUE);
        EXPECT_EQ((each.*findFirst)(nullptr, &found[2]), B_BAD_VALUE);
        EXPECT_EQ((each.*findFirst)("other", &found[2]), B_BAD_TYPE);
        for (const int32 index : { -1, 0, 1, 2 })
            EXPECT_EQ((each.*has)("x", index), index == 0 || index == 1);
        type_code type = 0;
        int32 count = 0;
        EXPECT_EQ(each.GetInfo("x", &type, &count), B_OK);
        EXPECT_TRUE(type == code && count == 2);
    }
}

} // namespace

#define CHECK_TYPE(Name, code, first, second)                                                      \
    {                                                                                              \
        SCOPED_TRACE(#Name);                                                                       \
        CheckType(code, &BMessage::Add##Name, &BMessage::Find##Name, &BMessage::Find##Name,        \
            &BMessage::Has##Name, first, second);                                                  \
    }

TEST(Message, HoldsValuesOfEveryType)
{
    const entry_ref refs[] = { { 3, 4, "leaf" }, { 3, 5, nullptr } };
    BMessage messages[] = { BMessage('abcd'), BMessage('efgh') };
    messages[0].AddBool("x", false);
    CHECK_TYPE(Bool, B_BOOL_TYPE, true, false);
    CHECK_TYPE(Int32, B_INT32_TYPE, INT32_MIN, 1);
    CHECK_TYPE(Int64, B_INT64_TYPE, INT64_MIN, 1);
    CHECK_TYPE(Float, B_FLOAT_TYPE, 0.1f, -1e30f);
    CHECK_TYPE(String, B_STRING_TYPE, "", "a longer text than fits into a short one");
    CHECK_TYPE(Point, B_POINT_TYPE, BPoint(1, 2.5f), BPoint(-3, 4));
    CHECK_TYPE(Rect, B_RECT_TYPE, BRect(1, 2, 3, 4.5f), BRect());
    CHECK_TYPE(Pointer, B_POINTER_TYPE, messages, refs);
    CHECK_TYPE(Ref, B_REF_TYPE, &refs[0], &refs[1]);
    CHECK_TYPE(Message, B_MESSAGE_TYPE, &messages[0], &messages[1]);
}

TEST(Message, TellsWhatIsWrongAndChangesNothing)
{
    BMessage message;
    message.AddInt32("x", 5);
    message.AddData("color", B_RGB_COLOR_TYPE, "four", 4);
    message.AddData("number", B_INT32_TYPE, "abc", 3);
    message.AddData("truth", B_BOOL_TYPE, "\x02", 1);
    message.AddData("raw", B_RAW_TYPE, nullptr, 0, false);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, "longer", 7, false), B_OK);
    // Not two numbers of 8 bytes and two texts: cut in the numbers or texts, or with more behind.
    for (const std::string& bytes : { "1234567"s, "0123456701234567"s, "0123456701234567/tmp"s,
             "0123456701234567/tmp\0a"s, "0123456701234567/tmp\0a\0b\0"s })
        message.AddData("ref", B_REF_TYPE, bytes.data(), static_cast<ssize_t>(bytes.size()), false);
    const std::string longest(255, 'n');
    EXPECT_EQ(message.AddBool(longest.c_str(), true), B_OK);
    const BMessage copy(message);
    const std::string before = Flat(message);

    int32 number = 17;
    const char* text = "old";
    const void* data = "old";
    ssize_t size = 3;
    char* name = nullptr;
    type_code type = 0;
    entry_ref ref;
    BMessage inner(1);
    inner.AddBool("old", true);
    ExpectAll(B_BAD_VALUE,
        { message.AddInt32(nullptr, 1), message.AddData("color", B_RGB_COLOR_TYPE, "long!", 5),
            message.AddData("raw", B_RAW_TYPE, nullptr, 1, false),
            message.AddData("raw", B_RAW_TYPE, "x", -1, false),
            message.AddData("raw", B_RAW_TYPE, "x", ssize_t { INT_MAX } + 1, false),
            message.AddBool((longest + "n").c_str(), true), message.AddString("s", nullptr),
            message.AddRef("r", nullptr), message.AddMessage("m", nullptr),
            message.RemoveName(nullptr), message.FindInt32("number", &number),
            message.GetInfo(nullptr, &type), message.Flatten(nullptr, 1000) });
    ExpectAll(B_BAD_TYPE,
        { message.AddInt32("color", 1), message.FindString("x", &text),
            message.FindMessage("x", &inner), message.GetInfo(B_FLOAT_TYPE, 0, &name, &type) });
    ExpectAll(B_NAME_NOT_FOUND,
        { message.RemoveName("none"), message.FindInt32("none", &number),
            message.GetInfo("none", &type) });
    ExpectAll(B_BAD_INDEX,
        { message.FindInt32("x", -1, &number), message.FindData("x", B_ANY_TYPE, 1, &data, &size),
            message.GetInfo(B_ANY_TYPE, 7, &name, &type),
            message.GetInfo(B_ANY_TYPE, -1, &name, &type),
            message.GetInfo(B_BOOL_TYPE, 2, &name, &type),
            message.GetInfo(B_RGB_COLOR_TYPE, 1, &name, &type) });
    for (int32 i = 0; i < 5; i++)
        EXPECT_EQ(message.FindRef("ref", i, &ref), B_BAD_VALUE) << i;
    EXPECT_TRUE(number == 17 && type == 0 && name == nullptr);
    EXPECT_TRUE(!text && !data && size == 0 && inner.IsEmpty()) << "no longer what they were";
    EXPECT_TRUE(Flat(message) == before && Flat(FlattenedAndBack(message)) == before);

    bool truth = false;
    int32 count = 0;
    EXPECT_EQ(message.FindBool("truth", &truth), B_OK);
    EXPECT_TRUE(truth);
    EXPECT_EQ(message.GetInfo(B_BOOL_TYPE, 1, &name, &type, &count), B_OK);
    EXPECT_EQ(longest, name);
    EXPECT_TRUE(type == B_BOOL_TYPE && count == 1);
    EXPECT_EQ(message.CountNames(B_BOOL_TYPE) + 10 * message.CountNames(B_ANY_TYPE), 72);
    EXPECT_EQ(message.FindData("raw", B_ANY_TYPE, 1, &data, &size), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), size_t(size)), std::string("longer", 7));
    EXPECT_TRUE(message.MakeEmpty() == B_OK && message.IsEmpty());
    EXPECT_EQ(Flat(copy), before) << "the copy has fields of its own";
}
