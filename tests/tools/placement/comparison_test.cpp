// Two results made by hand, and what is told of each difference.

#include "made_findings.h"
#include "placement/change/comparison.h"

#include <gtest/gtest.h>

namespace zarven::tool::comparison_test {
namespace {

ServiceResult service(std::uint16_t lcn, std::uint16_t tsid, std::vector<std::uint32_t> outputs = {}) {
    ServiceResult made;
    made.stream = {1, tsid};
    made.lcn = lcn;
    made.sid = static_cast<std::uint16_t>(100 + lcn);
    made.name = "S" + std::to_string(lcn);
    made.outputs = std::move(outputs);
    return made;
}

/// A module with two inputs, the first tuned to a stream with these services, and two outputs under 1000.
ModuleResult module(const std::string& mac, std::uint16_t tsid, const std::vector<ServiceResult>& services) {
    ModuleResult made;
    made.mac = mac;
    made.pids_max = 100;
    made.inputs = {{1, tsid != 0, {1, tsid}, services}, {2, false, {}, {}}};
    made.outputs = {{1, 0, 1000, 0, 512, {}}, {2, 0, 1000, 0, 512, {}}};
    return made;
}

Result result(std::vector<ModuleResult> modules, const std::vector<ServiceResult>& left_out = {}) {
    Result made;
    made.modules = std::move(modules);
    for (const ServiceResult& left : left_out)
        made.left_out.push_back({left.stream, {left}});
    return made;
}

TEST(Compare, TheSameIsNoDifference) {
    const Result same = result({module("A", 10, {service(1, 10, {1})})}, {service(2, 20)});
    const Comparison comparison = compare(same, same);
    EXPECT_EQ(comparison.unmoved, 1u);
    EXPECT_EQ(comparison.never_placed, 1u);
    EXPECT_TRUE(comparison.gained.empty());
    EXPECT_TRUE(comparison.lost.empty());
    EXPECT_TRUE(comparison.moved.empty());
    EXPECT_TRUE(comparison.modules_gone.empty() && comparison.modules_new.empty());
    EXPECT_TRUE(comparison.inputs_freed.empty() && comparison.inputs_taken.empty() &&
                comparison.inputs_retuned.empty());
    EXPECT_TRUE(comparison.became_tight.empty() && comparison.relaxed.empty());
}

TEST(Compare, GainedAndLost) {
    const Result before = result({module("A", 10, {service(1, 10, {1})})}, {service(2, 20)});
    const Result after = result({module("A", 20, {service(2, 20, {2})})}, {service(1, 10)});
    const Comparison comparison = compare(before, after);
    ASSERT_EQ(comparison.gained.size(), 1u);
    const ServiceChange& gained = comparison.gained[0];
    EXPECT_EQ(gained.service.lcn, 2);
    EXPECT_EQ(gained.absence_before, Absence::left_out);
    EXPECT_TRUE(gained.before.empty());
    ASSERT_EQ(gained.after.size(), 1u);
    EXPECT_EQ(gained.after[0].mac, "A");
    EXPECT_EQ(gained.after[0].input, 1);
    EXPECT_EQ(gained.after[0].outputs, std::vector<std::uint32_t>{2});
    ASSERT_EQ(comparison.lost.size(), 1u);
    EXPECT_EQ(comparison.lost[0].service.lcn, 1);
    EXPECT_EQ(comparison.lost[0].before.size(), 1u);
    EXPECT_TRUE(comparison.lost[0].after.empty());
    EXPECT_EQ(comparison.unmoved, 0u);
}

TEST(Compare, AServiceThatOneSideDoesNotHave) {
    const Result with = result({module("A", 10, {service(1, 10, {1})})});
    const Result without = result({module("A", 10, {})});
    const Comparison gone = compare(with, without);
    EXPECT_TRUE(gone.lost.empty());
    ASSERT_EQ(gone.removed.size(), 1u);
    EXPECT_EQ(gone.removed[0].absence_after, Absence::not_there);
    const Comparison come = compare(without, with);
    EXPECT_TRUE(come.gained.empty());
    ASSERT_EQ(come.added.size(), 1u);
    EXPECT_EQ(come.added[0].absence_before, Absence::not_there);
    // One that was not placed is none of these.
    const Comparison unplaced = compare(result({}, {service(1, 10)}), result({}));
    EXPECT_EQ(unplaced.removed.size() + unplaced.added.size() + unplaced.lost.size(), 0u);
    EXPECT_EQ(unplaced.never_placed, 1u);
}

TEST(Compare, TwoSpellingsOfAMacAreOneModule) {
    const Result before = result({module("02-00-00-00-00-0a", 10, {service(1, 10, {1})})});
    const Result after = result({module("02:00:00:00:00:0A", 10, {service(1, 10, {1})})});
    const Comparison comparison = compare(before, after);
    EXPECT_EQ(comparison.unmoved, 1u);
    EXPECT_TRUE(comparison.modules_gone.empty() && comparison.modules_new.empty());
    EXPECT_TRUE(comparison.inputs_freed.empty() && comparison.inputs_taken.empty());
}

TEST(Compare, TheLabelAfterCounts) {
    const auto labelled = [](const std::string& mac, const std::string& label) {
        ModuleResult made = module(mac, 0, {});
        made.label = label;
        return made;
    };
    const Comparison comparison =
        compare(result({labelled("A", "old"), labelled("B", "gone"), module("C", 0, {})}),
                result({labelled("A", "new"), module("C", 0, {})}));
    EXPECT_EQ(comparison.labels, (Labels{{"A", "new"}, {"B", "gone"}}));
    EXPECT_EQ(comparison.name_of("A"), "A (new)");
    EXPECT_EQ(comparison.name_of("B"), "B (gone)");
    EXPECT_EQ(comparison.name_of("C"), "C");
}

TEST(Compare, AServiceThatTheEngineHasLost) {
    const Result before = result({module("A", 10, {service(1, 10, {1})})});
    Result after = result({module("A", 10, {})});
    after.neither = {service(1, 10)};
    const Comparison nowhere = compare(before, after);
    ASSERT_EQ(nowhere.lost.size(), 1u);
    EXPECT_EQ(nowhere.lost[0].absence_after, Absence::neither);
    // On its input it may stand still.
    const Comparison on_input = compare(result({module("A", 10, {service(1, 10)})}), before);
    ASSERT_EQ(on_input.gained.size(), 1u);
    EXPECT_EQ(on_input.gained[0].absence_before, Absence::neither);
}

TEST(Compare, EachSideKeepsItsFiguresAndFindings) {
    Result before = result({});
    before.name = "Casa";
    before.counts.loaded = 5;
    before.findings = {broken("one")};
    Result after = result({});
    after.findings = {broken("two"), note("three")};
    const Comparison comparison = compare(before, after);
    EXPECT_EQ(comparison.before.name, "Casa");
    EXPECT_EQ(comparison.before.counts.loaded, 5u);
    EXPECT_EQ(texts_of(comparison.before.findings), texts_of(before.findings));
    EXPECT_EQ(texts_of(comparison.after.findings), texts_of(after.findings));
}

/// The service moves from module A, input 1, output 1.
bool is_moved(const ModuleResult& to) {
    const Comparison comparison = compare(result({module("A", 10, {service(1, 10, {1})})}), result({to}));
    EXPECT_EQ(comparison.moved.size() + comparison.unmoved, 1u);
    return comparison.moved.size() == 1;
}

TEST(Compare, ADifferentModuleInputOrOutputIsAMove) {
    EXPECT_FALSE(is_moved(module("A", 10, {service(1, 10, {1})})));
    EXPECT_TRUE(is_moved(module("B", 10, {service(1, 10, {1})})));
    EXPECT_TRUE(is_moved(module("A", 10, {service(1, 10, {2})})));
    EXPECT_TRUE(is_moved(module("A", 10, {service(1, 10, {1, 2})})));
    ModuleResult other_input = module("A", 0, {});
    other_input.inputs[1] = {2, true, {1, 10}, {service(1, 10, {1})}};
    EXPECT_TRUE(is_moved(other_input));
    ModuleResult a_second_time = module("A", 10, {service(1, 10, {1})});
    a_second_time.without_input = {service(1, 10, {1})};
    EXPECT_TRUE(is_moved(a_second_time));
}

TEST(Compare, AServiceThatMovesIsToldAsItIsAfter) {
    ServiceResult renamed = service(1, 10, {2});
    renamed.name = "New";
    const Comparison comparison =
        compare(result({module("A", 10, {service(1, 10, {1})})}), result({module("A", 10, {renamed})}));
    ASSERT_EQ(comparison.moved.size(), 1u);
    EXPECT_EQ(comparison.moved[0].service.name, "New");
}

TEST(Compare, OnNoInputThatReceivesItIsNotPlaced) {
    const Result before = result({module("A", 10, {service(1, 10, {1})})});
    ModuleResult no_input = module("A", 0, {});
    no_input.without_input = {service(1, 10, {1})};
    for (const ModuleResult& after : {no_input, module("A", 20, {service(1, 10, {1})})}) {
        const Comparison comparison = compare(before, result({after}));
        ASSERT_EQ(comparison.lost.size(), 1u);
        EXPECT_EQ(comparison.lost[0].absence_after, Absence::neither);
    }
}

TEST(Compare, OnAnInputAndOnNoOutputIsNotPlaced) {
    const Comparison comparison = compare(result({module("A", 10, {service(1, 10)})}),
                                          result({module("A", 10, {service(1, 10, {1})})}));
    EXPECT_EQ(comparison.gained.size(), 1u);
}

TEST(Compare, ClonesAreNotToldApart) {
    ServiceResult clone = service(1, 10, {1});
    clone.is_clone = true;
    const Comparison comparison = compare(result({module("A", 10, {clone})}), result({module("A", 10, {})}));
    EXPECT_TRUE(comparison.lost.empty());
}

/// How many services of one result are found in the other, where all are placed alike.
std::size_t matched(const std::vector<ServiceResult>& before, const std::vector<ServiceResult>& after) {
    return compare(result({module("A", 10, before)}), result({module("A", 10, after)})).unmoved;
}

TEST(Compare, ServicesAreTheSameByTheirNumbersOrElseByTheirName) {
    const ServiceResult one = service(1, 10, {1});
    ServiceResult renamed = one;
    renamed.name = "New";
    EXPECT_EQ(matched({one}, {renamed}), 1u);
    ServiceResult renumbered = one;
    renumbered.lcn = 7;
    EXPECT_EQ(matched({one}, {renumbered}), 1u);
    ServiceResult other = renumbered;
    other.name = "New";
    EXPECT_EQ(matched({one}, {other}), 0u);
    // The numbers go first: the name of another service does not matter.
    EXPECT_EQ(matched({one, other}, {renamed, renumbered}), 2u);
}

TEST(Compare, ANameThatSeveralHaveTellsNothing) {
    ServiceResult one = service(1, 10, {1});
    ServiceResult other = service(2, 10, {1});
    one.name = other.name = ".";
    ServiceResult renumbered = one;
    renumbered.lcn = 3;
    EXPECT_EQ(matched({one, other}, {renumbered}), 0u);
    EXPECT_EQ(matched({renumbered}, {one, other}), 0u);
    // Once the other is found by its numbers, the name tells the one that is left.
    EXPECT_EQ(matched({one, other}, {renumbered, other}), 2u);
}

TEST(Compare, ModulesAndInputs) {
    const Result before =
        result({module("A", 10, {}), module("B", 20, {}), module("C", 30, {}), module("D", 0, {})});
    const Result after =
        result({module("A", 0, {}), module("B", 21, {}), module("D", 40, {}), module("E", 50, {})});
    const Comparison comparison = compare(before, after);
    EXPECT_EQ(comparison.modules_gone, std::vector<std::string>{"C"});
    EXPECT_EQ(comparison.modules_new, std::vector<std::string>{"E"});
    ASSERT_EQ(comparison.inputs_freed.size(), 2u);
    EXPECT_EQ(comparison.inputs_freed[0].mac, "A");
    EXPECT_EQ(comparison.inputs_freed[0].number, 1);
    EXPECT_EQ(to_string(comparison.inputs_freed[0].before), "1/10");
    EXPECT_EQ(comparison.inputs_freed[1].mac, "C");
    ASSERT_EQ(comparison.inputs_taken.size(), 2u);
    EXPECT_EQ(comparison.inputs_taken[0].mac, "D");
    EXPECT_EQ(to_string(comparison.inputs_taken[1].after), "1/50");
    ASSERT_EQ(comparison.inputs_retuned.size(), 1u);
    EXPECT_EQ(comparison.inputs_retuned[0].mac, "B");
    EXPECT_EQ(to_string(comparison.inputs_retuned[0].before), "1/20");
    EXPECT_EQ(to_string(comparison.inputs_retuned[0].after), "1/21");
}

/// A limit that goes from nothing in use to this module, and back.
std::size_t tight_in(const ModuleResult& used) {
    const Result idle = result({module("A", 0, {})});
    const Comparison there = compare(idle, result({used}));
    const Comparison back = compare(result({used}), idle);
    EXPECT_EQ(there.relaxed.size() + back.became_tight.size(), 0u);
    EXPECT_EQ(there.became_tight.size(), back.relaxed.size());
    return there.became_tight.size();
}

TEST(Compare, AnOutputIsTightFrom95Percent) {
    ModuleResult used = module("A", 0, {});
    used.outputs[1].bitrate = 949;
    EXPECT_EQ(tight_in(used), 0u);
    used.outputs[1].bitrate = 950;
    EXPECT_EQ(tight_in(used), 1u);
    const TightLimit limit = compare(result({module("A", 0, {})}), result({used})).became_tight.at(0);
    EXPECT_EQ(limit.kind, TightKind::bitrate);
    EXPECT_EQ(limit.output, 2u);
    EXPECT_EQ(limit.used, 950u);
    EXPECT_EQ(limit.max, 1000u);
    used.outputs[1] = {2, 0, 0, 0, 512, {}};
    EXPECT_EQ(tight_in(used), 0u) << "of what there is nothing, nothing is used up";
    used.outputs[1] = {2, 4080218931u, 4294967295u, 0, 512, {}};
    EXPECT_EQ(tight_in(used), 1u);
    used.outputs[1].bitrate -= 1;
    EXPECT_EQ(tight_in(used), 0u);
}

TEST(Compare, PidsAreTightFrom95Percent) {
    ModuleResult used = module("A", 0, {});
    used.pids = 94;
    EXPECT_EQ(tight_in(used), 0u);
    used.pids = 95;
    EXPECT_EQ(tight_in(used), 1u);
    const TightLimit limit = compare(result({module("A", 0, {})}), result({used})).became_tight.at(0);
    EXPECT_EQ(limit.kind, TightKind::pids);
    EXPECT_EQ(limit.output, 0u);
}

TEST(Compare, InputsAreTightWhenNoneIsFree) {
    ModuleResult used = module("A", 10, {service(1, 10, {1})});
    EXPECT_EQ(tight_in(used), 0u);
    used.inputs[1] = {2, true, {1, 20}, {}}; // tuned, and free all the same
    EXPECT_EQ(tight_in(used), 0u);
    used.inputs[1].services = {service(2, 20, {1})};
    EXPECT_EQ(tight_in(used), 1u);
    EXPECT_EQ(compare(result({module("A", 0, {})}), result({used})).became_tight.at(0).kind,
              TightKind::inputs);
}

TEST(Compare, ALimitOfANewModule) {
    ModuleResult used = module("B", 0, {});
    used.pids = 100;
    EXPECT_EQ(compare(result({}), result({used})).became_tight.size(), 1u);
    EXPECT_TRUE(compare(result({used}), result({})).relaxed.empty()) << "what is gone is not relaxed";
}

} // namespace
} // namespace zarven::tool::comparison_test
