#include "results/RunJournal.h"

#include "results/RunFile.h"
#include "tests/results/SampleRun.h"
#include "tests/support/Child.h"
#include "tests/support/Test.h"

#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

class Journal : public testing::Test {
protected:
    Journal()
    {
        fRun.series.clear();
        EXPECT_EQ(fJournal.Begin(fPath, "out.json", fRun), "");
    }

    void Measure(const TestType& test, double seconds, const std::string& undone = "")
    {
        Series& series = fRun.At(test, 2);
        series.undone = undone;
        if (undone.empty())
            series.spans.emplace_back().seconds = seconds;
        fJournal.Add(series);
    }
    // What is wrong with the journal of this text; "" for nothing.
    std::string Complaint(const std::string& text)
    {
        WriteFile(fPath, text);
        const auto read = ReadRunJournal(fPath);
        const auto* why = std::get_if<std::string>(&read);
        return why ? *why : "";
    }

    const TempFolder fFolder;
    const std::string fPath = fFolder / "out.json.journal";
    RunRecord fRun = SampleRun();
    RunJournal fJournal;
};

} // namespace

TEST_F(Journal, HoldsEverySpanAndGoesOnBehindALineThatWasCut)
{
    Measure(TestNamed("Memory"), 0.25);
    Measure(TestNamed("Sieve"), 0, "its flags are wrong");
    Measure(TestNamed("Memory"), 0.5);
    const std::string whole = ReadFile(fPath);
    WriteFile(fPath, whole + "{\"test\":700,\"proc");
    auto journal = std::get<ReadJournal>(ReadRunJournal(fPath));
    EXPECT_EQ(journal.output, "out.json");
    EXPECT_EQ(RunAsJson(journal.record), RunAsJson(fRun));

    RunJournal other;
    ASSERT_EQ(other.GoOn(fPath), "");
    fRun.At(TestNamed("Memory"), 2).spans.emplace_back().seconds = 0.75;
    other.Add(fRun.At(TestNamed("Memory"), 2));
    journal = std::get<ReadJournal>(ReadRunJournal(fPath));
    EXPECT_EQ(RunAsJson(journal.record), RunAsJson(fRun));
    other.Remove();
    EXPECT_FALSE(fs::exists(fPath));
}

TEST_F(Journal, OfAnotherRunIsLeftAsItIsAndDamageIsTold)
{
    Measure(TestNamed("Memory"), 0.25);
    const std::string whole = ReadFile(fPath);
    RunJournal second;
    EXPECT_EQ(second.Begin(fPath, "out.json", fRun),
        "it is of a run that was not finished; --resume or remove it");
    EXPECT_EQ(ReadFile(fPath), whole);
    EXPECT_EQ(second.Begin(fFolder / "none/at/all", "out", fRun), "No such file or directory");
    EXPECT_EQ(second.Begin(fFolder / "new", "a\nb", fRun), "the output's name has a line end");

    EXPECT_EQ(Complaint("1.0\n427\n"), "it is no journal of tarvex-run");
    EXPECT_EQ(Complaint(""), "it is no journal of tarvex-run");
    const size_t record = whole.find('\n', whole.find('\n') + 1) + 1;
    EXPECT_EQ(Complaint(whole.substr(0, record) + "{}\n"), "the run in it schema: is missing");
    EXPECT_EQ(Complaint(whole + "{\"test\":200}\n"), "line 5 of it is damaged");
    EXPECT_EQ(Complaint(whole + "\n"), "line 5 of it is damaged");
    EXPECT_EQ(Complaint(whole), "");
    EXPECT_EQ(Complaint(whole + std::string(64 << 20, ' ')), "it is no journal of tarvex-run");
    EXPECT_EQ(std::get<std::string>(ReadRunJournal(fFolder / "none")), "No such file or directory");
}

TEST_F(Journal, ThatCannotBeWrittenIsToldOnceAndTheRunGoesOn)
{
    const std::string error = "Error writing <" + fPath + ">: File too large\n";
    EXPECT_EQ(InChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit full { fs::file_size(fPath), fs::file_size(fPath) };
        setrlimit(RLIMIT_FSIZE, &full);
        testing::internal::CaptureStderr();
        Measure(TestNamed("Memory"), 0.25);
        Measure(TestNamed("Memory"), 0.5);
        if (testing::internal::GetCapturedStderr() != error)
            return 1;
        RunJournal second;
        return second.Begin(fFolder / "none", std::string(99, 'x'), fRun) == "File too large" ? 0
                                                                                              : 2;
    }),
        0);
    EXPECT_FALSE(fs::exists(fFolder / "none"));
}
