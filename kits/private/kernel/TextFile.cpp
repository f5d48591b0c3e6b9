#include "TextFile.h"


#include <charconv>
#include <fstream>
#include <sstream>

namespace kernel {
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
