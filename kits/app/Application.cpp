#include "Application.h"

#include "ApplicationState.h"
#include "AppRegistry.h"
#include "Entry.h"
#include "LooperLock.h"
#include "MessageDelivery.h"
#include "MessagePort.h"
#include "Roster.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <strings.h>
#include <unistd.h>
#include <utility>
#include <vector>

BApplication* be_app = nullptr;
BMessenger be_app_messenger;

namespace {

constexpr bigtime_t kFirstPulseRate = 500'000;
constexpr bigtime_t kPulseGrain = 100'000;

bool IsApplicationType(const char* signature)
{
    static constexpr char kSuper[] = "application/";
    constexpr size_t length = sizeof(kSuper) - 1;
    if (!signature || strncasecmp(signature, kSuper, length) != 0
        || strlen(signature) >= static_cast<size_t>(B_MIME_TYPE_LENGTH))
        return false;
    const char* subtype = signature + length;
    if (*subtype == '\0')
        return false;
    for (; *subtype; ++subtype) {
        const auto byte = static_cast<unsigned char>(*subtype);
        // What no token of a type may contain (RFC 2045, section 5.1).
        if (byte <= ' ' || byte >= 0x7f || strchr("()<>@,;:\\\"/[]?=", byte))
            return false;
    }
    return true;
}

app_info DescribeProcess(port_id port, const char* signature)
{
    app_info info;
    info.thread = find_thread(nullptr);
    info.team = getpid();
    info.port = port;
    info.flags = B_MULTIPLE_LAUNCH;
    std::error_code error;
    // Not argv[0]: whoever starts a program may write into that what he likes.
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error || get_ref_for_path(program.c_str(), &info.ref) != B_OK)
        fprintf(stderr, "Program file not found <%s>\n", program.c_str());
    snprintf(info.signature, sizeof(info.signature), "%s", signature);
    return info;
}

} // namespace

BApplication::BApplication(const char* signature) : BApplication(signature, nullptr) { }

BApplication::BApplication(const char* signature, status_t* error) : BLooper(signature)
{
    fStatus = Start(signature);
    if (error) {
        *error = fStatus;
    } else if (fStatus != B_OK) {
        fprintf(stderr, "%s <%s>\n",
            fStatus == B_NOT_ALLOWED ? "A second application object" : "Bad signature",
            signature ? signature : "");
        // The caller has no status to look at, and without an application nothing that follows
        // works.
        exit(1);
    }
}

status_t BApplication::Start(const char* signature)
{
    if (!IsApplicationType(signature))
        return B_BAD_VALUE;
    if (be_app)
        return B_NOT_ALLOWED;
    be_app = this;
    be_app_messenger = BMessenger(this);
    AppRegistry::Instance().SetApplication(be_app_messenger);
    SetRunningApplication(DescribeProcess(fPort->Id(), signature));
    SetPulse(kFirstPulseRate);
    // Before the other: a program that is ready knows its arguments.
    PostArguments();
    PostAlways(be_app_messenger, BMessage(B_READY_TO_RUN));
    fSignals = std::make_unique<SignalWatch>(be_app_messenger);
    return B_OK;
}

BApplication::~BApplication()
{
    if (fStatus != B_OK)
        return;
    fSignals.reset();
    QuitWindows(false);
    SetRunningApplication({});
    AppRegistry::Instance().SetApplication(BMessenger());
    be_app_messenger = BMessenger();
    be_app = nullptr;
}

thread_id BApplication::Run()
{
    if (fStatus != B_OK)
        return B_NO_INIT;
    if (fThread != B_ERROR)
        return fThread;
    fThread = find_thread(nullptr);
    fPort->SetReader(fThread);
    AppRegistry::Instance().SetRuns(this);
    fLock->Release();
    Loop();
    return fThread;
}

void BApplication::Quit()
{
    if (fThread == B_ERROR)
        BLooper::Quit();
    else if (fThread == find_thread(nullptr))
        fEnded = true;
    else
        PostAlways(be_app_messenger, BMessage(_QUIT_));
}

bool BApplication::QuitRequested()
{
    return QuitWindows(true);
}

// Not analysed: it may be called with the lock and without.
bool BApplication::QuitWindows(bool ask) NO_THREAD_SAFETY_ANALYSIS
{
    // No block but the reverse of one: windows may need the application to answer.
    const int32 locks = IsLocked() ? CountLocks() : 0;
    for (int32 i = 0; i < locks; ++i)
        Unlock();
    const bool allQuit = QuitWindowsUnlocked(ask);
    for (int32 i = 0; i < locks; ++i)
        Lock();
    return allQuit;
}

bool BApplication::QuitWindowsUnlocked(bool ask)
{
    // Each window may take others with it, so the list is read anew every time.
    for (;;) {
        const LooperRecord window = AppRegistry::Instance().FirstAskedToQuit();
        if (!window.looper)
            return true;
        // No block: Quit() unlocks, as often as it is locked.
        if (window.lock->Lock(B_INFINITE_TIMEOUT) != B_OK)
            continue;
        if (ask && !window.looper->QuitRequested()) {
            window.lock->Unlock();
            return false;
        }
        if (window.lock->Lock(B_INFINITE_TIMEOUT) == B_OK) // it may have quit itself meanwhile
            window.looper->Quit();
    }
}

void BApplication::ReadyToRun() { }

void BApplication::ArgvReceived(int32, char**) { }

void BApplication::RefsReceived(BMessage*) { }

void BApplication::AboutRequested() { }

void BApplication::AppActivated(bool) { }

void BApplication::Pulse() { }

void BApplication::MessageReceived(BMessage* message)
{
    BLooper::MessageReceived(message);
}

void BApplication::DispatchMessage(BMessage* message, BHandler* handler)
{
    const uint32 what = handler == this ? message->what : 0; // other handlers' are not ours
    switch (what) {
        case B_READY_TO_RUN:
            // Once, whoever sends the message again.
            if (!std::exchange(fReadyToRun, true))
                ReadyToRun();
            break;
        case B_ARGV_RECEIVED: ReceiveArguments(*message); break;
        case B_REFS_RECEIVED: RefsReceived(message); break;
        case B_ABOUT_REQUESTED: AboutRequested(); break;
        case B_APP_ACTIVATED: {
            bool active = false;
            if (message->FindBool("active", &active) == B_OK)
                AppActivated(active);
            break;
        }
        case B_PULSE: Pulse(); break;
        default: BLooper::DispatchMessage(message, handler);
    }
}

void BApplication::PostArguments()
{
    const std::vector<std::string> arguments = ProgramArguments();
    if (arguments.size() < 2)
        return;
    BMessage message(B_ARGV_RECEIVED);
    message.AddInt32("argc", static_cast<int32>(arguments.size()));
    for (const std::string& argument : arguments)
        message.AddString("argv", argument.c_str());
    std::error_code error;
    message.AddString("cwd", std::filesystem::current_path(error).c_str());
    PostAlways(be_app_messenger, message);
}

void BApplication::ReceiveArguments(const BMessage& message)
{
    std::vector<std::string> texts;
    const char* text = nullptr;
    for (int32 i = 0; message.FindString("argv", i, &text) == B_OK; ++i)
        texts.emplace_back(text);
    if (texts.empty())
        return;
    std::vector<char*> arguments;
    for (std::string& argument : texts)
        arguments.push_back(argument.data());
    // As main() has them: writable, and a null pointer behind the last.
    arguments.push_back(nullptr);
    ArgvReceived(static_cast<int32>(texts.size()), arguments.data());
}

void BApplication::SetPulseRate(bigtime_t rate)
{
    SetPulse(rate - rate % kPulseGrain);
}

void BApplication::SetCursor(const void* cursor)
{
    SetCursorImage(cursor);
}

status_t BApplication::GetAppInfo(app_info* info) const
{
    return be_roster->GetRunningAppInfo(Team(), info);
}
