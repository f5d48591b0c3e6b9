#include "ServerTime.h"

#include <ctime>
#include <fstream>
#include <sys/socket.h>

ServerTime::ServerTime(xcb_connection_t* connection)
{
    ucred peer {};
    socklen_t size = sizeof peer;
    const int socket = xcb_get_file_descriptor(connection);
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.pid > 0)
        path = "/proc/" + std::to_string(peer.pid) + "/schedstat";
}

double ServerTime::Seconds() const
{
    timespec own {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    double nanos = 0;
    std::ifstream(path) >> nanos;
    return static_cast<double>(own.tv_sec) + (static_cast<double>(own.tv_nsec) + nanos) * 1e-9;
}
