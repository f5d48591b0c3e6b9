// Requests to the file manager.
#pragma once

// Opens the file manager's information window on the entry. False if the entry's directory does not
// exist or there is no file manager to ask; what it then does is its own affair.
bool LibInfoEntry(const char* path);
// Opens the entry, as if the user had done so in the file manager. False as above.
bool LibOpenEntry(const char* path);
