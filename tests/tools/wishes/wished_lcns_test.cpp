// LCNs taken over from wish lists. Within a stream they are the engine's keys.

#include <gtest/gtest.h>

#include "report/wishing_text.h"
#include "wishes/made_wishes.h"
#include "wishes/wishing.h"

namespace zarven::tool::wished_lcns_test {
namespace {

using Lcns = std::vector<std::uint16_t>;
using Lines = std::vector<std::string>;

struct Numbered {
    Headend headend;
    Lines messages;

    Lcns lcns() const {
        Lcns lcns;
        for (const Service& service : headend.services)
            lcns.push_back(service.lcn);
        return lcns;
    }
};

Numbered numbered(const Lines& texts, Headend headend) {
    const std::vector<WishList> lists = made_lists(texts);
    Wishing wishing = find_wishes(lists, headend.services, {});
    number_wishes(lists, wishing, headend);
    const Lines messages = lcn_messages(lists, headend.services, wishing, MessageDigest::Extent::all);
    return {std::move(headend), messages};
}

Headend three() {
    Headend headend;
    headend.services = {made_service("A", 1, 1001, 101), made_service("B", 2, 1001, 102),
                        made_service("C", 3, 1002, 103)};
    return headend;
}

TEST(WishedLcns, AreThoseOfTheTable) {
    const Numbered made = numbered({"name,lcn\nC,7\nA,65535\n"}, three());
    EXPECT_EQ(made.lcns(), (Lcns{65535, 2, 7}));
    EXPECT_EQ(made.messages, Lines{"list1: LCN of 2 services taken over"});
}

TEST(WishedLcns, WithoutThemPlacesCountOverAllLists) {
    EXPECT_EQ(numbered({"B\nNadie\n", "A\nC\n"}, three()).lcns(), (Lcns{3, 1, 4}));
}

TEST(WishedLcns, MayBeExchangedWithinAStream) {
    const Numbered made = numbered({"name,lcn\nA,2\nB,1\n"}, three());
    EXPECT_EQ(made.lcns(), (Lcns{2, 1, 3}));
    EXPECT_EQ(made.messages.size(), 1u);
}

TEST(WishedLcns, GiveWayToAServiceOfTheStreamThatKeepsIt) {
    const Numbered made = numbered({"name,lcn\nA,2\n"}, three());
    EXPECT_EQ(made.lcns(), (Lcns{1, 2, 3}));
    EXPECT_EQ(made.messages, (Lines{"list1: line 2: \"A\" keeps LCN 1, because \"B\" of its stream has LCN 2",
                                    "list1: LCN of 0 services taken over"}));
}

TEST(WishedLcns, OfTwoTheFirstOfTheListHasIt) {
    const Numbered made = numbered({"name,lcn\nB,9\nA,9\n"}, three());
    EXPECT_EQ(made.lcns(), (Lcns{1, 9, 3}));
    EXPECT_EQ(made.messages.front(),
              "list1: line 3: \"A\" keeps LCN 1, because \"B\" of its stream has LCN 9");
}

TEST(WishedLcns, OneThatGivesWayMayTakeWhatAnotherWished) {
    Headend headend = three();
    headend.services[2].tsid = 1001;
    // A keeps 1, because B keeps 2, because C keeps 3.
    const Numbered made = numbered({"name,lcn\nA,2\nB,3\n"}, headend);
    EXPECT_EQ(made.lcns(), (Lcns{1, 2, 3}));
    EXPECT_EQ(made.messages.size(), 3u);
}

TEST(WishedLcns, ThatStandInTwoStreamsAreTold) {
    const Numbered made = numbered({"name,lcn\nA,3\nC,3\n"}, three());
    EXPECT_EQ(made.lcns(), (Lcns{3, 2, 3}));
    EXPECT_EQ(made.messages.front(), "list1: LCN 3 is that of \"A\" and of \"C\", in two streams");
}

TEST(WishedLcns, VariantsMayShareTheirs) {
    Headend headend = three();
    headend.services[0].one_of = headend.services[2].one_of = "X";
    const Numbered made = numbered({"name,lcn\nA,3\nC,3\n"}, headend);
    EXPECT_EQ(made.lcns(), (Lcns{3, 2, 3}));
    EXPECT_EQ(made.messages.size(), 1u);
    headend.services[2].one_of = "Y";
    EXPECT_EQ(numbered({"name,lcn\nA,3\nC,3\n"}, headend).messages.size(), 2u);
}

TEST(WishedLcns, TakeClonesAlong) {
    Headend headend = three();
    headend.clones.resize(2);
    for (Clone& clone : headend.clones)
        clone.onid = 1;
    headend.clones[0].tsid = 1001;
    headend.clones[0].lcn = 1;
    headend.clones[1].tsid = 1002;
    headend.clones[1].lcn = 1;
    const Numbered made = numbered({"name,lcn\nA,2\nB,1\n"}, headend);
    EXPECT_EQ(made.headend.clones[0].lcn, 2);
    EXPECT_EQ(made.headend.clones[1].lcn, 1);
}

TEST(WishedLcns, AKeyOfTwoStaysTheirs) {
    Headend headend = three();
    headend.services[1].lcn = 1;
    const Numbered made = numbered({"name,lcn\nA,7\n"}, headend);
    EXPECT_EQ(made.lcns(), (Lcns{1, 1, 3}));
    EXPECT_EQ(made.messages.front(),
              "list1: line 2: \"A\" keeps LCN 1, because another service of its stream has the same");
}

} // namespace
} // namespace zarven::tool::wished_lcns_test
