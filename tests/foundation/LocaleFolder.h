// Locales for a test on a machine that has none but "C": made by the system's own localedef in a
// folder that the C library is told of for as long as this lives.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class LocaleFolder {
public:
    LocaleFolder()
    {
        char path[] = "/tmp/localesXXXXXX";
        fPath = mkdtemp(path);
        setenv("LOCPATH", fPath.c_str(), 1);
    }
    ~LocaleFolder()
    {
        unsetenv("LOCPATH");
        std::filesystem::remove_all(fPath);
    }
    LocaleFolder(const LocaleFolder&) = delete;
    LocaleFolder& operator=(const LocaleFolder&) = delete;

    // Makes the locale "language.charset" with the language's dates alone, since its sorting takes
    // seconds. False where the machine lacks the tool or its sources.
    bool Make(const std::string& language, const std::string& charset) const
    {
        const std::string source = fPath + "/source";
        const std::string locale = fPath + "/" + language + "." + charset;
        std::ofstream(source) << "LC_CTYPE\ncopy \"i18n_ctype\"\nEND LC_CTYPE\nLC_TIME\ncopy \""
                              << language << "\"\nEND LC_TIME\n";
        // It ends with 1 for the missing parts as well as for an error.
        [[maybe_unused]] const int status =
            system(("localedef -c -i " + source + " -f " + charset + " " + locale + " 2>/dev/null")
                       .c_str());
        return std::filesystem::exists(locale + "/LC_TIME");
    }

private:
    std::string fPath;
};
