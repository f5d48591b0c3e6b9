#include "engine/FileLife.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

constexpr int32 kPriority = 100;

// Calls action(path) for each file, and counts those for which it returns false.
template <typename Action>
void ForEachFile(FileLife& files, Action action)
{
    files.failures = files.error = 0;
    const char* prefix = files.prefix;
    const std::string start = std::string(prefix ? prefix : "") + ".";
    std::string path(start.size() + 12, '\0'); // with room for any number
    for (int64 number = files.first; number <= files.last; number++) {
        if (number % 100 == 0)
            system_time(); // a kill point, seldom: it must not cost what is to be measured
        snprintf(path.data(), path.size(), "%s%d", start.c_str(), int(number));
        if (!action(path.c_str()) && files.failures++ == 0)
            files.error = errno;
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

int32 FileLife::Create()
{
    ForEachFile(*this, [](const char* path) {
        FILE* file = fopen(path, "wx");
        if (!file && errno == EEXIST && unlink(path) == 0)
            file = fopen(path, "wx");
        return file && fclose(file) == 0;
    });
    return 0;
}

int32 FileLife::Remove()
{
    ForEachFile(*this, [](const char* path) { return unlink(path) == 0; });
    return 0;
}
