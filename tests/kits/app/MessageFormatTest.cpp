#include "MessageBody.h"
#include "TestLooper.h"
#include "tests/support/Rows.h"

namespace {

std::string WithRightChecksum(std::string bytes)
{
    const uint32 checksum = FlatChecksum(bytes);
    return bytes.replace(kFlatChecksumOffset, 4, reinterpret_cast<const char*>(&checksum), 4);
}

std::string WithNumber(std::string bytes, size_t offset, uint64 number, size_t size)
{
    return bytes.replace(offset, size, reinterpret_cast<const char*>(&number), size);
}

} // namespace

// Attributes are read again by later versions, on any machine.
TEST(MessageFormat, TheBytesOfAMessageNeverChange)
{
    BMessage message('Abcd');
    for (const char* bytes : { "\x02\x01", "\x03\0" })
        message.AddData("n", B_INT16_TYPE, bytes, 2);
    message.AddString("s", "x");
    using namespace std::string_literals;
    EXPECT_EQ(Flat(message),
        WithRightChecksum("1MVT----\x4c\0\0\0\0\0\0\0dcbA\x02\0\0\0"
                          "TRHS\x01\0\0\0\x01\0\0\0\x02\0\0\0n\x02\0\0\0\x02\x01\x02\0\0\0\x03\0"
                          "RTSC\0\0\0\0\x01\0\0\0\x01\0\0\0s\x02\0\0\0x\0"s));
    EXPECT_EQ(FlatChecksum("--------123456789"), 0xcbf43926u) << "CRC-32";
    EXPECT_EQ(message.Flatten(Flat(message).data(), message.FlattenedSize() - 1), B_BAD_VALUE);
}

TEST(MessageFormat, DamagedBytesGiveAnErrorAndAnEmptyMessage)
{
    BMessage small('smal');
    small.AddInt32("abcd", 1); // field at 24: type, fixed, name length 32, count 36, name, item 44
    BMessage two('two ');
    two.AddBool("x", true);
    two.AddBool("y", true); // its name is the byte 24 + 16 + 1 + 5 + 16
    BMessage sizes('size');
    sizes.AddString("x", "one");
    sizes.AddString("x", "three");
    const std::string good = Flat(small);
    std::vector<std::tuple<std::string, std::string, status_t>> rows = { { "whole", good, B_OK },
        { "more bytes than needed", good + "more", B_OK },
        { "no message", std::string(100, 'x'), B_BAD_VALUE },
        { "smaller than its header", WithNumber(good, kFlatSizeOffset, 23, 8), B_BAD_VALUE },
        { "last byte missing", good.substr(0, good.size() - 1), B_MISMATCHED_VALUES },
        { "one bit wrong", WithNumber(good, good.size() - 1, 1, 1), B_MISMATCHED_VALUES } };
    for (const Row& row : RowsOf("kits/app/data/damages.txt", 4)) {
        std::string bytes = Flat(row[1] == "small" ? small : row[1] == "two" ? two : sizes);
        bytes.replace(std::stoul(row[2]), row[3].size(), row[3]);
        rows.emplace_back(row[0], WithRightChecksum(bytes), B_MISMATCHED_VALUES);
    }
    for (const auto& [name, bytes, status] : rows) {
        SCOPED_TRACE(name);
        BMessage message;
        message.AddBool("before", true);
        EXPECT_EQ(message.Unflatten(bytes.data(), ssize_t(bytes.size())), status);
        EXPECT_EQ(message.HasInt32("abcd"), status == B_OK);
        EXPECT_EQ(message.IsEmpty(), status != B_OK);
    }
    for (size_t size = 0; size < good.size(); size++) { // cut anywhere, and said to be so long
        std::string cut = good.substr(0, size);
        if (size >= kFlatHeaderSize)
            cut = WithRightChecksum(WithNumber(cut, kFlatSizeOffset, size, 8));
        EXPECT_EQ(BMessage().Unflatten(cut.data(), ssize_t(size)),
            size < kFlatHeaderSize ? B_BAD_VALUE : B_MISMATCHED_VALUES)
            << size;
    }
    EXPECT_EQ(BMessage().Unflatten(nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(BMessage().Unflatten(good.data(), -1), B_BAD_VALUE);
}

TEST(MessageFormat, PrintsALineForEachFieldOfTheOutermostMessages)
{
    BMessage inner(0x41ff0020);
    inner.AddInt32("n", 1);
    inner.AddInt32("n", 2);
    BMessage message('Abcd');
    message.AddString("s", "x");
    message.AddMessage("m", &inner);
    message.AddData("m", B_MESSAGE_TYPE, "x", 1, false); // not one
    const auto printed = [&message] {
        testing::internal::CaptureStdout();
        message.PrintToStream();
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(printed(),
        "BMessage: what = 'Abcd' (0x41626364, or 1096967012)\n"
        "#entry s, type = 'CSTR', count = 1\n"
        "#entry m, type = 'MSGG', count = 2\n"
        "    BMessage: what = 'A.. ' (0x41ff0020, or 1107230752)\n"
        "    #entry n, type = 'LONG', count = 2\n");
    for (int depth = 0; depth < 300; ++depth) {
        inner = message;
        message.MakeEmpty();
        message.AddMessage("m", &inner);
    }
    const std::string deep = printed();
    EXPECT_EQ(std::count(deep.begin(), deep.end(), '\n'), 2 * 17) << "the outermost 17";
}
