// Gives every file of the folders named on the command line to a fuzz target, for builds without
// libFuzzer. A fault ends the program as it would end the fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    int files = 0;
    for (int i = 1; i < argc; i++) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(file), {});
            printf("%s, %zu bytes\n", entry.path().filename().c_str(), bytes.size());
            fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            files++;
        }
    }
    if (files == 0)
        fprintf(stderr, "No files in <%s>\n", argc > 1 ? argv[1] : "");
    return files > 0 ? 0 : 1;
}
