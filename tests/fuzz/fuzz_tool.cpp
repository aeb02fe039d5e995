// The tool from input to every output: the first byte names the command, the rest is its input. The commands
// run as from a shell, but for what they write, which goes nowhere.

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "base/failure.h"
#include "commands/command_line.h"
#include "commands/program.h"
#include "fuzz/Exigir.h"
#include "headend/headend_json.h"

using namespace zarven::tool;

namespace {

/// A file in memory, which has a name as others have.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& text) : descriptor_(::memfd_create("fuzz", 0)) {
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t written = ::write(descriptor_, text.data() + done, text.size() - done);
            if (written <= 0)
                break;
            done += static_cast<std::size_t>(written);
        }
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

/// "@" stands for the input, "#" for a file of modules.
const std::vector<std::vector<std::string>>& command_lines() {
    static const std::vector<std::vector<std::string>> lines = {
        {"run", "@"},
        {"run", "@", "--json"},
        {"run", "@", "--html", "-"},
        {"run", "@", "--strategies", "--color", "always"},
        {"run", "@", "--strategies", "--json"},
        {"explain", "@"},
        {"explain", "@", "--json"},
        {"bound", "@"},
        {"bound", "@", "--json"},
        {"size", "@", "--add", "@", "--most", "2", "--jobs", "1"},
        {"size", "@", "--add", "@", "--most", "2", "--jobs", "1", "--json"},
        {"export", "@", "--format", "channels.conf"},
        {"export", "@", "--format", "csv"},
        {"compare", "@", "@"},
        {"compare", "@", "@", "--json"},
        {"compare", "@", "@", "--html", "-"},
        {"import", "@", "--modules", "#"},
    };
    return lines;
}

/// A module may have 65535 inputs: a page of them takes a minute, which tells nothing.
bool is_reasonable(const std::string& text) {
    std::size_t size = 0;
    try {
        const Headend headend = read_headend("fuzz", text);
        for (const Module& module : headend.modules)
            size += module.inputs + module.outputs.size();
    } catch (const Failure&) {
        // It may be another document, and is small.
    }
    return size <= 300;
}

void call(std::vector<std::string> words, const std::string& path) {
    const MemoryFile modules(
        R"({"modules": [{"mac": "A", "controller": true, "inputs": 2, "outputs": [38000], "pids_max": 4}]})");
    words.insert(words.begin(), "recalculo");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        if (word == "@")
            word = path;
        if (word == "#")
            word = modules.path();
        arguments.push_back(word.data());
    }
    const ExitCode code = perform(describe_program(), static_cast<int>(arguments.size()), arguments.data());
    fuzz::exigir(code == ExitCode::done, "the command line is understood");
}

bool silence() {
    return std::freopen("/dev/null", "w", stdout) != nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool is_silent = silence();
    if (size == 0 || !is_silent)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (!is_reasonable(text))
        return 0;
    const MemoryFile file(text);
    try {
        call(command_lines()[(data[0] - unsigned{'A'}) % command_lines().size()], file.path());
    } catch (const Failure&) {
        // Told, and the exit code with it.
    }
    return 0;
}
