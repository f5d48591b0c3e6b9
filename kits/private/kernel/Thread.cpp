#include "Thread.h"

#include "KillGuard.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <linux/futex.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kernel {
static_assert(sizeof(std::atomic<uint32>) == sizeof(uint32));

void FutexWait(const std::atomic<uint32>& word, uint32 value, bigtime_t deadline)
{
    const timespec until { deadline / 1000000, deadline % 1000000 * 1000 };
    syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, value, deadline < 0 ? nullptr : &until,
        nullptr, FUTEX_BITSET_MATCH_ANY);
}

void FutexWake(const std::atomic<uint32>& word)
{
    syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0);
}

std::atomic<uint32> gThreadEvents { 0 };

void TellThreadEvent()
{
    gThreadEvents.fetch_add(1);
    FutexWake(gThreadEvents);
}

namespace {
constinit thread_local Thread* tThread = nullptr;
// Read by the signal handler on the same thread.
constinit thread_local volatile sig_atomic_t tSuspendGuards = 0;
constinit thread_local volatile sig_atomic_t tStopIsDue = 0;

// A real-time signal: the others have meanings for the tools that a user may run on the program.
int StopSignal()
{
    return SIGRTMIN + 6;
}

void SendStopSignal(pid_t tid)
{
    while (syscall(SYS_tgkill, getpid(), tid, StopSignal()) != 0 && errno == EAGAIN)
        usleep(100); // the queue of signals is full
}

// Only what may be called in a signal handler.
void OnStopSignal(int)
{
    Thread* self = tThread;
    if (!self)
        return;
    if (tSuspendGuards > 0) {
        tStopIsDue = 1;
        return;
    }
    const int error = errno;
    self->WaitWhileStopped();
    errno = error;
}

// Installs the handlers and makes the key whose destructor runs as the very last of each thread,
// after those of its thread_local objects.
pthread_key_t SetUp()
{
    struct sigaction action { };
    action.sa_handler = OnStopSignal;
    action.sa_flags = SA_RESTART;
    sigaction(StopSignal(), &action, nullptr);
    signal(SIGXFSZ, SIG_IGN); // a file too large for its limit is an error of write(), no death
    pthread_key_t key;
    pthread_key_create(&key, [](void* thread) {
        tKillRequest = nullptr;
        tThread = nullptr;
        ThreadTable::Get().End(*static_cast<Thread*>(thread));
    });
    return key;
}

// That of the first thread, which stands for the program's (a process has none of its own here). It
// is asked once, before a priority of ours has changed it.
int ProgramNice()
{
    static const int sNice = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
    return sNice;
}
} // namespace

int NiceForPriority(int32 priority)
{
    // 5, 10 and 20 are the platform's low, normal and urgent display priority, 120 its highest.
    // Their nice values are 10, 0, -5 and -19: what draws comes before what computes, and even real
    // time leaves the system's own threads at -20 alone.
    if (priority <= B_NORMAL_PRIORITY)
        return std::clamp((B_NORMAL_PRIORITY - priority) * 2, 0, 19);
    if (priority <= B_URGENT_DISPLAY_PRIORITY)
        return (B_NORMAL_PRIORITY - priority) / 2;
    return -5 - (std::min<int32>(priority, B_REAL_TIME_PRIORITY) - B_URGENT_DISPLAY_PRIORITY) / 7;
}

SuspendGuard::SuspendGuard()
{
    tSuspendGuards = tSuspendGuards + 1;
}

SuspendGuard::~SuspendGuard()
{
    tSuspendGuards = tSuspendGuards - 1;
    if (tSuspendGuards == 0 && tStopIsDue) {
        tStopIsDue = 0;
        SendStopSignal(static_cast<pid_t>(syscall(SYS_gettid)));
    }
}

Thread::Thread(thread_id number, const char* threadName, int32 threadPriority)
    : id(number), priority(threadPriority)
{
    name.assign(threadName, strnlen(threadName, B_OS_NAME_LENGTH - 1));
}

Thread* Thread::Current()
{
    if (!tThread) {
        char systemName[16] = "";
        pthread_getname_np(pthread_self(), systemName, sizeof(systemName));
        ThreadTable::Entry entry = ThreadTable::Get().NewEntry(systemName, B_NORMAL_PRIORITY);
        Thread& thread = *entry.mapped();
        thread.Adopt();
        thread.mustStop.store(0);
        ThreadTable::Get().Insert(std::move(entry));
    }
    return tThread;
}

void Thread::Adopt()
{
    static const pthread_key_t sKey = SetUp();
    handle = pthread_self();
    tid = static_cast<pid_t>(syscall(SYS_gettid));
    tThread = this;
    tKillRequest = &killRequest;
    pthread_setspecific(sKey, this);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr); // but in a KillableWait
    // A library may start threads with all signals blocked: one that calls the kit could not be
    // stopped.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, StopSignal());
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

status_t Thread::Create(thread_func threadFunction, void* threadData)
{
    fFunction = threadFunction;
    fData = threadData;
    // Detached: any number of threads may wait for this one, or none. They wait by its record.
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_t created;
    const int error = pthread_create(&created, &attributes, Enter, this);
    pthread_attr_destroy(&attributes);
    if (error != 0)
        return error == ENOMEM ? status_t { B_NO_MEMORY } : B_NO_MORE_THREADS;
    // Until the record has its handle and number: whoever finds it in the table uses them.
    while (fIsReady.load() == 0)
        FutexWait(fIsReady, 0);
    return B_OK;
}

void* Thread::Enter(void* self)
{
    Thread& thread = *static_cast<Thread*>(self);
    thread.Adopt();
    thread.ApplyName();
    thread.ApplyPriority();
    thread.fIsReady.store(1);
    FutexWake(thread.fIsReady);
    thread.WaitWhileStopped();
    if (thread.killRequest.load())
        return nullptr;
    const status_t value = thread.fFunction(thread.fData);
    thread.value = value;
    return nullptr;
}

void Thread::WaitWhileStopped()
{
    stopped.store(true);
    TellThreadEvent();
    while (mustStop.load() == 1)
        FutexWait(mustStop, 1);
    stopped.store(false);
}

void Thread::Stop()
{
    mustStop.store(1);
    SendStopSignal(tid);
    // ThreadSanitizer runs a handler only when the thread makes a call that it knows: one that
    // waits in the kit must go round once.
    wakeUps.fetch_add(1);
    FutexWake(wakeUps);
    TellThreadEvent();
}

void Thread::Continue()
{
    mustStop.store(0);
    FutexWake(mustStop);
}

void Thread::RequestKill()
{
    killRequest.store(true);
    // It works in a KillableWait only, where the thread cannot look at killRequest.
    pthread_cancel(handle);
    Continue();
    wakeUps.fetch_add(1);
    FutexWake(wakeUps);
    TellThreadEvent();
}

void Thread::ApplyName() const
{
    pthread_setname_np(handle, name.substr(0, 15).c_str()); // all that the system keeps
}

void Thread::ApplyPriority() const
{
    const int nice = ProgramNice() + NiceForPriority(priority); // the system cuts it to -20 to 19
    if (setpriority(PRIO_PROCESS, static_cast<id_t>(tid), nice) == 0)
        return;
    // The best that this user may have.
    rlimit limit {};
    getrlimit(RLIMIT_NICE, &limit);
    const int best = 20 - static_cast<int>(std::min<rlim_t>(limit.rlim_cur, 40));
    setpriority(
        PRIO_PROCESS, static_cast<id_t>(tid), std::max(nice, std::min(best, ProgramNice())));
}

namespace {
constexpr size_t kMostEnded = 1024; // kept for who may still wait
} // namespace

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
