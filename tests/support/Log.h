// What the threads of a test did, in order; outlives them.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

using Entries = std::vector<std::string>;

class Log {
public:
    void Add(const std::string& entry)
    {
        const std::lock_guard lock(fLock);
        fEntries.push_back(entry);
        fChanged.notify_all();
    }
    // The entries as soon as there are that many, or what there is after a minute.
    Entries WaitFor(size_t count)
    {
        std::unique_lock lock(fLock);
        fChanged.wait_for(lock, std::chrono::minutes(1), [&] { return fEntries.size() >= count; });
        return fEntries;
    }
    // Whether it comes within a minute.
    bool WaitFor(const std::string& entry)
    {
        std::unique_lock lock(fLock);
        return fChanged.wait_for(lock, std::chrono::minutes(1),
            [&] { return std::find(fEntries.begin(), fEntries.end(), entry) != fEntries.end(); });
    }
    Entries Now() { return WaitFor(0); }

private:
    std::mutex fLock;
    std::condition_variable fChanged;
    Entries fEntries;
};
