// How the process ends on a signal, in a child that is watched.

#include "base/interruption.h"

#include <csignal>
#include <cstdio>

#include <gtest/gtest.h>

namespace zarven::tool::interruption_test {
namespace {

using testing::ExitedWithCode;

/// In the child, whatever the parent was started with.
void install() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    interruption::install();
}

constexpr const char* message_alone = "^recalculo: interrupted\n$";

TEST(Interruption, EndsTheProgram) {
    EXPECT_EXIT((install(), std::raise(SIGINT)), ExitedWithCode(130), message_alone);
    EXPECT_EXIT((install(), std::raise(SIGTERM)), ExitedWithCode(143), message_alone);
}

TEST(Interruption, ErasesTheLineFirst) {
    EXPECT_EXIT((install(), interruption::line_is_drawn(true), std::raise(SIGINT)), ExitedWithCode(130),
                "^\r\x1B\\[Krecalculo: interrupted\n$");
}

TEST(Interruption, WaitsWhileDeferred) {
    const auto in_child = [](bool obeys) {
        install();
        {
            const interruption::Deferred deferred;
            interruption::obey();
            if (interruption::is_pending())
                std::_Exit(1);
            std::raise(SIGINT);
            std::fputs(interruption::is_pending() ? "goes on " : "lost ", stderr);
            if (obeys)
                interruption::obey();
            std::fputs("to the end ", stderr);
        }
        std::_Exit(2);
    };
    EXPECT_EXIT(in_child(true), ExitedWithCode(130), "^goes on recalculo: interrupted\n$");
    EXPECT_EXIT(in_child(false), ExitedWithCode(130), "^goes on to the end recalculo: interrupted\n$");
}

TEST(Interruption, TheSecondSignalDoesNotWait) {
    EXPECT_EXIT(
        {
            install();
            const interruption::Deferred deferred;
            std::raise(SIGINT);
            std::raise(SIGTERM);
            std::_Exit(2);
        },
        ExitedWithCode(143), message_alone);
}

TEST(Interruption, WaitsWhileHeld) {
    EXPECT_EXIT(
        {
            install();
            {
                const interruption::Held held;
                std::raise(SIGINT);
                std::raise(SIGINT);
                std::fputs("whole ", stderr);
            }
            std::_Exit(2);
        },
        ExitedWithCode(130), "^whole recalculo: interrupted\n$");
}

TEST(Interruption, WhatIsIgnoredStaysIgnored) {
    EXPECT_EXIT(
        {
            std::signal(SIGINT, SIG_IGN);
            interruption::install();
            std::raise(SIGINT);
            std::_Exit(0);
        },
        ExitedWithCode(0), "^$");
}

} // namespace
} // namespace zarven::tool::interruption_test
