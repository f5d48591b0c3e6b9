// The bytes are an XML file.
#include "foundation/xmlParser.h"
#include "tests/fuzz/Require.h"

#include <cstring>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// A file in memory whose path the parser can open.
class MemoryFile {
public:
    MemoryFile(const uint8_t* data, size_t size) : fFile(memfd_create("fuzz", 0))
    {
        Require(write(fFile, data, size) == static_cast<ssize_t>(size), "the file is written");
    }
    ~MemoryFile() { close(fFile); }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(fFile); }

private:
    int fFile;
};

void CheckTag(const xmlTag& tag, int level)
{
    const char* name = tag.name;
    const std::string text(static_cast<const char*>(tag.content));
    Require(level <= 101, "no tag lies deeper than the parser says");
    Require(name[0] != '\0' && strlen(name) < xmlParser::kNameSize, "a tag has a name");
    Require(text.empty() || (text.front() != ' ' && text.front() != '\t'), "no leading blanks");
    Require(text.empty() || (text.back() != ' ' && text.back() != '\t'), "no trailing blanks");
    for (const xmlTag* child = tag.children.First(); child; child = tag.children.Next())
        CheckTag(*child, level + 1);
}

void WalkTags(const char* path)
{
    xmlParser parser(path);
    char name[xmlParser::kNameSize];
    bool hasModifiers = false;
    while (parser.NextTag(name, hasModifiers)) {
        xmlTagModifiers modifiers;
        if (hasModifiers)
            parser.AddModifiers(modifiers);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile file(data, size);
    const std::string path = file.Path();
    WalkTags(path.c_str());
    for (const char* name : { "a", "b", "?xml", "!--" }) {
        xmlParser parser(path.c_str());
        xmlTag tag;
        while (parser.FindTag(name, tag)) {
            Require(tag.name.Compare(name) == 0, "the tag found has the name asked for");
            CheckTag(tag, 1);
            const xmlTag copy(tag);
            Require(copy.children.Size() == tag.children.Size(), "a copy has all children");
        }
    }
    return 0;
}
