// Beside the platform's calls: a program of which each user has only one on a display. What is
// started later hands its arguments over to the first, as B_SINGLE_LAUNCH does on the platform.
//
//     BSingleLaunch launch("name");
//     if (launch.Claim(true) == B_ALREADY_RUNNING)
//         return 0; // the first has the arguments
//     BApplication app(...);
//     launch.Serve();
//     app.Run();
#pragma once

#include "Messenger.h"
#include "OS.h"

#include <string>

class BSingleLaunch {
public:
    // Programs of different names do not mind each other.
    explicit BSingleLaunch(const char* name);
    ~BSingleLaunch(); // the next start is the first again; after the application's end
    BSingleLaunch(const BSingleLaunch&) = delete;
    BSingleLaunch& operator=(const BSingleLaunch&) = delete;

    // B_OK: this is the first. Of what another is first:
    //
    //     B_BUSY            handOver is false
    //     B_ALREADY_RUNNING it has had this process's arguments
    //     B_TIMED_OUT       it did not answer for ten seconds; see Other()
    //     B_ERROR           it is another user's program, which is told nothing, or the system does
    //                       not let this process find out; with a line on standard error
    status_t Claim(bool handOver);
    // The process that is the first, as far as that is known; 0.
    team_id Other() const { return fOther; }

    // For the first: from now on the arguments of later starts come to the application as
    // B_ARGV_RECEIVED, with the folder that they count from in "cwd". A start ends when the message
    // has been handled.
    void Serve();

private:
    status_t Offer(bigtime_t deadline);
    static int32 ThreadEntry(void* launch);
    void Listen();
    void Take(int connection);

    const std::string fName;
    BMessenger fTarget;
    team_id fOther = 0;
    int fListener = -1;
    int fEnd = -1; // becomes readable when the thread is to end
    thread_id fThread = B_ERROR;
};
