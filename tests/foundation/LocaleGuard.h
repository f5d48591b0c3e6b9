// Sets the locale of the whole program for the length of a block.
#pragma once

#include <clocale>
#include <string>

class LocaleGuard {
public:
    explicit LocaleGuard(const char* name)
        : fBefore(setlocale(LC_ALL, nullptr)), fIsSet(setlocale(LC_ALL, name) != nullptr)
    {
    }
    ~LocaleGuard() { setlocale(LC_ALL, fBefore.c_str()); }
    LocaleGuard(const LocaleGuard&) = delete;
    LocaleGuard& operator=(const LocaleGuard&) = delete;
    bool IsSet() const { return fIsSet; } // false where the machine lacks the locale

private:
    std::string fBefore;
    bool fIsSet;
};
