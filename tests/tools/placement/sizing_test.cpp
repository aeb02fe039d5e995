// Numbers of modules and raised limits, on head-ends where they can be told by hand.

#include "placement/sizing/further_modules.h"
#include "placement/sizing/sizing.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "base/streams.h"
#include "failure_message.h"
#include "headend/headend_json.h"
#include "placement/exploding.h"
#include "placement/made_services.h"
#include "placement/running/host.h"

namespace zarven::tool::sizing_test {
namespace {

/// A service that leaves room for others on an output of 100 kbit/s.
Service light(std::uint16_t lcn, std::uint16_t tsid, std::uint32_t bitrate = 10, std::uint16_t ca_pids = 0,
              std::uint16_t transcoding = 0) {
    return service(lcn, tsid, bitrate, ca_pids, transcoding);
}

/// One input, one output under 100 kbit/s, 4 PIDs.
const Module plain{"M", 3, true, 1, {100}, 4, 0, 0, 0};

Headend one_module(std::vector<Service> services) {
    Headend headend;
    headend.modules = {plain};
    headend.services = std::move(services);
    return headend;
}

Sizing size(const Headend& headend, const Module& kind, std::uint32_t most = 8, unsigned jobs = 2) {
    const host::Log no_log("");
    SizingOptions options;
    options.most = most;
    options.jobs = jobs;
    return size_headend(headend, "f", {kind}, options);
}

std::vector<std::size_t> numbers_tried(const Addition& addition) {
    std::vector<std::size_t> numbers;
    for (const Attempt& attempt : addition.attempts)
        numbers.push_back(attempt.number);
    return numbers;
}

TEST(Sizing, NothingIsNeededWhereAllIsPlaced) {
    const Sizing sizing = size(one_module({light(1, 10), light(2, 10)}), plain);
    EXPECT_EQ(sizing.now.placed, 2u);
    EXPECT_EQ(sizing.addition.number, 0u);
    EXPECT_EQ(sizing.addition.at_least, 0u);
    EXPECT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{0});
    EXPECT_TRUE(sizing.raises.empty());
}

TEST(Sizing, AModuleForEachStreamWithoutInput) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(sizing.now.placed, 1u);
    EXPECT_EQ(sizing.addition.number, 3u);
    EXPECT_EQ(sizing.addition.at_least, 3u);
    EXPECT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{3});
    Module two_inputs = plain;
    two_inputs.inputs = 2;
    EXPECT_EQ(size(headend, two_inputs).addition.number, 2u);
}

TEST(Sizing, TheSearchGoesUpwardsFromWhatTheBoundAllows) {
    // By the total of bitrate two modules could do: 4 x 49 is under 2 x 99. But each takes only one of 60.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(sizing.addition.at_least, 1u);
    EXPECT_EQ(sizing.addition.number, 2u);
    ASSERT_EQ(numbers_tried(sizing.addition), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(sizing.addition.attempts[0].placed, 3u);
    EXPECT_EQ(sizing.addition.attempts[0].left_out, 1u);
    EXPECT_EQ(sizing.addition.attempts[1].placed, 4u);
    EXPECT_TRUE(sizing.addition.remaining.empty());
}

TEST(Sizing, UpToTheMost) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    EXPECT_EQ(size(headend, plain, 3).addition.number, 3u);
    const Addition addition = size(headend, plain, 2).addition;
    EXPECT_FALSE(addition.number);
    EXPECT_EQ(addition.at_least, 3u);
    EXPECT_TRUE(addition.attempts.empty());
    const Addition none = size(headend, plain, 0).addition;
    EXPECT_FALSE(none.number);
    EXPECT_EQ(none.at_least, 3u) << "also far above the most";
    ASSERT_EQ(none.remaining.size(), 3u) << "what is left out, where nothing is tried";
    EXPECT_NE(none.remaining[0].reason, "");
}

TEST(Sizing, WhatRemainsIsToldWhereNoNumberSuffices) {
    // Two services that need the same input at different loads: the second module cannot be reached.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Addition addition = size(headend, plain, 1).addition;
    EXPECT_FALSE(addition.number);
    EXPECT_EQ(numbers_tried(addition), std::vector<std::size_t>{1});
    ASSERT_EQ(addition.remaining.size(), 1u);
    EXPECT_EQ(addition.remaining[0].bitrate, 60u);
}

/// The limits that further modules of the kind do not raise, with what there is and what is wanted.
std::string shortages(const Sizing& sizing) {
    const auto name = [](BoundLimit Bound::*which) {
        return which == &Bound::inputs        ? "inputs"
               : which == &Bound::bitrate     ? "bitrate"
               : which == &Bound::pids        ? "pids"
               : which == &Bound::transcoders ? "transcoders"
                                              : "places";
    };
    std::string text;
    for (const Shortage& shortage : sizing.addition.shortages)
        text += std::string(text.empty() ? "" : ", ") + name(shortage.which) + " " +
                std::to_string(shortage.limit.capacity) + " of " + std::to_string(shortage.limit.wanted);
    return text;
}

TEST(Sizing, NoNumberHelpsWhereTheKindAddsNoTranscoder) {
    std::vector<Service> services = {light(1, 10)};
    for (std::uint16_t lcn = 2; lcn <= 4; ++lcn)
        services.push_back(light(lcn, 10, 10, 0, 1));
    Headend headend = one_module(services);
    headend.modules[0].sd_transcoders = 3;
    EXPECT_EQ(size(headend, plain).addition.number, 0u) << "three of three";
    headend.services.push_back(light(5, 10, 10, 0, 1));
    const Sizing sizing = size(headend, plain);
    EXPECT_EQ(shortages(sizing), "transcoders 3 of 4");
    EXPECT_FALSE(sizing.addition.number);
    EXPECT_EQ(sizing.addition.at_least, 9u) << "one above the most";
    EXPECT_TRUE(sizing.addition.attempts.empty());
    ASSERT_EQ(sizing.addition.remaining.size(), 1u);
    EXPECT_TRUE(sizing.addition.remaining[0].is_transcoded);
    EXPECT_NE(sizing.addition.remaining[0].reason, "");
    headend.services.push_back(light(6, 60, 1, 0, 1));
    EXPECT_EQ(shortages(size(headend, plain)), "transcoders 3 of 4") << "the impossible does not count";
    Module with_transcoder = plain;
    with_transcoder.sd_transcoders = 1;
    EXPECT_EQ(shortages(size(headend, with_transcoder)), "");
    EXPECT_EQ(size(headend, with_transcoder).addition.at_least, 1u);
}

TEST(Sizing, NoNumberHelpsWhereTheKindAddsNoPid) {
    const Headend headend = one_module({light(1, 10, 1, 2), light(2, 10, 1, 2), light(3, 10, 1, 2)});
    Module kind = plain;
    kind.pids_max = 0;
    EXPECT_EQ(shortages(size(headend, kind)), "pids 4 of 6") << "and it can take none of the services";
    kind.pids_max = 1;
    EXPECT_EQ(shortages(size(headend, kind)), "pids 4 of 6") << "too few for any";
    kind.pids_max = 2;
    EXPECT_EQ(shortages(size(headend, kind)), "");
}

TEST(Sizing, NoNumberHelpsWhereTheKindHasNoInput) {
    const Headend headend = one_module({light(1, 10, 60), light(2, 20, 60)});
    Module kind = plain;
    kind.inputs = 0;
    EXPECT_EQ(shortages(size(headend, kind)), "inputs 1 of 2, bitrate 60 of 120");
    EXPECT_EQ(shortages(size(headend, plain)), "");
    EXPECT_EQ(shortages(size(headend, plain, 0)), "") << "more would do, only that none may be added";
}

TEST(Sizing, TheImpossibleIsNamedAndTheAnswerIsForTheOthers) {
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20, 100), light(4, 20, 1, 5),
                                        light(5, 20, 1, 0, 1), light(6, 60, 1, 0, 1)});
    Module with_transcoder = plain;
    with_transcoder.sd_transcoders = 1;
    const Addition addition = size(headend, with_transcoder).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_EQ(addition.impossible.size(), 3u);
    EXPECT_EQ(addition.impossible[0].lcn, 3);
    EXPECT_EQ(addition.impossible[0].reason,
              "its 100 kbit/s must stay below the maximum of an output, and the largest is 100");
    EXPECT_EQ(addition.impossible[1].lcn, 4);
    EXPECT_EQ(addition.impossible[1].reason, "it needs 5 PIDs and the largest budget is 4");
    EXPECT_EQ(addition.impossible[2].lcn, 6);
    EXPECT_EQ(addition.impossible[2].reason,
              "all services of its stream need transcoding, and for such the engine tunes no input");
    ASSERT_EQ(size(headend, plain).addition.impossible.size(), 4u);
    EXPECT_EQ(size(headend, plain).addition.impossible[2].reason, "it needs a transcoder and none has one");
}

TEST(Sizing, TheAnswerDoesNotDependOnTheThreads) {
    std::mt19937 random(5);
    std::vector<Service> services;
    for (std::uint16_t lcn = 1; lcn <= 25; ++lcn)
        services.push_back(light(lcn, static_cast<std::uint16_t>(random() % 5 + 1),
                                 static_cast<std::uint32_t>(random() % 40 + 10)));
    const Headend headend = one_module(services);
    const Sizing alone = size(headend, plain, 30, 1);
    ASSERT_TRUE(alone.addition.number);
    for (const unsigned jobs : {2u, 3u, 16u}) {
        const Sizing together = size(headend, plain, 30, jobs);
        EXPECT_EQ(together.addition.number, alone.addition.number);
        EXPECT_EQ(numbers_tried(together.addition), numbers_tried(alone.addition));
        ASSERT_EQ(together.raises.size(), alone.raises.size());
        for (std::size_t raise = 0; raise < alone.raises.size(); ++raise)
            EXPECT_EQ(together.raises[raise].setting, alone.raises[raise].setting);
    }
}

/// The only limit that helps, as --set takes it.
std::string only_raise(const Sizing& sizing) {
    return sizing.raises.size() == 1 ? sizing.raises[0].setting
                                     : std::to_string(sizing.raises.size()) + " raises";
}

TEST(Sizing, TheSmallestValueThatPlacesAsMany) {
    const Sizing pids = size(one_module({light(1, 10, 1, 4), light(2, 10, 1, 4), light(3, 10, 1, 3)}), plain);
    EXPECT_EQ(only_raise(pids), "modules[0].pids_max=12") << "which modules are sold with";
    EXPECT_EQ(pids.raises[0].kind, LimitKind::pids);
    EXPECT_EQ(pids.raises[0].mac, "M");
    EXPECT_EQ(pids.raises[0].from, 4u);
    EXPECT_EQ(pids.raises[0].to, 12u);
    EXPECT_EQ(pids.raises[0].enough, 11u);
    EXPECT_EQ(pids.raises[0].placed, 3u);
    EXPECT_EQ(pids.raises[0].label, "");
    Headend labelled = one_module({light(1, 10, 1, 4), light(2, 10, 1, 4)});
    labelled.modules[0].label = "Rack 1";
    EXPECT_EQ(size(labelled, plain).raises.at(0).label, "Rack 1");
    EXPECT_EQ(only_raise(size(one_module({light(1, 10), light(2, 20), light(3, 30)}), plain)),
              "modules[0].inputs=4");
    EXPECT_EQ(only_raise(size(one_module({light(1, 10, 200)}), plain)), "modules[0].outputs[0]=201")
        << "no module is sold with so little";
    const Sizing large = size(one_module({light(1, 10, 230000)}), plain);
    EXPECT_EQ(only_raise(large), "modules[0].outputs[0]=230001") << "no module is sold with so much";
    EXPECT_EQ(large.raises[0].enough, 230001u);
}

TEST(Sizing, AFurtherOutput) {
    const Sizing sizing = size(one_module({light(1, 10, 60), light(2, 10, 60)}), plain);
    ASSERT_EQ(sizing.raises.size(), 2u);
    EXPECT_EQ(sizing.raises[0].setting, "modules[0].outputs[0]=121");
    EXPECT_EQ(sizing.raises[0].output, 1u);
    EXPECT_EQ(sizing.raises[1].setting, "modules[0].outputs=[100, 100]");
    EXPECT_EQ(sizing.raises[1].output, 2u);
    EXPECT_EQ(sizing.raises[1].from, 0u);
    EXPECT_EQ(sizing.raises[1].to, 100u);
}

TEST(Sizing, Transcoders) {
    Headend headend = one_module({light(1, 10), light(2, 10, 1, 0, 1), light(3, 10, 1, 0, 1)});
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].sd_transcoders=2");
    headend.services[1].video_format = headend.services[2].video_format = 4;
    headend.modules[0].sd_transcoders = 1;
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].hd_transcoders=2");
}

TEST(Sizing, TheAuditOfEachRun) {
    const std::string path = RECALCULO_TOOL_TESTS "/placement/left_out_elsewhere.json";
    const Sizing sizing = size(read_headend(path, read_text(path)), plain, 1);
    EXPECT_EQ(sizing.findings.size(), 1u);
    ASSERT_EQ(sizing.addition.attempts.size(), 2u);
    EXPECT_EQ(sizing.addition.attempts[0].findings, 1u);
    EXPECT_EQ(sizing.addition.attempts[0].broken, 0u);
}

TEST(Sizing, WhatBreaksALimitIsNoAnswer) {
    // The first HD transcoding is let in under the limit for SD.
    Headend headend = one_module({light(1, 10), light(2, 10, 1, 0, 1)});
    headend.services[1].video_format = 4;
    const Sizing sizing = size(headend, plain);
    EXPECT_TRUE(sizing.findings.empty());
    EXPECT_TRUE(sizing.raises.empty()) << "one SD transcoder places it beyond the limit for HD";
    headend.modules[0].hd_transcoders = 1;
    EXPECT_EQ(only_raise(size(headend, plain)), "modules[0].sd_transcoders=1") << "and here within it";
}

Headend from_file(const char* name) {
    const std::string path = std::string(RECALCULO_TOOL_TESTS "/placement/") + name;
    return read_headend(path, read_text(path));
}

TEST(Sizing, ANumberWhoseRunBreaksALimitIsNoAnswer) {
    const Addition addition = size(from_file("broken_with_one_more.json"),
                                   {"", 3, false, 1, {38000, 38000, 38000}, 40, 2, 0, 0}, 32)
                                  .addition;
    EXPECT_EQ(addition.number, 2u);
    ASSERT_EQ(numbers_tried(addition), (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_EQ(addition.attempts[1].broken, 1u);
    EXPECT_EQ(addition.attempts[1].left_out, 0u);
    EXPECT_EQ(addition.attempts[1].missing, 0u);
    EXPECT_EQ(addition.attempts[2].broken, 0u);
}

TEST(Sizing, WithOneModuleMoreItMayPlaceLess) {
    const Addition addition =
        size(from_file("less_with_more.json"), {"", 3, false, 2, {38000, 38000}, 40, 2, 0, 0}, 32).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_TRUE(addition.one_more);
    EXPECT_LT(addition.one_more->placed, addition.attempts.back().placed);
}

TEST(Sizing, OneModuleMoreThanIsNeededIsRunToo) {
    const Headend headend = one_module({light(1, 10), light(2, 20)});
    const Addition addition = size(headend, plain, 1).addition;
    EXPECT_EQ(addition.number, 1u);
    ASSERT_TRUE(addition.one_more);
    EXPECT_EQ(addition.one_more->number, 2u) << "also above the most";
    EXPECT_EQ(addition.one_more->placed, 2u);
    EXPECT_FALSE(size(one_module({light(1, 10)}), plain).addition.one_more) << "where none is needed";
}

TEST(Sizing, AValueInBetweenMayHelpWhereALargeOneDoesNot) {
    const Headend headend = from_file("helped_in_between.json");
    const Sizing sizing = size(headend, plain, 0);
    EXPECT_EQ(only_raise(sizing), "modules[1].pids_max=12");
    EXPECT_EQ(sizing.raises[0].enough, 11u);
    EXPECT_EQ(sizing.now.placed, 10u);
    EXPECT_EQ(sizing.raises[0].placed, 11u);
    const auto placed_with = [&headend](std::uint16_t pids) {
        Headend changed = headend;
        changed.modules[1].pids_max = pids;
        return size(changed, plain, 0).now.placed;
    };
    EXPECT_EQ(placed_with(10), 10u);
    EXPECT_EQ(placed_with(11), 11u);
    EXPECT_EQ(placed_with(1000), 10u);
}

TEST(Sizing, ABitrateInBetweenMayHelpMore) {
    const Headend headend = from_file("helped_by_a_bitrate_in_between.json");
    const Sizing sizing = size(headend, plain, 0);
    EXPECT_EQ(sizing.now.placed, 7u);
    ASSERT_GE(sizing.raises.size(), 2u);
    EXPECT_EQ(sizing.raises[1].setting, "modules[1].outputs[0]=20501");
    EXPECT_EQ(sizing.raises[1].placed, 9u) << "one that modules are sold with places 8";
}

TEST(Sizing, MustsAloneAreWantedWhereThereAreAny) {
    Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20), light(4, 30)});
    headend.services[3].must = true;
    const Addition addition = size(headend, plain).addition;
    EXPECT_EQ(addition.musts, 1u);
    EXPECT_EQ(addition.number, 2u) << "the engine places the other streams first";
    ASSERT_EQ(addition.attempts.size(), 3u) << "by the bound the module that is there could take it";
    EXPECT_EQ(addition.attempts[1].missing, 1u);
    EXPECT_EQ(addition.attempts[2].missing, 0u);
    headend.services[3].must = false;
    headend.services[2].must = true;
    EXPECT_EQ(size(headend, plain).addition.number, 0u) << "others are left out";
    headend.services[1].must = true;
    headend.services[1].ask = false;
    EXPECT_EQ(size(headend, plain).addition.musts, 1u) << "one that is not asked for is none";
    headend.services[3].must = true;
    headend.services[3].bitrate = 1000;
    EXPECT_EQ(size(headend, plain).addition.impossible.size(), 1u);
    EXPECT_EQ(size(headend, plain).addition.number, 1u) << "of the two the possible one is placed";
}

SizingOptions choosing(unsigned jobs = 2, std::uint32_t most = 8) {
    SizingOptions options;
    options.most = most;
    options.jobs = jobs;
    options.are_chosen = true;
    return options;
}

TEST(Sizing, AskedForWhatIsChosenFewerModulesPlaceTheMusts) {
    const host::Log no_log("");
    Headend headend = one_module({light(1, 10), light(2, 20), light(3, 20), light(4, 30)});
    headend.services[3].must = true;
    ASSERT_EQ(size(headend, plain).addition.number, 2u);
    const Sizing sizing = size_headend(headend, "f", {plain}, choosing());
    EXPECT_TRUE(sizing.are_chosen);
    EXPECT_EQ(sizing.addition.number, 0u);
    ASSERT_EQ(numbers_tried(sizing.addition), std::vector<std::size_t>{0});
    EXPECT_EQ(sizing.addition.attempts[0].missing, 0u);
    EXPECT_EQ(sizing.addition.attempts[0].placed, 1u);
    EXPECT_EQ(sizing.addition.attempts[0].withheld, 3u)
        << "of streams of one size the engine takes the first";
    ASSERT_TRUE(sizing.addition.one_more);
    EXPECT_EQ(sizing.addition.one_more->placed, 3u) << "with the larger of the others";
    EXPECT_EQ(sizing.addition.one_more->missing, 0u);
    EXPECT_TRUE(sizing.addition.remaining.empty());
    headend.services[0].must = true;
    EXPECT_EQ(size_headend(headend, "f", {plain}, choosing()).addition.number, 1u);
    headend.services[1].must = true;
    const Addition one = size_headend(headend, "f", {plain}, choosing(2, 1)).addition;
    EXPECT_EQ(one.number, std::nullopt) << "three streams, two inputs";
}

TEST(Sizing, WithEverythingWantedWhatIsWithheldIsMissing) {
    const host::Log no_log("");
    // The engine fills the only input with the one service of 1/20; the other has two that fit.
    Headend headend = one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    const Addition addition = size_headend(headend, "f", {plain}, choosing(2, 1)).addition;
    EXPECT_EQ(addition.number, std::nullopt);
    ASSERT_EQ(addition.attempts.size(), 1u);
    const Attempt& attempt = addition.attempts[0];
    EXPECT_EQ(attempt.placed, 3u);
    EXPECT_EQ(attempt.missing, 1u);
    EXPECT_EQ(attempt.left_out + attempt.withheld, 1u);
    EXPECT_EQ(addition.remaining.size(), 1u);
}

TEST(Sizing, WhatIsChosenDoesNotDependOnTheThreads) {
    const host::Log no_log("");
    std::mt19937 random(7);
    std::vector<Service> services;
    for (std::uint16_t lcn = 1; lcn <= 25; ++lcn)
        services.push_back(light(lcn, static_cast<std::uint16_t>(random() % 9 + 1),
                                 static_cast<std::uint32_t>(random() % 40 + 10)));
    services.back().must = services[3].must = services[12].must = true;
    const Headend headend = one_module(services);
    const Addition alone = size_headend(headend, "f", {plain}, choosing(1)).addition;
    const Addition together = size_headend(headend, "f", {plain}, choosing(3)).addition;
    ASSERT_TRUE(alone.number);
    EXPECT_EQ(together.number, alone.number);
    ASSERT_EQ(together.attempts.size(), alone.attempts.size());
    EXPECT_EQ(together.attempts.back().placed, alone.attempts.back().placed);
    EXPECT_EQ(together.attempts.back().withheld, alone.attempts.back().withheld);
}

TEST(Sizing, ARunThatIsStoppedIsNoAnswerAndEndsNothing) {
    const host::Log no_log("");
    const Headend headend = exploding(60, 40, 10);
    for (const bool are_chosen : {false, true}) {
        host::limit_runs({});
        SizingOptions options = choosing(1, 2);
        options.are_chosen = are_chosen;
        // The first run is that of the head-end as it is.
        options.progress = [](std::size_t, std::size_t) {
            host::RunLimits limits;
            limits.time = std::chrono::milliseconds(0);
            host::limit_runs(limits);
        };
        Module with_transcoder = headend.modules[0];
        with_transcoder.sd_transcoders = 16;
        const Sizing sizing = size_headend(headend, "f", {with_transcoder}, options);
        EXPECT_EQ(sizing.addition.number, std::nullopt);
        EXPECT_FALSE(sizing.addition.attempts.empty());
        for (const Attempt& attempt : sizing.addition.attempts) {
            EXPECT_TRUE(attempt.is_stopped);
            EXPECT_EQ(attempt.placed, 0u);
            EXPECT_EQ(attempt.missing, 90u);
        }
        EXPECT_TRUE(sizing.raises.empty());
        host::limit_runs({});
    }
}

/// How many of each kind the mix has.
std::vector<std::size_t> mixed(const Mix& mix) {
    std::vector<std::size_t> numbers;
    for (const MixPart& part : mix.kinds)
        if (part.number)
            numbers.push_back(*part.number);
    return numbers;
}

TEST(Sizing, TheCheapestMixOfSeveralKinds) {
    const host::Log no_log("");
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    Module small = plain;
    small.price = 10;
    Module large = plain;
    large.inputs = 2;
    const auto mix_at = [&](std::uint32_t price, std::uint32_t most = 8, unsigned jobs = 2) {
        large.price = price;
        SizingOptions options;
        options.most = most;
        options.jobs = jobs;
        return *size_headend(headend, "f", {small, large}, options).mix;
    };
    EXPECT_EQ(mixed(mix_at(15)), (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(mix_at(15).price, 25u);
    EXPECT_EQ(mix_at(15).at_least, 25u);
    EXPECT_EQ(mix_at(15).outcome->placed, 4u);
    EXPECT_EQ(mixed(mix_at(21)), (std::vector<std::size_t>{3, 0}));
    EXPECT_EQ(mixed(mix_at(20)), (std::vector<std::size_t>{1, 1})) << "of equal prices fewer modules";
    EXPECT_EQ(mixed(mix_at(11)), (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(mixed(mix_at(9)), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(mixed(mix_at(9, 8, 5)), (std::vector<std::size_t>{0, 2}));
    Headend with_must = headend;
    with_must.services[3].must = true;
    EXPECT_EQ(mixed(*size_headend(with_must, "f", {small, large}, choosing()).mix),
              (std::vector<std::size_t>{0, 0}))
        << "chosen, it takes none";
    EXPECT_EQ(mixed(mix_at(21, 2)), (std::vector<std::size_t>{1, 1})) << "no more modules than that";
    const Mix none = mix_at(9, 1);
    EXPECT_FALSE(none.outcome);
    EXPECT_EQ(none.tried, 0u);
    const Sizing alone = size(headend, plain);
    EXPECT_FALSE(alone.mix);
    EXPECT_EQ(mixed(*size_headend(one_module({light(1, 10)}), "f", {small, large}, {}).mix),
              (std::vector<std::size_t>{0, 0}));
}

TEST(Sizing, StoppedItTellsWhatItHas) {
    const host::Log no_log("");
    const Headend headend =
        one_module({light(1, 10, 60), light(2, 10, 60), light(3, 10, 60), light(4, 10, 1)});
    for (const std::size_t runs : {1U, 2U, 3U, 5U, 1000U}) {
        std::size_t done = 0;
        SizingOptions options;
        options.progress = [&done](std::size_t now, std::size_t) { done = now; };
        options.is_stopped = [&done, runs] { return done >= runs; };
        const Sizing sizing = size_headend(headend, "f", {plain}, options);
        EXPECT_EQ(sizing.is_partial, runs != 1000) << runs;
        EXPECT_EQ(sizing.now.placed, 2u);
        EXPECT_EQ(sizing.addition.attempts.size(), std::min<std::size_t>(runs - 1, 2)) << runs;
        EXPECT_EQ(sizing.addition.number.has_value(), runs > 2) << runs;
    }
}

TEST(Sizing, TheModuleOnWhichItHelpsMost) {
    Headend headend = one_module(
        {light(1, 10, 1, 4), light(2, 10, 1, 4), light(3, 20, 1, 4), light(4, 20, 1, 4), light(5, 20, 1, 4)});
    headend.modules.push_back(plain);
    headend.modules[1].mac = "N";
    headend.modules[1].controller = false;
    const Sizing sizing = size(headend, plain);
    ASSERT_FALSE(sizing.raises.empty());
    const Raise& best = sizing.raises.front();
    EXPECT_EQ(best.kind, LimitKind::pids);
    EXPECT_EQ(best.placed, 4u);
    EXPECT_EQ(best.to, 12u);
}

TEST(Sizing, RunsAreCounted) {
    const host::Log no_log("");
    SizingOptions options;
    std::size_t calls = 0;
    options.jobs = 3;
    options.progress = [&calls](std::size_t done, std::size_t planned) {
        EXPECT_EQ(done, ++calls);
        EXPECT_LE(done, planned);
    };
    size_headend(one_module({light(1, 10), light(2, 20)}), "f", {plain}, options);
    EXPECT_GT(calls, 3u);
}

TEST(Sizing, AHeadendThatCannotRun) {
    Headend headend = one_module({light(1, 10)});
    headend.modules[0].controller = false;
    EXPECT_NE(failure_message([&] { size(headend, plain); }).find("f: the engine could not run"),
              std::string::npos);
}

std::vector<std::string> macs_added(const std::vector<std::string>& macs, std::size_t number) {
    Headend headend;
    for (const std::string& mac : macs) {
        headend.modules.push_back(plain);
        headend.modules.back().mac = mac;
    }
    std::vector<std::string> added;
    const Headend changed = with_modules(headend, plain, number);
    for (std::size_t module = macs.size(); module < changed.modules.size(); ++module) {
        EXPECT_FALSE(changed.modules[module].controller);
        added.push_back(changed.modules[module].mac);
    }
    std::vector<std::string> all = macs;
    std::sort(all.begin(), all.end());
    all.insert(all.end(), added.begin(), added.end());
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
    return added;
}

TEST(WithModules, TheyHaveNoLabel) {
    Module labelled = plain;
    labelled.label = "Rack 1";
    EXPECT_EQ(with_modules({}, labelled, 2).modules[1].label, "");
}

TEST(WithModules, TheirMacsFollowAllOthers) {
    EXPECT_EQ(macs_added({"02:00:0A", "02:00:09"}, 2), (std::vector<std::string>{"02:00:0B", "02:00:0C"}));
    EXPECT_EQ(macs_added({"02:aa:0f"}, 2), (std::vector<std::string>{"02:aa:10", "02:aa:11"}));
    EXPECT_EQ(macs_added({"02:00:FE"}, 3),
              (std::vector<std::string>{"02:00:FF", "02:00:FF:01", "02:00:FF:02"}));
    EXPECT_EQ(macs_added({"Casa"}, 2), (std::vector<std::string>{"Casa:01", "Casa:02"}));
    EXPECT_EQ(macs_added({"aA"}, 1), std::vector<std::string>{"ab"});
    EXPECT_EQ(macs_added({}, 1), std::vector<std::string>{":01"});
    EXPECT_EQ(macs_added({"M"}, 300).size(), 300u);
}

} // namespace
} // namespace zarven::tool::sizing_test
