#include "engine/WhetstoneThread.h"

#include <cstdio>

namespace {

constexpr int32 kPriority = 100;

} // namespace

WhetstoneThread::~WhetstoneThread()
{
    if (thread > 0)
        kill_thread(thread);
}

thread_id WhetstoneThread::Go(const long& newIterations, const long& number)
{
    iterations = int32(newIterations);
    char name[B_OS_NAME_LENGTH];
    snprintf(name, sizeof name, "WhetstoneThread_%d", int(number));
    thread = spawn_thread(DoStaticWhetstone, name, kPriority, this);
    if (thread < B_OK)
        fprintf(stderr, "No thread for <%s>\n", name);
    return thread;
}

int32 WhetstoneThread::DoStaticWhetstone(void* self)
{
    return static_cast<WhetstoneThread*>(self)->DoWhetstone();
}

int32 WhetstoneThread::DoWhetstone()
{
    whetstone.Run(iterations);
    return 0;
}
