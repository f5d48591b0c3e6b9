#include "kits/kernel/TextFile.h"

#include "kits/kernel/KillGuard.h"

#include <charconv>
#include <fstream>
#include <iterator>

namespace kernel {
std::string ReadText(const std::string& path)
{
    const KillGuard guard;
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>() };
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
