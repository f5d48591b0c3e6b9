#include "results/PackedRecord.h"

#include "results/Results.h"
#include "sysinfo/LibSysInfo.h"
#include "tests/support/Test.h"

#include <random>

namespace {

// The last time is the greatest below 16, above which a float does not hold every millionth.
const std::string kRecord = "AT Clone (2-x) 128MB RAM\t-1:8 bit color\t1:Vendor: IDE\t"
                            "100:1000/0.412000,8.790001;700:50/15.999999,0.000000;";

std::string Written(const Results& machine)
{
    char record[kRecordSize];
    EXPECT_TRUE(machine.Write(record));
    return record;
}

std::string Table(const Results& machine, const std::string& path)
{
    FILE* file = fopen(path.c_str(), "w");
    machine.SaveHeader(file, 3);
    machine.SaveUnits(file, 3);
    machine.Save(file, 3);
    fclose(file);
    return ReadFile(path);
}

} // namespace

TEST(PackedRecord, IsTakenOnlyWhereReadingAndWritingGiveItAgainInSilence)
{
    EXPECT_EQ(PackedRecord::Of(kRecord).Text(), kRecord);
    constexpr char kLetters[] = "0123456789.,;:/\t-+( x";
    std::minstd_rand random(1);
    const LibSysInfo thisMachine;
    int taken = 0;
    testing::internal::CaptureStderr();
    for (int i = 0; i < 20000; i++) {
        std::string record = kRecord;
        for (size_t changes = random() % 3 + 1; changes > 0; changes--) {
            const std::string letters(random() % 2, kLetters[random() % (sizeof kLetters - 1)]);
            record.replace(random() % record.size(), random() % 2, letters);
        }
        if (PackedRecord::Of(record).IsEmpty())
            continue;
        taken++;
        Results machine(false, thisMachine);
        machine.Read(record.c_str());
        ASSERT_EQ(Written(machine), record);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_GT(taken, 1000);
}

TEST(PackedRecord, MachinesAnswerAndAreSavedAsWholeOnes)
{
    const TempFolder folder;
    const LibSysInfo thisMachine;
    Results whole(false, thisMachine);
    whole.Read(kRecord.c_str());
    const auto packed = Results::FromRecord(kRecord.c_str(), thisMachine);
    EXPECT_TRUE(packed->IsPacked());
    Results copy(false, thisMachine);
    copy = *packed;
    const auto unpacked = packed->Unpacked();
    for (Results* machine : { packed.get(), &copy, unpacked.get() }) {
        EXPECT_EQ(Written(*machine), kRecord);
        EXPECT_EQ(machine->nbrCpus, 2);
        EXPECT_EQ(machine->devices.Size(), 2);
        EXPECT_EQ(Table(*machine, folder / "table"), Table(whole, folder / "whole"));
        EXPECT_TRUE(machine->MakeFirstCurrent());
        for (const char* test : { "Sieve", "Strings Copy", "Savage" }) {
            Metric probe;
            probe.Description(test);
            EXPECT_EQ(machine->Has(probe), whole.Has(probe)) << test;
            EXPECT_EQ(machine->BestRate(probe), whole.BestRate(probe)) << test;
            EXPECT_EQ(machine->MakeCurrent(probe), whole.MakeCurrent(probe)) << test;
            const Metric* shown = machine->Current();
            ASSERT_EQ(shown != nullptr, whole.Current() != nullptr) << test;
            for (int slot = 0; shown && slot < kMostTimes; slot++)
                EXPECT_EQ(shown->Rate(slot), whole.Current()->Rate(slot)) << test;
        }
    }
}
