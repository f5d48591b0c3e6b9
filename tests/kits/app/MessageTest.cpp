#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Entry.h>
#include <GraphicsDefs.h>
#include <Looper.h>
#include <Message.h>

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
    std::vector<char> bytes(size_t(message.FlattenedSize()));
    BMessage result;
    EXPECT_EQ(message.Flatten(bytes.data(), message.FlattenedSize()), B_OK);
    EXPECT_EQ(result.Unflatten(bytes.data(), ssize_t(bytes.size())), B_OK);
    return result;
}

// The functions that BMessage has for one type of field.
template <typename In, typename Out>
struct Type {
    type_code code;
    status_t (BMessage::*add)(const char*, In);
    status_t (BMessage::*find)(const char*, int32, Out*) const;
    bool (BMessage::*has)(const char*, int32) const;
    status_t (BMessage::*replace)(const char*, int32, In);

    // 1 if another value than the expected one is found.
    status_t Find(const BMessage& message, const char* name, int32 index, In expected) const
    {
        Out found {};
        const status_t status = (message.*find)(name, index, &found);
        return status == B_OK ? !Same(expected, found) : status;
    }

    void CheckIsFoundAsAddedAlsoInACopyAndAfterFlattening(In first, In second) const
    {
        BMessage message('what');
        EXPECT_EQ((message.*add)("x", first), B_OK);
        EXPECT_EQ((message.*add)("x", second), B_OK);
        const BMessage copy(message);
        for (const BMessage& each : { message, copy, FlattenedAndBack(message) }) {
            EXPECT_EQ(each.what, uint32('what'));
            EXPECT_EQ(Find(each, "x", 0, first), B_OK);
            EXPECT_EQ(Find(each, "x", 1, second), B_OK);
            EXPECT_TRUE((each.*has)("x", 1));
            type_code type = 0;
            int32 count = 0;
            EXPECT_EQ(each.GetInfo("x", &type, &count), B_OK);
            EXPECT_EQ(type, code);
            EXPECT_EQ(count, 2);
        }
        EXPECT_EQ((message.*replace)("x", 1, first), B_OK);
        EXPECT_EQ(Find(message, "x", 1, first), B_OK);
        EXPECT_EQ(Find(copy, "x", 1, second), B_OK) << "the copy has fields of its own";
    }

    void CheckTellsAWrongNameIndexAndType(In first, In second) const
    {
        BMessage message;
        message.AddData("other", 'othr', "abcdefgh", 8);
        EXPECT_EQ(Find(message, "other", 0, first), B_BAD_TYPE);
        EXPECT_FALSE((message.*has)("other", 0));
        EXPECT_EQ((message.*add)("other", first), B_BAD_TYPE);
        EXPECT_EQ((message.*replace)("other", 0, first), B_BAD_TYPE);
        EXPECT_EQ(Find(message, "x", 0, first), B_NAME_NOT_FOUND);
        EXPECT_EQ((message.*replace)("x", 0, first), B_NAME_NOT_FOUND);
        EXPECT_EQ((message.*add)("x", first), B_OK);
        for (const int32 index : { -1, 1 }) {
            EXPECT_EQ(Find(message, "x", index, first), B_BAD_INDEX);
            EXPECT_FALSE((message.*has)("x", index));
            EXPECT_EQ((message.*replace)("x", index, second), B_BAD_INDEX);
        }
        EXPECT_EQ(Find(message, "x", 0, first), B_OK) << "the failures changed nothing";
        EXPECT_EQ((message.*add)(nullptr, first), B_BAD_VALUE);
        EXPECT_EQ(Find(message, nullptr, 0, first), B_BAD_VALUE);
    }
};

template <typename In, typename Out>
Type(type_code, status_t (BMessage::*)(const char*, In),
    status_t (BMessage::*)(const char*, int32, Out*) const,
    bool (BMessage::*)(const char*, int32) const, status_t (BMessage::*)(const char*, int32, In))
    -> Type<In, Out>;

} // namespace

#define CHECK_TYPE(Name, code, first, second)                                                      \
    {                                                                                              \
        SCOPED_TRACE(#Name);                                                                       \
        const Type type { code, &BMessage::Add##Name, &BMessage::Find##Name, &BMessage::Has##Name, \
            &BMessage::Replace##Name };                                                            \
        type.CheckIsFoundAsAddedAlsoInACopyAndAfterFlattening(first, second);                      \
        type.CheckTellsAWrongNameIndexAndType(first, second);                                      \
    }

TEST(Message, HoldsValuesOfEveryType)
{
    const entry_ref refs[] = { { 3, 4, "leaf" }, { 3, 4, nullptr } };
    const BMessage messages[] = { BMessage('abcd'), BMessage('efgh') };
    BLooper* looper = new BLooper("target");
    CHECK_TYPE(Bool, B_BOOL_TYPE, true, false);
    CHECK_TYPE(Int8, B_INT8_TYPE, -128, 127);
    CHECK_TYPE(UInt8, B_UINT8_TYPE, 255, 0);
    CHECK_TYPE(Int16, B_INT16_TYPE, -32768, 1);
    CHECK_TYPE(UInt16, B_UINT16_TYPE, 65535, 1);
    CHECK_TYPE(Int32, B_INT32_TYPE, INT32_MIN, 1);
    CHECK_TYPE(UInt32, B_UINT32_TYPE, UINT32_MAX, 1);
    CHECK_TYPE(Int64, B_INT64_TYPE, INT64_MIN, 1);
    CHECK_TYPE(UInt64, B_UINT64_TYPE, UINT64_MAX, 1);
    CHECK_TYPE(Float, B_FLOAT_TYPE, 0.1f, -1e30f);
    CHECK_TYPE(Double, B_DOUBLE_TYPE, 0.1, -1e300);
    CHECK_TYPE(String, B_STRING_TYPE, "", "a longer text than fits into a short one");
    CHECK_TYPE(Point, B_POINT_TYPE, BPoint(1.5f, -2), BPoint());
    CHECK_TYPE(Rect, B_RECT_TYPE, BRect(1, 2, 3, 4.5f), BRect());
    CHECK_TYPE(Pointer, B_POINTER_TYPE, looper, refs);
    CHECK_TYPE(Messenger, B_MESSENGER_TYPE, BMessenger(looper), BMessenger(nullptr, looper));
    CHECK_TYPE(Ref, B_REF_TYPE, &refs[0], &refs[1]);
    CHECK_TYPE(Message, B_MESSAGE_TYPE, &messages[0], &messages[1]);
    looper->Quit();
}

TEST(Message, DataThatIsNoValueOfItsTypeIsNotFound)
{
    BMessage message;
    message.AddData("number", B_INT32_TYPE, "abc", 3);
    message.AddData("ref", B_REF_TYPE, "0123456701234567/tmp", 21, false); // no name
    message.AddData("message", B_MESSAGE_TYPE, "abc", 3, false);
    message.AddData("truth", B_BOOL_TYPE, "\x02", 1);
    message.AddData("text", B_STRING_TYPE, "abc", 3, false); // no NUL
    int32 number = 17;
    EXPECT_EQ(message.FindInt32("number", &number), B_BAD_VALUE);
    EXPECT_EQ(number, 17);
    entry_ref ref;
    EXPECT_EQ(message.FindRef("ref", &ref), B_BAD_VALUE);
    BMessage inner;
    inner.AddBool("old", true);
    EXPECT_EQ(message.FindMessage("message", &inner), B_BAD_VALUE);
    EXPECT_TRUE(inner.IsEmpty());
    bool truth = false;
    EXPECT_EQ(message.FindBool("truth", &truth), B_OK);
    EXPECT_EQ(truth, true);
    const char* text = nullptr;
    EXPECT_EQ(message.FindString("text", &text), B_OK);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(message.FindString("none", &text), B_NAME_NOT_FOUND);
    EXPECT_EQ(text, nullptr);
}

TEST(Message, DataKeepsItsSizeWhereTheFieldIsOfFixedSize)
{
    BMessage message;
    const rgb_color color { 1, 2, 3, 4 };
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, &color, sizeof(color)), B_OK);
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, "long", 5), B_BAD_VALUE);
    EXPECT_EQ(message.ReplaceData("color", B_RGB_COLOR_TYPE, "long", 5), B_BAD_VALUE);
    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData("color", B_ANY_TYPE, &data, &size), B_OK);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(*static_cast<const rgb_color*>(data), color);
    EXPECT_EQ(message.FindData("color", B_RAW_TYPE, &data, &size), B_BAD_TYPE);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, nullptr, 0, false), B_OK);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, "longer", 7, false), B_OK);
    bool isFixed = true;
    EXPECT_EQ(message.GetInfo("raw", nullptr, &isFixed), B_OK);
    EXPECT_FALSE(isFixed);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, nullptr, 1, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("raw", B_RAW_TYPE, "x", -1, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddBool(std::string(255, 'n').c_str(), true), B_OK);
    EXPECT_EQ(message.AddBool(std::string(256, 'n').c_str(), true), B_BAD_VALUE);
}

TEST(Message, NamesAreCountedByTypeAndGoWithTheirLastValue)
{
    BMessage message('keep');
    EXPECT_EQ(message.GetInfo(B_ANY_TYPE, 0, nullptr, nullptr), B_BAD_INDEX);
    message.AddInt32("a", 1);
    message.AddBool("b", true);
    message.AddInt32("c", 2);
    message.AddInt32("c", 3);
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 3);
    EXPECT_EQ(message.CountNames(B_INT32_TYPE), 2);
    char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    EXPECT_EQ(message.GetInfo(B_INT32_TYPE, 1, &name, &type, &count), B_OK);
    EXPECT_STREQ(name, "c");
    EXPECT_EQ(count, 2);
    EXPECT_EQ(message.GetInfo(B_INT32_TYPE, 2, &name, &type), B_BAD_INDEX);
    EXPECT_EQ(message.GetInfo(B_FLOAT_TYPE, 0, &name, &type), B_BAD_TYPE);

    EXPECT_EQ(message.RemoveData("c", 2), B_BAD_INDEX);
    EXPECT_EQ(message.RemoveData("c", 0), B_OK);
    int32 value = 0;
    EXPECT_EQ(message.FindInt32("c", &value), B_OK);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(message.RemoveData("c"), B_OK);
    EXPECT_EQ(message.RemoveData("c"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.RemoveName("a"), B_OK);
    EXPECT_EQ(message.RemoveName("a"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
    message.MakeEmpty();
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(message.what, uint32('keep'));
}

TEST(Message, PrintsALineForEachFieldAndTheFieldsOfInnerMessages)
{
    BMessage inner(7);
    inner.AddBool("truth", true);
    BMessage message('Abcd');
    message.AddInt32("numbers", 1);
    message.AddInt32("numbers", 2);
    message.AddMessage("inner", &inner);
    testing::internal::CaptureStdout();
    message.PrintToStream();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "BMessage: what = 'Abcd' (0x41626364, or 1096967012)\n"
        "#entry numbers, type = 'LONG', count = 2\n"
        "#entry inner, type = 'MSGG', count = 1\n"
        "    BMessage: what = '....' (0x7, or 7)\n"
        "    #entry truth, type = 'BOOL', count = 1\n");
}
