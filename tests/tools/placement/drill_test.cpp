// Drills made by hand: what fails, what the engine is then given, and where it is stopped.

#include "placement/failing/drill.h"

#include <atomic>

#include <gtest/gtest.h>

#include "base/failure.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::drill_test {
namespace {

/// A has both streams; B is empty and could take one.
Headend with_reserve() {
    Headend headend = two_modules();
    headend.modules[1].inputs = 1;
    headend.services = {service(1, 10), service(2, 20)};
    return headend;
}

FailedPart part_of(PartKind kind, const std::string& mac, std::uint16_t input = 0) {
    FailedPart part{kind, mac};
    part.input = input;
    return part;
}

class DrillOf : public testing::Test {
protected:
    Drill drill() const { return drill_headend(headend, "f", options); }

    host::Log no_log{""};
    Headend headend = with_reserve();
    DrillOptions options;
};

TEST_F(DrillOf, AModuleAndItsInputs) {
    headend.modules[0].label = "Rack 1";
    const Drill told = drill();
    EXPECT_EQ(told.now.placed, 2u);
    EXPECT_EQ(told.taken_out.modules, 2u);
    EXPECT_EQ(told.taken_out.inputs, 3u);
    EXPECT_EQ(told.taken_out.streams, 0u);
    EXPECT_EQ(told.harmless.modules, 1u);
    EXPECT_EQ(told.harmless.inputs, 1u);
    ASSERT_EQ(told.failures.size(), 3u);
    const DrilledFailure& worst = told.failures[0];
    EXPECT_EQ(worst.part.kind, PartKind::module);
    EXPECT_EQ(worst.part.mac, "A");
    EXPECT_EQ(worst.part.label, "Rack 1");
    EXPECT_EQ(told.labels, (Labels{{"A", "Rack 1"}}));
    EXPECT_TRUE(worst.part.is_controller);
    EXPECT_EQ(worst.off_air(), 2u);
    EXPECT_EQ(worst.saved.size(), 1u);
    EXPECT_EQ(worst.all_lost(), 1u);
    for (const std::size_t index : {1u, 2u}) {
        const DrilledFailure& failure = told.failures[index];
        EXPECT_EQ(failure.part.kind, PartKind::input);
        EXPECT_EQ(failure.part.input, index);
        EXPECT_EQ(failure.part.stream.tsid, 10 * index);
        EXPECT_EQ(failure.off_air(), 1u);
        EXPECT_EQ(failure.saved.size(), 1u);
        EXPECT_EQ(failure.all_lost(), 0u);
    }
}

/// One module for each stream, and without one module the engine gives up either stream for the other.
TEST_F(DrillOf, EqualFailuresStayInTheirOrder) {
    headend.modules[0].inputs = 1;
    headend.modules[0].sd_transcoders = headend.modules[0].hd_transcoders = 0;
    const Drill told = drill();
    std::vector<std::string> parts;
    for (const DrilledFailure& failure : told.failures) {
        EXPECT_EQ(failure.all_lost(), 1u);
        EXPECT_EQ(failure.off_air(), 1u);
        EXPECT_EQ(failure.moved, 0u);
        parts.push_back(failure.part.mac + std::to_string(failure.part.input));
    }
    EXPECT_EQ(parts, (std::vector<std::string>{"A0", "B0", "A1", "B1"}));
}

TEST_F(DrillOf, RunsThatArePlannedAreDone) {
    std::vector<std::size_t> runs;
    std::size_t last = 0;
    options.progress = [&](std::size_t done, std::size_t planned) {
        EXPECT_LE(done, planned);
        last = planned;
        runs.push_back(done);
    };
    ASSERT_EQ(drill().failures.front().moved, 0u);
    // As it is, without A, and with an input less: the worst moves nothing that would have to be told.
    EXPECT_EQ(runs, (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_EQ(last, 3u);
}

/// What stays on the second input has not moved because the engine now counts it as the first.
TEST_F(DrillOf, AnInputLeavesTheOthersTheirNumbers) {
    const Drill told = drill();
    ASSERT_EQ(told.failures.size(), 3u);
    EXPECT_EQ(told.failures[1].moved, 1u) << "the engine puts LCN 1 on the second input instead";
    EXPECT_EQ(told.failures[2].moved, 0u);
}

TEST_F(DrillOf, AStream) {
    options.has_streams = true;
    headend.services.push_back(service(3, 30));
    headend.services.back().ask = false;
    const Drill told = drill();
    EXPECT_EQ(told.taken_out.streams, 2u) << "what is not asked for cannot fail";
    EXPECT_EQ(told.harmless.streams, 0u);
    const auto& failure = told.failures[1];
    EXPECT_EQ(failure.part.kind, PartKind::stream);
    EXPECT_EQ(failure.lost.size(), 1u);
    EXPECT_EQ(failure.saved.size(), 0u);
}

TEST_F(DrillOf, Musts) {
    headend.services[1].must = true;
    headend.services.push_back(service(3, 30));
    headend.services[2].must = true;
    headend.services[2].bitrate = 20000;
    const Drill told = drill();
    EXPECT_EQ(told.musts, 2u);
    EXPECT_EQ(told.musts_placed, 1u);
    headend.services[0].must = true;
    EXPECT_EQ(drill().musts_placed, 2u);
}

TEST_F(DrillOf, TheOnlyModule) {
    headend.modules.pop_back();
    const Drill told = drill();
    EXPECT_EQ(told.failures[0].run, NewRun::impossible);
    EXPECT_EQ(told.failures[0].lost.size(), 2u);
}

TEST_F(DrillOf, SparesUpToTheFirstThatIsEnough) {
    options.spare = headend.modules[1];
    Drill told = drill();
    ASSERT_TRUE(told.spare);
    EXPECT_EQ(told.spare->kept, 2u);
    EXPECT_EQ(told.spare->number, std::size_t{1});
    ASSERT_EQ(told.spare->attempts.size(), 2u);
    EXPECT_EQ(told.spare->attempts[0].failures, 1u);
    EXPECT_EQ(told.spare->attempts[0].worst, 1u);
    EXPECT_EQ(told.spare->attempts[1].failures, 0u);
    options.most = 0;
    told = drill();
    EXPECT_FALSE(told.spare->number);
    EXPECT_EQ(told.spare->attempts.size(), 1u);
    // Of the two, the one that a new run leaves out does not matter.
    options.most = 8;
    headend.services[told.failures[0].lost[0].service.lcn == 1 ? 1 : 0].must = true;
    told = drill();
    EXPECT_EQ(told.spare->kept, 1u);
    EXPECT_EQ(told.spare->number, std::size_t{0});
}

TEST_F(DrillOf, StoppedItTellsWhatThereIs) {
    options.spare = headend.modules[1];
    std::atomic<int> runs{0};
    options.progress = [&runs](std::size_t done, std::size_t planned) {
        runs = static_cast<int>(done);
        EXPECT_LE(done, planned);
    };
    options.is_stopped = [&runs] { return runs >= 2; };
    const Drill told = drill();
    EXPECT_TRUE(told.is_partial);
    EXPECT_EQ(told.failures.size(), 1u);
    ASSERT_TRUE(told.spare);
    EXPECT_TRUE(told.spare->attempts.empty());
    EXPECT_FALSE(told.spare->number);
}

TEST_F(DrillOf, WithoutAControllerNothingIsDrilled) {
    headend.modules[0].controller = false;
    EXPECT_THROW(drill(), Failure);
}

TEST_F(DrillOf, ANewRunThatIsStoppedChangesNothing) {
    options.spare = headend.modules[1];
    options.progress = [](std::size_t done, std::size_t) {
        if (done == 1)
            host::limit_runs({std::chrono::milliseconds(0), {}});
    };
    const Drill told = drill();
    host::limit_runs({});
    ASSERT_EQ(told.failures.size(), 3u);
    for (const DrilledFailure& failure : told.failures) {
        EXPECT_EQ(failure.run, NewRun::stopped);
        EXPECT_EQ(failure.problem.find("f: the engine was stopped: it has run for 0 seconds"), 0u)
            << failure.problem;
        EXPECT_EQ(failure.saved.size() + failure.lost_besides.size() + failure.gained.size(), 0u);
        EXPECT_EQ(failure.moved, 0u);
    }
    EXPECT_EQ(told.failures[0].lost.size(), 2u);
    EXPECT_EQ(told.spare->attempts[0].failures, 3u);
    EXPECT_EQ(told.spare->attempts[0].worst, 2u);
    ASSERT_EQ(told.spare->attempts.size(), options.most + 1);
    EXPECT_TRUE(told.spare->attempts[1].is_broken);
    EXPECT_EQ(told.spare->attempts[1].missing, 0u) << "nothing is told of a run that does not count";
    EXPECT_FALSE(told.spare->number);
}

TEST_F(DrillOf, TheFirstRunHasToEnd) {
    host::limit_runs({std::chrono::milliseconds(0), {}});
    EXPECT_THROW(drill(), Failure);
    host::limit_runs({});
}

TEST(Without, TheControllerAnotherModuleIsTakenForIt) {
    Headend headend = two_modules();
    headend.modules.insert(headend.modules.begin(), {"C", 3, false, 1, {9000}, 1, 0, 0, 0});
    FailedPart part = part_of(PartKind::module, "A");
    part.is_controller = true;
    const Headend left = without(headend, part);
    ASSERT_EQ(left.modules.size(), 2u);
    EXPECT_EQ(left.modules[0].mac, "C");
    EXPECT_FALSE(left.modules[0].controller);
    EXPECT_TRUE(left.modules[1].controller) << "the first for the engine";
    part.is_controller = false;
    EXPECT_FALSE(without(headend, part).modules[1].controller);
}

TEST(Without, AnInputTheModuleHasOneLess) {
    const Headend left = without(two_modules(), part_of(PartKind::input, "B", 1));
    EXPECT_EQ(left.modules[0].inputs, 2);
    EXPECT_EQ(left.modules[1].inputs, 1);
}

TEST(Without, AStreamItsServicesAreNotAskedFor) {
    Headend headend = with_reserve();
    FailedPart part;
    part.kind = PartKind::stream;
    part.stream = {1, 20};
    headend = without(headend, part);
    EXPECT_TRUE(headend.services[0].ask);
    EXPECT_FALSE(headend.services[1].ask);
}

} // namespace
} // namespace zarven::tool::drill_test
