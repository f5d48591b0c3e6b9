// startup [RUNS]: the time from exec to the main window on screen, Tarvex beside a bare Qt window
// of the same controls, alternating on the same display. Prints medians and their ratio.

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

double Now()
{
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

pid_t Start(const std::string& program)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, STDERR_FILENO);
    execl(program.c_str(), program.c_str(), nullptr);
    _exit(127);
}

// Waits for the next event of the given kind on the root window; false after ten seconds.
bool WaitFor(xcb_connection_t* connection, uint8_t kind)
{
    const double end = Now() + 10000;
    while (Now() < end) {
        xcb_generic_event_t* event = xcb_poll_for_event(connection);
        if (!event) {
            pollfd waiting { xcb_get_file_descriptor(connection), POLLIN, 0 };
            poll(&waiting, 1, 100);
            continue;
        }
        const bool found = (event->response_type & 0x7f) == kind
            && (kind != XCB_MAP_NOTIFY
                || !reinterpret_cast<xcb_map_notify_event_t*>(event)->override_redirect);
        free(event);
        if (found)
            return true;
    }
    return false;
}

// Milliseconds from exec until a window of the program is mapped; negative if none came.
double StartupMillis(xcb_connection_t* connection, const std::string& program)
{
    while (xcb_generic_event_t* old = xcb_poll_for_event(connection))
        free(old);
    const double before = Now();
    const pid_t child = Start(program);
    const bool shown = WaitFor(connection, XCB_MAP_NOTIFY);
    const double took = Now() - before;
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    WaitFor(connection, XCB_UNMAP_NOTIFY);
    return shown ? took : -1;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;
    std::string folder(argv[0]);
    folder.resize(folder.find_last_of('/') + 1);

    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) {
        fprintf(stderr, "startup needs a display\n");
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, screen->root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection);

    std::vector<double> ours;
    std::vector<double> bare;
    for (int run = 0; run < runs; run++) {
        bare.push_back(StartupMillis(connection, folder + "startup_bare"));
        ours.push_back(StartupMillis(connection, folder + "tarvex"));
        if (bare.back() < 0 || ours.back() < 0) {
            fprintf(stderr, "A window did not come up within ten seconds\n");
            return 1;
        }
    }
    printf("%-28s %8.1f ms\n%-28s %8.1f ms\n%-28s %8.2f\n", "Tarvex", Median(ours),
        "bare Qt window", Median(bare), "ratio", Median(ours) / Median(bare));
    xcb_disconnect(connection);
    return 0;
}
