// One-of groups in the search for what to ask for, and in what is told of it.

#include <algorithm>

#include <gtest/gtest.h>

#include "placement/choosing/choice.h"
#include "placement/made_services.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "report/choice_text.h"

namespace zarven::tool::one_of_choice_test {
namespace {

using Flags = std::vector<bool>;

class OneOfChoice : public testing::Test {
protected:
    OneOfChoice() { headend.modules.push_back({"A", 3, true, 2, {10000}, 8, 0, 0, 0}); }

    Choice chosen(std::uint64_t runs = 2000, std::uint64_t seed = 1, const StaysPut& stays = {}) const {
        ChoosingLimits limits;
        limits.time = std::chrono::hours(1);
        limits.runs = runs;
        limits.seed = seed;
        return choose_services(headend, limits, stays, [](const ChoosingProgress&) { return true; });
    }

    host::Log no_log{""};
    Headend headend;
};

TEST_F(OneOfChoice, TheSmallerVariantMakesRoomForOthers) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000), service(3, 10, 3000),
                        service(4, 10, 3000)};
    const Choice choice = chosen();
    EXPECT_EQ(choice.asked, (Flags{false, true, true, true}));
    EXPECT_EQ(choice.worth.placed, 3u);
    EXPECT_EQ(choice.worth.withheld, 0u) << "another of its group is asked for";
}

/// As `run` places it: the larger variant fits nowhere, and has yielded.
TEST_F(OneOfChoice, EverythingIsWhatTheVariantsAreSettledOn) {
    headend.services = {variant(1, 10, "X", 11000), variant(2, 10, "X", 3000), service(3, 10, 3000)};
    EXPECT_EQ(chosen(1).asked_for_all.placed, 1u);
    settle_variants(headend, "f");
    const Choice choice = chosen(1);
    EXPECT_EQ(choice.asked_for_all.placed, 2u);
    EXPECT_EQ(choice.asked, (Flags{false, true, true}));
    const ChoiceReport report = report_of(headend, choice, nullptr, "f");
    EXPECT_EQ(report.all.counts.placed, 2u);
    EXPECT_EQ(report.exchanged_variants, 0u);
    EXPECT_EQ(verdict_of(report), "Nothing better than asking for all 2 services was found: 2 placed");
    // One that is never asked for yields to one that is.
    headend.services[1].value = 0;
    EXPECT_EQ(chosen(1).asked, (Flags{true, false, true}));
}

/// The one that is a must fits nowhere.
TEST_F(OneOfChoice, AMustForWhichALesserVariantStandsInIsMissed) {
    headend.services = {variant(1, 10, "X", 11000), variant(2, 10, "X", 3000)};
    headend.services[0].must = true;
    settle_variants(headend, "f");
    const ChoiceReport report = report_of(headend, chosen(1), nullptr, "f");
    EXPECT_EQ(report.chosen.counts.placed, 1u);
    ASSERT_EQ(report.missed.size(), 1u);
    EXPECT_EQ(report.missed[0].service.lcn, 1);
    EXPECT_TRUE(report.missed[0].is_withheld);
    EXPECT_TRUE(report.missed[0].is_impossible);
    EXPECT_EQ(report.missed[0].service.reason.find("No module could ever take it"), 0u)
        << report.missed[0].service.reason;
    headend.services[1].must = true;
    headend.services[1].bitrate = 12000;
    EXPECT_EQ(report_of(headend, chosen(1), nullptr, "f").missed.size(), 1u) << "one must, of two variants";
}

/// As where a command line says what counts, and the file does not.
TEST_F(OneOfChoice, WhatIsChosenStandsForItsGroupWhateverItIsWorth) {
    headend.services = {variant(1, 10, "X", 3000), variant(2, 10, "X", 3000)};
    headend.services[0].value = headend.services[1].value = 0;
    Choice choice;
    choice.asked = {true, false};
    EXPECT_EQ(services_asked_for(with_choice(headend, choice).services), choice.asked);
}

TEST_F(OneOfChoice, AnotherVariantIsTold) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000), service(3, 10, 3000),
                        service(4, 10, 3000)};
    Choice choice;
    choice.asked = {false, true, true, true};
    EXPECT_EQ(
        verdict_of(report_of(headend, choice, nullptr, "f")),
        "Nothing withheld, another variant of 1 asked for: 3 placed in the place of 1, 2 gained, 0 lost");
    choice.asked = {false, true, true, false};
    EXPECT_EQ(
        verdict_of(report_of(headend, choice, nullptr, "f")),
        "1 of 3 services withheld, another variant of 1 asked for: 2 placed in the place of 1, 1 gained, "
        "0 lost");
}

TEST_F(OneOfChoice, WhereBothFitItIsTheBest) {
    headend.services = {variant(1, 20, "X", 2000), variant(2, 10, "X", 3000), service(3, 10, 3000)};
    headend.services[1].video_format = 4;
    EXPECT_EQ(chosen().asked, (Flags{false, true, true}));
    headend.services[1].bitrate = 6999;
    EXPECT_EQ(chosen().asked, (Flags{false, true, true}));
    headend.services[1].bitrate = 7000;
    EXPECT_EQ(chosen().asked, (Flags{true, false, true}));
}

TEST_F(OneOfChoice, OneOfThemCountsHoweverMuchThereIsRoom) {
    headend.modules[0].outputs = {100000};
    headend.services = {variant(1, 10, "X", 1000), variant(2, 10, "X", 1000), variant(3, 20, "X", 1000)};
    const Choice choice = chosen(300);
    EXPECT_EQ(choice.asked, (Flags{true, false, false}));
    EXPECT_EQ(choice.worth.value, 1u);
}

/// Three services that take the only input from LCN 3, which is worth more: the search has to withhold them,
/// and asks for whatever variants it comes by.
void add_rivals_of_a_stream(Headend& headend) {
    headend.modules[0].inputs = 1;
    headend.modules[0].outputs = {20000};
    headend.services.push_back(service(3, 10, 3000));
    headend.services.back().value = 9;
    for (std::uint16_t lcn = 11; lcn <= 13; ++lcn)
        headend.services.push_back(service(lcn, 20, 100));
}

Flags first(std::ptrdiff_t number, const Flags& flags) {
    return {flags.begin(), flags.begin() + number};
}

TEST_F(OneOfChoice, BetterVariantsAreTakenWhereNothingIsLost) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000), variant(4, 10, "Y", 1000),
                        variant(5, 10, "Y", 500),  variant(6, 30, "Z", 500),  variant(7, 30, "Z", 400)};
    add_rivals_of_a_stream(headend);
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const Choice choice = chosen(200, seed);
        EXPECT_EQ(choice.worth.value, 11u) << "seed " << seed;
        EXPECT_EQ(first(4, choice.asked), (Flags{true, false, true, false})) << "seed " << seed;
    }
}

/// The search begins with what is cheap, and so with the smaller variant; no input is left for either.
TEST_F(OneOfChoice, OfVariantsOfWhichNoneIsPlacedTheBestIsAskedFor) {
    headend.services = {variant(6, 30, "Z", 19000), variant(7, 30, "Z", 400)};
    add_rivals_of_a_stream(headend);
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const Choice choice = chosen(200, seed);
        EXPECT_EQ(choice.worth.value, 9u) << "seed " << seed;
        EXPECT_EQ(first(2, choice.asked), (Flags{true, false})) << "seed " << seed;
    }
}

/// One of the two groups has to be withheld, or their stream takes the input.
TEST_F(OneOfChoice, AGroupThatIsWithheldAsAWholeStaysSo) {
    headend.modules[0].inputs = 1;
    headend.services = {service(1, 10, 3000), variant(2, 20, "X", 2000), variant(3, 20, "X", 1000),
                        variant(4, 20, "Y", 2000), variant(5, 20, "Y", 1000)};
    headend.services[0].value = 9;
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        const Choice choice = chosen(200, seed);
        EXPECT_EQ(choice.worth.value, 9u) << "seed " << seed;
        EXPECT_EQ(choice.worth.withheld, 1u) << "seed " << seed;
        EXPECT_EQ(std::count(choice.asked.begin(), choice.asked.end(), true), 2) << "seed " << seed;
    }
}

/// LCN 5 and the smaller variant do not go together. The better variant fits nowhere: asked for, it would
/// leave the place to LCN 5, which is worth as much.
TEST_F(OneOfChoice, AVariantThatIsPlacedDoesNotGiveWayToOneThatIsNot) {
    headend.services = {variant(1, 10, "X", 90000), variant(2, 10, "X", 1000), service(5, 10, 2500)};
    add_rivals_of_a_stream(headend);
    for (std::uint16_t lcn = 14; lcn <= 16; ++lcn)
        headend.services.push_back(service(lcn, 20, 100));
    headend.modules[0].outputs = {6000};
    // Which of the two the search comes by first is chance; mostly it is the cheaper one.
    std::size_t smaller = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const Choice choice = chosen(200, seed);
        EXPECT_EQ(choice.worth.value, 10u) << "seed " << seed;
        smaller += choice.asked[1] ? 1 : 0;
    }
    EXPECT_GT(smaller, 10u);
}

TEST_F(OneOfChoice, OfVariantsThatAreWorthTheSameTheFirstIsTaken) {
    headend.modules[0].outputs = {8000};
    headend.modules[0].pids_max = 4;
    // LCN 2 has to be withheld. Which of the variants the search then comes by is chance.
    headend.services = {service(2, 10, 6500, 4), variant(3, 10, "X", 6000), variant(5, 10, "X", 5000),
                        variant(4, 10, "X", 1000)};
    for (std::size_t index = 1; index < 4; ++index)
        headend.services[index].value = 4;
    headend.services[3].ca_pids = headend.services[3].ca_pids_max = 3;
    for (std::uint64_t seed = 1; seed <= 20; ++seed)
        EXPECT_EQ(chosen(60, seed).asked, (Flags{false, true, false, false})) << "seed " << seed;
}

TEST_F(OneOfChoice, ABetterVariantIsNotTakenWhereSomethingIsLost) {
    headend.services = {variant(1, 10, "X", 19000), variant(2, 10, "X", 3000), variant(4, 20, "Y", 1000),
                        variant(5, 10, "Y", 500)};
    add_rivals_of_a_stream(headend);
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const Choice choice = chosen(200, seed);
        EXPECT_EQ(choice.worth.value, 11u) << "seed " << seed;
        EXPECT_EQ(first(4, choice.asked), (Flags{false, true, false, true})) << "seed " << seed;
    }
}

TEST_F(OneOfChoice, TheSearchEndsWhenTheBestOfEachIsPlaced) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000)};
    EXPECT_EQ(chosen(30000).states, 0u);
    headend.services[0].bitrate = 12000;
    // There is no end while something better could be: here a better variant, which may be worth more.
    const Choice choice = chosen(30000);
    EXPECT_EQ(choice.asked, (Flags{false, true}));
    EXPECT_EQ(choice.states, 30000u);
    headend.services = {service(1, 10, 12000), service(2, 10, 3000)};
    EXPECT_EQ(chosen(30000).states, 30000u) << "a service is withheld, or not placed";
}

/// Its stream then has more services than the other, and goes to the first module.
TEST_F(OneOfChoice, AnotherVariantIsTakenWhereFewerMoveByThat) {
    headend.modules = {{"A", 3, true, 1, {30000}, 8, 0, 0, 0}, {"B", 3, false, 1, {30000}, 8, 0, 0, 0}};
    headend.services = {variant(1, 20, "X"), variant(2, 10, "X"), service(3, 10),
                        service(4, 10),      service(5, 20),      service(6, 20)};
    headend.services[0].video_format = 4;
    StaysPut stays{{"", "", "A", "A", "B", "B"}, {0, 0, 1, 1, 1, 1}};
    const Choice choice = chosen(400, 1, stays);
    EXPECT_EQ(choice.asked_for_all.value, 5u);
    EXPECT_EQ(choice.asked_for_all.moved, 4u);
    EXPECT_EQ(choice.asked, (Flags{false, true, true, true, true, true}));
    EXPECT_EQ(choice.worth.value, 5u);
    EXPECT_EQ(choice.worth.moved, 0u);
    stays.module = {"", "", "B", "B", "A", "A"};
    EXPECT_EQ(chosen(400, 1, stays).states, 0u) << "nothing moves";
}

TEST_F(OneOfChoice, VariantsOfOneKeyAreNotAskedForTogether) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000), service(3, 10, 3000),
                        service(4, 10, 3000)};
    headend.services[1].lcn = 1;
    for (std::uint64_t seed = 1; seed <= 10; ++seed)
        EXPECT_EQ(chosen(200, seed).asked, (Flags{false, true, true, true})) << "seed " << seed;
}

TEST_F(OneOfChoice, OfAGroupThatIsWithheldTheBestCountsAlone) {
    headend.services = {variant(1, 20, "X", 9000), variant(2, 20, "X", 9000), variant(5, 20, "X", 9000),
                        service(3, 10, 6000)};
    headend.services[3].value = 9;
    const Choice choice = chosen();
    EXPECT_EQ(choice.worth.value, 9u);
    EXPECT_LE(choice.worth.withheld, 1u);
    headend.modules[0].inputs = 1;
    headend.services[0].bitrate = headend.services[1].bitrate = headend.services[2].bitrate = 1000;
    headend.services.push_back(service(4, 20, 1000));
    const Choice with_one_input = chosen();
    EXPECT_EQ(with_one_input.worth.value, 9u);
    EXPECT_LE(with_one_input.worth.withheld, 2u);
}

TEST_F(OneOfChoice, TheReportTellsGroupsByWhatIsAskedFor) {
    headend.services = {variant(1, 10, "X", 9000), variant(2, 10, "X", 3000),  service(3, 10, 3000),
                        service(4, 10, 3000),      variant(5, 10, "Y", 20000), variant(6, 20, "Y", 20000)};
    headend.services[0].must = headend.services[1].must = true;
    Choice choice;
    choice.asked = {false, true, true, true, false, false};
    const ChoiceReport report = report_of(headend, choice, nullptr, "f");
    ASSERT_EQ(report.withheld.size(), 1u);
    EXPECT_EQ(report.withheld[0].service.lcn, 5);
    ASSERT_EQ(report.variants.size(), 1u);
    EXPECT_EQ(report.variants[0].one_of, "X");
    EXPECT_EQ(report.variants[0].service.lcn, 2);
    EXPECT_EQ(report.variants[0].place, 2u);
    EXPECT_TRUE(report.lost.empty());
    EXPECT_TRUE(report.missed.empty());
    EXPECT_EQ(report.musts.wanted, 1u);
    EXPECT_EQ(report.chosen.musts, 1u);
    EXPECT_EQ(report.value.wanted, 4u);
    EXPECT_NE(choice_text(report, "", {})
                  .find("One of several is asked for in 1 group: 0 with the best variant "
                        "placed; the others\n"),
              std::string::npos)
        << choice_text(report, "", {});
    headend.services[1].must = false;
    EXPECT_EQ(report_of(headend, choice, nullptr, "f").missed.size(), 1u);
}

} // namespace
} // namespace zarven::tool::one_of_choice_test
