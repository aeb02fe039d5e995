// The program on a terminal, which it takes for one of a person.

#ifndef RECALCULO_ON_A_TERMINAL_H
#define RECALCULO_ON_A_TERMINAL_H

#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "commands/command_line.h"

namespace zarven::tool {

/// The program on a terminal of 72 columns, watched.
class OnATerminal : public CommandLine {
protected:
    ~OnATerminal() override {
        if (screen_ >= 0)
            close(screen_);
        if (child_ > 0) {
            kill(child_, SIGKILL);
            waitpid(child_, nullptr, 0);
        }
    }

    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), program);
        std::vector<char*> words;
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        winsize size{};
        size.ws_row = 24;
        size.ws_col = 72;
        child_ = forkpty(&screen_, nullptr, nullptr, &size);
        if (child_ == 0) {
            // The terminal would throw away what the program writes at the very moment of Ctrl-C, and show a
            // ^C of its own before it or behind it.
            termios settings{};
            tcgetattr(STDIN_FILENO, &settings);
            settings.c_lflag |= NOFLSH;
            settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
            tcsetattr(STDIN_FILENO, TCSANOW, &settings);
            // The test may have been started with it ignored.
            std::signal(SIGINT, SIG_DFL);
            execv(words[0], words.data());
            std::_Exit(127);
        }
    }

    /// Reads on until the text is on the screen, or, without one, to the end.
    bool shows(const std::string& text) {
        std::array<char, 4096> block;
        while (text.empty() || shown_.find(text) == std::string::npos) {
            const ssize_t length = read_block(block);
            if (length <= 0)
                return false;
            shown_.append(block.data(), static_cast<std::size_t>(length));
        }
        return true;
    }

    void press_control_c() { ASSERT_EQ(::write(screen_, "\x03", 1), 1); }

    int exit_code() {
        shows("");
        int status = 0;
        waitpid(child_, &status, 0);
        child_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    bool ends_with(const std::string& end) const {
        return shown_.size() >= end.size() && shown_.compare(shown_.size() - end.size(), end.npos, end) == 0;
    }

    /// Of a search that tries numbers: it tells its runs, and in the middle of them what it has found.
    void expect_runs_until_control_c() {
        EXPECT_TRUE(shows(" runs · "));
        press_control_c();
        EXPECT_EQ(exit_code(), 130);
        EXPECT_NE(shown_.find("Interrupted: this is what was found until then."), std::string::npos)
            << shown_;
        EXPECT_NE(shown_.find("None of the numbers tried before the interruption is enough"),
                  std::string::npos);
        EXPECT_TRUE(ends_with("recalculo: interrupted\r\n")) << shown_;
    }

    pid_t child_ = -1;
    std::string shown_;

private:
    ssize_t read_block(std::array<char, 4096>& block) const {
        return ::read(screen_, block.data(), block.size());
    }

    int screen_ = -1;
};

} // namespace zarven::tool

#endif
