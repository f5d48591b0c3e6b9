#include "Roster.h"

#include "ApplicationState.h"

#include <strings.h>

namespace {

constexpr BRoster gRoster;

} // namespace

const BRoster* const be_roster = &gRoster;

status_t BRoster::GetAppInfo(const char* signature, app_info* info) const
{
    if (!signature || !info)
        return B_BAD_VALUE;
    const auto application = RunningApplication();
    // Types are the same in upper and lower case (RFC 2045, section 5.1).
    if (!application || strcasecmp(application->signature, signature) != 0)
        return B_ERROR;
    *info = *application;
    return B_OK;
}

status_t BRoster::GetRunningAppInfo(team_id team, app_info* info) const
{
    if (!info)
        return B_BAD_VALUE;
    const auto application = RunningApplication();
    if (!application || application->team != team)
        return B_ERROR;
    *info = *application;
    return B_OK;
}
