// Where a result has its services, which ones are looked for elsewhere, and what they are then called.

#include "placement/places.h"

#include <gtest/gtest.h>

namespace zarven::tool::places_test {
namespace {

ServiceResult service(std::uint16_t lcn) {
    ServiceResult made;
    made.stream = {1, 10};
    made.lcn = made.sid = lcn;
    made.name = "S" + std::to_string(lcn);
    made.outputs = {1};
    return made;
}

ModuleResult module(const std::string& mac, const std::vector<ServiceResult>& services) {
    ModuleResult made;
    made.mac = mac;
    made.inputs = {{1, true, {1, 10}, services}};
    return made;
}

TEST(PlacedServices, HavePlacesInAscendingOrder) {
    Result result;
    result.modules = {module("B", {service(2), service(1)}), module("A", {service(2)})};
    const std::vector<PlacedService> placed = placed_services(result);
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_EQ(placed[0].service.lcn, 1);
    ASSERT_EQ(placed[1].places.size(), 2u);
    EXPECT_EQ(placed[1].places[0].mac, "A");
    EXPECT_EQ(placed[1].places[1].mac, "B");
}

TEST(PlacedServices, AreNoClones) {
    ServiceResult clone = service(1);
    clone.is_clone = true;
    Result result;
    result.modules = {module("A", {service(2), clone})};
    result.neither = {clone};
    result.left_out = {{{1, 10}, {clone}}};
    const std::vector<PlacedService> placed = placed_services(result);
    ASSERT_EQ(placed.size(), 1u);
    EXPECT_EQ(placed[0].service.lcn, 2);
}

TEST(ServiceNumbers, AreStreamLcnAndSid) {
    const ServiceResult one = service(1);
    ServiceResult other = one;
    other.name = "Another";
    EXPECT_EQ(numbers_of(other), numbers_of(one));
    for (std::uint16_t ServiceResult::*number : {&ServiceResult::lcn, &ServiceResult::sid}) {
        other = one;
        other.*number = 7;
        EXPECT_NE(numbers_of(other), numbers_of(one));
    }
    for (std::uint16_t Stream::*number : {&Stream::onid, &Stream::tsid}) {
        other = one;
        other.stream.*number = 7;
        EXPECT_NE(numbers_of(other), numbers_of(one));
    }
    Service planned;
    planned.onid = 1;
    planned.tsid = 10;
    planned.lcn = planned.sid = 1;
    EXPECT_EQ(numbers_of(planned), numbers_of(one));
}

TEST(Match, AnotherSidIsAnotherServiceUnlessTheNameTells) {
    PlacedService before;
    before.service = service(1);
    PlacedService after = before;
    after.service.sid = 2;
    EXPECT_EQ(match({before}, {after}).pairs.size(), 1u) << "by their name";
    after.service.name = "Another";
    EXPECT_EQ(match({before}, {after}).pairs.size(), 0u);
    after.service.sid = 1;
    EXPECT_EQ(match({before}, {after}).pairs.size(), 1u) << "by their numbers";
}

TEST(AbsenceInWords, TellsEachKind) {
    EXPECT_STREQ(to_string(Absence::left_out), "left out");
    EXPECT_STREQ(to_string(Absence::neither), "neither");
    EXPECT_STREQ(to_string(Absence::not_there), "not there");
}

} // namespace
} // namespace zarven::tool::places_test
