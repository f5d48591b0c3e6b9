#include "SystemTree.h"

#include "TextCoding.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace kernel {
namespace {
constexpr size_t kMostBytes = 8 << 20; // the records of all interrupts of the largest machines
constexpr size_t kMostLineBytes = 200;
constexpr std::string_view kSpace = " \t\r\n";

bool IsSpace(char32_t c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r';
}

bool IsControl(char32_t c)
{
    return c < 0x20 || (c >= 0x7f && c < 0xa0);
}

// False where reading failed or the file is too long.
bool ReadAll(int file, std::string& text)
{
    char block[16384];
    for (;;) {
        const ssize_t length = read(file, block, sizeof(block));
        if (length == 0)
            return true;
        if (length < 0 || text.size() + static_cast<size_t>(length) > kMostBytes)
            return false;
        text.append(block, static_cast<size_t>(length));
    }
}
} // namespace

std::string_view Trimmed(std::string_view text)
{
    const size_t start = text.find_first_not_of(kSpace);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(kSpace) - start + 1);
}

std::string PlainLine(std::string_view text)
{
    std::string line;
    bool hasSpace = false;
    while (!text.empty() && text.front() != '\n') {
        char32_t c;
        const size_t length = DecodeUtf8(text, c);
        if (length == 0)
            c = '?';
        // A byte that begins no character is one "?"; the next may begin one again.
        text.remove_prefix(std::max<size_t>(1, length));
        if (IsSpace(c)) {
            hasSpace = true;
            continue;
        }
        std::string next = hasSpace && !line.empty() ? " " : "";
        AppendUtf8(next, IsControl(c) ? '?' : c);
        // Cut between characters: half of one would make the whole record invalid UTF-8.
        if (line.size() + next.size() > kMostLineBytes)
            break;
        line += next;
        hasSpace = false;
    }
    return line;
}

std::vector<std::string_view> Words(std::string_view text)
{
    std::vector<std::string_view> words;
    for (size_t start; (start = text.find_first_not_of(kSpace)) != std::string_view::npos;) {
        text.remove_prefix(start);
        words.push_back(text.substr(0, text.find_first_of(kSpace)));
        text.remove_prefix(words.back().size());
    }
    return words;
}

std::optional<std::string_view> FieldIn(
    std::string_view text, std::string_view name, char separator)
{
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const size_t end = line.find(separator);
        if (end != std::string_view::npos && Trimmed(line.substr(0, end)) == name)
            return Trimmed(line.substr(end + 1));
    }
    return {};
}

bool SystemTree::Has(const std::string& path) const
{
    return access((fRoot + path).c_str(), F_OK) == 0;
}

std::optional<std::string> SystemTree::Text(const std::string& path) const
{
    // Does not wait for the writer of a fifo.
    const int file = open((fRoot + path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return {};
    struct stat info = {};
    std::string text;
    const bool isRead = fstat(file, &info) == 0 && S_ISREG(info.st_mode) && ReadAll(file, text);
    close(file);
    return isRead ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<std::string> SystemTree::Line(const std::string& path) const
{
    std::string line = PlainLine(Text(path).value_or(""));
    return line.empty() ? std::nullopt : std::optional(std::move(line));
}

std::optional<uint64> SystemTree::Count(const std::string& path) const
{
    return WholeNumber<uint64>(Text(path).value_or(""));
}

std::optional<std::vector<std::string>> SystemTree::Names(const std::string& path) const
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(fRoot + path, error);
    for (const std::filesystem::directory_iterator end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename());
    if (error)
        return {};
    // A folder has no order of its own, and what is read here is compared with other runs.
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadText(const std::string& path)
{
    const std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf(); // unlike iterators, no exception where reading fails
    return text.str();
}

long long NumberAt(const std::string& text, long long otherwise)
{
    const size_t start = text.find_first_not_of(" \t");
    if (start == std::string::npos)
        return otherwise;
    long long number;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data() + start, end, number);
    return result.ec == std::errc() ? number : otherwise;
}
} // namespace kernel
