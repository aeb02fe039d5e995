// syslog and sleep as the engine finds them. Their system headers stay out: they may define syslog inline.

#include "placement/running/host.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "base/interruption.h"
#include "base/utf8.h"

namespace {

using zarven::tool::host::RunLimits;
using zarven::tool::host::RunStopped;
using zarven::tool::host::Watcher;
using Clock = std::chrono::steady_clock;
namespace interruption = zarven::tool::interruption;

std::FILE* log_destination = nullptr;
Watcher* watcher = nullptr;
bool pauses_are_kept = false;
RunLimits run_limits;
std::uint64_t bytes_logged = 0;

/// The run of this thread.
struct BoundedRun {
    bool is_under_way = false;
    std::optional<Clock::time_point> end;
    std::uint32_t calls = 0;
    const std::function<void()>* look = nullptr;
};
thread_local BoundedRun bounded_run;
/// Of the runs that have the time of one.
thread_local std::optional<Clock::time_point> end_of_all;

/// The clock is asked once for so many calls, of which a short run makes some hundreds.
constexpr std::uint32_t calls_for_the_clock = 16;
constexpr std::uint32_t calls_for_a_look = 4096;

/// Nobody waits longer for an answer to Ctrl-C, or for a second to go by.
constexpr std::chrono::milliseconds slice(100);

/// The text that the arguments make, in a buffer that serves all lines.
std::string_view made_up(const char* format, va_list arguments) {
    static std::string buffer(1024, '\0');
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    const auto needed = static_cast<std::size_t>(std::max(length, 0));
    if (needed >= buffer.size()) {
        buffer.resize(needed + 1);
        std::vsnprintf(buffer.data(), buffer.size(), format, again);
    }
    va_end(again);
    return std::string_view(buffer).substr(0, needed);
}

/// A name could end the line or command the terminal that shows it. Tabs are the engine's own.
std::string harmless(std::string_view line) {
    std::string clean;
    for (;;) {
        const std::size_t tab = std::min(line.find('\t'), line.size());
        clean += zarven::tool::printable(line.substr(0, tab));
        if (tab == line.size())
            return clean;
        clean += '\t';
        line.remove_prefix(tab + 1);
    }
}

bool is_plain(std::string_view line) {
    return std::all_of(line.begin(), line.end(),
                       [](char byte) { return byte == '\t' || (byte >= ' ' && byte <= '~'); });
}

void write_line(int level, const char* format, va_list arguments) {
    std::string_view line = made_up(format, arguments);
    std::string clean;
    if (!is_plain(line))
        line = clean = harmless(line);
    const int prefix = std::fprintf(log_destination, "%d ", level);
    std::fwrite(line.data(), 1, line.size(), log_destination);
    std::fputc('\n', log_destination);
    // Negative where it failed, which is told in the end.
    bytes_logged += static_cast<std::uint64_t>(std::max(prefix, 0)) + line.size() + 1;
}

/// Ends the run if it has taken what it may.
void obey_limits() {
    if (!bounded_run.is_under_way)
        return;
    ++bounded_run.calls;
    if (log_destination != nullptr && run_limits.log_bytes && bytes_logged > *run_limits.log_bytes)
        throw RunStopped(
            fmt::format("its log is longer than {} MB (--max-log)", *run_limits.log_bytes / 1000000));
    if (bounded_run.calls % calls_for_a_look == 0)
        (*bounded_run.look)();
    if (bounded_run.end && bounded_run.calls % calls_for_the_clock == 0 && Clock::now() > *bounded_run.end)
        throw RunStopped(fmt::format(
            "it has run for {} (--max-seconds)",
            zarven::tool::counted(static_cast<std::size_t>(run_limits.time->count() / 1000), "second")));
}

/// The watcher hears the lines that are constants of the engine whole, and of the others the format, which
/// saves making up the text.
void tell(const char* format, va_list arguments) {
    const bool is_constant = std::strcmp(format, "%s") == 0;
    watcher->hear(is_constant ? va_arg(arguments, const char*) : format);
}

void obey_interruption() {
    if (!interruption::is_pending())
        return;
    if (log_destination != nullptr)
        std::fflush(log_destination);
    interruption::obey();
}

void pause_for(std::chrono::steady_clock::duration time) {
    const Clock::time_point end = Clock::now() + time;
    if (bounded_run.end)
        *bounded_run.end += time;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        std::this_thread::sleep_for(std::min<Clock::duration>(end - now, slice));
        if (watcher != nullptr)
            watcher->wait();
        obey_interruption();
    }
}

} // namespace

extern "C" {

void syslog(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
unsigned int sleep(unsigned int seconds);
int setlogmask(int mask); // the C library's

void syslog(int level, const char* format, ...) {
    if (log_destination == nullptr && watcher == nullptr) {
        obey_limits();
        return;
    }
    va_list arguments;
    if (log_destination != nullptr) {
        va_start(arguments, format);
        write_line(level, format, arguments);
        va_end(arguments);
    }
    if (watcher != nullptr) {
        va_start(arguments, format);
        tell(format, arguments);
        va_end(arguments);
    }
    obey_interruption();
    obey_limits();
}

unsigned int sleep(unsigned int seconds) {
    if (pauses_are_kept) {
        // Whoever follows the log sees it up to the pause.
        if (log_destination != nullptr)
            std::fflush(log_destination);
        pause_for(std::chrono::seconds(seconds));
    }
    obey_limits();
    return 0;
}

} // extern "C"

namespace zarven::tool::host {

void keep_pauses(bool keep) {
    pauses_are_kept = keep;
}

void limit_runs(const RunLimits& limits) {
    run_limits = limits;
}

Bounded::Bounded(const std::function<void()>& look) {
    bounded_run = {true, {}, 0, &look};
    if (end_of_all)
        bounded_run.end = end_of_all;
    else if (run_limits.time)
        bounded_run.end = Clock::now() + *run_limits.time;
}

Bounded::~Bounded() {
    bounded_run = {};
}

TimeOfOneRun::TimeOfOneRun() {
    if (run_limits.time)
        end_of_all = Clock::now() + *run_limits.time;
}

TimeOfOneRun::~TimeOfOneRun() {
    end_of_all.reset();
}

bool TimeOfOneRun::is_over() const {
    return end_of_all && Clock::now() >= *end_of_all;
}

Watching::Watching(Watcher* who) {
    watcher = who;
}

Watching::~Watching() {
    watcher = nullptr;
}

Log::Log(const std::string& path) : path_(path), previous_mask_(setlogmask(0)) {
    const int all_levels = 0xFF;
    const int emergencies = 0x01; // no mask is empty: that would only ask for the one in force
    if (!path.empty() && path != standard_stream)
        opened_ = open_for_writing(path);
    if (!path.empty())
        deferred_.emplace();
    if (!path.empty())
        log_destination = opened_ ? opened_.get() : stderr;
    bytes_logged = 0;
    setlogmask(path.empty() ? emergencies : all_levels);
}

Log::~Log() {
    log_destination = nullptr;
    setlogmask(previous_mask_);
}

void Log::finish() {
    if (log_destination == nullptr)
        return;
    const bool failed_before = std::ferror(log_destination) != 0;
    const bool failed_now = std::fflush(log_destination) != 0;
    // The reason of an earlier failure is long forgotten.
    if (failed_before || failed_now)
        throw Failure(fmt::format("{}: the log cannot be written{}", opened_ ? path_ : "standard error",
                                  failed_now ? std::string(": ") + std::strerror(errno) : ""));
    deferred_.reset();
}

} // namespace zarven::tool::host
