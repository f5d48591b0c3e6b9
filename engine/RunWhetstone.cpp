// One Whetstone, ten in sequence, ten at once: how fast a processor is, and how well several share
// the work.
#include "engine/Benchmark.h"
#include "engine/Whetstone.h"
#include "engine/WhetstoneThread.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int32 kPriority = 100;
constexpr long kIterations = 1000;
constexpr int kWhetstones = 10;

// Ready or in wait counts as past, as in all published figures; the kernel kit calls a thread that
// is ready to run running.
bool IsRunning(thread_id thread)
{
    thread_info info {};
    return get_thread_info(thread, &info) == B_OK && info.state == B_THREAD_RUNNING;
}

// False if one of the threads could not be made.
bool MakeThreads(std::vector<WhetstoneThread>& threads)
{
    for (size_t i = 0; i < threads.size(); i++) {
        if (threads[i].Go(kIterations, static_cast<long>(i)) < B_OK)
            return false;
    }
    return true;
}

void RunAtOnce(const std::vector<WhetstoneThread>& threads)
{
    for (const WhetstoneThread& each : threads)
        resume_thread(each.thread);
    for (const WhetstoneThread& each : threads)
        while (IsRunning(each.thread)) { }
    // One that was held up for a moment just when it was looked at is not done yet.
    status_t value = 0;
    for (const WhetstoneThread& each : threads)
        wait_for_thread(each.thread, &value);
}

// What the modules leave behind, the last of them last.
std::string Proof(const Whetstone& done)
{
    return Unless(done.j == 2 && done.k == 3 && done.l == 3, "its modules were not all run");
}

} // namespace

WhetstoneThread::~WhetstoneThread()
{
    if (thread > 0)
        kill_thread(thread);
}

thread_id WhetstoneThread::Go(const long& newIterations, const long& number)
{
    iterations = static_cast<int32>(newIterations);
    char name[B_OS_NAME_LENGTH];
    snprintf(name, sizeof name, "WhetstoneThread_%d", static_cast<int>(number));
    thread = spawn_thread(DoStaticWhetstone, name, kPriority, this);
    if (thread < B_OK)
        fprintf(stderr, "No thread for <%s>\n", name);
    return thread;
}

int32 WhetstoneThread::DoStaticWhetstone(void* self)
{
    return static_cast<WhetstoneThread*>(self)->DoWhetstone();
}

int32 WhetstoneThread::DoWhetstone()
{
    whetstone.Run(iterations);
    return 0;
}

void Benchmark::RunWhetstone()
{
    Whetstone single;
    Measure(
        TestNamed("Whetstone"), 0, [&] { single.Run(kIterations); },
        [&](Metric&) { return Proof(single); });

    Whetstone repeated;
    const auto runInSequence = [&] {
        for (int i = 0; i < kWhetstones; i++)
            repeated.Run(kIterations);
    };
    Measure(TestNamed("Ten Sequential Whetstones"), 0, runInSequence,
        [&](Metric&) { return Proof(repeated); });

    std::vector<WhetstoneThread> threads(kWhetstones);
    const TestType& threaded = TestNamed("Ten Threaded Whetstones");
    if (!MakeThreads(threads))
        return TellUndone(threaded, strerror(EAGAIN));
    Measure(
        threaded, 0, [&] { RunAtOnce(threads); },
        [&](Metric&) {
            std::string why;
            for (const WhetstoneThread& each : threads)
                why = why.empty() ? Proof(each.whetstone) : why;
            return why;
        });
}
