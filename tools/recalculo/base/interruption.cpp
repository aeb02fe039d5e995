// A handler may call next to nothing: here it writes two constants and leaves.

#include "base/interruption.h"

#include <array>
#include <string_view>

#include <unistd.h>

namespace zarven::tool::interruption {

namespace {

volatile std::sig_atomic_t is_deferred = 0;
volatile std::sig_atomic_t pending_signal = 0;
volatile std::sig_atomic_t has_line = 0;

void write_to_standard_error(std::string_view text) {
    // There is nowhere to tell that it failed.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

[[noreturn]] void leave(int signal) {
    if (has_line != 0)
        write_to_standard_error("\r\x1B[K");
    write_to_standard_error("recalculo: interrupted\n");
    _exit(128 + signal);
}

extern "C" void handle_signal(int signal) {
    if (is_deferred == 0 || pending_signal != 0)
        leave(signal);
    pending_signal = signal;
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
    const sigset_t signals = handled_signals();
    sigprocmask(SIG_BLOCK, &signals, &previous_);
}

Held::~Held() {
    sigprocmask(SIG_SETMASK, &previous_, nullptr);
}

void line_is_drawn(bool drawn) {
    has_line = drawn ? 1 : 0;
}

} // namespace zarven::tool::interruption
