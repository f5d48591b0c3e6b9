#include "results/WholeText.h"

#include <array>

std::string ReadAll(FILE* file)
{
    std::string bytes;
    std::array<char, 1 << 16> block;
    size_t size = 0;
    while (bytes.size() <= kMostBytes && (size = fread(block.data(), 1, block.size(), file)) > 0)
        bytes.append(block.data(), size);
    return bytes;
}
