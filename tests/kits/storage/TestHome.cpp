#include "TestHome.h"

#include "tests/support/Test.h"

namespace {

// Made before main(): the kit looks once where the user's data lies.
const struct Home : TempFolder {
    Home()
    {
        setenv("HOME", Path().c_str(), 1);
        setenv("XDG_DATA_HOME", (Path() + "/data").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (Path() + "/config").c_str(), 1);
    }
} gHome;

} // namespace

const TempFolder& TestHome()
{
    return gHome;
}

void Shell(const TempFolder& folder, const std::string& commands)
{
    EXPECT_EQ(system(("cd " + folder.Path() + " && " + commands).c_str()), 0) << commands;
}

std::string Said(const TempFolder& folder, const std::string& commands)
{
    FILE* pipe = popen(("cd " + folder.Path() + " && { " + commands + "; }").c_str(), "r");
    std::string text;
    for (int letter = fgetc(pipe); letter != EOF; letter = fgetc(pipe))
        text += letter == '\n' ? ' ' : static_cast<char>(letter);
    pclose(pipe);
    return text;
}
