#include "engine/LibThread.h"

#include <Message.h>

#include <cstdio>
#include <iterator>

LibThread::~LibThread()
{
    // In this order: until it has ended, the thread may report by the messenger.
    Kill();
    delete messenger;
}

int32 LibThread::Action()
{
    return 0;
}

status_t LibThread::Go(
    const char* name, BMessenger* newMessenger, const long& priority, const bool& wait)
{
    // Whoever got 'LThC' may be here before the thread that sent it is out of SendMessage().
    status_t value = 0;
    if (thread >= 0)
        wait_for_thread(thread, &value);
    if (messenger != newMessenger)
        delete messenger;
    messenger = newMessenger;

    thread = spawn_thread(StaticAction, name, static_cast<int32>(priority), this);
    if (thread < B_OK)
        return thread;
    return wait ? wait_for_thread(thread, &value) : resume_thread(thread);
}

int32 LibThread::StaticAction(void* self)
{
    return static_cast<LibThread*>(self)->StartAction();
}

int32 LibThread::StartAction()
{
    const int32 result = Action();
    if (messenger)
        ReportEnd(result);
    return result;
}

void LibThread::ReportEnd(const int32& result)
{
    thread_info info {};
    get_thread_info(find_thread(nullptr), &info);
    BMessage message('LThC');
    message.AddString("name", info.name);
    message.AddInt32("status", result);
    // Waits for room in the port: without the message whoever started the thread would never learn
    // that it has ended.
    messenger->SendMessage(&message, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
}

status_t LibThread::Kill()
{
    return kill_thread(thread);
}

status_t LibThread::Suspend()
{
    return suspend_thread(thread);
}

status_t LibThread::Resume()
{
    return resume_thread(thread);
}

status_t LibThread::SetPriority(long priority)
{
    return set_thread_priority(thread, static_cast<int32>(priority));
}

int32 LibThread::Status() const
{
    thread_info info {};
    return get_thread_info(thread, &info) == B_OK ? info.state : 0;
}

void LibThread::PrintToStream() const
{
    constexpr const char* kStates[] = { "Unknown", "Running", "Ready", "Receiving", "Asleep",
        "Suspended", "Waiting" };
    static_assert(B_THREAD_RUNNING == 1 && B_THREAD_WAITING == std::size(kStates) - 1);
    fprintf(stderr, "%s\n", kStates[Status()]);
}
