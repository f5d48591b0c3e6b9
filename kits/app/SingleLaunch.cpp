#include "SingleLaunch.h"

#include "AppDefs.h"
#include "Application.h"
#include "ApplicationState.h"
#include "KillGuard.h"
#include "Message.h"
#include "NamedSocket.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr bigtime_t kPatience = 10'000'000;
constexpr bigtime_t kPause = 50'000;
constexpr size_t kMostBytes = 4 << 20; // the system passes no more arguments to a program
constexpr char kTaken = 'k';

// The display without its screen: ":0.0" is ":0".
std::string DisplayName()
{
    const char* display = getenv("DISPLAY");
    const std::string name = display ? display : "";
    const size_t colon = name.rfind(':');
    return colon == name.npos ? name : name.substr(0, name.find('.', colon));
}

// Whether that can be read, or written, before the deadline.
bool WaitFor(int descriptor, short events, bigtime_t deadline)
{
    pollfd source = { descriptor, events, 0 };
    const bigtime_t left = (deadline - system_time()) / 1000;
    return left > 0 && poll(&source, 1, static_cast<int>(left)) > 0;
}

bool SendAll(int connection, std::string_view bytes, bigtime_t deadline)
{
    while (!bytes.empty() && WaitFor(connection, POLLOUT, deadline)) {
        const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        bytes.remove_prefix(sent > 0 ? static_cast<size_t>(sent) : 0);
    }
    return bytes.empty();
}

// Up to the other's end; false if that did not come, or what came is too much.
bool ReceiveAll(int connection, std::string& bytes, bigtime_t deadline)
{
    char block[4096];
    while (bytes.size() <= kMostBytes && WaitFor(connection, POLLIN, deadline)) {
        const ssize_t size = recv(connection, block, sizeof(block), 0);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (size <= 0)
            return size == 0;
        bytes.append(block, static_cast<size_t>(size));
    }
    return false;
}

// The folder and the arguments, each with its zero byte.
std::string OwnArguments()
{
    std::error_code error;
    std::string bytes = std::filesystem::current_path(error).native() + '\0';
    for (const std::string& argument : ProgramArguments())
        bytes += argument + '\0';
    return bytes;
}

BMessage ArgumentsIn(const std::string& bytes)
{
    BMessage message(B_ARGV_RECEIVED);
    int32 count = 0;
    for (size_t at = 0, end; (end = bytes.find('\0', at)) != bytes.npos; at = end + 1) {
        message.AddString(at == 0 ? "cwd" : "argv", bytes.c_str() + at);
        count += at == 0 ? 0 : 1;
    }
    message.AddInt32("argc", count);
    return message;
}

} // namespace

BSingleLaunch::BSingleLaunch(const char* name)
    : fName(std::string(name) + "-" + std::to_string(geteuid()) + "-" + DisplayName())
{
}

BSingleLaunch::~BSingleLaunch()
{
    const KillGuard guard;
    if (fThread >= B_OK) {
        eventfd_write(fEnd, 1);
        status_t value = B_OK;
        wait_for_thread(fThread, &value);
    }
    for (const int descriptor : { fListener, fEnd }) {
        if (descriptor >= 0)
            close(descriptor);
    }
}

status_t BSingleLaunch::Claim(bool handOver)
{
    const bigtime_t deadline = system_time() + kPatience;
    // Again and again: the other may end meanwhile, and two that start at once may both find it so.
    for (;;) {
        fListener = kernel::ListenAs(fName);
        if (fListener >= 0)
            return B_OK;
        if (errno != EADDRINUSE) {
            fprintf(stderr, "Cannot find out what was started before: %s\n", strerror(errno));
            return B_ERROR;
        }
        if (!handOver)
            return B_BUSY;
        const status_t status = Offer(deadline);
        if (status != B_ENTRY_NOT_FOUND)
            return status;
        if (system_time() > deadline)
            return B_TIMED_OUT;
        snooze(kPause);
    }
}

// B_ENTRY_NOT_FOUND: the other has ended, or is about to.
status_t BSingleLaunch::Offer(bigtime_t deadline)
{
    const int connection = kernel::ConnectTo(fName);
    if (connection < 0)
        return B_ENTRY_NOT_FOUND;
    ucred who {};
    status_t status = B_ENTRY_NOT_FOUND;
    if (!kernel::PeerOf(connection, who) || who.uid != geteuid()) {
        fprintf(stderr, "Another user's program stands where later starts are told of\n");
        status = B_ERROR;
    } else {
        fOther = who.pid;
        std::string answer;
        const bool isSent =
            SendAll(connection, OwnArguments(), deadline) && shutdown(connection, SHUT_WR) == 0;
        if (isSent && ReceiveAll(connection, answer, deadline) && answer.starts_with(kTaken))
            status = B_ALREADY_RUNNING;
        else if (system_time() >= deadline)
            status = B_TIMED_OUT;
    }
    close(connection);
    return status;
}

void BSingleLaunch::Serve()
{
    if (fListener < 0 || fThread >= B_OK)
        return;
    const KillGuard guard;
    fTarget = be_app_messenger;
    fEnd = eventfd(0, EFD_CLOEXEC);
    fThread =
        fEnd < 0 ? B_ERROR : spawn_thread(ThreadEntry, "later starts", B_NORMAL_PRIORITY, this);
    if (fThread >= B_OK) {
        resume_thread(fThread);
        return;
    }
    // Nobody is to wait for answers that never come.
    fprintf(stderr, "Cannot start thread <later starts>\n");
    close(fListener);
    fListener = -1;
}

int32 BSingleLaunch::ThreadEntry(void* launch)
{
    static_cast<BSingleLaunch*>(launch)->Listen();
    return B_OK;
}

void BSingleLaunch::Listen()
{
    for (;;) {
        pollfd sources[] = { { fEnd, POLLIN, 0 }, { fListener, POLLIN, 0 } };
        if (poll(sources, 2, -1) < 0 && errno != EINTR)
            return;
        if (sources[0].revents != 0)
            return;
        const int connection = accept4(fListener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (connection < 0) {
            snooze(kPause); // too many open files: the start is still there at the next look
            continue;
        }
        Take(connection);
        close(connection);
    }
}

// Answers when the application has handled the message, so that nothing is lost by one that quits.
void BSingleLaunch::Take(int connection)
{
    constexpr bigtime_t kForSending = 2'000'000;
    ucred who {};
    std::string bytes;
    if (!kernel::PeerOf(connection, who) || who.uid != geteuid()
        || !ReceiveAll(connection, bytes, system_time() + kForSending))
        return;
    BMessage message = ArgumentsIn(bytes);
    BMessage reply;
    if (message.HasString("argv")
        && fTarget.SendMessage(&message, &reply, kPatience, kPatience) == B_OK)
        SendAll(connection, std::string_view(&kTaken, 1), system_time() + kForSending);
}
