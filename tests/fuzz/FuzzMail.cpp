// The bytes are what the user says in a mail: its subject, an address and, behind the second line
// end, the text.
#include "MimeMessage.h"
#include "tests/fuzz/Require.h"

#include <E-mail.h>

#include <set>
#include <strings.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

std::string Written(const MailParts& parts)
{
    const int file = memfd_create("mail", 0);
    Require(tarvex_write_mime_message(parts, file) == B_OK, "the mail is written");
    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    Require(pread(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()),
        "the mail is read");
    close(file);
    return text;
}

// Nothing that was said becomes a header of its own.
void CheckHeaders(const std::string& mail)
{
    const std::set<std::string> expected { "Subject", "To", "Date", "Message-Id", "MIME-Version",
        "Content-Type" };
    std::set<std::string> seen;
    size_t start = 0;
    for (size_t end = 0; (end = mail.find('\n', start)) != start && end != mail.npos;
         start = end + 1) {
        const std::string line = mail.substr(start, end - start);
        Require(line.find('\0') == line.npos, "headers are text");
        if (line[0] == ' ' || line[0] == '\t')
            continue;
        const std::string name = line.substr(0, line.find(':'));
        Require(expected.count(name) == 1, "only expected headers are there");
        Require(seen.insert(name).second, "a header is there once");
    }
    Require(start > 0 && start < mail.size(), "a body follows");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const size_t first = std::min(bytes.find('\n'), size);
    const size_t second = std::min(bytes.find('\n', first + 1), size);
    const std::string subject = bytes.substr(0, first);
    const std::string to = first < size ? bytes.substr(first + 1, second - first - 1) : "";
    MailParts parts;
    BMailMessage mail;
    if (mail.AddHeaderField(B_MAIL_SUBJECT, subject.c_str()) == B_OK)
        parts.headers["Subject"] = subject.substr(0, subject.find('\0'));
    if (mail.AddHeaderField(B_MAIL_TO, to.c_str()) == B_OK)
        parts.headers["To"] = to.substr(0, to.find('\0'));
    parts.text = second < size ? bytes.substr(second + 1) : "";
    CheckHeaders(Written(parts));
    return 0;
}
