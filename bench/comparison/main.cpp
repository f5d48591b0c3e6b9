// comparison [MACHINES...]: how long so many machines (1,000, 10,000 and 100,000) take to load, to
// draw, to order and to point at, and what memory they keep; the load beside a plain loop that only
// reads the same bytes. Needs a display; what it stores lies in a folder of its own. Status 1 if a
// limit is missed.
#include "results/Comparison.h"
#include "ui/CompareResultsView.h"
#include "ui/CompareWin.h"

#include <Application.h>
#include <Message.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr double kLoadsPerRead = 6;
constexpr double kDrawSeconds = 0.016;
constexpr double kKilobytesEach = 4;

template <typename Work>
double Seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double ResidentKilobytes()
{
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / 1024;
}

// A complete run of a machine with two processors.
std::string Record(int machine)
{
    static constexpr int kTests[] = { 100, 101, 200, 300, 400, 550, 600, 601, 602, 700, 800, 801,
        900, 901, 1010, 1011, 1020, 1021, 1022, 1030, 1031, 1032, 1040, 1041, 1042, 1050, 1051 };
    std::string record = "AT Clone (2-Machine " + std::to_string(machine)
        + "@400/100MHz) 128MB RAM\t-1:8 bit color, 1024x768 resolution\t";
    for (const int test : kTests) {
        const double seconds = 0.4 + machine * test % 1000 / 1000.0;
        record += std::to_string(test) + ":1000/" + std::to_string(seconds) + ","
            + std::to_string(2 * seconds) + ";";
    }
    return record;
}

void WriteMachines(const std::string& path, int count)
{
    std::ofstream file(path);
    file << "1.0\n";
    for (int machine = 0; machine < count; machine++) {
        const std::string record = Record(machine);
        file << record.size() << "\n" << record << "\n";
    }
}

double ReadBytes(const std::string& path)
{
    return Seconds([&] {
        FILE* file = fopen(path.c_str(), "r");
        long sum = 0;
        for (int c = 0; (c = getc_unlocked(file)) != EOF;)
            sum += c;
        asm volatile("" : : "r"(sum));
        fclose(file);
    });
}

// Without a window. Returns whether it kept to the limits.
bool MeasureLoad(const std::string& path, int count)
{
    const double bytes = ReadBytes(path);
    const double before = ResidentKilobytes();
    Comparison comparison;
    const double load = Seconds([&] { comparison.Load({ path.c_str() }); });
    const double each = (ResidentKilobytes() - before) / count;
    printf("%7d machines: load %.3f s, %.1f times reading the bytes; %.1f KB a machine\n",
        comparison.machines.Size(), load, load / bytes, each);
    return comparison.machines.Size() == count && load < kLoadsPerRead * bytes
        && each < kKilobytesEach;
}

// Milliseconds; of the whole view, when what the work changes is on the screen.
double Shown(BView* chart, const std::function<void()>& work)
{
    return 1000 * Seconds([&] {
        work();
        chart->Draw(chart->Bounds());
        chart->Sync();
    });
}

bool MeasureWindow(const std::string& path, int count)
{
    BLooper* target = new BLooper;
    target->Run();
    auto* window = new CompareWin(target, false);
    window->Show();
    const double store = Seconds([&] { window->LoadResults(path.c_str()); });
    window->Lock();
    window->Quit();

    const double readBack = Seconds([&] { window = new CompareWin(target, false); });
    window->Show();
    Results run(true);
    for (int i = 0; i < run.nbrCpus; i++)
        run.NewTest("Strings Copy", 1000)->Time(0.5f);
    window->SetResults(run);
    window->Lock();
    BView* chart = window->FindView("DrawView");
    const auto order = [&](ChartOrder chosen) {
        BMessage message(CompareResultsView::kMsgOrder);
        message.AddInt32("order", static_cast<int32>(chosen));
        window->MessageReceived(&message);
    };
    const float middle = 17.0f * static_cast<float>(count) / 2;
    const double draw = Shown(chart, [&] { chart->ScrollTo(0, middle); });
    const double redraw = Shown(chart, [] {});
    const double hover = 1000 * Seconds([&] {
        const BMessage nothing;
        chart->MouseMoved(BPoint(100, middle + 100), B_INSIDE_VIEW, &nothing);
    });
    const double byRate = Shown(chart, [&] { order(ChartOrder::kByRate); });
    const double byName = Shown(chart, [&] { order(ChartOrder::kByName); });
    const double key = Shown(chart, [&] {
        const char right[] = { B_RIGHT_ARROW, 0 };
        chart->KeyDown(right, 1);
    });
    order(ChartOrder::kAsAdded);
    window->Quit();
    printf("%7d machines: load and store %.2f s, read back %.2f s; scroll %.2f ms, draw %.2f ms, "
           "point at %.2f ms, order by rate %.1f ms, by name %.1f ms, select %.1f ms\n",
        count, store, readBack, draw, redraw, hover, byRate, byName, key);
    return draw < 1000 * kDrawSeconds && redraw < 1000 * kDrawSeconds
        && hover < 1000 * kDrawSeconds;
}

} // namespace

int main(int argc, char** argv)
{
    const auto folder =
        std::filesystem::temp_directory_path() / ("tarvex-bench-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    std::vector<int> counts;
    for (int i = 1; i < argc; i++)
        counts.push_back(std::max(1, atoi(argv[i])));
    if (counts.empty())
        counts = { 1000, 10000, 100000 };
    const BApplication app("application/x-vnd.Quorvane.ComparisonBench");
    bool kept = true;
    for (const int count : counts) {
        const std::string path = folder / "machines";
        WriteMachines(path, count);
        kept &= MeasureLoad(path, count);
        kept &= MeasureWindow(path, count);
    }
    std::filesystem::remove_all(folder);
    return kept ? 0 : 1;
}
