// Keys from the command line, and what they find.

#include "placement/service_query.h"

#include "failure_message.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool {
namespace {

TEST(ServiceQueryText, AnLcn) {
    EXPECT_EQ(parse_service_query("0").lcn, 0);
    EXPECT_EQ(parse_service_query("65535").lcn, 65535);
    EXPECT_FALSE(parse_service_query("25").stream);
}

TEST(ServiceQueryText, AnLcnAndItsStream) {
    const ServiceQuery query = parse_service_query("25@1/65535");
    EXPECT_EQ(query.lcn, 25);
    ASSERT_TRUE(query.stream);
    EXPECT_EQ(to_string(*query.stream), "1/65535");
}

TEST(ServiceQueryText, AnythingElseIsRefused) {
    for (const std::string text : {"", "x", "-1", "+1", " 1", "1 ", "65536", "25@", "25@1", "25@1/", "25@/1",
                                   "25@1/2/3", "25@1/65536", "25/1/2", "@1/2"})
        EXPECT_EQ(failure_message([&] { parse_service_query(text); }),
                  "--service " + text + ": found \"" + text +
                      "\", expected an LCN, or LCN@ONID/TSID, as in 25@1/1007; each number at most 65535");
}

class ServicesWith : public EngineByHand {
protected:
    ServicesWith() {
        load({1}, {service(5, 10), service(5, 20), service(9, 20)}, {clone_of(service(5, 20))});
    }

    std::vector<std::shared_ptr<tRec_Servicio>> find(const std::string& query) {
        return services_with(parse_service_query(query), run, "f");
    }
    std::string complaint(const std::string& query) {
        return failure_message([&] { find(query); });
    }
};

TEST_F(ServicesWith, AnLcnFindsAllThatHaveIt) {
    EXPECT_EQ(find("9"), std::vector{loaded(2)});
    EXPECT_EQ(find("5"), (std::vector{loaded(0), loaded(1), run.clones.at(0)}));
}

TEST_F(ServicesWith, AStreamTellsThemApart) {
    EXPECT_EQ(find("5@1/10"), std::vector{loaded(0)});
    EXPECT_EQ(find("5@1/20"), (std::vector{loaded(1), run.clones.at(0)}));
}

TEST_F(ServicesWith, NobodyHasTheLcn) {
    EXPECT_EQ(complaint("4"), "f: --service 4: no service has the LCN 4; the nearest is 5");
    EXPECT_EQ(complaint("6"), "f: --service 6: no service has the LCN 6; the nearest are 5 and 9");
    EXPECT_EQ(complaint("10@1/10"), "f: --service 10@1/10: no service has the LCN 10; the nearest is 9");
    load({1}, {});
    EXPECT_EQ(complaint("6"), "f: --service 6: no service has the LCN 6; the head-end has no services");
}

TEST_F(ServicesWith, TheStreamDoesNotHaveTheLcn) {
    EXPECT_EQ(complaint("9@1/10"),
              "f: --service 9@1/10: no service of stream 1/10 has the LCN 9; it is in stream "
              "1/20");
    EXPECT_EQ(complaint("5@2/10"),
              "f: --service 5@2/10: no service of stream 2/10 has the LCN 5; it is in stream "
              "1/10, 1/20");
}

} // namespace
} // namespace zarven::tool
