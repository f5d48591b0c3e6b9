// Locales for a test on a machine that has none but "C": made by the system's own localedef in a
// folder that the C library is told of for as long as this lives.
#pragma once

#include "tests/support/TempFolder.h"

class LocaleFolder : public TempFolder {
public:
    LocaleFolder() { setenv("LOCPATH", Path().c_str(), 1); }
    ~LocaleFolder() { unsetenv("LOCPATH"); }

    // Makes the locale "language.charset" with the language's dates alone, since its sorting takes
    // seconds. False where the machine lacks the tool or its sources.
    bool Make(const std::string& language, const std::string& charset) const
    {
        const std::string source = *this / "source";
        const std::string locale = *this / (language + "." + charset);
        WriteFile(source,
            "LC_CTYPE\ncopy \"i18n_ctype\"\nEND LC_CTYPE\nLC_TIME\ncopy \"" + language
                + "\"\nEND LC_TIME\n");
        // It ends with 1 for the missing parts as well as for an error.
        [[maybe_unused]] const int status =
            system(("localedef -c -i " + source + " -f " + charset + " " + locale + " 2>/dev/null")
                       .c_str());
        return std::filesystem::exists(locale + "/LC_TIME");
    }
};
