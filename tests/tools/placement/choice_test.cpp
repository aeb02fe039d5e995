// What a choice made by hand brings: who is gained, lost, missed and moved, and how much any placement could
// reach.

#include "placement/choosing/choice.h"

#include <gtest/gtest.h>

#include "made_findings.h"
#include "placement/documents.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::choice_test {
namespace {

/// One input: the engine takes the stream with two services, and leaves out LCN 1.
Headend one_input() {
    Headend headend;
    headend.name = "Casa";
    headend.modules.push_back({"A", 3, true, 1, {10000}, 8, 0, 0, 0});
    headend.services = {service(1, 10), service(2, 20), service(3, 20)};
    return headend;
}

Choice choice_of(std::vector<bool> asked) {
    Choice choice;
    choice.asked = std::move(asked);
    choice.states = 7;
    choice.engine_runs = 5;
    return choice;
}

std::vector<int> lcns(const std::vector<ValuedService>& services) {
    std::vector<int> numbers;
    for (const ValuedService& service : services)
        numbers.push_back(service.service.lcn);
    return numbers;
}

std::vector<int> lcns(const std::vector<ValuedChange>& changes) {
    std::vector<int> numbers;
    for (const ValuedChange& change : changes)
        numbers.push_back(change.service.service.lcn);
    return numbers;
}

using Lcns = std::vector<int>;

class ChoiceReportOf : public testing::Test {
protected:
    ChoiceReport report(std::vector<bool> asked, const Result* kept = nullptr) const {
        return report_of(headend, choice_of(std::move(asked)), kept, "f");
    }

    host::Log no_log{""};
    Headend headend = one_input();
};

TEST_F(ChoiceReportOf, WhatIsGainedAndLost) {
    headend.services[0].value = 5;
    headend.modules[0].label = "Rack 1";
    const ChoiceReport told = report({true, false, false});
    EXPECT_EQ(told.name, "Casa");
    EXPECT_EQ(told.labels, (Labels{{"A", "Rack 1"}}));
    EXPECT_EQ(told.all.counts.placed, 2u);
    EXPECT_EQ(told.all.value, 2u);
    EXPECT_EQ(told.chosen.counts.placed, 1u);
    EXPECT_EQ(told.chosen.counts.loaded, 1u);
    EXPECT_EQ(told.chosen.counts.not_asked_for, 2u);
    EXPECT_EQ(told.chosen.value, 5u);
    EXPECT_EQ(lcns(told.withheld), (Lcns{2, 3}));
    EXPECT_EQ(lcns(told.gained), (Lcns{1}));
    EXPECT_EQ(lcns(told.lost), (Lcns{2, 3}));
    EXPECT_TRUE(told.lost[0].is_withheld);
    EXPECT_EQ(told.gained[0].service.value, 5);
    ASSERT_EQ(told.gained[0].places.size(), 1u);
    EXPECT_EQ(told.gained[0].places[0].mac, "A");
    EXPECT_EQ(told.gained[0].places[0].input, 1);
    EXPECT_EQ(told.gained[0].places[0].outputs, (std::vector<std::uint32_t>{1}));
    EXPECT_EQ(told.states, 7u);
    EXPECT_EQ(told.engine_runs, 5u);
    EXPECT_TRUE(told.has_values);
    EXPECT_TRUE(told.missed.empty());
    EXPECT_FALSE(told.moves);
}

TEST_F(ChoiceReportOf, ALossThatIsAskedForIsLeftOut) {
    // The third no longer brings its stream to the front.
    headend.services.push_back(service(4, 10));
    const ChoiceReport told = report({true, true, false, true});
    EXPECT_EQ(lcns(told.withheld), (Lcns{3}));
    EXPECT_EQ(lcns(told.gained), (Lcns{}));
    EXPECT_EQ(lcns(told.lost), (Lcns{}));
    const ChoiceReport other = report({false, true, true, true});
    EXPECT_EQ(lcns(other.gained), (Lcns{2, 3}));
    EXPECT_EQ(lcns(other.lost), (Lcns{1, 4}));
    EXPECT_TRUE(other.lost[0].is_withheld);
    EXPECT_FALSE(other.lost[1].is_withheld);
    EXPECT_FALSE(other.has_values);
}

TEST_F(ChoiceReportOf, WhatTheHeadendDoesNotAskForIsNoPartOfIt) {
    headend.services[1].ask = false;
    headend.services[1].value = 9;
    headend.services[2].ask = false;
    headend.services[2].must = true;
    const ChoiceReport told = report({true, false, false});
    EXPECT_TRUE(told.withheld.empty());
    EXPECT_TRUE(told.missed.empty());
    EXPECT_EQ(told.musts.wanted, 0u);
    EXPECT_EQ(told.value.wanted, 1u);
    EXPECT_FALSE(told.has_values);
}

TEST_F(ChoiceReportOf, AMustThatIsLeftOutHasTheEnginesReason) {
    headend.services[0].must = headend.services[1].must = true;
    const ChoiceReport told = report({true, true, true});
    EXPECT_EQ(told.all.musts, 1u);
    EXPECT_EQ(told.chosen.musts, 1u);
    EXPECT_EQ(told.musts.wanted, 2u);
    EXPECT_EQ(told.musts.most, 1u) << "one input receives one stream";
    ASSERT_EQ(told.missed.size(), 1u);
    EXPECT_EQ(told.missed[0].service.lcn, 1);
    EXPECT_FALSE(told.missed[0].is_withheld);
    EXPECT_FALSE(told.missed[0].is_impossible);
    EXPECT_EQ(
        told.missed[0].service.reason,
        "No input is free for stream 1/10: the only input receives another stream; no module has room for "
        "it, either.");
}

TEST_F(ChoiceReportOf, AMustThatIsWithheldIsAskedForOnceMore) {
    headend.services[0].must = headend.services[1].must = true;
    headend.services[1].value = 3;
    const ChoiceReport told = report({true, false, false});
    ASSERT_EQ(told.missed.size(), 1u);
    EXPECT_EQ(told.missed[0].service.lcn, 2);
    EXPECT_TRUE(told.missed[0].is_withheld);
    // Of one service each, the engine takes the stream that comes first.
    EXPECT_EQ(told.missed[0].service.reason,
              "No input is free for stream 1/20: the only input receives another stream.");
    const ChoiceReport other = report({false, true, false});
    ASSERT_EQ(other.missed.size(), 1u);
    EXPECT_EQ(other.missed[0].service.reason,
              "It is withheld: asked for, it is placed, and with it 1 of 2 musts and a value of 1.");
}

/// There is room for one of them.
TEST_F(ChoiceReportOf, EachMustThatIsWithheldIsAskedForByItself) {
    headend.modules[0].outputs = {5000};
    headend.services = {service(1, 10, 3000), service(2, 10, 3000), service(3, 10, 1000)};
    headend.services[0].must = headend.services[1].must = true;
    headend.services[1].value = 3;
    const ChoiceReport told = report({false, false, true});
    ASSERT_EQ(told.missed.size(), 2u);
    EXPECT_EQ(told.missed[0].service.reason,
              "It is withheld: asked for, it is placed, and with it 1 of 2 musts and a value of 2.");
    EXPECT_EQ(told.missed[1].service.reason,
              "It is withheld: asked for, it is placed, and with it 1 of 2 musts and a value of 4.");
}

TEST_F(ChoiceReportOf, AMustThatNoModuleCouldTake) {
    headend.services[0].must = true;
    headend.services[0].bitrate = 10000;
    const ChoiceReport told = report({true, true, true});
    ASSERT_EQ(told.missed.size(), 1u);
    EXPECT_TRUE(told.missed[0].is_impossible);
    EXPECT_EQ(told.musts.wanted, 1u);
    EXPECT_EQ(told.musts.most, 0u);
}

TEST_F(ChoiceReportOf, MovesAreThoseOfAComparison) {
    headend.modules[0].outputs = {10000, 10000};
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    Result kept = result_of(run, "");
    const ChoiceReport same = report({true, true, true}, &kept);
    ASSERT_TRUE(same.moves);
    EXPECT_TRUE(same.moves->moved.empty());
    EXPECT_EQ(same.moves->unmoved, 2u);
    EXPECT_EQ(same.moves->gone, 0u);
    ASSERT_EQ(kept.modules[0].inputs[0].services.size(), 2u);
    kept.modules[0].inputs[0].services[0].outputs = {2};
    const ChoiceReport moved = report({true, true, true}, &kept);
    ASSERT_EQ(moved.moves->moved.size(), 1u);
    EXPECT_EQ(moved.moves->moved[0].service.lcn, 2);
    EXPECT_EQ(moved.moves->unmoved, 1u);
    EXPECT_EQ(report({true, false, false}, &kept).moves->gone, 2u);
    // Asked for, and left out.
    headend.services[1].bitrate = 10000;
    EXPECT_EQ(report({true, true, true}, &kept).moves->gone, 1u);
}

/// Stops one run.
class Stopping : public host::Watcher {
public:
    explicit Stopping(int run) : runs_(run) {}

    void hear(std::string_view line) override {
        if (line.find("HEADEND::: **************** START") != line.npos && --runs_ == 0)
            throw host::RunStopped("it is the one");
    }
    void wait() override {}

private:
    int runs_;
};

TEST(ChoiceReportOfAStoppedRun, HasNothingToCompareWith) {
    const host::Log logged("/dev/null");
    const Headend headend = one_input();
    Stopping stopping(1);
    const host::Watching watching(&stopping);
    const ChoiceReport told = report_of(headend, choice_of({true, false, true}), nullptr, "f");
    EXPECT_TRUE(told.all.is_stopped);
    EXPECT_FALSE(is_sound(told.all));
    EXPECT_EQ(told.all.counts.loaded, 3u);
    EXPECT_EQ(told.all.counts.placed, 0u);
    EXPECT_FALSE(told.chosen.is_stopped);
    EXPECT_TRUE(is_sound(told.chosen));
    EXPECT_EQ(told.chosen.counts.placed, 1u);
    EXPECT_EQ(told.gained.size(), 1u);
    EXPECT_TRUE(told.lost.empty());
    EXPECT_EQ(lcns(told.withheld), (Lcns{2}));
}

/// The third run asks for what is withheld, too.
TEST(ChoiceReportOfAStoppedRun, AMustWithWhichTheEngineDoesNotEndIsToldSo) {
    const host::Log logged("/dev/null");
    Headend headend = one_input();
    headend.services[1].must = true;
    Stopping stopping(3);
    const host::Watching watching(&stopping);
    const ChoiceReport told = report_of(headend, choice_of({true, false, true}), nullptr, "f");
    ASSERT_EQ(told.missed.size(), 1u);
    EXPECT_EQ(told.missed[0].service.reason,
              "It is withheld: asked for, the engine does not end within its limits.");
}

TEST_F(ChoiceReportOf, AServiceOfTheSameKeyCountsAsItself) {
    // A clone to the engine as long as the first is asked for.
    headend.services = {service(1, 10), service(1, 10)};
    headend.services[0].value = 2;
    headend.services[1].value = 3;
    headend.services[1].sid = 555;
    EXPECT_EQ(report({true, true}).chosen.value, 5u);
    EXPECT_EQ(report({true, true}).chosen.counts.placed, 1u) << "clones are counted apart";
    // The engine looks for the parent by its OSID and does not find it.
    headend.services[0].osid = 777;
    const ChoiceReport both = report({true, true});
    EXPECT_EQ(both.chosen.value, 2u);
    const ChoiceReport second = report({false, true});
    EXPECT_EQ(second.chosen.value, 3u);
    ASSERT_EQ(lcns(second.gained), (Lcns{1}));
    EXPECT_EQ(second.gained[0].service.service.sid, 555);
    EXPECT_EQ(second.value.most, 5u);
}

/// One input. A service with transcoding is placed only where another of its stream receives it: here one of
/// value 0, which no choice asks for. The other stream has one service of value 5.
class ChoiceReportWithAHelper : public ChoiceReportOf {
protected:
    ChoiceReportWithAHelper() {
        headend.modules[0].sd_transcoders = 1;
        headend.services = {service(1, 10, 2000, 0, 1), service(2, 10, 2000), service(3, 20, 2000)};
        headend.services[1].value = 0;
        headend.services[2].value = 5;
    }

    ChoiceReport searched() const {
        ChoosingLimits limits;
        limits.time = std::chrono::hours(1);
        limits.runs = 100;
        return report_of(headend,
                         choose_services(headend, limits, {}, [](const ChoosingProgress&) { return true; }),
                         nullptr, "f");
    }
};

TEST_F(ChoiceReportWithAHelper, SaysSoWhereEverythingAskedForIsWorthMore) {
    for (const std::uint16_t value : {std::uint16_t{4}, std::uint16_t{5}, std::uint16_t{6}}) {
        headend.services[0].value = value;
        const ChoiceReport told = searched();
        EXPECT_EQ(told.all.value, value);
        EXPECT_EQ(told.chosen.value, 5u);
        EXPECT_EQ(lcns(told.withheld), (Lcns{2}));
        EXPECT_EQ(never_asked_for(told), 1u);
        EXPECT_EQ(is_less_than_all(told), value == 6) << value;
        EXPECT_EQ(choice_json(told).find("\"less_than_all\": true") != std::string::npos, value == 6)
            << value;
    }
    // What has a value is asked for.
    headend.services[1].value = 1;
    EXPECT_EQ(searched().chosen.value, 7u);
    EXPECT_FALSE(is_less_than_all(searched()));
}

TEST_F(ChoiceReportWithAHelper, MustsComeBeforeTheValue) {
    headend.services[0].must = true;
    ChoiceReport told = searched();
    EXPECT_EQ(told.all.musts, 1u);
    EXPECT_EQ(told.chosen.musts, 0u);
    EXPECT_LT(told.all.value, told.chosen.value);
    EXPECT_TRUE(is_less_than_all(told));
    headend.services[2].must = true;
    told = searched();
    EXPECT_EQ(told.all.musts, told.chosen.musts);
    EXPECT_FALSE(is_less_than_all(told)) << "as many musts, and a smaller value";
    headend.services[0].value = 6;
    EXPECT_TRUE(is_less_than_all(searched())) << "as many musts, and a greater value";
}

TEST_F(ChoiceReportWithAHelper, OnlyWhatIsNeverAskedForIsTheReason) {
    headend.services[0].value = 6;
    EXPECT_TRUE(is_less_than_all(report({true, false, true})));
    EXPECT_EQ(never_asked_for(report({true, false, false})), 1u) << "what has a value may be asked for";
    headend.services[1].must = true;
    EXPECT_EQ(never_asked_for(report({true, false, true})), 0u);
    EXPECT_FALSE(is_less_than_all(report({true, false, true})));
    headend.services[1].must = false;
    headend.services[1].ask = false;
    EXPECT_EQ(never_asked_for(report({true, false, true})), 0u) << "everything asked for has it not, either";
}

TEST_F(ChoiceReportWithAHelper, WhatIsBrokenIsNoMore) {
    headend.services[0].value = 6;
    ChoiceReport told = searched();
    const auto broken = [] { return std::vector<Finding>{broken_limit("one", "A")}; };
    told.all.findings = broken();
    EXPECT_FALSE(is_less_than_all(told));
    told.chosen.findings = broken();
    EXPECT_FALSE(is_less_than_all(told)) << "neither counts";
    told.all.findings.clear();
    told.all.value = told.chosen.value;
    EXPECT_TRUE(is_less_than_all(told)) << "the choice does not count";
    told.all.is_stopped = true;
    EXPECT_FALSE(is_less_than_all(told));
}

TEST(WithChoice, ChangesNothingButAsk) {
    Headend headend = one_input();
    headend.services[2].must = true;
    const Headend chosen = with_choice(headend, choice_of({false, true, true}));
    EXPECT_FALSE(chosen.services[0].ask);
    EXPECT_TRUE(chosen.services[1].ask);
    EXPECT_TRUE(chosen.services[2].must);
    EXPECT_EQ(chosen.modules.size(), 1u);
}

TEST(StaysPutOf, ServicesStandWhereTheResultHasThem) {
    const host::Log no_log("");
    Headend headend = one_input();
    headend.modules[0].outputs = {5000, 5000};
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    const Result kept = result_of(run, "");
    // Numbers change, and the name is the same.
    headend.services[2].sid = 999;
    headend.services.push_back(service(4, 20));
    const StaysPut stays = stays_put(headend, kept);
    EXPECT_EQ(stays.module, (std::vector<std::string>{"", "A", "A", ""}));
    EXPECT_EQ(stays.output, (std::vector<std::uint32_t>{0, 1, 2, 0}));
    EXPECT_EQ(stays.input, (std::vector<std::uint16_t>{0, 1, 1, 0}));
    EXPECT_EQ(stays.asked, (std::vector<bool>{true, true, true, false}));
    // A clone of one that is asked for, and a service that is not.
    headend.services[3] = headend.services[1];
    headend.services[3].sid = 998;
    headend.services[3].name = "another";
    EXPECT_EQ(stays_put(headend, kept).asked, (std::vector<bool>{true, true, true, true}));
}

TEST(Reach, TheServicesOfAKeyAreOneThatTakesTheLeast) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 9, {1000}, 8, 0, 0, 0});
    headend.services = {service(1, 10, 800, 8), service(1, 10, 900, 3), service(2, 10, 500, 2)};
    headend.services[1].must = true;
    headend.services[1].value = 10;
    // 800 + 500 do not fit, but the clone costs nothing.
    EXPECT_EQ(reach_of_value(headend, "f").most, 11u);
    EXPECT_EQ(reach_of_value(headend, "f").wanted, 12u);
    EXPECT_EQ(reach_of_musts(headend, "f").most, 1u);
    // Its own bitrate is what counts for the rest: 8 PIDs or 3, both within 8 with the third.
    headend.services[0].ask = false;
    EXPECT_EQ(reach_of_value(headend, "f").wanted, 11u);
    EXPECT_EQ(reach_of_value(headend, "f").most, 10u);
}

/// The first of its key takes the most.
TEST(Reach, OfEachResourceTheLeastOfAKeyCounts) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 9, {1000}, 8, 0, 0, 0});
    const auto most = [&headend](const Service& large, const Service& small, const Service& other) {
        headend.services = {large, small, other};
        EXPECT_EQ(reach_of_value(headend, "f").wanted, 3u);
        return reach_of_value(headend, "f").most;
    };
    EXPECT_EQ(most(service(1, 10, 600), service(1, 10, 400), service(2, 10, 500)), 3u) << "bitrate";
    EXPECT_EQ(most(service(1, 10, 600), service(1, 10, 500), service(2, 10, 500)), 2u);
    EXPECT_EQ(most(service(1, 10, 10, 5), service(1, 10, 10, 4), service(2, 10, 10, 4)), 3u) << "PIDs";
    EXPECT_EQ(most(service(1, 10, 10, 6), service(1, 10, 10, 5), service(2, 10, 10, 4)), 2u);
    Service ceiling = service(1, 10, 10, 5);
    ceiling.ca_pids_max = 4;
    EXPECT_EQ(most(service(1, 10, 10, 5), ceiling, service(2, 10, 10, 4)), 3u) << "the ceiling of PIDs";
    EXPECT_EQ(most(service(1, 10, 10, 0, 1), service(1, 10, 10, 0, 1), service(2, 10, 10)), 3u)
        << "a clone takes a transcoder of the other pool";
}

TEST(Reach, CeilingsOfPidsCountWhereThereAreClones) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 9, {10000}, 3, 0, 0, 9});
    headend.services = {service(1, 10, 800, 5)};
    headend.services[0].ca_pids_max = 3;
    EXPECT_EQ(reach_of_value(headend, "f").most, 0u);
    headend.clones = {clone_of(headend.services[0])};
    EXPECT_EQ(reach_of_value(headend, "f").most, 1u);
}

} // namespace
} // namespace zarven::tool::choice_test
