#include "engine/FileLife.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

constexpr int32 kPriority = 100;

// Calls action(path) for each file.
template <typename Action>
void ForEachFile(const FileLife& files, Action action)
{
    const char* prefix = files.prefix;
    const std::string start = std::string(prefix ? prefix : "") + ".";
    std::string path(start.size() + 12, '\0'); // with room for any number
    for (int64 number = files.first; number <= files.last; number++) {
        snprintf(path.data(), path.size(), "%s%d", start.c_str(), int(number));
        action(path.c_str());
    }
}

} // namespace

FileLife::~FileLife()
{
    kill_thread(thread);
}

void FileLife::SetIndexRange(const long& newFirst, const long& newLast)
{
    first = int32(newFirst);
    last = int32(newLast);
}

thread_id FileLife::Go(const int& mode)
{
    const bool create = mode == kCreate;
    thread = spawn_thread(create ? CreateThread : RemoveThread,
        create ? "CreateThread" : "RemoveThread", kPriority, this);
    return thread;
}

int32 FileLife::CreateThread(void* self)
{
    return static_cast<FileLife*>(self)->Create();
}

int32 FileLife::RemoveThread(void* self)
{
    return static_cast<FileLife*>(self)->Remove();
}

int32 FileLife::Create() const
{
    ForEachFile(*this, [](const char* path) {
        if (FILE* file = fopen(path, "w"))
            fclose(file);
    });
    return 0;
}

int32 FileLife::Remove() const
{
    ForEachFile(*this, [](const char* path) { unlink(path); });
    return 0;
}
