// Runs that explode: two modules share a stream, and services of another stream find a transcoder nowhere.
// For each of them the engine tries every pair of the shared services.

#include "placement/running/bounded_run.h"

#include <filesystem>
#include <string>

#include <syslog.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/streams.h"
#include "failure_message.h"
#include "placement/exploding.h"
#include "placement/result.h"
#include "placement/result_json.h"
#include "placement/running/host.h"
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
    EXPECT_NE(stopped(limits, run), "(no failure)");
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

/// What is told of an index in which the services of streams 1/10 and 1/20 stand so many times.
std::string told_of_index(const Headend& headend, const std::vector<std::size_t>& times) {
    const host::Log silence("");
    EngineRun run = load_engine(headend, "f");
    const std::string message = failure_message([&] {
        run_bounded(run, "f", [&] {
            run.engine.Mapa_ONIDs.clear();
            for (std::size_t index = 0; index < times.size(); ++index) {
                const auto& service = run.engine.listaServicios[index];
                for (std::size_t time = 0; time < times[index]; ++time)
                    run.engine.Mapa_ONIDs[service->ONID].MapRec_TSIDs[service->TSID].MapRec_Services.emplace(
                        service->idService, service);
            }
            throw host::RunStopped("enough");
        });
    });
    const std::string begin = "f: the engine was stopped: enough";
    EXPECT_EQ(message.substr(0, begin.size()), begin);
    return message.substr(std::min(begin.size(), message.size()));
}

std::string blamed(std::size_t entries, const std::string& services, const std::string& whom) {
    return "; exchanges that fail one after the other have left " + std::to_string(entries) + " entries of " +
           services + ", to make room for services of stream " + whom +
           ". Do not ask for them: \"ask\": false in the head-end";
}

TEST_F(Bounded, MoreThanTwoEntriesForEachServiceAreAnExplosion) {
    Headend headend = exploding(1, 8, 0);
    headend.services = {service(1, 10, 100), service(2, 20, 100), service(3, 20, 100)};
    EXPECT_EQ(told_of_index(headend, {2, 2, 2}), "");
    EXPECT_EQ(told_of_index(headend, {1, 2, 4}), blamed(7, "3 services", "1/20: LCN 2 \"S2\", LCN 3 \"S3\""));
    EXPECT_EQ(told_of_index(headend, {4, 1, 1}), "") << "six entries of three";
    EXPECT_EQ(told_of_index(headend, {5, 1, 1}), blamed(7, "3 services", "1/10: LCN 1 \"S1\""));
    EXPECT_EQ(told_of_index(headend, {0, 3, 0}), blamed(3, "1 service", "1/20: LCN 2 \"S2\""));
}

TEST_F(Bounded, TheFirstThatNoModuleCouldTakeTellsWhy) {
    Headend headend = exploding(1, 8, 0);
    headend.services = {service(1, 20, 100), service(2, 20, 100, 0, 1), service(3, 20, 70000)};
    const std::string told = told_of_index(headend, {1, 3, 4});
    EXPECT_NE(told.find(": LCN 2 \"S2\", LCN 3 \"S3\", which no module could ever take (it needs a "
                        "transcoder and none has one)"),
              std::string::npos)
        << told;
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

TEST_F(Bounded, SeveralRunsMayHaveTheTimeOfOne) {
    const host::Log silence("");
    host::RunLimits limits;
    limits.time = std::chrono::hours(1);
    host::limit_runs(limits);
    {
        const host::TimeOfOneRun time;
        EXPECT_FALSE(time.is_over());
    }
    EngineRun run;
    limits.time = std::chrono::milliseconds(0);
    host::limit_runs(limits);
    {
        const host::TimeOfOneRun time;
        EXPECT_TRUE(time.is_over());
        limits.time = std::chrono::hours(1);
        EXPECT_NE(stopped(limits, run), "(no failure)") << "it began when there was no time left";
    }
    EXPECT_EQ(stopped(limits, run), "(no failure)");
    host::limit_runs({});
    EXPECT_FALSE(host::TimeOfOneRun().is_over());
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
