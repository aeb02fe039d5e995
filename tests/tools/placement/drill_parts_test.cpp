// What the failure of a part means for services that are made by hand.

#include "placement/failing/drill_parts.h"

#include <gtest/gtest.h>

#include "placement/engine_by_hand.h"

namespace zarven::tool::drill_parts_test {
namespace {

PlacedService placed(std::uint16_t lcn, std::vector<Place> places) {
    PlacedService made;
    made.service.stream = {1, 10};
    made.service.lcn = made.service.sid = lcn;
    made.service.name = "S" + std::to_string(lcn);
    made.places = std::move(places);
    return made;
}

FailedPart module_a() {
    return {PartKind::module, "A"};
}

FailedPart input_of_a(std::uint16_t number) {
    FailedPart part{PartKind::input, "A"};
    part.input = number;
    return part;
}

/// What goes off the air without a new run.
std::size_t off_air(const FailedPart& part, std::vector<Place> places) {
    return judged(part, {placed(1, std::move(places))}, {NewRun::impossible}, {}).lost.size();
}

TEST(Judged, AServiceIsOnTheAirWhileAnInputBringsIt) {
    EXPECT_EQ(off_air(module_a(), {{"A", 1, {1}}}), 1u);
    EXPECT_EQ(off_air(module_a(), {{"B", 1, {1}}}), 0u);
    EXPECT_EQ(off_air(module_a(), {{"A", 1, {1}}, {"B", 1, {1}}}), 0u);
    EXPECT_EQ(off_air(module_a(), {}), 0u);
    EXPECT_EQ(off_air(input_of_a(2), {{"A", 2, {1}}}), 1u);
    EXPECT_EQ(off_air(input_of_a(2), {{"A", 1, {1}}}), 0u);
}

TEST(Judged, APlaceWithoutAnInputKeepsNothingOnTheAir) {
    EXPECT_EQ(off_air(module_a(), {{"A", 1, {1}}, {"B", 0, {1}}}), 1u);
    EXPECT_EQ(off_air(input_of_a(1), {{"A", 0, {1}}, {"A", 1, {1}}}), 1u);
    EXPECT_EQ(off_air(module_a(), {{"B", 0, {1}}}), 0u) << "it was not on the air before";
}

TEST(Judged, WhatTheNewRunAloneHasIsGainedWhereItIsPlaced) {
    Rerun rerun;
    rerun.services = {placed(1, {{"B", 1, {1}}}), placed(2, {{"B", 1, {2}}}), placed(3, {})};
    const DrilledFailure failure = judged(module_a(), {placed(1, {{"A", 1, {1}}})}, rerun, {});
    EXPECT_EQ(failure.saved.size(), 1u);
    ASSERT_EQ(failure.gained.size(), 1u);
    EXPECT_EQ(failure.gained[0].service.lcn, 2);
}

/// Of the modules, those whose failure leaves the engine without a controller.
std::vector<bool> controllers_among(const std::vector<bool>& controllers) {
    Headend headend = two_modules();
    std::vector<PlacedService> before;
    for (std::size_t index = 0; index < 2; ++index) {
        headend.modules[index].controller = controllers[index];
        before.push_back(
            placed(static_cast<std::uint16_t>(1 + index), {{headend.modules[index].mac, 1, {1}}}));
    }
    std::vector<bool> found;
    for (const Alike& parts : Parts(headend, before).groups)
        if (parts.front().kind == PartKind::module)
            found.push_back(parts.front().is_controller);
    return found;
}

TEST(Parts, AModuleIsTheControllerIfNoOtherIs) {
    EXPECT_EQ(controllers_among({true, false}), (std::vector<bool>{true, false}));
    EXPECT_EQ(controllers_among({false, true}), (std::vector<bool>{false, true}));
    EXPECT_EQ(controllers_among({true, true}), (std::vector<bool>{false, false}));
}

} // namespace
} // namespace zarven::tool::drill_parts_test
