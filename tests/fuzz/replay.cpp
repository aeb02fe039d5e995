// Replays files through a harness, without a fuzzer: replay FILE-OR-FOLDER... Every build and every machine
// can.

#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    std::size_t files = 0;
    std::filesystem::path current;
    try {
        for (int i = 1; i < argc; ++i) {
            std::vector<std::filesystem::path> found;
            if (std::filesystem::is_directory(argv[i]))
                for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
                    found.push_back(entry.path());
            else
                found.emplace_back(argv[i]);
            for (const auto& file : found) {
                current = file;
                replay(file);
                ++files;
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", current.c_str(), error.what());
        return 1;
    }
    std::fprintf(stderr, "%zu files replayed\n", files);
    return files == 0 ? 1 : 0;
}
