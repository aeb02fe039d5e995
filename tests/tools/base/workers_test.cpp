// Parts on several threads: each is done once, and what goes wrong in one is told.

#include "base/workers.h"

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace zarven::tool::workers_test {
namespace {

TEST(InParallel, EachPartOnce) {
    for (const unsigned jobs : {1u, 2u, 7u, 200u}) {
        std::vector<std::atomic<int>> calls(100);
        in_parallel(calls.size(), jobs, [&calls](std::size_t part) { ++calls[part]; });
        for (const auto& number : calls)
            EXPECT_EQ(number, 1);
    }
}

TEST(InParallel, NoParts) {
    in_parallel(0, 4, [](std::size_t) { FAIL(); });
}

TEST(InParallel, OnSeveralThreads) {
    // Two parts that wait for each other: one thread would wait for ever.
    std::atomic<int> arrived{0};
    in_parallel(2, 2, [&arrived](std::size_t) {
        ++arrived;
        while (arrived < 2)
            std::this_thread::yield();
    });
    EXPECT_EQ(arrived, 2);
}

TEST(InParallel, OnNoMoreThanAsked) {
    std::mutex mutex;
    std::set<std::thread::id> threads;
    in_parallel(50, 3, [&](std::size_t) {
        const std::lock_guard<std::mutex> lock(mutex);
        threads.insert(std::this_thread::get_id());
    });
    EXPECT_LE(threads.size(), 3u);
}

TEST(InParallel, WhatAPartThrows) {
    for (const unsigned jobs : {1u, 4u})
        EXPECT_THROW(in_parallel(100, jobs,
                                 [](std::size_t part) {
                                     if (part == 17)
                                         throw std::runtime_error("part");
                                 }),
                     std::runtime_error);
}

TEST(Cores, OneAtLeast) {
    EXPECT_GE(cores(), 1u);
}

} // namespace
} // namespace zarven::tool::workers_test
