// Choices on head-ends for which the engine breaks a limit when it is asked for everything: the best that
// breaks nothing is found, though it comes to less.

#include <string_view>

#include <gtest/gtest.h>

#include "placement/choosing/choosing.h"
#include "placement/made_services.h"
#include "placement/running/host.h"

namespace zarven::tool::sound_choice_test {
namespace {

using Flags = std::vector<bool>;

Service hd(Service made) {
    made.video_format = 4;
    return made;
}

/// The first service is HD and transcoded, which the module may not do: the engine places it on a transcoder
/// for SD.
Headend broken_with_the_first() {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 1, {19000}, 6, 2});
    headend.services = {hd(service(1, 10, 3000, 0, 1)), service(2, 10, 3000)};
    return headend;
}

class SoundChoice : public testing::Test {
protected:
    Choice chosen(std::uint64_t runs, std::uint64_t seed) const {
        ChoosingLimits limits;
        limits.time = std::chrono::hours(1);
        limits.runs = runs;
        limits.seed = seed;
        return choose_services(headend, limits, {}, [](const ChoosingProgress&) { return true; });
    }

    host::Log no_log{""};
    Headend headend = broken_with_the_first();
};

TEST_F(SoundChoice, WhatBreaksNothingIsBetterThanWhatIsWorthMore) {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        const Choice choice = chosen(600, seed);
        EXPECT_FALSE(choice.is_asked_for_all_sound);
        EXPECT_EQ(choice.asked_for_all.value, 2U);
        EXPECT_TRUE(choice.is_sound) << "seed " << seed;
        EXPECT_EQ(choice.asked, (Flags{false, true})) << "seed " << seed;
        EXPECT_EQ(choice.worth.value, 1U) << "seed " << seed;
    }
}

/// The better variant is worth as much, and is placed.
TEST_F(SoundChoice, ABetterVariantThatBreaksALimitIsNotTaken) {
    headend.services = {hd(variant(1, 10, "X", 3000)), variant(2, 10, "X", 3000), service(3, 10, 3000)};
    headend.services[0].transcoding = headend.services[1].transcoding = 1;
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        const Choice choice = chosen(600, seed);
        EXPECT_FALSE(choice.is_asked_for_all_sound);
        EXPECT_EQ(choice.asked_for_all.value, 2U);
        EXPECT_TRUE(choice.is_sound) << "seed " << seed;
        EXPECT_EQ(choice.asked, (Flags{false, true, true})) << "seed " << seed;
        EXPECT_EQ(choice.worth.value, 2U) << "seed " << seed;
    }
}

/// LCN 5 is the one that breaks the limit. A filling that leaves its stream out is worth no more than what
/// the engine comes to with everything asked for, and is looked at all the same.
TEST_F(SoundChoice, WhatAFillingComesToIsLookedAt) {
    headend.modules[0] = {"A", 3, true, 2, {15000}, 5, 1};
    headend.services = {service(3, 30, 3000), hd(service(5, 10, 3500, 1, 1)), hd(service(6, 20, 2000, 2)),
                        service(7, 20, 3500, 2), hd(service(8, 10, 4500, 2))};
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        const Choice choice = chosen(1, seed);
        EXPECT_FALSE(choice.is_asked_for_all_sound);
        EXPECT_EQ(choice.asked_for_all.value, 3U);
        EXPECT_EQ(choice.worth.value, 3U) << "seed " << seed;
        EXPECT_TRUE(choice.is_sound) << "seed " << seed;
    }
}

/// It may be one that does not end, which takes long to find out again.
TEST_F(SoundChoice, WhatBreaksALimitIsNotRunAgain) {
    std::size_t without = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const Choice choice = chosen(1, seed);
        if (choice.is_sound)
            continue;
        EXPECT_EQ(choice.engine_runs, 1U) << "seed " << seed;
        ++without;
    }
    EXPECT_GT(without, 0U) << "one state is too much for the test";
}

/// Stops all runs but the first.
class StoppingTheOthers : public host::Watcher {
public:
    void hear(std::string_view line) override {
        if (line.find("HEADEND::: **************** START") != line.npos && ++runs_ > 1)
            throw host::RunStopped("it is not the first");
    }
    void wait() override {}

private:
    int runs_ = 0;
};

/// The best that breaks something is told, not one of which nothing is known.
TEST_F(SoundChoice, WhatTheEngineDoesNotConfirmIsNotTaken) {
    const host::Log logged("/dev/null");
    StoppingTheOthers stopping;
    const host::Watching watching(&stopping);
    const Choice choice = chosen(300, 1);
    EXPECT_GT(choice.engine_runs, 1U);
    EXPECT_FALSE(choice.is_sound);
    EXPECT_EQ(choice.asked, (Flags{true, true}));
    EXPECT_EQ(choice.worth.value, 2U);
}

} // namespace
} // namespace zarven::tool::sound_choice_test
