// The system's own command-line tools.
#pragma once

#include <Path.h>

#include <string>
#include <string_view>
#include <vector>

// One command line for the shell, of at most 512 bytes with its end mark: a tool, its options and
// the paths it works on.
//
//     ToolCommand copy("/bin/cp");
//     copy.Option("-fR").Path(from).Path(to);   // /bin/cp -fR "from" "to"
//     if (copy.Run() == 0) ...
//
// Every path arrives at the tool byte for byte, and as a path: what the shell would interpret
// inside the double quotes is escaped, and a relative one gets "./" in front if its first name
// begins with "-" or "@" or has a ":", which some tool takes for something else.
//
// Where the paths make the command too long, it is run from inside the folder of one of them, from
// where they are shorter.
class ToolCommand {
public:
    // tool: the path of the program. It is quoted only if the shell would not take it as it is.
    explicit ToolCommand(const char* tool);

    // Adds a word that the shell reads as it stands.
    ToolCommand& Option(const char* option);
    // Adds a text that is no path in double quotes.
    ToolCommand& Quoted(const char* word);
    // Adds a path in double quotes. Null is no path: the command is then never started.
    ToolCommand& Path(const char* path);
    // The same for a path that the tool only writes down: it stays as it is in a shorter command.
    ToolCommand& Target(const char* path);

    // The command line; "" if it is too long or a path was missing.
    [[nodiscard]] const char* Text() const { return complete ? text : ""; }
    // Runs the command in the process's working directory and waits for it. Returns 0 if the tool
    // ended with status 0, above 0 if it ended otherwise, -1 if nothing was started: where a path
    // was missing, or no folder makes the command short enough or can be gone to, a line on
    // standard error says so. For a shorter command the process is in that folder meanwhile.
    [[nodiscard]] int Run() const;

private:
    enum class Kind { kOption, kWord, kPath, kTarget };
    struct Word {
        Kind kind;
        std::string bytes;
    };

    ToolCommand& Add(Kind kind, const char* bytes);
    void Append(std::string_view piece);
    void AppendQuoted(std::string_view bytes, Kind kind);
    ToolCommand SeenFrom(const BPath& folder) const;

    char text[512] = "";
    size_t length = 0;
    bool complete = true;
    bool lacksPath = false;
    std::string tool;
    std::vector<Word> words;
};

// Files copied, moved, linked and packed by the system's own command-line tools. A path of any
// bytes arrives at the tool as it is.
//
// Every function returns false, and starts nothing, if the tool is missing or the command line
// exceeds 512 bytes even when it is run from inside the folder of one of its paths; most tell
// nothing of how the tool fared. For such a shorter command the process's working directory is
// changed meanwhile; LibZip, LibUnzip and LibTar always change it and leave it so: one thread at a
// time.

// Copies a file, or a directory with all in it, over what is at to, or into the directory to; the
// copy gets the MIME type of from. True if the tool succeeded.
bool LibCopy(const char* from, const char* to);
// Moves an entry over the file to or into the directory to. True if the tool succeeded.
bool LibMove(const char* from, const char* to);
// Deletes an entry with all in it; no error if there is none.
bool LibUnlink(const char* path);
// Gives the file, or all files of a directory, the MIME type of what is in it. Where the platform
// brings no such tool the storage kit does it, and true means that it succeeded.
bool Libmimeset(const char* path);
// Makes the symbolic link that points to target, in place of a file at link.
bool LibSymLink(const char* target, const char* link);

// Adds source, with all in it, to the zip archive, with level 0 (stored) to 9 (smallest). A
// relative archive lies beside source; one without a dot in its name gets ".zip" after it.
bool LibZip(const char* archive, const BPath& source, int level = 9);
// Unpacks the zip archive beside it, over what is there.
bool LibUnzip(const char* archive);
// The same; false also if the tool found anything wrong, such as a damaged file or a full disk.
[[nodiscard]] bool LibUnzipWhole(const char* archive);
// Packs source, with all in it, into a new archive. A relative source lies beside the archive.
bool LibTar(const char* source, const char* archive);
