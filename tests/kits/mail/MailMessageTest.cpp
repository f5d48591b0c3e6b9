// What becomes of a mail that cannot go its usual way; that is seen in tests/ui/JourneyTest.cpp.
#include "E-mail.h"
#include "Errors.h"
#include "tests/support/Child.h"
#include "tests/support/Test.h"

namespace {

// A folder with programs of the test's own, the only ones along PATH.
class MailTest : public testing::Test {
protected:
    MailTest()
    {
        std::filesystem::create_directory(fFolder);
        setenv("PATH", fFolder.c_str(), 1);
    }
    ~MailTest() override { setenv("PATH", fPath.c_str(), 1); }
    std::string File(const std::string& name, const std::string& contents, mode_t mode = 0644)
    {
        const std::string path = fFolder + "/" + name;
        WriteFile(path, contents);
        chmod(path.c_str(), mode);
        return path;
    }
    void Fill(BMailMessage& message, const std::string& enclosure)
    {
        EXPECT_EQ(message.AddHeaderField(B_MAIL_TO, "results@tarvex.example"), B_OK);
        EXPECT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "Gr\u00fc\u00dfe"), B_OK);
        const std::string text = "Results for : a PC.\n.\nFrom here to \u03a9.";
        EXPECT_EQ(message.AddContent(text.c_str(), static_cast<int32>(text.size())), B_OK);
        EXPECT_EQ(message.AddEnclosure(enclosure.c_str()), B_OK);
    }

    const std::string fPath = getenv("PATH");
    const TempFolder fTemp;
    const std::string fFolder = fTemp / "two words";
};

} // namespace

TEST_F(MailTest, WithoutAnAgentTheMailerOpensAndWithNeitherItIsSaid)
{
    if (access("/usr/sbin/sendmail", X_OK) == 0 || access("/usr/lib/sendmail", X_OK) == 0)
        GTEST_SKIP() << "this machine has a mail agent of its own";
    const std::string enclosure = File("a b.zip", "x");
    BMailMessage message;
    Fill(message, enclosure);
    testing::internal::CaptureStderr();
    EXPECT_EQ(message.Send(true), B_LAUNCH_FAILED);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "There is no mail agent: neither <sendmail> nor <xdg-email> can be run\n");

    const std::string seen = fFolder + "/seen";
    File("xdg-email", "#!/bin/sh\nprintf '<%s>' \"$@\" > '" + seen + "'\n", 0755);
    EXPECT_EQ(message.Send(true), B_OK);
    EXPECT_EQ(ReadFile(seen),
        "<--utf8><--subject><Gr\u00fc\u00dfe><--body><Results for : a PC.\n.\nFrom here to \u03a9.>"
        "<--attach><"
            + enclosure + "><results@tarvex.example>");
}

TEST_F(MailTest, AnAgentIsFoundWhereSystemsKeepItApartFromUsersPrograms)
{
    setenv("PATH", fPath.c_str(), 1);
    if (!CanMount())
        GTEST_SKIP() << "may not mount a file system";
    const std::string seen = fFolder + "/seen", enclosure = File("a b.zip", "x");
    const auto send = [&] {
        setenv("PATH", fFolder.c_str(), 1);
        EXPECT_TRUE(TakeOwnMounts());
        EXPECT_EQ(mount("", "/usr/sbin", "tmpfs", 0, ""), 0);
        WriteFile("/usr/sbin/sendmail", "#!/bin/sh\n/bin/cat > '" + seen + "'\n");
        chmod("/usr/sbin/sendmail", 0755);
        BMailMessage message;
        Fill(message, enclosure);
        EXPECT_EQ(message.Send(true), B_OK);
        return HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(InChild(send), 0);
    EXPECT_NE(ReadFile(seen).find("results@tarvex.example"), std::string::npos);
}

TEST_F(MailTest, WhatCannotBeSentIsRefused)
{
    const std::string seen = fFolder + "/seen";
    const std::string agent =
        File("sendmail", "#!/bin/sh\n{ echo \"$@\"; /bin/cat; } > '" + seen + "'\nexit 75\n", 0755);
    const std::string enclosure = File("a b", "x");
    BMailMessage message;
    EXPECT_EQ(message.Send(true), B_BAD_VALUE) << "to nobody";
    EXPECT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "a\nBcc: all@tarvex.example"), B_BAD_VALUE);
    EXPECT_EQ(message.AddEnclosure((fFolder + "/none").c_str()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(message.AddEnclosure(fFolder.c_str()), B_BAD_VALUE);
    Fill(message, enclosure);
    testing::internal::CaptureStderr();
    EXPECT_EQ(message.Send(true), B_ERROR);
    EXPECT_EQ(message.Error(), agent + " ended with status 75");
    EXPECT_TRUE(ReadFile(seen).starts_with("-oi -t\n")) << ReadFile(seen);
    for (const char* part :
        { "\nSubject: =?UTF-8?B?R3LDvMOfZQ==?=\n", "\n.\nFrom here to \u03a9.\n",
            "; charset=utf-8\n", "\nContent-Disposition: attachment; filename=\"a b\"\n" })
        EXPECT_NE(ReadFile(seen).find(part), std::string::npos) << ReadFile(seen);
    std::filesystem::remove(enclosure);
    EXPECT_EQ(message.Send(true), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "<" + agent + "> did not take the mail\nError reading <" + enclosure + ">\n");
}
