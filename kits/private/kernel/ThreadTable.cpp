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
        const auto found = fThreads.find(thread.id);
        fEnded.push_back(std::move(found->second));
        fThreads.erase(found);
        if (fEnded.size() > kMostEnded)
            fEnded.pop_front();
        thread.waitsFor = nullptr;
        thread.ended.store(true);
    }
    TellThreadEvent();
}

bool ThreadTable::ClosesCircle(const Thread& self, bool& anotherCanEnd) const
{
    anotherCanEnd = false;
    const Thread* thread = self.waitsFor;
    // Bounded: the circle may be one that self is not in.
    for (size_t steps = 0; thread && steps <= fThreads.size(); steps++) {
        if (thread == &self)
            return true;
        if (thread->killRequest.load() && thread->canEndHere)
            anotherCanEnd = true;
        thread = thread->waitsFor;
    }
    return false;
}

ThreadTable::Wait ThreadTable::LookAtWait(Thread& self, const Thread& target, bool forValue)
{
    Wait result = Wait::GoOn;
    self.waitsFor = &target;
    if (target.ended.load()) {
        result = Wait::Ended;
    } else if (self.killRequest.load()) {
        bool anotherCanEnd;
        const bool circle = ClosesCircle(self, anotherCanEnd);
        if (self.canEndHere && (circle || forValue))
            result = Wait::EndSelf;
        else if (circle && !anotherCanEnd)
            result = Wait::GiveUp;
    }
    if (result != Wait::GoOn)
        self.waitsFor = nullptr;
    return result;
}
} // namespace kernel
