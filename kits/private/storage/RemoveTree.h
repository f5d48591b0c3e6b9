// Removing what lies below a folder without leaving it: no link is followed, no path is looked up
// and no other file system, nor another place of the same one, is entered.
#pragma once

namespace storage {
// Removes the directory called name in the one open as above, with all in it; folder is the same
// directory, open for reading. What cannot be removed stays. May be called in a signal handler and
// while others still write there: it goes on until a round finds nothing more to remove.
void RemoveTree(int above, const char* name, int folder);
} // namespace storage
