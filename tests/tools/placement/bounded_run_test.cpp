// Runs that explode: two modules share a stream, and services of another stream find a transcoder nowhere.
// For each of them the engine tries every pair of the shared services.

#include "placement/bounded_run.h"

#include <filesystem>
#include <string>

#include <syslog.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/streams.h"
#include "failure_message.h"
#include "placement/exploding.h"
#include "placement/host.h"
#include "placement/result.h"
#include "placement/result_json.h"
#include "placement/strategies.h"

namespace zarven::tool {
namespace {

class Bounded : public testing::Test {
protected:
    ~Bounded() override {
        host::limit_runs({});
        std::filesystem::remove(log);
    }

    /// What stops a run of ninety services.
    static std::string stopped(const host::RunLimits& limits, EngineRun& run) {
        host::limit_runs(limits);
        run = load_engine(exploding(60, 40, 10), "f");
        return failure_message([&] { run_engine(run, "f"); });
    }

    const std::string log =
        std::filesystem::temp_directory_path() / ("recalculo-bounded-" + std::to_string(getpid()));
};

const std::string blame = " services, to make room for services of stream 1/2: LCN 81 \"S81\", LCN 82 "
                          "\"S82\", LCN 83 \"S83\" and 7 more, which no module could ever take (it needs a "
                          "transcoder and none has one). Do not ask for them: \"ask\": false in the head-end";

TEST_F(Bounded, ByTime) {
    const host::Log silence("");
    EngineRun run;
    host::RunLimits limits;
    limits.time = std::chrono::milliseconds(0);
    const std::string message = stopped(limits, run);
    EXPECT_EQ(message.find("f: the engine was stopped: it has run for 0 seconds (--max-seconds)"), 0u)
        << message;
}

TEST_F(Bounded, WhatWasLoadedStaysWhole) {
    const host::Log silence("");
    EngineRun run;
    host::RunLimits limits;
    limits.time = std::chrono::milliseconds(0);
    EXPECT_NE(stopped(limits, run), "");
    host::limit_runs({});
    run_engine(run, "f");
    EngineRun undisturbed = load_engine(exploding(60, 40, 10), "f");
    run_engine(undisturbed, "f");
    EXPECT_EQ(result_json(result_of(run, "")), result_json(result_of(undisturbed, "")));
}

TEST_F(Bounded, ByTheLengthOfTheLog) {
    host::RunLimits limits;
    limits.log_bytes = 60000000;
    EngineRun run;
    std::string message;
    {
        const host::Log logged(log);
        message = stopped(limits, run);
    }
    EXPECT_EQ(
        message.find("f: the engine was stopped: its log is longer than 60 MB (--max-log); exchanges that "
                     "fail one after the other have left "),
        0u)
        << message;
    EXPECT_NE(message.find(blame), std::string::npos) << message;
    const std::string text = read_text(log);
    EXPECT_GT(text.size(), 60000000u);
    EXPECT_LT(text.size(), 60001000u);
    EXPECT_EQ(text.back(), '\n');
}

TEST_F(Bounded, BetweenTwoStrategiesTheOneThatExplodedIsBlamed) {
    const host::Log silence("");
    EngineRun run = load_engine(exploding(60, 40, 10), "f");
    const tMapaONIDs loaded = run.engine.Mapa_ONIDs;
    run_engine(run, "f");
    const std::string message = failure_message([&] {
        run_bounded(run, "f", [&] {
            run.engine.Mapa_ONIDs = loaded;
            throw host::RunStopped("time is up");
        });
    });
    EXPECT_NE(message.find(blame), std::string::npos) << message;
}

TEST_F(Bounded, AnUsualRunIsNotBlamed) {
    const host::Log logged(log);
    host::RunLimits limits;
    limits.log_bytes = 100;
    host::limit_runs(limits);
    EngineRun run = load_engine(exploding(1, 1, 0), "f");
    EXPECT_EQ(failure_message([&] { run_engine(run, "f"); }),
              "f: the engine was stopped: its log is longer than 0 MB (--max-log)");
}

TEST_F(Bounded, AStrategyAlone) {
    const host::Log silence("");
    host::RunLimits limits;
    limits.time = std::chrono::milliseconds(0);
    host::limit_runs(limits);
    const Headend headend = exploding(60, 40, 10);
    try {
        strategies_of(headend, "f");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code, ExitCode::engine_did_not_run);
        EXPECT_EQ(std::string(failure.what()).find("f: the engine was stopped: "), 0u);
    }
}

TEST_F(Bounded, NothingIsThrownOutsideOfARun) {
    const host::Log logged(log);
    host::RunLimits limits;
    limits.time = std::chrono::milliseconds(0);
    limits.log_bytes = 0;
    host::limit_runs(limits);
    for (int call = 0; call < 10000; ++call)
        syslog(7, "%d", call);
}

TEST_F(Bounded, SomebodyLooksNowAndThen) {
    const host::Log silence("");
    int looks = 0;
    const std::function<void()> look = [&looks] {
        if (++looks == 3)
            throw host::RunStopped("enough");
    };
    const host::Bounded bounded(look);
    EXPECT_THROW(
        {
            for (int call = 0; call < 100000; ++call)
                syslog(7, "%d", call);
        },
        host::RunStopped);
    EXPECT_EQ(looks, 3);
}

TEST_F(Bounded, AServiceLeftOutManyTimesIsListedOnce) {
    const host::Log silence("");
    EngineRun run = load_engine(exploding(60, 40, 10), "f");
    run_engine(run, "f");
    const Result result = result_of(run, "", Reasons::omitted);
    std::size_t listed = 0;
    for (const StreamResult& stream : result.left_out)
        listed += stream.services.size();
    EXPECT_EQ(listed, 50u);
    EXPECT_EQ(result.counts.left_out, 50u);
    EXPECT_LT(result.findings.size(), 300u);
}

} // namespace
} // namespace zarven::tool
