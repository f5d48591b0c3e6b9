#include "foundation/ToolCommand.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "foundation/AsciiCharacters.h"

namespace {

bool IsPlain(std::string_view path)
{
    for (const char c : path) {
        const char lower = LibToLower(c);
        const bool isLetter = lower >= 'a' && lower <= 'z';
        if (!isLetter && !LibIsDigit(c) && strchr("/._+-", c) == nullptr)
            return false;
    }
    return !path.empty();
}

// "-x" is an option, zip reads names from its input for "@", and tar writes "host:file" elsewhere.
bool LooksLikeNoPath(std::string_view path)
{
    const std::string_view first = path.substr(0, path.find('/'));
    return first.starts_with('-') || first.starts_with('@') || first.find(':') != first.npos;
}

} // namespace

ToolCommand::ToolCommand(const char* tool)
{
    const std::string_view path = tool != nullptr ? tool : "";
    if (IsPlain(path))
        Append(path);
    else
        AppendQuoted(path, Kind::kPath);
}

ToolCommand& ToolCommand::Option(const char* option)
{
    Append(" ");
    Append(option);
    return *this;
}

ToolCommand& ToolCommand::Quoted(const char* word)
{
    Append(" ");
    AppendQuoted(word != nullptr ? word : "", Kind::kWord);
    return *this;
}

ToolCommand& ToolCommand::Path(const char* path)
{
    if (path == nullptr) {
        complete = false;
        return *this;
    }
    Append(" ");
    AppendQuoted(path, Kind::kPath);
    return *this;
}

void ToolCommand::Append(std::string_view piece)
{
    if (length + piece.size() >= sizeof(text)) {
        complete = false;
        return;
    }
    memcpy(text + length, piece.data(), piece.size());
    length += piece.size();
    text[length] = '\0';
}

void ToolCommand::AppendQuoted(std::string_view bytes, Kind kind)
{
    Append("\"");
    if (kind == Kind::kPath && LooksLikeNoPath(bytes))
        Append("./");
    for (const char& c : bytes) {
        if (strchr("\"$`\\", c) != nullptr)
            Append("\\");
        Append({ &c, 1 });
    }
    Append("\"");
}

int ToolCommand::Run() const
{
    if (!complete) {
        fprintf(stderr, "Command without a path or longer than 511 bytes <%s>\n", text);
        return -1;
    }
    return system(text);
}
