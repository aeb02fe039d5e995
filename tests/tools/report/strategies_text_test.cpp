// The section of the strategies, character by character.

#include "report/strategies_text.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "report/fitting.h"
#include "report/strategies_fixture.h"

namespace zarven::tool::strategies_text_test {
namespace {

TEST(StrategiesText, OneOfEverything) {
    EXPECT_EQ(
        strategies_text(strategies_with_everything()),
        "Strategies, each alone on the head-end, without clones\n"
        "  Strategy  Placed                     Left out  Inputs used  Audit  Verdict\n"
        "  MAX            7  3 (4 by the engine's count)       4 of 5      2  the fewest so far, but MIN "
        "leaves fewer out\n"
        "  MAX MIN        6                            4       5 of 5      0  tie with MAX, which came "
        "first\n"
        "  MIN            8                            2       5 of 5      0  kept: leaves the fewest out\n"
        "  MIN MAX        5                            5     3 of 123      1  worse than MIN\n"
        "\n"
        "  Placed by some of them only: 2 services, 1 of them not by MIN:\n"
        "    LCN  Service                Stream  MAX  MAX MIN  MIN  MIN MAX\n"
        "      5  海景 Música�           1/1001    ●        –    –        ●\n"
        "  65535  Dos               65535/65535    –        ●    ●        –\n");
}

TEST(StrategiesText, WhatIsNeitherPlacedNorLeftOutHasAColumnWhereThereIsAny) {
    Strategies strategies = strategies_with_everything();
    strategies.list[0].left_out_counted = 3;
    strategies.list[2].neither = 1;
    EXPECT_EQ(strategies_text(strategies)
                  .find("Strategies, each alone on the head-end, without clones\n"
                        "  Strategy  Placed  Left out  Neither  Inputs used  Audit  Verdict\n"
                        "  MAX            7         3        0       4 of 5      2  the"),
              0u)
        << strategies_text(strategies);
}

/// What follows the table.
std::string after_table(const Strategies& strategies) {
    const std::string text = strategies_text(strategies);
    return text.substr(text.find("\n\n") + 2);
}

TEST(StrategiesText, WhenOnePlacesEverything) {
    Strategies strategies = strategies_with_everything();
    strategies.contested.clear();
    const std::array<std::size_t, strategy_count> left_out = {0, 1, 0, 2};
    for (std::size_t index = 0; index < strategy_count; ++index) {
        strategies.list[index].left_out = strategies.list[index].left_out_counted = left_out[index];
        strategies.list[index].places_everything = left_out[index] == 0;
    }
    judge(strategies.list);
    EXPECT_EQ(strategies_text(strategies),
              "Strategies, each alone on the head-end, without clones\n"
              "  Strategy  Placed  Left out  Inputs used  Audit  Verdict\n"
              "  MAX            7         0       4 of 5      2  kept: places everything\n"
              "  MAX MIN        6         1       5 of 5      0  not tried: MAX placed everything\n"
              "  MIN            8         0       5 of 5      0  not tried: MAX placed everything\n"
              "  MIN MAX        5         2     3 of 123      1  not tried: MAX placed everything\n"
              "\n"
              "  Placed by some of them only: none\n");
}

TEST(StrategiesText, OneServiceOfWhichTheKeptStrategyMissesNothing) {
    Strategies strategies = strategies_with_everything();
    strategies.contested.erase(strategies.contested.begin());
    EXPECT_EQ(after_table(strategies).find("  Placed by some of them only: 1 service, all of them by MIN:\n"),
              0u);
}

std::ptrdiff_t lines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

TEST(StrategiesText, TenServicesAtMost) {
    Strategies strategies = strategies_with_everything();
    const Contested one = strategies.contested[0];
    strategies.contested.assign(10, one);
    const std::string all = after_table(strategies);
    EXPECT_EQ(lines(all), 12);
    EXPECT_EQ(all.find("  Placed by some of them only: 10 services, 10 of them not by MIN:\n"), 0u);
    strategies.contested.push_back(one);
    strategies.contested.back().service.name = "a name that would widen the column";
    const std::string cut = after_table(strategies);
    EXPECT_EQ(lines(cut), 12);
    EXPECT_EQ(cut.find("  Placed by some of them only: 11 services, 11 of them not by MIN; the first 10:\n"),
              0u);
    EXPECT_EQ(cut.substr(cut.find('\n')), all.substr(all.find('\n')));
}

TEST(StrategiesText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit(
        [](const TextStyle& style) { return strategies_text(strategies_with_everything(), style); });
}

TEST(StrategiesText, InAsciiTheMarkIsAnAsterisk) {
    const std::string text = strategies_text(strategies_with_everything(), {false, false, 60});
    EXPECT_NE(text.find("????"), std::string::npos);
    EXPECT_NE(text.find("    *        -    -        *\n"), std::string::npos) << text;
}

} // namespace
} // namespace zarven::tool::strategies_text_test
