// The bytes are a flattened message, as they are and with magic, size and checksum put right, as
// no fuzzer guesses them.
#include "MessageBody.h"
#include "tests/fuzz/Require.h"

#include <Message.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

static size_t gAllocated = 0;

// Counts what reading a message costs.
void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    gAllocated += size;
    return malloc(size ? size : 1);
}

void* operator new(size_t size)
{
    if (void* memory = operator new(size, std::nothrow))
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

std::string WithRightHeader(std::string bytes)
{
    if (bytes.size() < kFlatHeaderSize)
        return bytes;
    const uint64 size = bytes.size();
    memcpy(bytes.data(), &kFlatMagic, sizeof(kFlatMagic));
    memcpy(bytes.data() + kFlatSizeOffset, &size, sizeof(size));
    const uint32 checksum = FlatChecksum(bytes);
    memcpy(bytes.data() + kFlatChecksumOffset, &checksum, sizeof(checksum));
    return bytes;
}

void CheckItem(const BMessage& message, const char* name, int32 index)
{
    const void* data = nullptr;
    ssize_t size = 0;
    Require(message.FindData(name, B_ANY_TYPE, index, &data, &size) == B_OK && size >= 0,
        "every item is found");
    const char* text = nullptr;
    if (message.FindString(name, index, &text) == B_OK)
        Require(strlen(text) <= static_cast<size_t>(size), "a string ends");
    int64 number = 0;
    BRect rect;
    [[maybe_unused]] const status_t found =
        message.FindInt64(name, index, &number) | message.FindRect(name, index, &rect);
    BMessage inner;
    if (message.FindMessage(name, index, &inner) != B_OK)
        Require(inner.IsEmpty(), "a damaged message inside is empty");
    const std::string repaired =
        WithRightHeader(std::string(static_cast<const char*>(data), static_cast<size_t>(size)));
    [[maybe_unused]] const status_t status =
        inner.Unflatten(repaired.data(), static_cast<ssize_t>(repaired.size()));
}

void CheckFields(const BMessage& message)
{
    char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; message.GetInfo(B_ANY_TYPE, i, &name, &type, &count) == B_OK; i++) {
        Require(count > 0, "no field is empty");
        for (int32 item = 0; item < count; item++)
            CheckItem(message, name, item);
    }
}

std::vector<char> FlatOf(const BMessage& message)
{
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));
    Require(message.Flatten(bytes.data(), message.FlattenedSize()) == B_OK, "it flattens");
    return bytes;
}

void CheckMessage(const std::string& bytes)
{
    // Behind the heap block's end, which a string's own room would hide, nothing may be read.
    const std::unique_ptr<char[]> exact(new char[bytes.size()]);
    memcpy(exact.get(), bytes.data(), bytes.size());
    BMessage message('old!');
    message.AddInt32("old", 1);
    gAllocated = 0;
    const status_t status = message.Unflatten(exact.get(), static_cast<ssize_t>(bytes.size()));
    Require(gAllocated <= 64 * bytes.size() + 4096, "reading is not greedy");
    if (status != B_OK) {
        Require(message.IsEmpty(), "damaged bytes leave the message empty");
        return;
    }
    CheckFields(message);
    const std::vector<char> flat = FlatOf(message);
    BMessage again;
    Require(again.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())) == B_OK
            && FlatOf(again) == flat,
        "a message read can be written and read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CheckMessage(bytes);
    CheckMessage(WithRightHeader(bytes));
    return 0;
}
