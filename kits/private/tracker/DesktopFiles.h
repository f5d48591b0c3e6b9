// The desktop's own file manager, in another process and perhaps not there.
#pragma once

#include <string>
#include <vector>

// Calls a method of org.freedesktop.FileManager1 on the session bus with the URIs of absolute
// paths. True if a file manager has taken the call, also if it did not answer in time; false if
// there is no bus, no file manager, or it does not know the method.
bool CallFileManager(const char* method, const std::vector<std::string>& paths);
