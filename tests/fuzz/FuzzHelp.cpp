// The bytes are a file of help texts.
#include "tests/fuzz/MemoryFolder.h"
#include "toolkit/LibHelp.h"

#include <cstring>
#include <strings.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const MemoryFolder sFolder;
    sFolder.Write("help", std::string_view(reinterpret_cast<const char*>(data), size));
    LibHelp help;
    const bool found = help.ReadFile((sFolder.Path() + "/help").c_str());
    Require(found || help.CountTopics() == 0, "topics are found in help alone");
    for (int32 i = 0; i < help.CountTopics(); i++) {
        const char* name = help.TopicAt(i)->name;
        const int32 first = help.IndexOf(name);
        Require(first >= 0 && first <= i, "a topic is found by its name");
        Require(first == i, "a later topic takes the place of one of its name");
        if (const char* tip = help.TipFor(name))
            Require(*tip == '\0' || strlen(tip) > 0, "a tip ends");
    }
    Require(!help.TopicAt(help.CountTopics()), "there is nothing behind the last");
    const int32 topics = help.CountTopics();
    Require(
        help.ReadFile((sFolder.Path() + "/help").c_str()) == found && help.CountTopics() == topics,
        "what is read twice is there once");
    return 0;
}
