// What reports begin with where services are not placed.

#include "report/causes_text.h"

#include <gtest/gtest.h>

#include "report/fitting.h"
#include "report/result_fixture.h"
#include "report/result_text.h"

namespace zarven::tool::causes_text_test {
namespace {

TEST(CausesText, NothingWhereNothingIsKeptOut) {
    Result result = result_with_everything();
    result.left_out.clear();
    result.neither.clear();
    EXPECT_EQ(causes_text(result, {}), "");
}

TEST(CausesText, OneService) {
    Result result = result_with_everything();
    result.neither.clear();
    result.advice = {};
    EXPECT_EQ(causes_text(result, {}), "Why 1 of 6 services is not placed\n"
                                       "     1  PIDs are short on module M1\n\n");
}

TEST(CausesText, WhatIsPlacedAllTheSameIsNotKeptOut) {
    Result result = result_with_everything();
    result.advice = {};
    result.neither.front().cause = Cause::contradictory;
    const std::string both = causes_text(result, {});
    EXPECT_EQ(both.substr(0, both.find('\n')),
              "Why 1 of 6 services is not placed, and 1 is left out and placed");
    result.left_out.clear();
    const std::string alone = causes_text(result, {});
    EXPECT_EQ(alone.substr(0, alone.find('\n')), "Why 1 of 6 services is left out and placed");
}

TEST(CausesText, TheAdvice) {
    Result result = result_with_everything();
    EXPECT_EQ(advice_sentence(result),
              "Of the limits, this one raised alone helps most: bitrate of output 10 from 38000 to 40001 on "
              "module M1 (Rack 1, slot 3), 1 more placed; --set 'modules[0].outputs[1]=40001' "
              "(1 of 3 limits tried).");
    result.advice = {1, 1, {}};
    EXPECT_EQ(
        advice_sentence(result),
        "No limit raised alone to what modules are sold with lets the engine place more (1 limit tried).");
    result.advice = {7, 0, {}};
    EXPECT_EQ(advice_sentence(result), "") << "nothing was tried";
}

/// Two streams that a free input could take.
Result with_a_free_input() {
    Result result;
    ModuleResult module;
    module.mac = "M";
    module.inputs = {{1, false, {}, {}}};
    result.modules = {module};
    for (const std::uint16_t tsid : {std::uint16_t{1}, std::uint16_t{2}}) {
        ServiceResult service;
        service.name = service.output_name = "S";
        service.stream = {1, tsid};
        service.cause = Cause::unused_input;
        service.nearest = "M";
        service.reason = "Why.";
        result.left_out.push_back({service.stream, {service, service}});
    }
    return result;
}

TEST(CausesText, AFreeInputIsToldAboveAndNotOfEachService) {
    Result result = with_a_free_input();
    EXPECT_EQ(result_text(result, {}).find("Why."), std::string::npos);
    EXPECT_NE(result_text(result, {}).find("     4  a free input of module M could take one of 2 streams: "),
              std::string::npos);
    result.left_out[0].services[1].reason = "Why else.";
    result.left_out[0].services[1].cause = Cause::pids;
    const std::string mixed = result_text(result, {});
    EXPECT_NE(mixed.find("Why else."), std::string::npos);
    EXPECT_EQ(mixed.find("Why."), std::string::npos);
    result.left_out.resize(1);
    EXPECT_NE(result_text(result, {}).find("Why."), std::string::npos) << "one stream: told there";
}

TEST(CausesText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit([](const TextStyle& style) { return causes_text(result_with_everything(), style); });
}

} // namespace
} // namespace zarven::tool::causes_text_test
