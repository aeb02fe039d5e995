// syslog and sleep as the engine finds them. Their system headers stay out: they may define syslog inline.

#include "placement/host.h"

#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstring>
#include <thread>

#include <fmt/format.h>

#include "base/failure.h"

namespace {

std::FILE* log_destination = nullptr;
bool pauses_are_kept = false;

} // namespace

extern "C" {

void syslog(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
unsigned int sleep(unsigned int seconds);
int setlogmask(int mask); // the C library's

void syslog(int level, const char* format, ...) {
    if (log_destination == nullptr)
        return;
    std::fprintf(log_destination, "%d ", level);
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(log_destination, format, arguments);
    va_end(arguments);
    std::fputc('\n', log_destination);
}

unsigned int sleep(unsigned int seconds) {
    if (pauses_are_kept) {
        // Whoever follows the log sees it up to the pause.
        if (log_destination != nullptr)
            std::fflush(log_destination);
        std::this_thread::sleep_for(std::chrono::seconds(seconds));
    }
    return 0;
}

} // extern "C"

namespace zarven::tool::host {

void keep_pauses(bool keep) {
    pauses_are_kept = keep;
}

Log::Log(const std::string& path) : path_(path), previous_mask_(setlogmask(0)) {
    const int all_levels = 0xFF;
    const int emergencies = 0x01; // no mask is empty: that would only ask for the one in force
    if (!path.empty() && path != standard_stream)
        opened_ = open_for_writing(path);
    if (!path.empty())
        log_destination = opened_ ? opened_.get() : stderr;
    setlogmask(path.empty() ? emergencies : all_levels);
}

Log::~Log() {
    log_destination = nullptr;
    setlogmask(previous_mask_);
}

void Log::finish() {
    if (log_destination == nullptr)
        return;
    if (std::fflush(log_destination) != 0 || std::ferror(log_destination) != 0)
        throw Failure(fmt::format("{}: the log cannot be written: {}", opened_ ? path_ : "standard error",
                                  std::strerror(errno)));
}

} // namespace zarven::tool::host
