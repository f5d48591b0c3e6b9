#include "MachineDetails.h"

#include "KillGuard.h"
#include "Processors.h"
#include "SystemTree.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace {
// A path as the list of mounts has it: "\040" for a blank.
std::string WithoutOctals(std::string_view text)
{
    std::string path;
    while (!text.empty()) {
        int code = 0;
        const bool isCode = text[0] == '\\' && text.size() > 3
            && std::from_chars(text.data() + 1, text.data() + 4, code, 8).ptr == text.data() + 4;
        path += isCode ? static_cast<char>(code) : text[0];
        text.remove_prefix(isCode ? 4 : 1);
    }
    return path;
}

bool IsBelow(const std::string& path, const std::string& folder)
{
    return folder == "/" || path == folder || path.starts_with(folder + "/");
}

// "36 35 98:0 /root /mount/point options optional... - type source options"
bool ParseMount(std::string_view line, std::string& point, FileSystemDetails& details)
{
    const std::vector<std::string_view> words = kernel::Words(line);
    const auto dash = std::find(words.begin(), words.end(), "-");
    if (words.end() - dash < 3 || dash - words.begin() < 6)
        return false;
    point = WithoutOctals(words[4]);
    details.type = kernel::PlainLine(dash[1]);
    const std::string_view type = dash[1], source = dash[2];
    details.isInMemory = type == "tmpfs" || type == "ramfs" || type == "devtmpfs"
        || source.starts_with("/dev/ram") || source.starts_with("/dev/zram");
    return true;
}
} // namespace

std::optional<FileSystemDetails> FileSystemOf(const std::string& path)
{
    const KillGuard guard;
    const kernel::SystemTree tree(kernel::Processors::Get()->Root());
    const std::string mounts = tree.Text("/proc/self/mountinfo").value_or("");
    char real[PATH_MAX];
    if (!realpath(path.c_str(), real))
        return {};
    std::optional<FileSystemDetails> found;
    std::string best, point;
    FileSystemDetails details;
    for (std::string_view rest = mounts; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        // Of two at the same place the later one hides the other.
        if (ParseMount(line, point, details) && IsBelow(real, point)
            && point.size() >= best.size()) {
            best = point;
            found = details;
        }
    }
    return found;
}
