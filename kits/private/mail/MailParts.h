// What a BMailMessage holds.
#pragma once

#include <map>
#include <string>
#include <vector>

struct MailParts {
    std::map<std::string, std::string> headers; // by name, without the colon
    std::string text;
    std::vector<std::string> enclosures; // paths
};
