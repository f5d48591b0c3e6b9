// The MIME type of a file: the attribute that holds it, or a guess.
#pragma once

#include "Node.h"

#include <string>

inline constexpr const char* kTypeAttribute = "BEOS:TYPE";
inline constexpr const char* kSignatureAttribute = "BEOS:APP_SIG";

// Type has B_MIME_TYPE_LENGTH bytes, and is as it was on any error. As BNode::ReadAttr().
[[nodiscard]] status_t ReadTypeAttribute(const BNode& node, const char* name, char* type);
// NULL takes the attribute away; that it is not there is no error. B_BAD_VALUE: too long.
[[nodiscard]] status_t WriteTypeAttribute(BNode& node, const char* name, const char* type);
// Takes an attribute away; that it is not there is no error.
[[nodiscard]] status_t RemoveIfThere(BNode& node, const char* name);

// The type of a file that nobody gave one, of what is open in whatever way: by kind, then by what
// the shared MIME database says to its name and contents. "application/octet-stream": it knows
// none, or cannot be asked, which a line on standard error says.
[[nodiscard]] std::string GuessTypeOf(int descriptor);
