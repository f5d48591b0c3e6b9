// The first byte is the delimiter, the second a position, the rest a text.
#include "foundation/LibStringIterator.h"

#include <string>

#include "tests/fuzz/Require.h"

namespace {

// The fields put together again give the text.
void CheckFields(const std::string& text, char delimiter)
{
    LibStringIterator reader(text.c_str());
    LibString field;
    std::string joined;
    size_t fields = 0;
    while (reader.GetNextField(delimiter, field)) {
        Require(++fields <= text.size() + 1, "the loop ends");
        Require(!field.Contain(delimiter) || delimiter == '\0', "no delimiter in a field");
        joined += static_cast<const char*>(field);
        const bool last = reader.Position() == static_cast<int32>(text.size()) - 1
            && joined.size() == text.size();
        if (!last)
            joined += delimiter;
    }
    // The last field comes with false if it is short; else this is its last character once more.
    if (joined.size() < text.size())
        joined += static_cast<const char*>(field);
    Require(joined == text, "the fields are the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    const char delimiter = static_cast<char>(data[0]);
    const int position = static_cast<int8>(data[1]);
    std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
    text.resize(std::char_traits<char>::length(text.c_str()));
    CheckFields(text, delimiter);

    LibStringIterator reader(text.c_str());
    LibString field;
    reader.Reset(position);
    const char delimiters[] = { delimiter, ',', ';', '\0' };
    for (size_t calls = 0; reader.GetNextField(delimiters, field); calls++)
        Require(calls <= text.size(), "the loop ends");
    [[maybe_unused]] const bool found = reader.GetIndexField(delimiter, position, field);
    reader.Reset(position);
    for (size_t i = 0; i < text.size(); i++)
        reader.GetNextField(delimiter, reader); // into itself, reading on where that ended
    return 0;
}
