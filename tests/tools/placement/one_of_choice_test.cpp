// One-of groups in the search for what to ask for, and in what is told of it.

#include <gtest/gtest.h>

#include "placement/choosing/choice.h"
#include "placement/made_services.h"
#include "placement/one_of.h"
#include "placement/running/host.h"
#include "report/choice_text.h"

namespace zarven::tool::one_of_choice_test {
namespace {

using Flags = std::vector<bool>;

Service variant(std::uint16_t lcn, std::uint16_t tsid, const std::string& one_of, std::uint32_t bitrate) {
    Service made = service(lcn, tsid, bitrate);
    made.one_of = one_of;
    return made;
}

class OneOfChoice : public testing::Test {
protected:
    OneOfChoice() { headend.modules.push_back({"A", 3, true, 2, {10000}, 8, 0, 0, 0}); }

    Choice chosen(std::uint64_t runs = 2000) const {
        ChoosingLimits limits;
        limits.time = std::chrono::hours(1);
        limits.runs = runs;
        return choose_services(headend, limits, {}, [](const ChoosingProgress&) { return true; });
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
