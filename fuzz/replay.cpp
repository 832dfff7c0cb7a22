// Hands the files of some folders to a fuzz target, so that what fuzzers found stays found without a fuzzer.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/fuzz.h"

int main(int count, char **folders)
{
    size_t inputs = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto &entry : std::filesystem::directory_iterator(folders[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            std::fprintf(stderr, "%s\n", entry.path().filename().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    std::printf("%zu inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
