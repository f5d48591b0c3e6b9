#include "server/DisplayServer.h"

#include "AppDefs.h"
#include "ApplicationState.h"
#include "Check.h"
#include "LeafLock.h"
#include "OwnFolder.h"
#include "server/Accessibility.h"
#include "server/WindowWidget.h"

#include <QApplication>
#include <QBitmap>
#include <QCursor>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QLoggingCategory>
#include <QPixmapCache>
#include <QSocketNotifier>
#include <QThreadPool>
#include <QTimer>
#include <QWidget>
#include <xcb/xcb.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <exception>
#include <fontconfig/fontconfig.h>
#include <latch>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kSize = 16;
constexpr int kImageOffset = 4; // after size, depth and hot spot
constexpr int kMaskOffset = kImageOffset + kSize * 2;

QBitmap BitmapOf(const uint8* rows)
{
    return QBitmap::fromData(QSize(kSize, kSize), rows, QImage::Format_Mono);
}

// Image bits outside the mask would invert the screen on some displays.
QBitmap MaskedImage(const CursorState& state)
{
    uint8 rows[kMaskOffset - kImageOffset];
    for (size_t i = 0; i < sizeof rows; i++)
        rows[i] = state.image[kImageOffset + i] & state.image[kMaskOffset + i];
    return BitmapOf(rows);
}

QCursor CursorOf(const CursorState& state)
{
    return QCursor(
        MaskedImage(state), BitmapOf(state.image + kMaskOffset), state.image[3], state.image[2]);
}

bool IsNormalPointer(const CursorState& state)
{
    return !state.isSet || memcmp(state.image, B_HAND_CURSOR, sizeof state.image) == 0;
}

// The kit's cursor hook: shows CurrentCursor() some time soon, over all of the program's windows.
// From any thread.
void CursorChanged()
{
    display::Post([] {
        const CursorState state = CurrentCursor();
        if (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
        if (!IsNormalPointer(state))
            QGuiApplication::setOverrideCursor(CursorOf(state));
    });
}

} // namespace

namespace display {
namespace {

thread_local bool tIsServer = false;

// A thread that waits for its job. On that thread's stack.
struct Waiter {
    Condition changed;
    bool ended = false;
};

struct Job {
    std::function<void()> run;
    Waiter* waiter = nullptr;
};

// Qt ends the program where it finds no display; this asks first. It stays connected until Qt is,
// as some X servers start anew when the last program leaves.
class DisplayProbe {
public:
    DisplayProbe() : fConnection(xcb_connect(nullptr, nullptr)) { }
    ~DisplayProbe() { xcb_disconnect(fConnection); }
    DisplayProbe(const DisplayProbe&) = delete;
    DisplayProbe& operator=(const DisplayProbe&) = delete;
    bool FoundOne() const { return xcb_connection_has_error(fConnection) == 0; }

private:
    xcb_connection_t* const fConnection;
};

// What lasts until QApplication is there.
struct Preparation {
    DisplayProbe probe;
    std::jthread fonts; // reads fontconfig's many files, which the first text would wait for
};

class Server {
public:
    // What has to work: windows, whatever does where it runs already, or painting alone.
    enum class Need { kWindows, kAny, kPictures };
    bool Start(Need need);
    void Prepare();
    void RunAndWait(const std::function<void()>& run);
    void RunLater(std::function<void()> run);
    // Ends the thread. kApplication: Qt's static parts may have gone already, so QApplication
    // stays as it is.
    enum class Leave { kNothing, kApplication };
    void Stop(Leave leave);

private:
    enum class State { kIdle, kStarting, kRunning, kStopped };

    void Main(std::unique_ptr<Preparation> preparation, bool hasDisplay);
    void Serve();
    [[nodiscard]] bool Begin(Need need) REQUIRES(fLock);
    [[nodiscard]] bool Launch(std::unique_ptr<Preparation> preparation) REQUIRES(fLock);
    void TellNoDisplay() REQUIRES(fLock);
    void RunJobs();
    bool RunOne();
    void Enqueue(Job job) REQUIRES(fLock);
    Leave DropJobs();

    Mutex fLock; // leaf
    Condition fStateChanged;
    State fState GUARDED_BY(fLock) = State::kIdle;
    std::deque<Job> fJobs GUARDED_BY(fLock);
    Leave fLeave GUARDED_BY(fLock) = Leave::kNothing;
    bool fHasDisplay GUARDED_BY(fLock) = false; // known once it is started
    bool fToldWhyNot GUARDED_BY(fLock) = false;
    int fWakeUp = -1; // an eventfd: Qt's loop sees it, and so does ThreadSanitizer
    std::thread fThread;
    QObject* fHeld = nullptr; // see Main()
};

Server& TheServer()
{
    // Never destroyed: threads that are still running at the end may yet ask it for something.
    static Server& sServer = *new Server;
    return sServer;
}

// Once for the whole program.
void Server::TellNoDisplay()
{
    if (fToldWhyNot)
        return;
    fToldWhyNot = true;
    const char* name = getenv("DISPLAY");
    const char* wayland = getenv("WAYLAND_DISPLAY");
    if (name && *name)
        fprintf(stderr, "Cannot open display <%s>\n", name);
    else if (wayland && *wayland)
        fprintf(stderr, "No display: DISPLAY is not set: a Wayland session needs Xwayland\n");
    else
        fprintf(stderr, "No display: DISPLAY is not set\n");
}

// The main thread's own objects end before all that is static, Qt's parts included: the one moment
// of a normal exit at which QApplication can still be taken down.
class MainThreadEnd {
public:
    ~MainThreadEnd() { TheServer().Stop(Server::Leave::kNothing); }
};

void WatchMainThread()
{
    if (gettid() == getpid())
        static thread_local const MainThreadEnd sEnd;
}

// For exit() elsewhere. Qt calls it on the server's own thread when the display has gone.
void AtExit(int status, void*)
{
    if (tIsServer) {
        fflush(nullptr);
        folders::RemoveOwnTemporary();
        _exit(status);
    }
    TheServer().Stop(Server::Leave::kApplication);
}

bool Server::Start(Need need)
{
    if (tIsServer)
        return true;
    WatchMainThread();
    const LeafLock lock(fLock, LeafLock::kWaits);
    if (fState == State::kIdle && !Begin(need))
        return false;
    while (fState == State::kStarting)
        fStateChanged.wait(fLock);
    if (need == Need::kWindows && !fHasDisplay)
        TellNoDisplay();
    return fState == State::kRunning && (fHasDisplay || need != Need::kWindows);
}

void Server::Prepare()
{
    WatchMainThread();
    const LeafLock lock(fLock);
    if (fState == State::kIdle)
        static_cast<void>(Begin(Need::kAny)); // whoever needs it tries again
}

bool Server::Begin(Need need)
{
    auto preparation = std::make_unique<Preparation>();
    fHasDisplay = preparation->probe.FoundOne();
    if (!fHasDisplay && need != Need::kPictures) {
        TellNoDisplay();
        return false;
    }
    if (!Launch(std::move(preparation)))
        return false;
    fState = State::kStarting;
    return true;
}

// Qt waits for ever for threads that it could not make: one for the display, one for the desktop's
// bus, one that paints. So room for them is made sure of first, with some to spare for this file.
// Throws std::system_error.
void TryQtThreads()
{
    constexpr int kThreads = 5;
    std::latch done(1);
    std::vector<std::jthread> threads;
    threads.reserve(kThreads);
    try {
        for (int i = 0; i < kThreads; i++)
            threads.emplace_back([&done] { done.wait(); });
    } catch (...) {
        done.count_down();
        throw;
    }
    done.count_down();
}

// Where it fails, so does Qt's own call. Numbers in the files of fonts have a point, but meanwhile
// Qt sets the locale of the user for the whole program: this thread keeps the other one.
void ReadFonts()
{
    const locale_t numbers = newlocale(LC_ALL_MASK, "C", nullptr);
    uselocale(numbers);
    FcInit();
    const FcFontSet* fonts = FcConfigGetFonts(nullptr, FcSetSystem);
    if (!fonts || fonts->nfont == 0)
        fprintf(stderr, "No fonts are installed: texts are shown as boxes\n");
    uselocale(LC_GLOBAL_LOCALE);
    freelocale(numbers);
}

// Starts the thread, which changes the state only under the lock. False, the first time with a line
// on standard error, if there can be none.
bool Server::Launch(std::unique_ptr<Preparation> preparation)
{
    // Signals are for the program's own threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    fWakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    try {
        if (fWakeUp < 0)
            throw std::system_error(errno, std::generic_category());
        TryQtThreads();
        preparation->fonts = std::jthread(ReadFonts);
        fThread = std::thread(&Server::Main, this, std::move(preparation), fHasDisplay);
    } catch (const std::exception& error) { // no thread or no memory
        if (!fToldWhyNot)
            fprintf(stderr, "Cannot start thread <display server>: %s\n", error.what());
        fToldWhyNot = true;
        close(fWakeUp);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return fThread.joinable();
}

// A program's resources may hold its icon in several sizes, as /application/icon-SIZE.png.
QIcon OwnIcon()
{
    QIcon icon;
    const QDir folder(":/application");
    for (const QString& file : folder.entryList({ "icon-*.png" }))
        icon.addFile(folder.filePath(file));
    return icon;
}

QApplication* MakeApplication(bool hasDisplay)
{
    QCoreApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    // Qt keeps references to these.
    static char sPlatform[] = "-platform";
    static char sXcb[] = "xcb";
    static char sOffscreen[] = "offscreen";
    static char sTheme[] = "-platformtheme"; // a desktop's own might look for the display
    static char sNone[] = "none";
    static char* sArguments[] = { program_invocation_short_name, sPlatform,
        hasDisplay ? sXcb : sOffscreen, hasDisplay ? nullptr : sTheme, sNone, nullptr };
    static int sCount = hasDisplay ? 3 : 5;
    if (!hasDisplay) // where nobody is logged in: Qt would remark on the session that is missing
        QLoggingCategory::setFilterRules("default.warning=false");
    auto* application = new QApplication(sCount, sArguments);
    // Large areas are painted by other threads. One that is there from the start is always found.
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    QThreadPool::globalInstance()->start([] {});
    setlocale(LC_NUMERIC, "C"); // Qt has set the user's; files must not depend on it
    QFont font = QApplication::font();
    font.setPixelSize(12);
    QApplication::setFont(font);
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

// Null if there is none. Those that pop up come last: the list of names below a field goes with the
// field, which deletes it.
QWidget* WindowToDelete()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto other = std::find_if(windows.begin(), windows.end(),
        [](const QWidget* window) { return window->windowType() != Qt::Popup; });
    return other != windows.end() ? *other : windows.value(0);
}

void Server::Main(std::unique_ptr<Preparation> preparation, bool hasDisplay)
{
    tIsServer = true;
    pthread_setname_np(pthread_self(), "display server");
    static QApplication* sApplication = nullptr; // it may have to stay
    sApplication = MakeApplication(hasDisplay);
    preparation.reset();
    // The end of this thread and the end of Qt's static parts both let go of what Qt knows of this
    // thread, and its plugins do once more after it was freed. An object that stays holds it.
    fHeld = new QObject;
    Serve();
    const Leave leave = DropJobs();
    while (QWidget* window = leave == Leave::kNothing ? WindowToDelete() : nullptr)
        delete window;
    QPixmapCache::clear(); // its timer can only be stopped on this thread
    if (leave == Leave::kNothing)
        delete sApplication;
}

void Server::Serve()
{
    QSocketNotifier wakeUp(fWakeUp, QSocketNotifier::Read);
    QObject::connect(&wakeUp, &QSocketNotifier::activated, [this] { RunJobs(); });
    const LostWindows lostWindows;
    ServeAccessibility();
    constexpr int kIconMillis = 200; // to read it takes a while: the first window need not wait
    QTimer::singleShot(kIconMillis, [] { QApplication::setWindowIcon(OwnIcon()); });
    SetCursorHook(CursorChanged);
    static_cast<void>(QPixmapCache::cacheLimit()); // makes the cache, which the end empties
    on_exit(AtExit, nullptr); // after all that Qt has registered so far
    {
        const LeafLock lock(fLock);
        fState = State::kRunning;
        fStateChanged.notify_all();
    }
    QApplication::exec();
    SetCursorHook(nullptr);
}

// Called by the wake-up notifier, also in nested loops of Qt's. A limit, so that a flood of jobs
// does not shut out the user's input.
void Server::RunJobs()
{
    eventfd_t count = 0;
    eventfd_read(fWakeUp, &count);
    for (int jobs = 0; jobs < 64; jobs++) {
        if (!RunOne())
            return;
    }
    eventfd_write(fWakeUp, 1);
}

bool Server::RunOne()
{
    Job job;
    {
        const LeafLock lock(fLock);
        if (fState == State::kStopped)
            QCoreApplication::exit(); // quit() would ask the windows
        if (fJobs.empty())
            return false;
        job = std::move(fJobs.front());
        fJobs.pop_front();
    }
    job.run();
    if (job.waiter) {
        const LeafLock lock(fLock);
        job.waiter->ended = true;
        job.waiter->changed.notify_one(); // locked: the waiter is gone right after
    }
    return true;
}

Server::Leave Server::DropJobs()
{
    const LeafLock lock(fLock);
    fState = State::kStopped;
    for (Job& job : fJobs) {
        if (job.waiter) {
            job.waiter->ended = true;
            job.waiter->changed.notify_one();
        }
    }
    fJobs.clear();
    return fLeave;
}

void Server::Enqueue(Job job)
{
    const bool wasEmpty = fJobs.empty();
    fJobs.push_back(std::move(job));
    if (wasEmpty)
        eventfd_write(fWakeUp, 1);
}

void Server::RunAndWait(const std::function<void()>& run)
{
    if (tIsServer)
        return run();
    if (!Start(Need::kAny))
        return;
    Waiter waiter;
    const LeafLock lock(fLock, LeafLock::kWaits);
    if (fState != State::kRunning)
        return;
    Enqueue({ [&run] { run(); }, &waiter });
    while (!waiter.ended)
        waiter.changed.wait(fLock);
}

void Server::RunLater(std::function<void()> run)
{
    if (!Start(Need::kAny))
        return;
    const LeafLock lock(fLock);
    if (fState == State::kRunning)
        Enqueue({ std::move(run), nullptr });
}

void Server::Stop(Leave leave)
{
    {
        const LeafLock lock(fLock, LeafLock::kWaits);
        while (fState == State::kStarting)
            fStateChanged.wait(fLock);
        if (fState != State::kRunning)
            return;
        fState = State::kStopped;
        fLeave = leave;
        eventfd_write(fWakeUp, 1);
    }
    fThread.join();
    close(fWakeUp);
}

} // namespace

bool Start()
{
    return TheServer().Start(Server::Need::kWindows);
}

void Prepare()
{
    TheServer().Prepare();
}

bool StartForPictures()
{
    return TheServer().Start(Server::Need::kPictures);
}

bool Serves()
{
    return TheServer().Start(Server::Need::kAny);
}

void EndWithDisplay()
{
    fprintf(stderr, "The X11 connection broke: the <display> has gone\n");
    fflush(nullptr);
    folders::RemoveOwnTemporary();
    _exit(1);
}

void RunAndWait(const std::function<void()>& job)
{
    TheServer().RunAndWait(job);
}

void RunLater(std::function<void()> job)
{
    TheServer().RunLater(std::move(job));
}

} // namespace display
