#include "engine/Whetstone.h"

#include "engine/Benchmark.h"
#include "engine/Kernels.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

// Sink(this) also makes the compiler forget what the fields hold: it would compute with constants.

// The counts of the loops below are the published weights of the modules: with others a round would
// not be the number of Whetstone instructions that the unit stands for.
void Whetstone::Run(const long& iterations)
{
    for (long round = 0; round < iterations; round++) {
        SetConstants();
        ArrayElements();
        ArrayAsParameter();
        ConditionalJumps();
        IntegerArithmetic();
        Sink(TrigonometricFunctions());
        Sink(ProcedureCalls());
        ArrayReferences();
        Sink(StandardFunctions());
    }
}

void Whetstone::SetConstants()
{
    t = 0.499975;
    t1 = 0.50025;
    t2 = 2.0;
    Sink(this);
}

void Whetstone::ArrayElements()
{
    e1[0] = 1.0;
    e1[1] = -1.0;
    e1[2] = -1.0;
    e1[3] = -1.0;
    for (int i = 0; i < 12; i++) {
        e1[0] = (e1[0] + e1[1] + e1[2] - e1[3]) * t;
        e1[1] = (e1[0] + e1[1] - e1[2] + e1[3]) * t;
        e1[2] = (e1[0] - e1[1] + e1[2] + e1[3]) * t;
        e1[3] = (-e1[0] + e1[1] + e1[2] + e1[3]) * t;
    }
    Sink(this);
}

void Whetstone::ArrayAsParameter()
{
    for (int i = 0; i < 14; i++)
        Parameter(e1);
}

[[gnu::noinline]] void Whetstone::Parameter(double* e)
{
    for (int i = 0; i < 6; i++) {
        e[0] = (e[0] + e[1] + e[2] - e[3]) * t;
        e[1] = (e[0] + e[1] - e[2] + e[3]) * t;
        e[2] = (e[0] - e[1] + e[2] + e[3]) * t;
        e[3] = (-e[0] + e[1] + e[2] + e[3]) / t2;
    }
    Sink(e);
}

void Whetstone::ConditionalJumps()
{
    int32 jump = 1;
    for (int i = 0; i < 345; i++) {
        // Each condition by itself: the three together only turn 0 and 1 over.
        jump = jump == 1 ? 2 : 3;
        Opaque(jump);
        jump = jump > 2 ? 0 : 1;
        Opaque(jump);
        jump = jump < 1 ? 1 : 0;
        Opaque(jump);
    }
    j = jump;
}

void Whetstone::IntegerArithmetic()
{
    j = 1;
    k = 2;
    l = 3;
    Sink(this);
    for (int i = 0; i < 210; i++) {
        j = j * (k - j) * (l - k);
        k = l * k - (l - j) * k;
        l = (l - k) * (k + j);
        Element(static_cast<ptrdiff_t>(l) - 1) = j + k + l;
        Element(static_cast<ptrdiff_t>(k) - 1) = j * k * l;
    }
    Sink(this);
}

double Whetstone::TrigonometricFunctions()
{
    double x = 0.5;
    double y = 0.5;
    for (int i = 0; i < 32; i++) {
        x = t * atan(t2 * sin(x) * cos(x) / (cos(x + y) + cos(x - y) - 1.0));
        y = t * atan(t2 * sin(y) * cos(y) / (cos(x + y) + cos(x - y) - 1.0));
    }
    Sink(y);
    return x;
}

double Whetstone::ProcedureCalls()
{
    double x = 1.0;
    double y = 1.0;
    double z = 1.0;
    for (int i = 0; i < 899; i++)
        Procedure(x, y, z);
    return z;
}

[[gnu::noinline]] void Whetstone::Procedure(const double& x, const double& y, double& z)
{
    const double x1 = t * (x + y);
    const double y1 = t * (x1 + y);
    z = (x1 + y1) / t2;
    Sink(&z); // of equal calls only the last would be made
}

void Whetstone::ArrayReferences()
{
    j = 1;
    k = 2;
    l = 3;
    e1[0] = 1.0;
    e1[1] = 2.0;
    e1[2] = 3.0;
    for (int i = 0; i < 616; i++)
        ArrayReference();
}

[[gnu::noinline]] void Whetstone::ArrayReference()
{
    Element(j) = Element(k);
    Element(k) = Element(l);
    Element(l) = Element(j);
    Sink(this);
}

double Whetstone::StandardFunctions()
{
    j = 2;
    k = 3;
    double x = 0.75;
    for (int i = 0; i < 93; i++)
        x = sqrt(exp(log(x) / t1));
    return x;
}

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
    // On the thread's own stack: side by side, the threads would write to each other's cache lines.
    Whetstone whetstone;
    whetstone.Run(iterations);
    done = whetstone;
    return 0;
}

// One Whetstone, ten in sequence, ten at once: how fast a processor is, and how well several share
// the work.
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
                why = why.empty() ? Proof(each.done) : why;
            return why;
        });
}
