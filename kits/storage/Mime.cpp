#include "Mime.h"

#include "FileType.h"
#include "Node.h"

#include <cstring>

namespace {

bool IsTypeCharacter(char letter)
{
    return letter > ' ' && letter < 0x7f && !strchr("/<>@,;:\"()[]?=\\", letter);
}

} // namespace

status_t BMimeType::SetTo(const char* type)
{
    const bool isValid = IsValid(type);
    fType = isValid ? type : "";
    return isValid ? static_cast<status_t>(B_OK) : B_BAD_VALUE;
}

const char* BMimeType::Type() const
{
    return IsValid() ? fType.c_str() : nullptr;
}

bool BMimeType::IsValid() const
{
    return !fType.empty();
}

bool BMimeType::IsValid(const char* type)
{
    if (!type || !IsTypeCharacter(*type) || strlen(type) >= static_cast<size_t>(B_MIME_TYPE_LENGTH))
        return false;
    const char* rest = type;
    while (IsTypeCharacter(*rest))
        rest++;
    // "text" alone is a type too: all texts.
    if (*rest == '/' && IsTypeCharacter(rest[1]))
        for (rest++; IsTypeCharacter(*rest);)
            rest++;
    return *rest == '\0';
}

status_t BMimeType::GuessMimeType(const entry_ref* file, BMimeType* type)
{
    if (!file || !type)
        return B_BAD_VALUE;
    const BNode node(file);
    if (node.InitCheck() != B_OK)
        return node.InitCheck();
    return type->SetTo(GuessTypeOf(node.Descriptor()).c_str());
}
