// What a command line says of services: which ones it means, and what is wrong with it.

#include "placement/choosing/choice_wishes.h"

#include <gtest/gtest.h>

#include "failure_message.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::choice_wishes_test {
namespace {

Headend headend_of(std::vector<Service> services) {
    Headend headend = two_modules();
    headend.services = std::move(services);
    return headend;
}

std::vector<bool> musts(Headend headend, const std::vector<std::string>& keys) {
    demand_services(keys, "f", headend);
    std::vector<bool> demanded;
    for (const Service& service : headend.services)
        demanded.push_back(service.must);
    return demanded;
}

using Flags = std::vector<bool>;

TEST(DemandServices, ByLcnNameAndStream) {
    const Headend headend = headend_of({service(1, 10), service(2, 10), service(2, 20)});
    EXPECT_EQ(musts(headend, {}), (Flags{false, false, false}));
    EXPECT_EQ(musts(headend, {"1"}), (Flags{true, false, false}));
    EXPECT_EQ(musts(headend, {"2"}), (Flags{false, true, true}));
    EXPECT_EQ(musts(headend, {"2@1/20", "S1"}), (Flags{true, false, true}));
}

TEST(DemandServices, KeepsWhatTheHeadendDemands) {
    Headend headend = headend_of({service(1, 10), service(2, 10)});
    headend.services[0].must = true;
    EXPECT_EQ(musts(headend, {"2"}), (Flags{true, true}));
}

TEST(DemandServices, ACloneStandsForItsParent) {
    Headend headend = headend_of({service(1, 10), service(2, 10)});
    headend.clones = {clone_of(headend.services[1])};
    headend.clones[0].name = "Again";
    EXPECT_EQ(musts(headend, {"Again"}), (Flags{false, true}));
    // The second of a key is a clone, too.
    headend.services.push_back(service(2, 10));
    headend.services[2].name = "Third";
    EXPECT_EQ(musts(headend, {"Third"}), (Flags{false, true, false}));
    EXPECT_EQ(musts(headend, {"2"}), (Flags{false, true, false}));
}

TEST(DemandServices, Complaints) {
    Headend headend = headend_of({service(1, 10), service(2, 10)});
    EXPECT_EQ(failure_message([&] { demand_services({"3"}, "f", headend); }),
              "f: --must 3: no service has the LCN 3; the nearest is 2");
    EXPECT_EQ(failure_message([&] { demand_services({""}, "f", headend); }),
              "--must \"\": found no LCN and no name, expected one, as in 25 or 25@1/1007");
    headend.services[1].ask = false;
    EXPECT_EQ(failure_message([&] { demand_services({"2"}, "f", headend); }),
              "f: --must 2: found a service that is not asked for, expected one without \"ask\": false");
}

std::vector<int> values(Headend headend, const std::vector<std::string>& options) {
    EXPECT_EQ(value_services(options, headend), std::vector<std::string>());
    std::vector<int> all;
    for (const Service& service : headend.services)
        all.push_back(service.value);
    return all;
}

using Values = std::vector<int>;

TEST(ValueServices, SelectionsAsThoseOfOnly) {
    Headend headend = headend_of({service(1, 10), service(2, 10), service(3, 20)});
    headend.services[0].type = type_radio;
    headend.services[2].name = "a=5";
    EXPECT_EQ(values(headend, {}), (Values{1, 1, 1}));
    EXPECT_EQ(values(headend, {"radio=0"}), (Values{0, 1, 1}));
    EXPECT_EQ(values(headend, {"1/20,2=1000"}), (Values{1, 1000, 1000}));
    EXPECT_EQ(values(headend, {"name=a=5=7"}), (Values{1, 1, 7}));
    EXPECT_EQ(values(headend, {"1-3=4", "2=6"}), (Values{4, 6, 4})) << "the last counts";
    EXPECT_EQ(values(headend, {"2=6", "1-3=4"}), (Values{4, 4, 4}));
}

TEST(ValueServices, TellsWhatNoServiceMeets) {
    Headend headend = headend_of({service(1, 10)});
    EXPECT_EQ(value_services({"1=2", "radio=0", "9=1"}, headend),
              (std::vector<std::string>{"radio=0", "9=1"}));
}

TEST(ValueServices, Complaints) {
    Headend headend = headend_of({service(1, 10)});
    const auto complaint = [&headend](const std::string& value) {
        return failure_message([&] { value_services({value}, headend); });
    };
    EXPECT_EQ(complaint("hd"), "--value 'hd': found no \"=\", expected SELECTION=N, as in hd=3");
    for (const std::string number : {"1001", "-1", "x", "", "1.5", "70000"})
        EXPECT_EQ(complaint("hd=" + number), "--value 'hd=" + number + "': found \"" + number +
                                                 "\", expected a whole number from 0 to 1000");
    EXPECT_EQ(
        complaint("tele=3"),
        "--value 'tele=3': found \"tele\", expected tv, radio, hd, sd, scrambled, free, unknown, a stream "
        "as 1/1002, LCNs as 12 or 100-199, name=PATTERN or group=PATTERN with * and ?");
    EXPECT_EQ(headend.services[0].value, 1);
}

} // namespace
} // namespace zarven::tool::choice_wishes_test
