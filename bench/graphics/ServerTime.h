// How long this program and the X server have worked, whatever else the machine does meanwhile.
#pragma once

#include <xcb/xcb.h>

#include <string>

class ServerTime {
public:
    // Of the server at the other end, if it runs on this machine.
    explicit ServerTime(xcb_connection_t* connection);

    // Seconds of both so far; of this program only where the server's are not to be had.
    double Seconds() const;

private:
    std::string path; // where the kernel counts the server's nanoseconds; empty if elsewhere
};
