// What exists of the app kit in this process: ports and handlers by number, loopers by address. So
// an address or a pointer that outlived its target is told from a good one without touching it.
// Numbers are never given out again. Its lock is a leaf: held for look-ups only.
#pragma once

#include "Messenger.h"
#include "Mutex.h"

#include <memory>
#include <unordered_map>
#include <vector>

class LooperLock;
class MessagePort;

struct LooperRecord {
    BLooper* looper = nullptr; // NULL: there is no such looper
    std::shared_ptr<LooperLock> lock;
    std::shared_ptr<MessagePort> port;
    int32 token = 0; // of the looper as a handler
    bool runs = false;
    bool askedToQuit = false; // see BLooper::SetAskedToQuit()
};

class AppRegistry {
public:
    static AppRegistry& Instance(); // from the first use to the end of the process

    port_id AddPort(const std::shared_ptr<MessagePort>& port) EXCLUDES(fLock);
    void RemovePort(port_id port) EXCLUDES(fLock);
    std::shared_ptr<MessagePort> Port(port_id port) EXCLUDES(fLock); // NULL if there is none

    int32 AddHandler(BHandler* handler) EXCLUDES(fLock);
    void RemoveHandler(int32 token) EXCLUDES(fLock);
    bool HasHandler(int32 token) EXCLUDES(fLock);
    // NULL if there is none. Good for as long as its looper is locked by the caller.
    BHandler* Handler(int32 token) EXCLUDES(fLock);
    // The same, if it is in that looper.
    BHandler* HandlerIn(int32 token, const BLooper* looper) EXCLUDES(fLock);

    void AddLooper(const LooperRecord& record) EXCLUDES(fLock);
    void RemoveLooper(const BLooper* looper) EXCLUDES(fLock);
    void SetRuns(const BLooper* looper) EXCLUDES(fLock);
    void SetAskedToQuit(const BLooper* looper, bool asked) EXCLUDES(fLock);
    LooperRecord Looper(const BLooper* looper) EXCLUDES(fLock);
    LooperRecord LooperOfPort(port_id port) EXCLUDES(fLock);
    LooperRecord LooperOfThread(thread_id thread) EXCLUDES(fLock);
    LooperRecord FirstAskedToQuit() EXCLUDES(fLock); // the oldest of those that run

    // Where replies go that nobody else is named for.
    void SetApplication(const BMessenger& application) EXCLUDES(fLock);
    BMessenger Application() EXCLUDES(fLock);

private:
    template <typename Predicate>
    LooperRecord* Find(Predicate predicate) REQUIRES(fLock);

    Mutex fLock;
    int32 fLastNumber GUARDED_BY(fLock) = 0;
    std::unordered_map<port_id, std::shared_ptr<MessagePort>> fPorts GUARDED_BY(fLock);
    std::unordered_map<int32, BHandler*> fHandlers GUARDED_BY(fLock);
    std::vector<LooperRecord> fLoopers GUARDED_BY(fLock); // in the order of construction
    BMessenger fApplication GUARDED_BY(fLock);
};
