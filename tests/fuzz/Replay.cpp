// Gives every file of the folders named on the command line to a fuzz target, as it is and damaged
// in a thousand ways, always the same, for builds without libFuzzer. A fault ends the program as
// it would end the fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr int kDamagedCopies = 1000; // of each file

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
    std::minstd_rand random;
    int files = 0;
    for (int i = 1; i < argc; i++) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(file), {});
            printf("%s, %zu bytes\n", entry.path().filename().c_str(), bytes.size());
            fflush(stdout);
            Give(bytes);
            for (int copy = 0; copy < kDamagedCopies; copy++)
                Give(Damaged(bytes, random));
            files++;
        }
    }
    if (files == 0)
        fprintf(stderr, "No files in <%s>\n", argc > 1 ? argv[1] : "");
    return files > 0 ? 0 : 1;
}
