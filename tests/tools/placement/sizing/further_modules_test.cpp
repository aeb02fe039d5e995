// Modules that a head-end does not have yet.

#include "placement/sizing/further_modules.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::further_modules_test {
namespace {

using sizing_by_hand::plain;

std::vector<std::string> macs_added(const std::vector<std::string>& macs, std::size_t number) {
    Headend headend;
    for (const std::string& mac : macs) {
        headend.modules.push_back(plain);
        headend.modules.back().mac = mac;
    }
    std::vector<std::string> added;
    const Headend changed = with_modules(headend, plain, number);
    for (std::size_t module = macs.size(); module < changed.modules.size(); ++module) {
        EXPECT_FALSE(changed.modules[module].controller);
        added.push_back(changed.modules[module].mac);
    }
    std::vector<std::string> all = macs;
    std::sort(all.begin(), all.end());
    all.insert(all.end(), added.begin(), added.end());
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
    return added;
}

TEST(WithModules, TheyHaveNoLabel) {
    Module labelled = plain;
    labelled.label = "Rack 1";
    EXPECT_EQ(with_modules({}, labelled, 2).modules[1].label, "");
}

TEST(WithModules, TheirMacsFollowAllOthers) {
    EXPECT_EQ(macs_added({"02:00:0A", "02:00:09"}, 2), (std::vector<std::string>{"02:00:0B", "02:00:0C"}));
    EXPECT_EQ(macs_added({"02:aa:0f"}, 2), (std::vector<std::string>{"02:aa:10", "02:aa:11"}));
    EXPECT_EQ(macs_added({"02:00:FE"}, 3),
              (std::vector<std::string>{"02:00:FF", "02:00:FF:01", "02:00:FF:02"}));
    EXPECT_EQ(macs_added({"Casa"}, 2), (std::vector<std::string>{"Casa:01", "Casa:02"}));
    EXPECT_EQ(macs_added({"aA"}, 1), std::vector<std::string>{"ab"});
    EXPECT_EQ(macs_added({}, 1), std::vector<std::string>{":01"});
    EXPECT_EQ(macs_added({"M"}, 300).size(), 300u);
}

} // namespace
} // namespace zarven::tool::further_modules_test
