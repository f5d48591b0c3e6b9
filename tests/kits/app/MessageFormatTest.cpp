#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "kits/app/MessageFormat.h"
#include <Message.h>

namespace {

thread_local size_t tAllocated = 0;

} // namespace

// Counts what reading a message costs.
void* operator new(size_t size)
{
    tAllocated += size;
    if (void* memory = malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    free(memory);
}

void operator delete(void* memory, size_t) noexcept
{
    free(memory);
}

namespace {

std::string Flat(const BMessage& message)
{
    std::string bytes(size_t(message.FlattenedSize()), '\0');
    EXPECT_EQ(message.Flatten(bytes.data(), ssize_t(bytes.size())), B_OK);
    return bytes;
}

std::string WithRightChecksum(std::string bytes)
{
    if (bytes.size() < kFlatHeaderSize)
        return bytes;
    const uint32 checksum = FlatChecksum(bytes);
    return bytes.replace(kFlatChecksumOffset, 4, reinterpret_cast<const char*>(&checksum), 4);
}

std::string WithNumber(std::string bytes, size_t offset, uint64 number, size_t size)
{
    return bytes.replace(offset, size, reinterpret_cast<const char*>(&number), size);
}

// Everything that can go into a message, two messages deep.
BMessage FullMessage()
{
    BMessage inner('innr');
    inner.AddString("text", "inside");
    BMessage message('full');
    message.AddMessage("inner", &inner);
    message.AddMessage("inner", &message);
    for (const char* text : { "", "one", "a text of more than fifteen bytes" })
        message.AddString("texts", text);
    for (int32 i = 0; i < 5; ++i)
        message.AddInt32("numbers", i);
    message.AddRect("rect", BRect(1, 2, 3, 4));
    message.AddData("raw", B_RAW_TYPE, nullptr, 0, false);
    return message;
}

} // namespace

// Attributes are read again by later versions, on any machine.
TEST(MessageFormat, TheBytesOfAMessageNeverChange)
{
    BMessage message('Abcd');
    message.AddInt16("n", 0x0102);
    message.AddInt16("n", 3);
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
    const auto with = [&](size_t offset, uint64 number, size_t size = 4) {
        return WithRightChecksum(WithNumber(good, offset, number, size));
    };
    const struct {
        const char* name;
        std::string bytes;
        status_t status;
    } rows[] = {
        { "whole", good, B_OK },
        { "more bytes than needed", good + "more", B_OK },
        { "nothing", "", B_BAD_VALUE },
        { "no message", std::string(100, 'x'), B_BAD_VALUE },
        { "smaller than its header", with(kFlatSizeOffset, 8, 8), B_BAD_VALUE },
        { "last byte missing", good.substr(0, good.size() - 1), B_MISMATCHED_VALUES },
        { "size without end", with(kFlatSizeOffset, UINT64_MAX, 8), B_MISMATCHED_VALUES },
        { "one bit wrong", WithNumber(good, good.size() - 1, 1, 1), B_MISMATCHED_VALUES },
        { "more fields than bytes", with(20, UINT32_MAX), B_MISMATCHED_VALUES },
        { "neither fixed nor not", with(28, 2), B_MISMATCHED_VALUES },
        { "name longer than allowed", with(32, 256), B_MISMATCHED_VALUES },
        { "name with NUL", with(41, 0, 1), B_MISMATCHED_VALUES },
        { "no items", with(36, 0), B_MISMATCHED_VALUES },
        { "more items than bytes", with(36, UINT32_MAX), B_MISMATCHED_VALUES },
        { "item longer than the rest", with(44, 5), B_MISMATCHED_VALUES },
        { "item shorter than the rest", with(44, 3), B_MISMATCHED_VALUES },
        { "fixed size with two sizes", WithRightChecksum(WithNumber(Flat(sizes), 28, 1, 1)),
            B_MISMATCHED_VALUES },
        { "a name twice", WithRightChecksum(WithNumber(Flat(two), 62, 'x', 1)),
            B_MISMATCHED_VALUES },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        BMessage message;
        message.AddBool("before", true);
        EXPECT_EQ(message.Unflatten(row.bytes.data(), ssize_t(row.bytes.size())), row.status);
        EXPECT_EQ(message.HasInt32("abcd"), row.status == B_OK);
        EXPECT_FALSE(message.HasBool("before"));
        EXPECT_EQ(message.IsEmpty(), row.status != B_OK);
    }
    EXPECT_EQ(BMessage().Unflatten(nullptr), B_BAD_VALUE);
    EXPECT_EQ(BMessage().Unflatten(good.data()), B_OK);
}

TEST(MessageFormat, HundredThousandDamagedMessagesAreReadWithoutFaultOrGreed)
{
    std::mt19937 random(20001116);
    const std::string good = Flat(FullMessage());
    int readable = 0;
    for (int i = 0; i < 100000; ++i) {
        std::string bytes = good;
        if (i % 4 == 0) {
            bytes.assign(random() % 200, '\0');
            std::generate(bytes.begin(), bytes.end(), [&] { return char(random()); });
            bytes.replace(0, std::min<size_t>(bytes.size(), 4), "1MVT", 4);
        } else if (i % 4 == 1) {
            bytes.resize(random() % good.size());
        }
        for (uint32 flips = random() % 4; flips > 0 && !bytes.empty(); --flips)
            bytes[random() % bytes.size()] ^= char(1 << random() % 8);
        if (i % 4 == 3) // a length that may be anything
            bytes = WithNumber(bytes, random() % (bytes.size() - 4), random() >> random() % 32, 4);
        if (i % 8 < 6 && bytes.size() >= kFlatHeaderSize)
            bytes = WithRightChecksum(WithNumber(bytes, kFlatSizeOffset, bytes.size(), 8));

        // Exactly as long as the bytes, so that the sanitizers see a step beyond them.
        const std::vector<char> exact(bytes.begin(), bytes.end());
        BMessage message;
        tAllocated = 0;
        const status_t status = message.Unflatten(exact.data(), ssize_t(exact.size()));
        ASSERT_LE(tAllocated, 64 * bytes.size() + 4096);
        if (status != B_OK) {
            ASSERT_TRUE(message.IsEmpty());
            continue;
        }
        ++readable;
        BMessage inner;
        message.FindMessage("inner", 1, &inner);
        ASSERT_EQ(Flat(message), bytes.substr(0, size_t(message.FlattenedSize())));
    }
    EXPECT_GT(readable, 10000) << "damage inside of values is no damage to the message";
    EXPECT_LT(readable, 90000);
}

TEST(MessageFormat, OfManyMessagesInsideEachOtherTheOutermostArePrinted)
{
    BMessage message(1);
    for (int depth = 0; depth < 300; ++depth) {
        const BMessage inner(message);
        message.MakeEmpty();
        message.AddMessage("m", &inner);
    }
    testing::internal::CaptureStdout();
    message.PrintToStream();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2 * 17) << "the outermost 17";
}
