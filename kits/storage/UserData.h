// Beside the platform's calls: small files in the program's own folder of the user's data, which
// stay from run to run ($XDG_DATA_HOME/tarvex, ~/.local/share/tarvex). Names are those of files in
// it, without a slash.
//
// Nothing there is believed that another user but root could have put there: no link, no folder
// that others can write to, no file of another's, none that others could have written.
#pragma once

#include <optional>
#include <string>

// The file's contents. Empty if there is none, it is not to be believed, or has more bytes; *why
// then says what keeps a file that is there from being read, for people, and is "" otherwise.
[[nodiscard]] std::optional<std::string> ReadUserData(
    const std::string& name, size_t mostBytes, std::string* why = nullptr);

// Writes the file whole or not at all; the folder is made if there is none, for the user alone.
// False: it cannot be written, or what lies in its place is not to be believed.
[[nodiscard]] bool WriteUserData(const std::string& name, const std::string& text);

// Where the file lies, as people are told.
[[nodiscard]] std::string PathOfUserData(const std::string& name);
