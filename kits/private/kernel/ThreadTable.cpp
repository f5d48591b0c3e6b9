#include "ThreadTable.h"

#include <algorithm>

namespace {
constexpr size_t kMostEnded = 1024; // kept for who may still wait
} // namespace

namespace kernel {
ThreadTable& ThreadTable::Get()
{
    static ThreadTable* const sTable = new ThreadTable;
    return *sTable;
}

ThreadTable::Entry ThreadTable::NewEntry(const char* name, int32 priority)
{
    thread_id id;
    {
        const Lock lock(*this);
        id = fNextId++;
    }
    // The table's node is made here, before the thread is: to find no memory for it afterwards
    // would leave a thread that runs and that nobody knows.
    Threads single;
    single.emplace(id, std::make_shared<Thread>(id, name, priority));
    return single.extract(id);
}

void ThreadTable::Insert(Entry&& entry)
{
    const Lock lock(*this);
    fThreads.insert(std::move(entry));
}

std::shared_ptr<Thread> ThreadTable::Find(thread_id id)
{
    const auto found = fThreads.find(id);
    return found == fThreads.end() ? nullptr : found->second;
}

std::shared_ptr<Thread> ThreadTable::Find(std::string_view name)
{
    // Names are kept cut, and find what they were given as.
    name = name.substr(0, B_OS_NAME_LENGTH - 1);
    for (const auto& [id, thread] : fThreads) {
        if (thread->name == name)
            return thread;
    }
    return nullptr;
}

std::shared_ptr<Thread> ThreadTable::TakeEnded(thread_id id)
{
    const auto found = std::find_if(
        fEnded.begin(), fEnded.end(), [id](const auto& thread) { return thread->id == id; });
    if (found == fEnded.end())
        return nullptr;
    const std::shared_ptr<Thread> thread = *found;
    fEnded.erase(found);
    return thread;
}

void ThreadTable::End(Thread& thread)
{
    {
        const Lock lock(*this);
        // Under the lock, in the thread itself: as long as somebody finds the record, its system
        // number is this thread's, and a signal sent to it cannot reach another that got the number
        // later.
        const auto found = fThreads.find(thread.id);
        fEnded.push_back(std::move(found->second));
        fThreads.erase(found);
        if (fEnded.size() > kMostEnded)
            fEnded.pop_front();
        thread.ended.store(true);
    }
    TellThreadEvent();
}
} // namespace kernel
