// From the results to the mail, by real clicks and keys, with the system's own tools.
#include "ui/ResultsWin.h"

#include "tests/support/ScreenDriver.h"
#include "tests/support/TempFolder.h"

#include <Application.h>
#include <Entry.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using screen::IsActive;
using screen::WaitFor;

class ResultsSaveTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!screen::IsThere())
            GTEST_SKIP() << "no display";
        fs::remove_all("/tmp/results");
        fs::create_directories(folder / "bin");
        setenv("PATH", (folder / "bin:" + path).c_str(), 1);
        setenv("XDG_DATA_HOME", folder.Path().c_str(), 1);
        WriteFile(folder / "bin/sendmail", "#!/bin/sh\ncat > '" + folder / "mail" + "'\n");
        chmod((folder / "bin/sendmail").c_str(), 0755);

        run.NewTest("Sieve", 100)->Time(0.5f);
        window = new ResultsWin(1);
        window->Update(run, false);
        window->Show();
    }
    void TearDown() override
    {
        setenv("PATH", path.c_str(), 1);
        fs::current_path("/");
    }

    // Presses "Save..." and answers up to the dialog in which the configuration is typed.
    void SaveAs(const std::string& name)
    {
        ASSERT_TRUE(WaitFor([] { return IsActive("Results"); }));
        ASSERT_TRUE(screen::Click("save"));
        ASSERT_TRUE(WaitFor([] { return IsActive(""); })) << "the run was not complete";
        screen::Key("y");
        ASSERT_TRUE(WaitFor([] { return IsActive("Unknown Devices") || IsActive("Save As"); }));
        if (IsActive("Unknown Devices"))
            screen::Key("alt+F4");
        ASSERT_TRUE(WaitFor([] { return IsActive("Save As"); }));
        const std::string typed = folder / name;
        screen::Type(typed);
        ASSERT_TRUE(WaitFor([&] { return screen::Find("fileNameEdit").text == typed; }));
        screen::Key("Return");
        ASSERT_TRUE(WaitFor([] { return IsActive("alert"); }));
    }

    const std::string path = getenv("PATH");
    const TempFolder folder;
    BApplication app { "application/x-vnd.Quorvane.SaveTest" };
    Results run { true };
    ResultsWin* window = nullptr;
};

} // namespace

TEST_F(ResultsSaveTest, IsPackedAndMailedWithWhatTheUserTyped)
{
    SaveAs("mine");
    ASSERT_TRUE(screen::Click("config"));
    screen::Type("a beige box");
    ASSERT_TRUE(screen::Click("_b1_"));
    ASSERT_TRUE(
        WaitFor([&] { return ReadFile(folder / "mail").find("\n--") != std::string::npos; }));
    const std::string mail = ReadFile(folder / "mail");
    for (const char* part : { "To: support@tarvex.example\n", "Subject: Tarvex results\n",
             "Results for : a beige box.", "filename=mine.zip" })
        EXPECT_NE(mail.find(part), std::string::npos) << part;

    EXPECT_FALSE(fs::exists(folder / "mine") || fs::exists("/tmp/results"));
    const std::string unpack = "cd '" + folder.Path() + "' && unzip -q mine.zip && tar xf mine";
    ASSERT_EQ(system(unpack.c_str()), 0);
    const std::string record = ReadFile(folder / "tmp/results/mine");
    EXPECT_TRUE(record.starts_with("1.0\n")) << record;
    EXPECT_NE(record.find(":100/0.500000;\n"), std::string::npos) << record;
}

TEST_F(ResultsSaveTest, SavesThePlainFileWhereThePackageCannotBeMade)
{
    // Somebody has been there before.
    const std::string victim = folder / "precious";
    WriteFile(victim, "precious");
    fs::create_symlink(victim, "/tmp/results");
    testing::internal::CaptureStderr();
    SaveAs("plain");
    ASSERT_TRUE(screen::Click("_b0_"));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("</tmp/results> is in the way\n"),
        std::string::npos);
    fs::remove("/tmp/results");
    EXPECT_EQ(ReadFile(victim), "precious");
    EXPECT_TRUE(ReadFile(folder / "plain").starts_with("1.0\n"));
    EXPECT_FALSE(fs::exists(folder / "plain.zip"));
}

TEST_F(ResultsSaveTest, WithoutZipTheArchiveIsKeptAndSaysSo)
{
    for (const char* tool : { "sh", "cat" })
        fs::create_symlink(std::string("/usr/bin/") + tool, folder / ("bin/" + std::string(tool)));
    setenv("PATH", (folder / "bin").c_str(), 1);
    ASSERT_TRUE(WaitFor([] { return IsActive("Results"); }));
    BMessage reply(503);
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(folder.Path().c_str(), &ref), B_OK);
    reply.AddRef("directory", &ref);
    reply.AddString("name", "archive");
    window->PostMessage(&reply);
    ASSERT_TRUE(WaitFor([] { return IsActive("Information"); }));
    setenv("PATH", path.c_str(), 1);
    screen::Key("Return");
    ASSERT_TRUE(WaitFor([] { return IsActive("alert"); }));
    ASSERT_TRUE(screen::Click("_b0_"));
    EXPECT_EQ(system(("tar tf '" + folder / "archive' >/dev/null").c_str()), 0);
}
