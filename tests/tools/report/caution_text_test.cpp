// Cautions in words, few of each kind or all.

#include "report/caution_text.h"

#include <string>

#include <gtest/gtest.h>

#include "report/fitting.h"

namespace zarven::tool::caution_text_test {
namespace {

std::vector<Caution> cautions(CautionKind kind, std::size_t number) {
    std::vector<Caution> made;
    for (std::size_t index = 1; index <= number; ++index) {
        Caution caution;
        caution.kind = kind;
        caution.subject = "LCN " + std::to_string(index);
        caution.problem = "two have it\x1B";
        caution.is_broken = false;
        made.push_back(caution);
    }
    return made;
}

std::vector<Caution> joined(std::vector<Caution> first, const std::vector<Caution>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(CautionText, NoneIsNothing) {
    EXPECT_EQ(cautions_text({}, {}, Extent::few_of_each), "");
    EXPECT_EQ(closing_cautions_text({}, {}, Extent::all), "");
}

TEST(CautionText, ThreeOfAKindAreTold) {
    const std::string three = "  LCN 1: two have it\uFFFD\n"
                              "  LCN 2: two have it\uFFFD\n"
                              "  LCN 3: two have it\uFFFD\n";
    EXPECT_EQ(cautions_text(cautions(CautionKind::lcn_on_output, 2), {}, Extent::few_of_each),
              "Cautions: 2\n" + three.substr(0, three.find("  LCN 3")));
    EXPECT_EQ(cautions_text(cautions(CautionKind::lcn_on_output, 3), {}, Extent::few_of_each),
              "Cautions: 3\n" + three);
    EXPECT_EQ(cautions_text(cautions(CautionKind::lcn_on_output, 4), {}, Extent::few_of_each),
              "Cautions: 4\n" + three +
                  "  1 more, which --verbose tells: LCNs of several services on an output\n");
    EXPECT_EQ(closing_cautions_text(cautions(CautionKind::lcn_on_output, 4), {}, Extent::all, " after"),
              "\nCautions after: 4\n" + three + "  LCN 4: two have it\uFFFD\n");
}

TEST(CautionText, EachKindIsCountedByItself) {
    const std::vector<Caution> both =
        joined(cautions(CautionKind::sid_in_network, 5), cautions(CautionKind::name_in_network, 4));
    const std::string text = cautions_text(both, {}, Extent::few_of_each);
    EXPECT_NE(
        text.find("LCN 3: two have it\uFFFD\n  2 more, which --verbose tells: SIDs of services on different "
                  "outputs\n  LCN 1"),
        std::string::npos)
        << text;
    EXPECT_NE(
        text.find("LCN 3: two have it\uFFFD\n  1 more, which --verbose tells: names of services on different "
                  "outputs\n"),
        std::string::npos)
        << text;
}

TEST(CautionText, EveryKindHasItsName) {
    const auto name = [](CautionKind kind) {
        return std::string(groups_of(cautions(kind, 1), Extent::all).at(0).name);
    };
    EXPECT_EQ(name(CautionKind::no_room_for_tables), "outputs without room for tables");
    EXPECT_EQ(name(CautionKind::name_on_output), "names of several services on an output");
    EXPECT_EQ(name(CautionKind::lcn_in_network), "LCNs of services on different outputs");
}

TEST(CautionText, FitsTheTerminal) {
    expect_to_fit([](const TextStyle& style) {
        return cautions_text(cautions(CautionKind::lcn_on_output, 9), style, Extent::few_of_each);
    });
}

} // namespace
} // namespace zarven::tool::caution_text_test
