#include "Message.h"

#include "AppDefs.h"
#include "Handler.h"
#include "MessageBody.h"
#include "MessageDelivery.h"

#include <cctype>
#include <cinttypes>
#include <cstdio>
#include <new>

BMessage::BMessage() : fBody(std::make_unique<MessageBody>()) { }

BMessage::BMessage(uint32 command) : what(command), fBody(std::make_unique<MessageBody>()) { }

BMessage::BMessage(const BMessage& message)
    : what(message.what), fBody(std::make_unique<MessageBody>(*message.fBody))
{
    if (!message.fDelivery)
        return;
    fDelivery = std::make_unique<MessageDelivery>(*message.fDelivery);
    // The sender waits for one answer; a copy that ends unanswered must not give it a second.
    fDelivery->reply = MessageDelivery::Reply::kNotOwed;
    fDelivery->isReply = false;
}

BMessage& BMessage::operator=(const BMessage& message)
{
    if (this != &message) {
        // The copy takes the old contents with it: if it cannot be made the message is as it was,
        // and a reply that they owed is sent.
        BMessage copy(message);
        MessageAccess::Swap(*this, copy);
    }
    return *this;
}

BMessage::~BMessage()
{
    MessageAccess::EndUnanswered(*this);
}

status_t BMessage::AddData(
    const char* name, type_code type, const void* data, ssize_t numBytes, bool isFixedSize, int32)
{
    if (numBytes < 0 || (!data && numBytes > 0))
        return B_BAD_VALUE;
    return fBody->Add(
        name, type, { static_cast<const char*>(data), static_cast<size_t>(numBytes) }, isFixedSize);
}

status_t BMessage::FindData(
    const char* name, type_code type, const void** data, ssize_t* numBytes) const
{
    return FindData(name, type, 0, data, numBytes);
}

status_t BMessage::FindData(
    const char* name, type_code type, int32 index, const void** data, ssize_t* numBytes) const
{
    const std::string* item = nullptr;
    const status_t status = fBody->Find(name, type, index, item);
    if (data)
        // With a NUL behind it: a text that another program sent may lack its own.
        *data = status == B_OK ? item->c_str() : nullptr;
    if (numBytes)
        *numBytes = status == B_OK ? static_cast<ssize_t>(item->size()) : 0;
    return status;
}

bool BMessage::HasData(const char* name, type_code type, int32 index) const
{
    return FindData(name, type, index, nullptr, nullptr) == B_OK;
}

status_t BMessage::RemoveName(const char* name)
{
    return fBody->RemoveName(name);
}

status_t BMessage::MakeEmpty()
{
    fBody->SetFields({});
    return B_OK;
}

bool BMessage::IsEmpty() const
{
    return fBody->Fields().empty();
}

int32 BMessage::CountNames(type_code type) const
{
    int32 count = 0;
    for (const MessageField& field : fBody->Fields())
        count += type == B_ANY_TYPE || type == field.type;
    return count;
}

status_t BMessage::GetInfo(
    type_code typeRequested, int32 which, char** name, type_code* typeReturned, int32* count) const
{
    int32 left = which;
    for (const MessageField& field : fBody->Fields()) {
        if ((typeRequested != B_ANY_TYPE && typeRequested != field.type) || left-- != 0)
            continue;
        if (name)
            *name = const_cast<char*>(field.name.c_str());
        return GetInfo(field.name.c_str(), typeReturned, count);
    }
    // Fields of the type but too few of them, or none at all.
    return CountNames(typeRequested) > 0 || typeRequested == B_ANY_TYPE ? B_BAD_INDEX : B_BAD_TYPE;
}

status_t BMessage::GetInfo(const char* name, type_code* type, int32* count) const
{
    const MessageField* field = name ? fBody->Field(name) : nullptr;
    if (!field)
        return name ? B_NAME_NOT_FOUND : B_BAD_VALUE;
    if (type)
        *type = field->type;
    if (count)
        *count = static_cast<int32>(field->items.size());
    return B_OK;
}

namespace {

struct CodeText {
    char text[5];
};

// The four characters of a code; a point for what cannot be printed.
CodeText TextOfCode(uint32 code)
{
    CodeText result {};
    for (int i = 0; i < 4; ++i) {
        const int character = static_cast<int>((code >> (24 - 8 * i)) & 0xff);
        result.text[i] = isprint(character) ? static_cast<char>(character) : '.';
    }
    return result;
}

constexpr int kDeepestPrinted = 16; // messages inside messages, which may be anybody's bytes

void Print(uint32 what, const std::vector<MessageField>& fields, int depth)
{
    printf("%*sBMessage: what = '%s' (0x%" PRIx32 ", or %" PRId32 ")\n", 4 * depth, "",
        TextOfCode(what).text, what, static_cast<int32>(what));
    for (const MessageField& field : fields) {
        printf("%*s#entry %s, type = '%s', count = %zu\n", 4 * depth, "", field.name.c_str(),
            TextOfCode(field.type).text, field.items.size());
        if (field.type != B_MESSAGE_TYPE || depth == kDeepestPrinted)
            continue;
        for (const std::string& item : field.items) {
            uint32 innerWhat = 0;
            std::vector<MessageField> inner;
            if (ReadFlat(item, innerWhat, inner) == B_OK)
                Print(innerWhat, inner, depth + 1);
        }
    }
}

} // namespace

void BMessage::PrintToStream() const
{
    Print(what, fBody->Fields(), 0);
}

ssize_t BMessage::FlattenedSize() const
{
    return static_cast<ssize_t>(FlatSize(fBody->Fields()));
}

status_t BMessage::Flatten(char* buffer, ssize_t numBytes) const
{
    if (!buffer || numBytes < FlattenedSize())
        return B_BAD_VALUE;
    WriteFlat(what, fBody->Fields(), buffer);
    return B_OK;
}

status_t BMessage::Unflatten(const char* flatBuffer, ssize_t numBytes)
{
    std::vector<MessageField> fields;
    const status_t status = flatBuffer && numBytes >= 0
        ? ReadFlat({ flatBuffer, static_cast<size_t>(numBytes) }, what, fields)
        : B_BAD_VALUE;
    // Empty after an error: half of a message would look like a whole one.
    fBody->SetFields(std::move(fields));
    return status;
}

MessageDelivery& BMessage::Delivery()
{
    if (!fDelivery)
        fDelivery = std::make_unique<MessageDelivery>();
    return *fDelivery;
}

BMessenger BMessage::ReturnAddress() const
{
    return fDelivery ? fDelivery->replyTo : BMessenger();
}

bool BMessage::IsSourceWaiting() const
{
    return fDelivery && fDelivery->reply == MessageDelivery::Reply::kOwed;
}

bool BMessage::IsReply() const
{
    return fDelivery && fDelivery->isReply;
}

bool BMessage::WasDropped() const
{
    return fDelivery && fDelivery->wasDropped;
}

status_t BMessage::SendReply(BMessage* reply, BHandler* replyTo, bigtime_t timeout)
{
    if (!reply)
        return B_BAD_VALUE;
    if (!fDelivery || fDelivery->replyTo == BMessenger())
        return B_BAD_REPLY;
    if (fDelivery->reply == MessageDelivery::Reply::kSent)
        return B_DUPLICATE_REPLY;
    SendOptions options;
    options.timeout = timeout;
    options.isReply = true;
    status_t status = MessageAccess::ReplyAddress(replyTo, options.replyTo);
    if (status == B_OK)
        status = MessageAccess::Send(fDelivery->replyTo, *reply, options);
    if (status == B_OK && IsSourceWaiting())
        fDelivery->reply = MessageDelivery::Reply::kSent;
    return status;
}

status_t BMessage::SendReply(uint32 command, BHandler* replyTo)
{
    BMessage reply(command);
    return SendReply(&reply, replyTo);
}
