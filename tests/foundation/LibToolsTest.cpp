#include "foundation/LibTools.h"

#include "foundation/LibPath.h"
#include "tests/foundation/ScratchFolder.h"
#include "tests/support/Test.h"

#include <numeric>

namespace fs = std::filesystem;

namespace {

// A name of those bytes, without the slash. (zip itself damages an archive with byte 127 in a
// name.)
std::string Bytes(unsigned char first, size_t count)
{
    std::string name(count, '\0');
    std::iota(name.begin(), name.end(), static_cast<char>(first));
    std::erase(name, '/');
    return name;
}

// Names that a shell or a tool would take for something else.
const std::string kNames[] = { "two words", "\"quoted\"", "$(touch x)", "`touch x`", "a; touch x",
    "' && touch x '", "line\nbreak", "-rf", "--help", "@", "host:file", "back\\slash\\",
    "\\new\\101", "${HOME}", "a[1]*?", "bad\xff\x81 bytes\xc3", Bytes(1, 126), Bytes(128, 128),
    std::string(255, 'n') };

} // namespace

TEST(LibTools, PathsOfAnyBytesReachTheToolsAndStartNothingElse)
{
    const ScratchFolder folder;
    for (const std::string& name : kNames) {
        SCOPED_TRACE(name);
        const char* path = name.c_str();
        WriteFile("plain", name);
        EXPECT_TRUE(LibCopy("plain", path) && LibMove(path, "moved") && LibMove("moved", path));
        EXPECT_TRUE(LibCopy(path, "copy") && LibSymLink(path, "link") && LibTar(path, "one.tar"));
        EXPECT_EQ(
            folder.Names(), (std::set<std::string> { "plain", name, "copy", "link", "one.tar" }));
        EXPECT_EQ(ReadFile("copy") + ReadFile("link"), name + name);
        EXPECT_TRUE(LibUnlink(path));
        EXPECT_EQ(std::system("tar -xf one.tar"), 0);
        EXPECT_EQ(ReadFile(name), name);
        for (const char* left : { path, "copy", "link", "one.tar" })
            EXPECT_TRUE(LibUnlink(left));
        EXPECT_TRUE(LibSymLink("plain", path));
        EXPECT_EQ(ReadFile(name), name);
        EXPECT_TRUE(LibUnlink(path) && LibTar("plain", path));
        EXPECT_GT(ReadFile(name).size(), 512u);
        EXPECT_TRUE(LibUnlink(path));
        EXPECT_EQ(folder.Names(), std::set<std::string> { "plain" });
    }
    // Of more than 511 bytes: run in a folder of its paths, but a link leads where it says.
    const std::string deep = std::string(250, 'd') + "/" + std::string(250, 'e') + "/";
    const std::string copy = deep + "copy", link = deep + "link";
    EXPECT_TRUE(Libmkdir(deep.c_str()) && LibCopy("plain", copy.c_str()));
    EXPECT_TRUE(LibSymLink("copy", link.c_str()) && ReadFile(link) == ReadFile("plain"));
    EXPECT_TRUE(LibUnlink(copy.c_str()) && LibTar(deep.c_str(), "tar"));
}

TEST(LibTools, ZipAndUnzipKeepFoldersWhateverTheirNames)
{
    const ScratchFolder folder;
    for (const std::string& fullName : kNames) {
        const std::string name = fullName.substr(0, 200);
        SCOPED_TRACE(name);
        EXPECT_TRUE(Libmkdir("inner") && Libmkdir(name.c_str()));
        WriteFile(name + "/file", name);
        WriteFile("inner/a1x.zip", "a pattern would find this");
        const std::string archive = folder / ("inner/" + name + ".zip");
        EXPECT_TRUE(LibZip(archive.c_str(), BPath(name.c_str()), 12));
        EXPECT_EQ(ReadFile(archive).substr(0, 2), "PK");
        EXPECT_TRUE(LibUnzipWhole(archive.c_str()));
        EXPECT_EQ(fs::current_path(), folder / "inner");
        EXPECT_EQ(std::distance(fs::directory_iterator("."), {}),
            3); // unzip leaves out control characters of names
        fs::current_path(folder.Path());
        EXPECT_TRUE(LibUnlink(name.c_str()) && LibUnlink("inner") && folder.Names().empty());
    }
}

TEST(LibTools, WhatCannotBeDoneIsFalseAndStartsNothing)
{
    const ScratchFolder folder;
    WriteFile("file", "text");
    EXPECT_FALSE(LibCopy("missing", "copy") || LibMove("missing", "copy") || LibUnlink(nullptr));
    EXPECT_FALSE(LibTar("file", "missing/one.tar") || LibUnzip("missing/one.zip"));
    BPath found("/untouched");
    const std::string path = getenv("PATH");
    unsetenv("PATH");
    EXPECT_FALSE(LibZip("one.zip", BPath("file")) || LibFindEnvFile("PATH", "zip", found));
    setenv("PATH", path.c_str(), 1);
    EXPECT_STREQ(found.Path(), "/untouched");
    EXPECT_EQ(folder.Names(), std::set<std::string> { "file" });
    // The level has its limits.
    WriteFile("file", std::string(1000, 'x'));
    for (const auto& [level, isSmaller] : { std::pair(-1, false), { 10, true } }) {
        EXPECT_TRUE(LibZip("made", BPath("file"), level) && LibUnzip("made.zip"));
        EXPECT_EQ(ReadFile("made.zip").size() < 1000, isSmaller);
        EXPECT_TRUE(LibUnlink("made.zip") && LibUnlink("made.zip"));
    }
}

TEST(LibTools, ACommandHasItsPathsQuotedAndNoMoreThan511Bytes)
{
    const auto copy = [] { return ToolCommand("/bin/cp").Option("-f"); };
    const auto remove = [](const std::string& name) {
        return ToolCommand("/bin/rm").Option("-fr").Path(name.c_str());
    };
    const std::string most(497, 'n');
    const std::pair<ToolCommand, std::string> rows[] = { { copy().Path("a").Path("B c"),
                                                             "/bin/cp -f \"a\" \"B c\"" },
        { copy().Path("-a").Path("@/b").Path("c:d").Path("e/f:g"),
            "/bin/cp -f \"./-a\" \"./@/b\" \"./c:d\" \"e/f:g\"" },
        { copy().Target("-a").Quoted("-a \"$`\\").Quoted(nullptr),
            "/bin/cp -f \"./-a\" \"-a \\\"\\$\\`\\\\\" \"\"" },
        { ToolCommand("/az/AZ/09._+-"), "/az/AZ/09._+-" }, { ToolCommand("/a b"), "\"/a b\"" },
        { ToolCommand("/a{"), "\"/a{\"" }, { ToolCommand(nullptr), "\"\"" },
        { copy().Path(nullptr).Path("a"), "" }, { remove(most), "/bin/rm -fr \"" + most + "\"" },
        { remove(most + "n"), "" }, { remove(most.substr(1) + "$"), "" } };
    for (const auto& [command, text] : rows)
        EXPECT_EQ(command.Text(), text);
    const auto run = [](const char* words) {
        return ToolCommand("/bin/sh").Option("-c").Quoted(words).Run();
    };
    EXPECT_TRUE(run("exit 0") == 0 && run("exit 3") > 0);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(copy().Path(nullptr).Path("/a").Run(), -1); }),
        "Command without a path or longer than 511 bytes </bin/cp -f \"/a\">\n");
}
