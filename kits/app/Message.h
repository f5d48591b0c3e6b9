// What loopers send each other and what settings are kept in: a code (what) and named fields, each
// an array of values of one type. A name has at most 255 bytes; names keep the order of their first
// Add. A message owns copies of all it is given; pointers that a Find hands out point into it and
// hold until the message is next changed or deleted. No locking: a message belongs to one thread.
#pragma once

#include "Messenger.h"
#include "OS.h"
#include "Point.h"
#include "Rect.h"
#include "TypeConstants.h"

#include <memory>

class BHandler;
class MessageBody;
struct entry_ref;
struct MessageDelivery;

constexpr int32 B_FIELD_NAME_LENGTH = 255;

class BMessage {
public:
    uint32 what = 0;

    BMessage();
    BMessage(uint32 command);
    // A copy has the fields and the return address, but is nobody's reply and owes none: only the
    // message that was delivered does.
    BMessage(const BMessage& message);
    BMessage& operator=(const BMessage& message);
    // Where the sender still waits for a reply, it gets B_NO_REPLY.
    virtual ~BMessage();

    // Appends a value to the field. B_BAD_TYPE: the field has values of another type; B_BAD_VALUE:
    // name or value is NULL, or the name is too long; B_NO_MEMORY.
    status_t AddBool(const char* name, bool value);
    status_t AddInt32(const char* name, int32 value);
    status_t AddInt64(const char* name, int64 value);
    status_t AddFloat(const char* name, float value);
    status_t AddPoint(const char* name, BPoint point);
    status_t AddRect(const char* name, BRect rect);
    status_t AddString(const char* name, const char* text);
    status_t AddPointer(const char* name, const void* pointer); // the address, not what is there
    status_t AddRef(const char* name, const entry_ref* ref);
    status_t AddMessage(const char* name, const BMessage* message);
    // Any other data. With isFixedSize all values of the field have the size of the first
    // (B_BAD_VALUE for another one). The last argument is a hint without effect.
    status_t AddData(const char* name, type_code type, const void* data, ssize_t numBytes,
        bool isFixedSize = true, int32 count = 1);

    // Read the first value, or the one at index. B_NAME_NOT_FOUND, B_BAD_INDEX, B_BAD_TYPE (the
    // field is of another type) or B_BAD_VALUE (damaged data, or name is NULL): value is then as it
    // was; where it points into the message it is NULL.
    status_t FindBool(const char* name, bool* value) const;
    status_t FindBool(const char* name, int32 index, bool* value) const;
    status_t FindInt32(const char* name, int32* value) const;
    status_t FindInt32(const char* name, int32 index, int32* value) const;
    status_t FindInt64(const char* name, int64* value) const;
    status_t FindInt64(const char* name, int32 index, int64* value) const;
    status_t FindFloat(const char* name, float* value) const;
    status_t FindFloat(const char* name, int32 index, float* value) const;
    status_t FindPoint(const char* name, BPoint* point) const;
    status_t FindPoint(const char* name, int32 index, BPoint* point) const;
    status_t FindRect(const char* name, BRect* rect) const;
    status_t FindRect(const char* name, int32 index, BRect* rect) const;
    status_t FindString(const char* name, const char** text) const; // always ends in NUL
    status_t FindString(const char* name, int32 index, const char** text) const;
    status_t FindPointer(const char* name, void** pointer) const;
    status_t FindPointer(const char* name, int32 index, void** pointer) const;
    status_t FindRef(const char* name, entry_ref* ref) const;
    status_t FindRef(const char* name, int32 index, entry_ref* ref) const;
    status_t FindMessage(const char* name, BMessage* message) const; // empty after a failure
    status_t FindMessage(const char* name, int32 index, BMessage* message) const;
    // B_ANY_TYPE takes data of whatever type. After a failure *data is NULL and *numBytes 0.
    status_t FindData(const char* name, type_code type, const void** data, ssize_t* numBytes) const;
    status_t FindData(
        const char* name, type_code type, int32 index, const void** data, ssize_t* numBytes) const;

    // Whether the field has a value of that type at index.
    bool HasBool(const char* name, int32 index = 0) const;
    bool HasInt32(const char* name, int32 index = 0) const;
    bool HasInt64(const char* name, int32 index = 0) const;
    bool HasFloat(const char* name, int32 index = 0) const;
    bool HasPoint(const char* name, int32 index = 0) const;
    bool HasRect(const char* name, int32 index = 0) const;
    bool HasString(const char* name, int32 index = 0) const;
    bool HasPointer(const char* name, int32 index = 0) const;
    bool HasRef(const char* name, int32 index = 0) const;
    bool HasMessage(const char* name, int32 index = 0) const;
    bool HasData(const char* name, type_code type, int32 index = 0) const;

    // Takes away the field; B_NAME_NOT_FOUND.
    status_t RemoveName(const char* name);
    // Takes away all fields; what stays.
    status_t MakeEmpty();

    bool IsEmpty() const; // no fields
    int32 CountNames(type_code type) const; // fields of that type; B_ANY_TYPE: all
    // The which-th field of those of a type (B_ANY_TYPE: of all). *name points into the message and
    // is not to be written to. B_BAD_INDEX; B_BAD_TYPE where there is no field of the type.
    status_t GetInfo(type_code typeRequested, int32 which, char** name, type_code* typeReturned,
        int32* count = nullptr) const;
    // Type and number of values of a field; NULL for what is not wanted. B_NAME_NOT_FOUND.
    status_t GetInfo(const char* name, type_code* type, int32* count = nullptr) const;
    // Writes the code and one line a field, "#entry name, type = 'LONG', count = 1", to standard
    // output, the fields of messages inside indented.
    void PrintToStream() const;

    ssize_t FlattenedSize() const;
    // Writes what and fields as FlattenedSize() bytes, the same on every machine. B_BAD_VALUE:
    // buffer is NULL or numBytes too small; nothing is written.
    status_t Flatten(char* buffer, ssize_t numBytes) const;
    // Takes what and fields from flattened bytes, of which there are numBytes (more than needed is
    // no error). Damaged bytes of any kind leave the message empty: B_BAD_VALUE (not a message),
    // B_MISMATCHED_VALUES (checksum or lengths are wrong), B_NO_MEMORY.
    status_t Unflatten(const char* flatBuffer, ssize_t numBytes);

    // Of a message that was delivered:
    BMessenger ReturnAddress() const; // where replies go; invalid in one that never was sent
    bool IsSourceWaiting() const; // the sender waits for a reply, and none was sent
    bool IsReply() const; // it came as the answer to another one
    bool WasDropped() const; // the user dragged it here
    // Answers the message: to the waiting sender, else to the return address. B_BAD_REPLY: it has
    // none; B_DUPLICATE_REPLY: the waiting sender has had its reply; else as
    // BMessenger::SendMessage().
    status_t SendReply(
        BMessage* reply, BHandler* replyTo = nullptr, bigtime_t timeout = B_INFINITE_TIMEOUT);
    status_t SendReply(uint32 command, BHandler* replyTo = nullptr);

private:
    friend class MessageAccess; // the kits' own way to the parts below

    MessageDelivery& Delivery(); // made when first asked for

    std::unique_ptr<MessageBody> fBody;
    std::unique_ptr<MessageDelivery> fDelivery; // NULL in a message that was never sent
};
