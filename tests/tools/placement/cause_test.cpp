// How many services each cause keeps out, and in which words.

#include "placement/reasons/cause.h"

#include <gtest/gtest.h>

#include "placement/result.h"

namespace zarven::tool::cause_test {
namespace {

/// Three modules with two inputs each, of which one is free on A and B.
Result three_modules() {
    Result result;
    for (const char* mac : {"A", "B", "C"}) {
        ModuleResult module;
        module.mac = mac;
        ServiceResult placed;
        module.inputs = {{1, true, {1, 1}, {placed}}, {2, *mac == 'C', {}, {}}};
        if (*mac == 'C')
            module.inputs[1].services = {placed};
        result.modules.push_back(module);
    }
    result.modules[1].label = "Rack 2";
    return result;
}

void leave_out(Result& result, std::uint16_t tsid, Cause cause, const std::string& nearest = "") {
    ServiceResult service;
    service.stream = {1, tsid};
    service.cause = cause;
    service.nearest = nearest;
    result.left_out.push_back({service.stream, {service}});
}

std::string only_sentence(const Result& result) {
    const std::vector<CauseCount> causes = causes_of(result);
    EXPECT_EQ(causes.size(), 1u);
    return causes.at(0).sentence;
}

TEST(Causes, ThatOfTheMostServicesFirst) {
    Result result = three_modules();
    EXPECT_TRUE(causes_of(result).empty());
    leave_out(result, 1, Cause::bitrate, "A");
    leave_out(result, 2, Cause::pids, "A");
    leave_out(result, 2, Cause::pids, "B");
    leave_out(result, 3, Cause::none);
    ServiceResult lost;
    lost.cause = Cause::lost;
    result.neither = {lost, lost};
    lost.is_clone = true;
    result.neither.push_back(lost);
    const std::vector<CauseCount> causes = causes_of(result);
    ASSERT_EQ(causes.size(), 3u);
    EXPECT_EQ(causes[0].cause, Cause::pids) << "of equals in the order of the engine's tests";
    EXPECT_EQ(causes[0].services, 2u);
    EXPECT_EQ(causes[0].streams, 1u);
    EXPECT_EQ(causes[1].cause, Cause::lost);
    EXPECT_EQ(causes[1].services, 2u) << "clones do not count";
    EXPECT_EQ(causes[2].cause, Cause::bitrate);
}

TEST(Causes, WhatIsShortIsToldWithTheModules) {
    Result result = three_modules();
    leave_out(result, 1, Cause::pids, "B");
    EXPECT_EQ(only_sentence(result), "PIDs are short on module B (Rack 2)");
    leave_out(result, 1, Cause::pids, "A");
    leave_out(result, 1, Cause::pids, "B");
    EXPECT_EQ(only_sentence(result), "PIDs are short on 2 modules, most often on B (Rack 2) (2 services)");
}

TEST(Causes, InputsAreCounted) {
    Result result = three_modules();
    leave_out(result, 1, Cause::no_input);
    EXPECT_EQ(only_sentence(result), "no input is free: all 6 inputs on 3 modules carry other streams");
    result.modules.resize(1);
    result.modules[0].inputs.resize(1);
    EXPECT_EQ(only_sentence(result), "no input is free: the only one carries another stream");
}

TEST(Causes, AFreeInputForManyStreamsIsToldOnce) {
    Result result = three_modules();
    leave_out(result, 1, Cause::unused_input, "A");
    EXPECT_EQ(only_sentence(result),
              "a free input of module A could take the stream: the engine's strategies did not use it");
    EXPECT_FALSE(is_told_once(causes_of(result), Cause::unused_input)) << "it is told with its one stream";
    leave_out(result, 2, Cause::unused_input, "A");
    EXPECT_EQ(only_sentence(result),
              "a free input of module A could take one of 2 streams: the engine's strategies did not use it");
    EXPECT_TRUE(is_told_once(causes_of(result), Cause::unused_input));
    leave_out(result, 2, Cause::unused_input, "B");
    EXPECT_EQ(only_sentence(result),
              "2 free inputs on 2 modules could each take one of 2 streams: the engine's "
              "strategies did not use them");
    leave_out(result, 3, Cause::pids, "A");
    leave_out(result, 4, Cause::pids, "A");
    EXPECT_FALSE(is_told_once(causes_of(result), Cause::pids)) << "each lacks a number of its own";
}

TEST(Causes, EachHasWords) {
    const auto sentence = [](Cause cause) {
        Result result = three_modules();
        leave_out(result, 1, cause, "A");
        return only_sentence(result);
    };
    EXPECT_EQ(sentence(Cause::impossible), "too much for every module, even an empty one");
    EXPECT_EQ(sentence(Cause::stream_not_chosen),
              "the engine tunes no input for transcoding, nor for LCN 0 while others wait, and nothing else "
              "asks for the stream");
    EXPECT_EQ(sentence(Cause::places), "no place for another service on an output on module A");
    EXPECT_EQ(sentence(Cause::bitrate), "the bitrate of the outputs is short on module A");
    EXPECT_EQ(sentence(Cause::transcoders), "no transcoder is left on module A");
    EXPECT_EQ(sentence(Cause::unused_room),
              "the stream is received and there is room on module A: the engine's strategies did not use it");
    EXPECT_EQ(sentence(Cause::contradictory),
              "on an output all the same: the engine has placed and left out");
    EXPECT_EQ(sentence(Cause::lost), "lost by the engine's exchanges");
}

} // namespace
} // namespace zarven::tool::cause_test
