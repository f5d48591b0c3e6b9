#include "Roster.h"

#include <optional>
#include <strings.h>

#include "LeafLock.h"
#include "RunningApplication.h"

namespace {

Mutex gLock;
std::optional<app_info> gApplication GUARDED_BY(gLock);
constexpr BRoster gRoster;

} // namespace

const BRoster* const be_roster = &gRoster;

void SetRunningApplication(const app_info* info)
{
    const LeafLock lock(gLock);
    if (info)
        gApplication = *info;
    else
        gApplication.reset();
}

status_t BRoster::GetAppInfo(const char* signature, app_info* info) const
{
    if (!signature || !info)
        return B_BAD_VALUE;
    const LeafLock lock(gLock);
    if (!gApplication || strcasecmp(gApplication->signature, signature) != 0)
        return B_ERROR;
    *info = *gApplication;
    return B_OK;
}

status_t BRoster::GetRunningAppInfo(team_id team, app_info* info) const
{
    if (!info)
        return B_BAD_VALUE;
    const LeafLock lock(gLock);
    if (!gApplication || gApplication->team != team)
        return B_ERROR;
    *info = *gApplication;
    return B_OK;
}
