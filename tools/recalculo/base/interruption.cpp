// A handler may call next to nothing: here it writes two constants and leaves.

#include "base/interruption.h"

#include <array>
#include <cstdio>
#include <new>
#include <string_view>

#include <unistd.h>

#include "base/failure.h"

namespace zarven::tool::interruption {

namespace {

volatile std::sig_atomic_t is_deferred = 0;
volatile std::sig_atomic_t pending_signal = 0;
volatile std::sig_atomic_t has_line = 0;
const char* volatile unfinished_file = nullptr;

constexpr std::string_view erase_line = "\r\x1B[K";

void write_to_standard_error(std::string_view text) {
    // There is nowhere to tell that it failed.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

void tidy_up() {
    if (unfinished_file != nullptr)
        unlink(unfinished_file);
    if (has_line != 0)
        write_to_standard_error(erase_line);
}

[[noreturn]] void leave(int signal) {
    tidy_up();
    write_to_standard_error("recalculo: interrupted\n");
    _exit(128 + signal);
}

extern "C" void handle_signal(int signal) {
    if (is_deferred == 0 || pending_signal != 0)
        leave(signal);
    pending_signal = signal;
}

/// Called in the place of the exception, which would not pass through every destructor that it meets.
[[noreturn]] void leave_without_memory() {
    std::fflush(nullptr);
    tidy_up();
    write_to_standard_error("recalculo: memory ran out\n");
    _exit(static_cast<int>(ExitCode::engine_did_not_run));
}

sigset_t handled_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

} // namespace

void install() {
    std::set_new_handler(leave_without_memory);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int signal : std::array{SIGINT, SIGTERM}) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = handle_signal;
        action.sa_mask = handled_signals();
        // A log that is being written must not lose a line to the signal.
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

Deferred::Deferred() {
    is_deferred = 1;
}

Deferred::~Deferred() {
    is_deferred = 0;
    obey();
}

bool is_pending() {
    return pending_signal != 0;
}

void obey() {
    if (pending_signal != 0)
        leave(pending_signal);
}

Held::Held() {
    sigset_t signals = handled_signals();
    sigaddset(&signals, SIGHUP);
    sigaddset(&signals, SIGQUIT);
    sigprocmask(SIG_BLOCK, &signals, &previous_);
}

Held::~Held() {
    sigprocmask(SIG_SETMASK, &previous_, nullptr);
}

void file_is_unfinished(const char* path) {
    unfinished_file = path;
}

void line_is_drawn(bool drawn) {
    has_line = drawn ? 1 : 0;
}

} // namespace zarven::tool::interruption
