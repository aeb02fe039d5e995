// Groups and variants as text.

#include "report/groups_text.h"

#include <gtest/gtest.h>

namespace zarven::tool::groups_text_test {
namespace {

VariantResult variant(std::size_t place, std::size_t variants, bool is_placed) {
    VariantResult made;
    made.one_of = "ZDF";
    made.service.lcn = 6;
    made.service.name = "ZDF HD";
    made.service.stream = {1, 1011};
    made.place = place;
    made.variants = variants;
    made.is_placed = is_placed;
    return made;
}

TEST(GroupsText, AGroupALine) {
    EXPECT_EQ(groups_text({}, {}), "");
    const std::string text = groups_text({{"Sport", 3, 2}, {"News and more", 1, 1}}, {});
    EXPECT_EQ(text.find("Groups: 2\n"), 0u);
    EXPECT_NE(text.find("2 of 3 placed\n"), std::string::npos);
}

TEST(VariantsText, TheBestThatArePlacedAreCountedOnly) {
    EXPECT_EQ(variants_text({}, {}), "");
    EXPECT_EQ(variants_text({variant(1, 2, true)}, {}),
              "One of several is asked for in 1 group: 1 with the best variant placed\n");
    const std::string text =
        variants_text({variant(1, 2, true), variant(2, 2, true), variant(1, 1, false)}, {});
    EXPECT_EQ(
        text.find("One of several is asked for in 3 groups: 1 with the best variant placed; the others\n"),
        0u);
    EXPECT_NE(text.find("variant 2 of 2 of \"ZDF\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("the only variant of \"ZDF\", not placed\n"), std::string::npos) << text;
}

} // namespace
} // namespace zarven::tool::groups_text_test
