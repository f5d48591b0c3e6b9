// What becomes of a mail; on its usual way, and by an agent where systems keep it apart from users'
// programs, it is seen in tests/ui/JourneyTest.cpp too.
#include "E-mail.h"
#include "Errors.h"
#include "tests/support/Calls.h"
#include "tests/support/Child.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <sys/resource.h>

namespace {

// A folder with programs of the test's own, the only ones along PATH.
class MailTest : public testing::Test {
protected:
    MailTest()
    {
        std::filesystem::create_directory(fFolder);
        setenv("PATH", (":/none:" + fFolder).c_str(), 1);
        EXPECT_EQ(fMail.AddHeaderField(B_MAIL_TO, "results@tarvex.example"), B_OK);
        EXPECT_EQ(fMail.AddHeaderField(B_MAIL_SUBJECT, "Gr\u00fc\u00dfe"), B_OK);
        EXPECT_EQ(fMail.AddContent(kText.c_str(), static_cast<int32>(kText.size())), B_OK);
        EXPECT_EQ(fMail.AddEnclosure(File("a b.zip", "enclosed\n").c_str()), B_OK);
    }
    ~MailTest() override { setenv("PATH", fPath.c_str(), 1); }
    std::string File(const std::string& name, const std::string& contents, mode_t mode = 0644)
    {
        const std::string path = fFolder + "/" + name;
        WriteFile(path, contents);
        chmod(path.c_str(), mode);
        return path;
    }
    // "STATUS ERROR|" and " left to the user" of it, then what was said on standard error. Without
    // the test's folder.
    std::string Sent(BMailMessage& mail)
    {
        testing::internal::CaptureStderr();
        const status_t status = mail.Send(true);
        const std::string told = std::to_string(status) + " " + mail.Error()
            + (mail.IsLeftToUser() ? "|left to the user|" : "|")
            + testing::internal::GetCapturedStderr();
        return std::regex_replace(told, std::regex(fFolder + "/"), "");
    }

    const std::string kText = "Results for : a PC.\n.\nFrom here to \u03a9.";
    const std::string fPath = getenv("PATH");
    const TempFolder fTemp;
    const std::string fFolder = fTemp / "two words";
    BMailMessage fMail;
};

// By the words of the tables.
const std::map<std::string, status_t> kAnswers { { "fine", B_OK }, { "bad", B_BAD_VALUE },
    { "refused", B_ERROR }, { "none", B_ENTRY_NOT_FOUND }, { "not run", B_LAUNCH_FAILED } };
const std::string kFailed = std::to_string(B_ERROR);
const std::string kNotRun = std::to_string(B_LAUNCH_FAILED);

} // namespace

TEST_F(MailTest, GoesToTheAgentWhole)
{
    const std::string enclosure = fFolder + "/a b.zip";
    BMailMessage mail;
    EXPECT_EQ(Sent(mail), std::to_string(B_BAD_VALUE) + " it is to nobody|");
    const Calls<BMailMessage> calls { { "header", Function(&BMailMessage::AddHeaderField) },
        { "text", Function(&BMailMessage::AddContent) },
        { "file", Function(&BMailMessage::AddEnclosure) } };
    File("c", "");
    File("d", "d\n");
    std::filesystem::current_path(fFolder);
    for (const Row& row : RowsOf("kits/mail/data/calls.txt", 4))
        EXPECT_EQ(calls.at(row[1])(mail, row), std::to_string(kAnswers.at(row[0])))
            << testing::PrintToString(row);
    const std::string seen = fFolder + "/seen";
    File("sendmail", "#!/bin/sh\n{ echo \"$@\"; /bin/cat; } >'" + seen + "'\n", 0755);
    EXPECT_EQ(Sent(mail), "0 |");
    const std::regex random("=-[A-Za-z0-9+/]*|Date: .*");
    EXPECT_EQ(std::regex_replace(ReadFile(seen), random, "#"),
        ReadFile(TARVEX_TESTS "/kits/mail/data/whole"));

    std::filesystem::remove(enclosure);
    EXPECT_EQ(Sent(mail),
        std::to_string(B_ENTRY_NOT_FOUND)
            + " the mail cannot be written|Error reading <a b.zip>\n");
    std::filesystem::current_path("/");
}

TEST_F(MailTest, IsRefusedByItsAgentForAReason)
{
    for (const Row& row : RowsOf("kits/mail/data/agents.txt", 4)) {
        File("sendmail", "#!" + row[0], 0755);
        const std::string status = std::to_string(kAnswers.at(row[1]));
        EXPECT_EQ(Sent(fMail), status + " " + row[2] + "|" + row[3]) << row[0];
    }
    // With no room for a file, and for no byte of one.
    for (const auto& [limited, why] : { std::pair(RLIMIT_NOFILE, "there is no room for the mail"),
             { RLIMIT_FSIZE, "the mail cannot be written" } }) {
        EXPECT_EQ(InChild([&, limited = limited, why = why] {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit none { 0, 0 };
            setrlimit(limited, &none);
            return fMail.Send() == B_DEVICE_FULL && fMail.Error() == why ? 0 : 1;
        }),
            0)
            << why;
    }
}

TEST_F(MailTest, WithoutAnAgentIsLeftToTheMailer)
{
    if (access("/usr/sbin/sendmail", X_OK) == 0 || access("/usr/lib/sendmail", X_OK) == 0)
        GTEST_SKIP() << "this machine has a mail agent of its own";
    File("sendmail", "#!/bin/sh\n"); // which nobody may run
    EXPECT_EQ(Sent(fMail),
        kNotRun
            + " there is neither sendmail nor xdg-email|"
              "There is no mail agent: neither <sendmail> nor <xdg-email> can be run\n");
    const std::string seen = fFolder + "/seen";
    File("xdg-email", "#!/bin/sh\nprintf '<%s>' \"$@\" >'" + seen + "'\necho opened >&2\n", 0755);
    EXPECT_EQ(Sent(fMail), "0 |left to the user|opened\n");
    EXPECT_EQ(ReadFile(seen),
        "<--utf8><--subject><Gr\u00fc\u00dfe><--body><" + kText + "><--attach><" + fFolder
            + "/a b.zip><results@tarvex.example>");
    File("xdg-email", "#!/bin/sh\nexit 3\n", 0755);
    EXPECT_EQ(Sent(fMail),
        kFailed + " xdg-email ended with status 3|<xdg-email> did not take the mail\n");
}
