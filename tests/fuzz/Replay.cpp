// Gives every file of the folders named on the command line to a fuzz target, as it is and damaged
// in up to 250 ways, always the same, for builds without libFuzzer. A fault ends the program
// as it would end the fuzzer.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr size_t kMostCopies = 250; // damaged ones of each file
constexpr size_t kAllCopies = 1000; // of all of them

std::string Damaged(std::string bytes, std::minstd_rand& random)
{
    for (auto damages = random() % 4 + 1; damages > 0 && !bytes.empty(); --damages) {
        const size_t place = random() % bytes.size();
        switch (random() % 4) {
            case 0: bytes[place] ^= static_cast<char>(1 << random() % 8); break;
            case 1: bytes[place] = static_cast<char>(random()); break;
            case 2: bytes.resize(place); break;
            default: bytes.insert(place, bytes, random() % bytes.size(), random() % 8);
        }
    }
    return bytes;
}

void Give(const std::string& bytes)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; i++) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i], error))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end()); // the same damage everywhere
    std::minstd_rand random;
    const size_t copies = std::min(kMostCopies, kAllCopies / std::max<size_t>(files.size(), 1));
    for (const auto& path : files) {
        std::ifstream file(path, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        printf("%s, %zu bytes\n", path.filename().c_str(), bytes.size());
        fflush(stdout);
        Give(bytes);
        for (size_t copy = 0; copy < copies; copy++)
            Give(Damaged(bytes, random));
    }
    if (files.empty())
        fprintf(stderr, "No files in <%s>\n", argc > 1 ? argv[1] : "");
    return files.empty() ? 1 : 0;
}
