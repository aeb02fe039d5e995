// The program from outside: what a shell sees of exit codes, standard streams and files.

#ifndef RECALCULO_COMMAND_LINE_H
#define RECALCULO_COMMAND_LINE_H

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace zarven::tool {

namespace fs = std::filesystem;

inline const std::string program = RECALCULO_PROGRAM;
inline const std::string examples = RECALCULO_EXAMPLES;
inline const std::string small = examples + "/small.json";
inline const std::string medium = examples + "/medium.json";

struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

/// Without what is said before, as that a MAC is none.
inline std::string last_line(const std::string& text) {
    const std::size_t end = text.empty() ? 0 : text.size() - 1;
    const std::size_t before = text.rfind('\n', end == 0 ? 0 : end - 1);
    return before == text.npos ? text : text.substr(before + 1);
}

/// Each test has a folder of its own.
class CommandLine : public testing::Test {
protected:
    CommandLine() {
        std::string pattern = (fs::temp_directory_path() / "recalculo-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
    }
    ~CommandLine() override { fs::remove_all(folder); }

    std::string file(const std::string& name) const { return (folder / name).string(); }

    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }

    static std::string read(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Runs a line of shell in a group with its streams in files.
    Outcome shell(const std::string& line, const std::string& input = "") const {
        const std::string command = "{ " + line + "\n} <'" + write("stdin", input) + "' >'" + file("stdout") +
                                    "' 2>'" + file("stderr") + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(file("stdout")), read(file("stderr"))};
    }

    Outcome run(const std::string& arguments, const std::string& input = "") const {
        return shell("'" + program + "' " + arguments, input);
    }

    /// The program refused its input: exit code 2, nothing on standard output, one message.
    void expect_refused(const Outcome& outcome, const std::string& message) const {
        EXPECT_EQ(outcome.code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "recalculo: " + message + "\n");
    }

    fs::path folder;
};

/// One module, for line-ups, and a line of one.
inline const std::string modules_text =
    R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 2, "outputs": [38000],
    "pids_max": 8}]})";
inline const std::string channel_line =
    "Canal;Marca:11362:HC23:S19.2E:22000:6110=27:6120=deu@3:6130:98C:11110:1:1011:0\n";

/// A head-end that has no room for the second service.
inline const std::string two_streams =
    R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 1, "outputs": [5000],
    "pids_max": 0}], "services": [{"lcn": 1, "name": "a", "onid": 1, "tsid": 1, "sid": 1},
    {"lcn": 2, "name": "b", "onid": 1, "tsid": 2, "sid": 2}]})";

/// A whole page, from its first line to its last.
inline void expect_page(const std::string& text) {
    EXPECT_EQ(text.rfind("<!doctype html>\n", 0), 0u);
    EXPECT_NE(text.find("<h1><bdi>Small head-end</bdi></h1>"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 8), "</html>\n");
}

} // namespace zarven::tool

#endif
