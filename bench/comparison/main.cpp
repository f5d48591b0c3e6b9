// comparison: how long thousands of machines take to load, to draw, and to keep. Each time beside
// that of a plain loop which only reads the same bytes. Needs a display; what it stores lies in a
// folder of its own. Status 1 if 10,000 machines miss a limit.
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "ui/CompareWin.h"

#include <Application.h>
#include <View.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

constexpr int kMachines = 10000;
constexpr double kLoadSeconds = 1;
constexpr double kReadBackSeconds = 1;
constexpr double kDrawSeconds = 0.016;
constexpr long kMegabytes = 150;

template <typename Work>
double Seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

long ResidentMegabytes()
{
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1048576;
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

// Into a list alone. Returns whether it kept to the limits, which count for kMachines.
bool MeasureLoad(const std::string& path, int count)
{
    WriteMachines(path, count);
    const double bytes = ReadBytes(path);
    const long before = ResidentMegabytes();
    ResultList machines;
    const double load = Seconds([&] { ReadResultsFile(path.c_str(), machines); });
    const long memory = ResidentMegabytes() - before;
    printf("%7d machines: load %.3f s, %.1f times reading the bytes; %ld MB\n", count, load,
        load / bytes, memory);
    return count != kMachines || (load < kLoadSeconds && memory < kMegabytes);
}

bool MeasureWindow(const std::string& path)
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
    run.NewTest("Strings Copy", 1000)->Time(0.5f);
    window->SetResults(run);
    window->Lock();
    BView* chart = window->FindView("DrawView");
    chart->ScrollTo(0, 17 * kMachines / 2);
    const double draw = Seconds([&] {
        chart->Draw(chart->Bounds());
        chart->Sync();
    });
    window->Quit();
    const double bytes = ReadBytes(path);
    printf("%7d machines: load and store %.3f s, read back %.3f s (%.1f and %.1f times reading the "
           "bytes); draw what is seen %.2f ms\n",
        kMachines, store, readBack, store / bytes, readBack / bytes, draw * 1000);
    return readBack < kReadBackSeconds && draw < kDrawSeconds;
}

} // namespace

int main()
{
    const auto folder =
        std::filesystem::temp_directory_path() / ("tarvex-bench-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    const std::string path = folder / "machines";
    bool kept = true;
    for (const int count : { 1000, kMachines, 10 * kMachines })
        kept &= MeasureLoad(path, count);
    const BApplication app("application/x-vnd.Quorvane.ComparisonBench");
    WriteMachines(path, kMachines);
    kept &= MeasureWindow(path);
    std::filesystem::remove_all(folder);
    return kept ? 0 : 1;
}
