#include "ReleaseVersion.h"

#include <cstdio>
#include <sstream>

namespace {

// The value of a line is shell text: in quotes or not, with backslashes before special letters.
std::string Unquoted(const std::string& value)
{
    std::string text;
    for (size_t at = 0; at < value.size(); at++) {
        if (value[at] == '"' || value[at] == '\'')
            continue;
        if (value[at] == '\\' && at + 1 < value.size())
            at++;
        text += value[at];
    }
    return text;
}

std::string ValueOf(const std::string& lines, const std::string& name)
{
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);)
        if (line.compare(0, name.size() + 1, name + "=") == 0)
            return Unquoted(line.substr(name.size() + 1));
    return "";
}

template <size_t size>
void Copy(const std::string& text, char (&array)[size])
{
    array[text.copy(array, size - 1)] = '\0';
}

} // namespace

version_info VersionOfRelease(const std::string& lines)
{
    version_info info = {};
    info.variety = 5;
    const std::string number = ValueOf(lines, "VERSION_ID");
    // Nine digits at most: more would overflow.
    sscanf(number.c_str(), "%9u.%9u.%9u", &info.major, &info.middle, &info.minor);
    std::string text = ValueOf(lines, "PRETTY_NAME");
    if (text.empty() && !ValueOf(lines, "NAME").empty())
        text = ValueOf(lines, "NAME") + (number.empty() ? "" : " " + number);
    if (text.empty())
        text = "Linux";
    const std::string version = ValueOf(lines, "VERSION");
    Copy(version.empty() ? text : version, info.short_info);
    Copy(text, info.long_info);
    return info;
}
