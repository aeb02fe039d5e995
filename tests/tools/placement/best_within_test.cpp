// The most within a ceiling beside all choices of a few things.

#include "placement/best_within.h"

#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace zarven::tool::best_within_test {
namespace {

using Things = std::vector<BestWithin::Thing>;

struct Sum {
    double worth = 0;
    std::uint64_t size = 0;
};

Sum sum_of(const Things& things, const std::vector<std::size_t>& places) {
    Sum sum;
    for (const std::size_t place : places) {
        sum.worth += things[place].worth;
        sum.size += things[place].size;
    }
    return sum;
}

double best_of_all(const Things& things, std::uint64_t ceiling) {
    double best = 0;
    for (unsigned choice = 0; choice < 1U << things.size(); ++choice) {
        std::vector<std::size_t> places;
        for (std::size_t place = 0; place < things.size(); ++place)
            if ((choice >> place & 1U) != 0)
                places.push_back(place);
        if (const Sum sum = sum_of(things, places); sum.size <= ceiling)
            best = std::max(best, sum.worth);
    }
    return best;
}

Things some(std::mt19937& numbers, std::uint32_t largest) {
    Things things(numbers() % 8);
    for (BestWithin::Thing& thing : things)
        thing = {1.0 + static_cast<double>(numbers() % 9),
                 static_cast<std::uint32_t>(numbers() % (largest + 1))};
    return things;
}

TEST(BestWithin, WhatTwoThingsTake) {
    BestWithin best;
    best.assign({{3, 5}, {2, 4}, {1, 0}});
    EXPECT_EQ(best.size_of_all(), 9u);
    EXPECT_EQ(best.worth(0), 1);
    EXPECT_EQ(best.worth(3), 1);
    EXPECT_EQ(best.worth(4), 3);
    EXPECT_EQ(best.worth(5), 4);
    EXPECT_EQ(best.worth(8), 4);
    EXPECT_EQ(best.worth(9), 6);
    EXPECT_EQ(best.worth(10000), 6);
    EXPECT_EQ(best.chosen(8), (std::vector<std::size_t>{2, 0}));
    best.assign({});
    EXPECT_EQ(best.worth(7), 0);
    EXPECT_TRUE(best.chosen(7).empty());
}

TEST(BestWithin, IsExactUpToAsManyUnitsAsItHas) {
    const auto worth_of_one = [](std::size_t things) {
        BestWithin best;
        best.assign(Things(things, {1, 1}));
        return best.worth(1);
    };
    EXPECT_EQ(worth_of_one(BestWithin::most_units - 1), 1);
    EXPECT_EQ(worth_of_one(BestWithin::most_units), 1);
    EXPECT_EQ(worth_of_one(BestWithin::most_units + 1), BestWithin::most_units + 1) << "half a unit each";
}

TEST(BestWithin, OfSmallSizesIsExact) {
    std::mt19937 numbers(1);
    BestWithin best;
    for (int round = 0; round < 500; ++round) {
        const Things things = some(numbers, 18);
        best.assign(things);
        const std::uint64_t ceiling = numbers() % 80;
        EXPECT_EQ(best.worth(ceiling), best_of_all(things, ceiling));
        const Sum sum = sum_of(things, best.chosen(ceiling));
        EXPECT_EQ(sum.worth, best.worth(ceiling));
        EXPECT_LE(sum.size, ceiling);
    }
}

TEST(BestWithin, OfLargeSizesIsNeverTooLowAndSeldomFarOff) {
    std::mt19937 numbers(2);
    BestWithin best;
    int exact = 0;
    const int rounds = 500;
    for (int round = 0; round < rounds; ++round) {
        const Things things = some(numbers, 60000);
        best.assign(things);
        const std::uint64_t ceiling = numbers() % 300000;
        const double all = best_of_all(things, ceiling);
        EXPECT_GE(best.worth(ceiling), all);
        EXPECT_EQ(sum_of(things, best.chosen(ceiling)).worth, best.worth(ceiling));
        exact += best.worth(ceiling) == all ? 1 : 0;
    }
    EXPECT_GT(exact, rounds * 9 / 10);
}

} // namespace
} // namespace zarven::tool::best_within_test
