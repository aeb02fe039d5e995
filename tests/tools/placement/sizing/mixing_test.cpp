// The cheapest mix of several kinds of module.

#include "placement/sizing/mixing.h"

#include <gtest/gtest.h>

#include "placement/sizing/sizing_by_hand.h"

namespace zarven::tool::mixing_test {
namespace {

using sizing_by_hand::choosing;
using sizing_by_hand::light;
using sizing_by_hand::one_module;
using sizing_by_hand::plain;
using sizing_by_hand::size;

/// How many of each kind the mix has.
std::vector<std::size_t> mixed(const Mix& mix) {
    std::vector<std::size_t> numbers;
    for (const MixPart& part : mix.kinds)
        if (part.number)
            numbers.push_back(*part.number);
    return numbers;
}

TEST(Sizing, TheCheapestMixOfSeveralKinds) {
    const host::Log no_log("");
    const Headend headend = one_module({light(1, 10), light(2, 20), light(3, 30), light(4, 40)});
    Module small = plain;
    small.price = 10;
    Module large = plain;
    large.inputs = 2;
    const auto mix_at = [&](std::uint32_t price, std::uint32_t most = 8, unsigned jobs = 2) {
        large.price = price;
        SizingOptions options;
        options.most = most;
        options.jobs = jobs;
        return *size_headend(headend, "f", {small, large}, options).mix;
    };
    EXPECT_EQ(mixed(mix_at(15)), (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(mix_at(15).price, 25u);
    EXPECT_EQ(mix_at(15).at_least, 25u);
    EXPECT_EQ(mix_at(15).outcome->placed, 4u);
    EXPECT_EQ(mixed(mix_at(21)), (std::vector<std::size_t>{3, 0}));
    EXPECT_EQ(mixed(mix_at(20)), (std::vector<std::size_t>{1, 1})) << "of equal prices fewer modules";
    EXPECT_EQ(mixed(mix_at(11)), (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(mixed(mix_at(9)), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(mixed(mix_at(9, 8, 5)), (std::vector<std::size_t>{0, 2}));
    Headend with_must = headend;
    with_must.services[3].must = true;
    EXPECT_EQ(mixed(*size_headend(with_must, "f", {small, large}, choosing()).mix),
              (std::vector<std::size_t>{0, 0}))
        << "chosen, it takes none";
    EXPECT_EQ(mixed(mix_at(21, 2)), (std::vector<std::size_t>{1, 1})) << "no more modules than that";
    const Mix none = mix_at(9, 1);
    EXPECT_FALSE(none.outcome);
    EXPECT_EQ(none.tried, 0u);
    const Sizing alone = size(headend, plain);
    EXPECT_FALSE(alone.mix);
    EXPECT_EQ(mixed(*size_headend(one_module({light(1, 10)}), "f", {small, large}, {}).mix),
              (std::vector<std::size_t>{0, 0}));
}

} // namespace
} // namespace zarven::tool::mixing_test
