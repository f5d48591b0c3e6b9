// probe: how often a run tells rightly that its processor was shared. 200 spans of Ackermann's work
// each while nothing of ours runs beside them, while another program's loop has the same processor,
// and while it has the other hardware thread of the core, where the system shows one.
//
// What is right is told by the work's own time: a span that took more than 15 percent more cycles
// than most quiet ones was shared. What else runs on the machine belongs to the measurement.
#include "engine/Kernels.h"
#include "engine/Span.h"
#include "results/RunRecord.h"

#include <MachineDetails.h>
#include <ThreadMoment.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sched.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kSpans = 200;
constexpr long kRounds = 1000; // some milliseconds, as in a run
constexpr double kSlow = kSharedProbe; // of the work itself

double Now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

bool BindTo(int processor)
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(processor, &set);
    return sched_setaffinity(0, sizeof set, &set) == 0;
}

// Another program that keeps a processor busy, for as long as it lives.
class BusyLoop {
public:
    explicit BusyLoop(int processor) : child(fork())
    {
        if (child != 0)
            return;
        const pid_t parent = getppid();
        const bool isBound = BindTo(processor);
        while (isBound && getppid() == parent)
            EvaluateAckerman(kRounds);
        _exit(1);
    }
    ~BusyLoop()
    {
        if (child <= 0)
            return;
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    BusyLoop(const BusyLoop&) = delete;
    BusyLoop& operator=(const BusyLoop&) = delete;

    bool Runs() const { return child > 0 && waitpid(child, nullptr, WNOHANG) == 0; }

private:
    const pid_t child;
};

// As a sitting takes them.
std::vector<Span> Measure()
{
    std::vector<Span> spans(kSpans);
    WaitForSteadyClock();
    for (Span& span : spans) {
        span.probeBefore = TakeProbe();
        const ThreadMoment begin = ReadThreadMoment();
        const double start = Now();
        EvaluateAckerman(kRounds);
        span.seconds = Now() - start;
        span.waited = ChangeBetween(begin, ReadThreadMoment(begin.processor)).waited;
        span.probeAfter = TakeProbe();
    }
    return spans;
}

// Cycles: a slow clock shares nothing.
double AtOneClock(const Span& span)
{
    return span.seconds / (span.probeBefore.clock + span.probeAfter.clock);
}

double Median(std::vector<double> times)
{
    const auto summary = statistics::Summarize(std::move(times));
    return summary ? summary->median : 0;
}

void Print(const char* what, const std::vector<Span>& spans, const Probe& best, double quiet)
{
    int slow = 0, byProbe = 0, byWaiting = 0, told = 0, right = 0;
    std::vector<double> clean, shared;
    for (const Span& span : spans) {
        Span asleep = span; // what the probes alone say
        asleep.waited = 0;
        const bool isShared = IsShared(span, best);
        const bool isSlow = AtOneClock(span) > kSlow * quiet;
        byProbe += IsShared(asleep, best);
        byWaiting += span.waited > kSharedWait * span.seconds;
        slow += isSlow;
        told += isShared;
        right += isShared == isSlow;
        (isShared ? shared : clean).push_back(span.seconds);
    }
    printf("%-18s %4d slow %4d shared (%d by probe, %d by waiting) %5.1f%% right  "
           "clean %.2f shared %.2f ms\n",
        what, slow, told, byProbe, byWaiting, 100.0 * right / kSpans, Median(clean) * 1e3,
        Median(shared) * 1e3);
}

} // namespace

int main()
{
    const MachineDetails details = ReadMachineDetails();
    const int processor = std::max(sched_getcpu(), 0);
    if (!BindTo(processor)) {
        fprintf(stderr, "No right to choose the processor\n");
        return 1;
    }
    const std::vector<Span> alone = Measure();
    std::vector<double> times;
    for (const Span& span : alone)
        times.push_back(AtOneClock(span));
    const double quiet = Median(times);
    RunRecord record;
    record.At(kTestTypes[0], 1).spans = alone;
    const Probe best = SustainedProbe(record);
    printf("Best probe %.4f ms, of the clock %.4f ms, processor %d, medians in ms\n",
        best.core * 1e3, best.clock * 1e3, processor);
    Print("alone", alone, best, quiet);

    const auto beside = [&](const char* what, int other) {
        const BusyLoop loop(other);
        const std::vector<Span> spans = Measure();
        if (loop.Runs())
            Print(what, spans, best, quiet);
        else
            fprintf(stderr, "The busy loop of <%s> ended\n", what);
    };
    beside("same processor", processor);
    bool hasSibling = false;
    for (const ProcessorDetails& each : details.processors) {
        for (const int sibling : each.siblings) {
            if (each.number != processor || sibling == processor || hasSibling)
                continue;
            hasSibling = true;
            beside("sibling", sibling);
        }
    }
    if (!hasSibling)
        puts("sibling            the system shows none");
}
