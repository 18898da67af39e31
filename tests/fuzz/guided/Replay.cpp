#include "Fuzzer.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void replay(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

// Runs a fuzzer over every file of the folders that the caller names, without the fuzzing library.
int main(int count, char** words)
{
    std::size_t inputs = 0;
    for (int index = 1; index < count; ++index) {
        for (const auto& entry : std::filesystem::directory_iterator(words[index])) {
            replay(entry.path());
            ++inputs;
        }
    }
    std::printf("%zu\n", inputs);
    return 0;
}
