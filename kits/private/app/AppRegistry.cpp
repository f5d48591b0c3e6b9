#include "AppRegistry.h"

#include "Handler.h"
#include "LeafLock.h"
#include "MessagePort.h"

#include <algorithm>

AppRegistry& AppRegistry::Instance()
{
    // Never destroyed: threads may still look something up while the process ends.
    static AppRegistry& sRegistry = *new AppRegistry;
    return sRegistry;
}

port_id AppRegistry::AddPort(const std::shared_ptr<MessagePort>& port)
{
    const LeafLock lock(fLock);
    // Ports and handlers share the count: a number taken for one of the other kind finds nothing.
    fPorts[++fLastNumber] = port;
    return fLastNumber;
}

void AppRegistry::RemovePort(port_id port)
{
    std::unordered_map<port_id, std::shared_ptr<MessagePort>>::node_type removed;
    const LeafLock lock(fLock);
    removed = fPorts.extract(port); // it must not end under the lock
}

std::shared_ptr<MessagePort> AppRegistry::Port(port_id port)
{
    const LeafLock lock(fLock);
    const auto found = fPorts.find(port);
    return found == fPorts.end() ? nullptr : found->second;
}

int32 AppRegistry::AddHandler(BHandler* handler)
{
    const LeafLock lock(fLock);
    fHandlers[++fLastNumber] = handler;
    return fLastNumber;
}

void AppRegistry::RemoveHandler(int32 token)
{
    const LeafLock lock(fLock);
    fHandlers.erase(token);
}

bool AppRegistry::HasHandler(int32 token)
{
    return Handler(token) != nullptr;
}

BHandler* AppRegistry::Handler(int32 token)
{
    const LeafLock lock(fLock);
    const auto found = fHandlers.find(token);
    return found == fHandlers.end() ? nullptr : found->second;
}

BHandler* AppRegistry::HandlerIn(int32 token, const BLooper* looper)
{
    const LeafLock lock(fLock);
    const auto found = fHandlers.find(token);
    // Asked under the lock, which the handler's destructor must take before it goes.
    return found != fHandlers.end() && found->second->Looper() == looper ? found->second : nullptr;
}

void AppRegistry::AddLooper(const LooperRecord& record)
{
    const LeafLock lock(fLock);
    fLoopers.push_back(record);
}

void AppRegistry::RemoveLooper(const BLooper* looper)
{
    const LeafLock lock(fLock);
    std::erase_if(
        fLoopers, [looper](const LooperRecord& record) { return record.looper == looper; });
}

template <typename Predicate>
LooperRecord* AppRegistry::Find(Predicate predicate)
{
    const auto found = std::find_if(fLoopers.begin(), fLoopers.end(), predicate);
    return found == fLoopers.end() ? nullptr : &*found;
}

void AppRegistry::SetRuns(const BLooper* looper)
{
    const LeafLock lock(fLock);
    if (auto* found = Find([looper](const auto& record) { return record.looper == looper; }))
        found->runs = true;
}

void AppRegistry::SetAskedToQuit(const BLooper* looper, bool asked)
{
    const LeafLock lock(fLock);
    if (auto* found = Find([looper](const auto& record) { return record.looper == looper; }))
        found->askedToQuit = asked;
}

LooperRecord AppRegistry::Looper(const BLooper* looper)
{
    const LeafLock lock(fLock);
    const auto* found = Find([looper](const auto& record) { return record.looper == looper; });
    return found ? *found : LooperRecord();
}

LooperRecord AppRegistry::LooperOfPort(port_id port)
{
    const LeafLock lock(fLock);
    const auto* found = Find([port](const auto& record) { return record.port->Id() == port; });
    return found ? *found : LooperRecord();
}

LooperRecord AppRegistry::LooperOfThread(thread_id thread)
{
    const LeafLock lock(fLock);
    const auto* found =
        Find([thread](const auto& record) { return record.port->Reader() == thread; });
    return found ? *found : LooperRecord();
}

LooperRecord AppRegistry::FirstAskedToQuit()
{
    const LeafLock lock(fLock);
    const auto* found = Find([](const auto& record) { return record.runs && record.askedToQuit; });
    return found ? *found : LooperRecord();
}

void AppRegistry::SetApplication(const BMessenger& application)
{
    const LeafLock lock(fLock);
    fApplication = application;
}

BMessenger AppRegistry::Application()
{
    const LeafLock lock(fLock);
    return fApplication;
}
