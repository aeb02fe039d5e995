// The threads draw numbers until there are none left.

#include "base/workers.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace zarven::tool {

unsigned cores() {
    return std::max(1u, std::thread::hardware_concurrency());
}

void in_parallel(std::size_t parts, unsigned jobs, const std::function<void(std::size_t)>& part) {
    std::atomic<std::size_t> next{0};
    const auto draw = [&] {
        try {
            for (std::size_t number = next++; number < parts; number = next++)
                part(number);
        } catch (...) {
            next = parts; // what is left would be of no use
            throw;
        }
    };
    std::vector<std::future<void>> threads;
    try {
        for (std::size_t thread = 1; thread < std::min(parts, std::size_t{jobs}); ++thread)
            threads.push_back(std::async(std::launch::async, draw));
    } catch (const std::system_error&) {
        // No further thread is to be had: those there are do all of it.
    }
    // The futures wait for their threads, also when this throws.
    draw();
    for (std::future<void>& thread : threads)
        thread.get();
}

} // namespace zarven::tool
