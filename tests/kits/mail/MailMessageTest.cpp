// Mail as it arrives: handed to a real agent, which delivers it to a server of the test.
#include "E-mail.h"
#include "Errors.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

// Takes one mail by SMTP.
class MailServer {
public:
    MailServer() : fSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        bind(fSocket, reinterpret_cast<sockaddr*>(&address), length);
        getsockname(fSocket, reinterpret_cast<sockaddr*>(&address), &length);
        fPort = ntohs(address.sin_port);
        listen(fSocket, 1);
        fThread = std::thread([this] { Serve(); });
    }
    ~MailServer()
    {
        shutdown(fSocket, SHUT_RDWR);
        if (fThread.joinable())
            fThread.join();
        close(fSocket);
    }
    int Port() const { return fPort; }
    // Everything that the client said.
    std::string Session()
    {
        fThread.join();
        return fSession;
    }

private:
    void Serve()
    {
        const int client = accept(fSocket, nullptr, nullptr);
        FILE* in = fdopen(client, "r");
        if (!in)
            return;
        dprintf(client, "220 ready\r\n");
        char line[2000];
        bool isData = false;
        while (fgets(line, sizeof line, in)) {
            const std::string text(line);
            fSession += isData && text.starts_with("..") ? text.substr(1) : text;
            if (isData && text != ".\r\n")
                continue;
            isData = text == "DATA\r\n";
            dprintf(client, isData ? "354 go on\r\n" : "250 ok\r\n");
            if (text == "QUIT\r\n")
                break;
        }
        fclose(in);
    }

    int fSocket;
    int fPort = 0;
    std::string fSession;
    std::thread fThread;
};

// A folder with programs of the test's own, the only ones along PATH.
class MailTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directory(fFolder);
        setenv("PATH", fFolder.c_str(), 1);
    }
    void TearDown() override
    {
        setenv("PATH", fPath.c_str(), 1);
        std::filesystem::remove_all(fFolder);
    }
    std::string File(const std::string& name, const std::string& contents, mode_t mode = 0644)
    {
        const std::string path = fFolder + "/" + name;
        std::ofstream(path) << contents;
        chmod(path.c_str(), mode);
        return path;
    }
    void Fill(BMailMessage& message, const std::string& enclosure)
    {
        EXPECT_EQ(message.AddHeaderField(B_MAIL_TO, "results@tarvex.example"), B_OK);
        EXPECT_EQ(message.AddHeaderField(B_MAIL_SUBJECT,
                      "Gr\xc3\xbc\xc3\x9f"
                      "e"),
            B_OK);
        const std::string text = "Results for : a PC.\n.\nFrom here on.";
        EXPECT_EQ(message.AddContent(text.c_str(), static_cast<int32>(text.size())), B_OK);
        EXPECT_EQ(message.AddEnclosure(enclosure.c_str()), B_OK);
    }

    const std::string fPath = getenv("PATH");
    const std::string fFolder = testing::TempDir() + "mail " + std::to_string(getpid());
};

} // namespace

TEST_F(MailTest, ArrivesWholeByARealAgent)
{
    MailServer server;
    const std::string settings = File("settings",
        "account default\nhost 127.0.0.1\nport " + std::to_string(server.Port())
            + "\nfrom me@tarvex.example\ntls off\nauth off\n",
        0600);
    File("sendmail", "#!/bin/sh\nexec /usr/bin/msmtp -C '" + settings + "' \"$@\"\n", 0755);
    std::string bytes;
    for (int i = 0; i < 2000; i++)
        bytes += static_cast<char>(i * 7);
    BMailMessage message;
    Fill(message, File("Tarvex results.zip", bytes));
    ASSERT_EQ(message.Send(true), B_OK);

    const std::string session = server.Session();
    std::ofstream(fFolder + "/mail") << session.substr(session.find("DATA\r\n") + 6);
    EXPECT_NE(session.find("RCPT TO:<results@tarvex.example>"), std::string::npos);
    // Read by a program that is not ours.
    const std::string reader = File("reader.py",
        "import email, email.policy, sys\n"
        "m = email.message_from_bytes(open(sys.argv[1], 'rb').read(), "
        "policy=email.policy.default)\n"
        "text, file = list(m.iter_parts())\n"
        "print(m['to'], m['subject'], m['from'], bool(m['date']), "
        "text.get_content().strip().splitlines(),\n"
        "    file.get_filename(), file.get_content_disposition(), file.get_content() ==\n"
        "    bytes(i * 7 % 256 for i in range(2000)))\n");
    const std::string command =
        "/usr/bin/python3 '" + reader + "' '" + fFolder + "/mail' > '" + fFolder + "/parsed'";
    ASSERT_EQ(system(("PATH=/usr/bin " + command).c_str()), 0);
    std::ostringstream parsed;
    parsed << std::ifstream(fFolder + "/parsed").rdbuf();
    EXPECT_EQ(parsed.str(),
        "results@tarvex.example Gr\xc3\xbc\xc3\x9f"
        "e me@tarvex.example True "
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
    std::ostringstream arguments;
    arguments << std::ifstream(seen).rdbuf();
    EXPECT_EQ(arguments.str(),
        "<--utf8><--subject><Gr\xc3\xbc\xc3\x9f"
        "e><--body><Results for : a PC.\n.\nFrom here on.>"
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
    EXPECT_EQ(message.AddHeaderField(B_MAIL_TO, "another"), B_ERROR);
    testing::internal::CaptureStderr();
    EXPECT_EQ(message.Send(true), B_ERROR);
    std::filesystem::remove(enclosure);
    EXPECT_EQ(message.Send(true), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "<" + agent + "> did not take the mail\nError reading <" + enclosure + ">\n");
}
