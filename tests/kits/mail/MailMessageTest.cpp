// Mail as it arrives: handed to a real agent, which delivers it to a server of the test.
#include "E-mail.h"
#include "Errors.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Prints a port, takes one mail there by SMTP and prints what a library not ours reads in it.
constexpr char kServer[] = R"(
import email, email.policy, socket
server = socket.create_server(('127.0.0.1', 0))
server.settimeout(60)
print(server.getsockname()[1], flush=True)
lines = server.accept()[0].makefile('rwb', 0)
lines.write(b'220 ready\r\n')
mail, isData = b'', False
for line in lines:
    if isData and line != b'.\r\n':
        mail += line[line.startswith(b'..'):]
        continue
    isData = line == b'DATA\r\n'
    lines.write(b'354 go on\r\n' if isData else b'250 ok\r\n')
    if line.startswith(b'RCPT'):
        print(line.decode().strip())
    if line == b'QUIT\r\n':
        break
m = email.message_from_bytes(mail, policy=email.policy.default)
text, file = list(m.iter_parts())
print(m['to'], m['subject'], m['from'], bool(m['date']), text.get_content().strip().splitlines(),
    file.get_filename(), file.get_content_disposition(),
    file.get_content() == bytes(i * 7 % 256 for i in range(2000)))
)";

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
        const std::string text = "Results for : a PC.\n.\nFrom here on.";
        EXPECT_EQ(message.AddContent(text.c_str(), static_cast<int32>(text.size())), B_OK);
        EXPECT_EQ(message.AddEnclosure(enclosure.c_str()), B_OK);
    }

    const std::string fPath = getenv("PATH");
    const TempFolder fTemp;
    const std::string fFolder = fTemp / "two words";
};

} // namespace

TEST_F(MailTest, ArrivesWholeByARealAgent)
{
    FILE* server = popen(("/usr/bin/python3 '" + File("server.py", kServer) + "'").c_str(), "r");
    char line[500] = "";
    ASSERT_TRUE(server && fgets(line, sizeof line, server));
    const std::string settings = File("settings",
        std::string("account default\nhost 127.0.0.1\nport ") + line
            + "from me@tarvex.example\ntls off\nauth off\n",
        0600);
    File("sendmail", "#!/bin/sh\nexec /usr/bin/msmtp -C '" + settings + "' \"$@\"\n", 0755);
    std::string bytes;
    for (int i = 0; i < 2000; i++)
        bytes += static_cast<char>(i * 7);
    BMailMessage message;
    Fill(message, File("Tarvex results.zip", bytes));
    EXPECT_EQ(message.Send(true), B_OK);
    std::string arrived;
    while (fgets(line, sizeof line, server))
        arrived += line;
    EXPECT_EQ(pclose(server), 0);
    EXPECT_EQ(arrived,
        "RCPT TO:<results@tarvex.example>\n"
        "results@tarvex.example Gr\u00fc\u00dfe me@tarvex.example True "
        "['Results for : a PC.', '.', 'From here on.'] Tarvex results.zip attachment True\n");
}

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
        "<--utf8><--subject><Gr\u00fc\u00dfe><--body><Results for : a PC.\n.\nFrom here on.>"
        "<--attach><"
            + enclosure + "><results@tarvex.example>");
}

TEST_F(MailTest, WhatCannotBeSentIsRefused)
{
    const std::string agent = File("sendmail", "#!/bin/sh\nexit 75\n", 0755);
    const std::string enclosure = File("file", "x");
    BMailMessage message;
    EXPECT_EQ(message.Send(true), B_BAD_VALUE) << "to nobody";
    EXPECT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "a\nBcc: all@tarvex.example"), B_BAD_VALUE);
    EXPECT_EQ(message.AddEnclosure((fFolder + "/none").c_str()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(message.AddEnclosure(fFolder.c_str()), B_BAD_VALUE);
    Fill(message, enclosure);
    testing::internal::CaptureStderr();
    EXPECT_EQ(message.Send(true), B_ERROR);
    std::filesystem::remove(enclosure);
    EXPECT_EQ(message.Send(true), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "<" + agent + "> did not take the mail\nError reading <" + enclosure + ">\n");
}
