// Keys from the command line, and what they find.

#include "placement/service_query.h"

#include "failure_message.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::service_query_test {
namespace {

TEST(ServiceQueryText, AnLcn) {
    EXPECT_EQ(parse_service_query("0").lcn, 0);
    EXPECT_EQ(parse_service_query("65535").lcn, 65535);
    EXPECT_FALSE(parse_service_query("65536").lcn);
    EXPECT_FALSE(parse_service_query("25").stream);
}

TEST(ServiceQueryText, AnLcnAndItsStream) {
    const ServiceQuery query = parse_service_query("25@1/65535");
    EXPECT_EQ(query.lcn, 25);
    ASSERT_TRUE(query.stream);
    EXPECT_EQ(to_string(*query.stream), "1/65535");
}

TEST(ServiceQueryText, AnythingElseIsAName) {
    for (const std::string text : {"x", "-1", "+1", " 1", "1 ", "65536", "25@", "25@1", "25@1/", "25@/1",
                                   "25@1/65536", "25/1/2", "Canal@2"}) {
        const ServiceQuery query = parse_service_query(text);
        EXPECT_EQ(query.name, text);
        EXPECT_FALSE(query.lcn);
        EXPECT_FALSE(query.stream);
    }
}

TEST(ServiceQueryText, ANameAndItsStream) {
    const ServiceQuery query = parse_service_query("Canal@2 Uno@1/65535");
    EXPECT_EQ(query.name, "Canal@2 Uno");
    EXPECT_FALSE(query.lcn);
    ASSERT_TRUE(query.stream);
    EXPECT_EQ(to_string(*query.stream), "1/65535");
}

TEST(ServiceQueryText, NothingIsRefused) {
    EXPECT_EQ(failure_message([] { parse_service_query(""); }),
              "--service \"\": found no LCN and no name, expected one, as in 25 or 25@1/1007");
    EXPECT_EQ(failure_message([] { parse_service_query("@1/2"); }),
              "--service @1/2: found no LCN and no name, expected one, as in 25 or 25@1/1007");
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

TEST(ServicesWithheld, AreTold) {
    Headend headend;
    headend.services = {service(5, 10), service(6, 20), service(7, 20)};
    headend.services[1].ask = false;
    headend.clones = {clone_of(service(6, 20))};
    const EngineRun run = load_engine(headend, "f");
    const auto complaint = [&](const std::string& query) {
        return failure_message([&] { services_with(parse_service_query(query), run, "f", headend); });
    };
    EXPECT_EQ(services_with(parse_service_query("5"), run, "f", headend).size(), 1u);
    const std::string withheld =
        "\"S6\" (LCN 6, stream 1/20) is not asked for: it, or the service that it is a "
        "clone of, has \"ask\": false";
    EXPECT_EQ(complaint("6"), "f: --service 6: " + withheld);
    EXPECT_EQ(complaint("S6@1/20"), "f: --service S6@1/20: " + withheld);
    EXPECT_EQ(complaint("copy"), "f: --service copy: " + withheld);
    EXPECT_EQ(complaint("9"), "f: --service 9: no service has the LCN 9; the nearest is 7");
    headend.services[1].ask = true;
    EXPECT_EQ(services_with(parse_service_query("6"), load_engine(headend, "f"), "f", headend).size(), 2u);
}

TEST_F(ServicesWith, AnLcnFindsAllThatHaveIt) {
    EXPECT_EQ(find("9"), std::vector{loaded(2)});
    EXPECT_EQ(find("5"), (std::vector{loaded(0), loaded(1), run.clones.at(0)}));
}

TEST_F(ServicesWith, AStreamTellsThemApart) {
    EXPECT_EQ(find("5@1/10"), std::vector{loaded(0)});
    EXPECT_EQ(find("5@1/20"), (std::vector{loaded(1), run.clones.at(0)}));
}

TEST_F(ServicesWith, ANameAsReceivedOrAsSent) {
    EXPECT_EQ(find("S9"), std::vector{loaded(2)});
    EXPECT_EQ(find("S5"), (std::vector{loaded(0), loaded(1), run.clones.at(0)}));
    EXPECT_EQ(find("S5@1/10"), std::vector{loaded(0)});
    loaded(2)->NombreSalida = "Nueve";
    EXPECT_EQ(find("Nueve"), std::vector{loaded(2)});
    // A clone is found by its own name, too, and then without its parent.
    run.clones.at(0)->NombreSalida = "Bienvenida";
    EXPECT_EQ(find("Bienvenida"), std::vector{run.clones.at(0)});
}

TEST_F(ServicesWith, ANameThatLooksLikeSomethingElse) {
    loaded(0)->NombreEntrada = "24";
    loaded(1)->NombreSalida = "24@1/10";
    EXPECT_EQ(find("24"), std::vector{loaded(0)});
    EXPECT_EQ(find("24@1/10"), std::vector{loaded(0)}); // that name in that stream comes first
    EXPECT_EQ(find("24@1/10@1/20"), (std::vector{loaded(1), run.clones.at(0)}));
    loaded(0)->NombreEntrada = "Canal";
    EXPECT_EQ(find("24@1/10"), (std::vector{loaded(1), run.clones.at(0)}));
    // An LCN comes before a name.
    loaded(0)->NombreEntrada = "9";
    EXPECT_EQ(find("9"), std::vector{loaded(2)});
}

TEST_F(ServicesWith, NamesAsSentAndThoseOfClonesAreKnownToMessages) {
    loaded(2)->NombreSalida = "Nueve";
    run.clones.at(0)->NombreSalida = "Bienvenida";
    EXPECT_EQ(complaint("Nuevo"),
              "f: --service Nuevo: no service is called \"Nuevo\"; did you mean \"Nueve\"?");
    EXPECT_EQ(complaint("bienvenida"),
              "f: --service bienvenida: no service is called \"bienvenida\"; did you mean \"Bienvenida\"?");
    EXPECT_EQ(complaint("Bienvenida@1/10"),
              "f: --service Bienvenida@1/10: no service of stream 1/10 is called "
              "\"Bienvenida\"; it is in stream 1/20");
}

TEST_F(ServicesWith, OfManySimilarNamesThreeAreTold) {
    load({1}, {service(1, 10), service(2, 10), service(3, 10), service(4, 10), service(5, 10)});
    for (std::size_t index = 0; index < 5; ++index)
        loaded(index)->NombreEntrada = loaded(index)->NombreSalida = "Canal " + std::to_string(index);
    EXPECT_EQ(complaint("canal"),
              "f: --service canal: no service is called \"canal\"; did you mean \"Canal 0\" or "
              "\"Canal 1\" or \"Canal 2\", or 2 more?");
}

TEST_F(ServicesWith, NobodyHasTheName) {
    loaded(0)->NombreEntrada = "Canal Uno";
    loaded(2)->NombreEntrada = "Canal Dos";
    EXPECT_EQ(complaint("canal"), "f: --service canal: no service is called \"canal\"; did you mean \"Canal "
                                  "Dos\" or \"Canal Uno\"?");
    EXPECT_EQ(complaint("Canel Dos"),
              "f: --service Canel Dos: no service is called \"Canel Dos\"; did you mean \"Canal Dos\"?");
    const std::string expected =
        "; expected an LCN up to 65535 or a whole name, and @ONID/TSID behind it for one "
        "stream only, as in 25@1/1007";
    for (const std::string name : {"65536", "9@1", "al", " "}) {
        const std::string message = complaint(name);
        EXPECT_EQ(message, "f: --service " + name + ": no service is called \"" + name + "\"" + expected);
    }
}

TEST_F(ServicesWith, TheStreamDoesNotHaveTheName) {
    EXPECT_EQ(complaint("S9@1/10"),
              "f: --service S9@1/10: no service of stream 1/10 is called \"S9\"; it is in stream 1/20");
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
} // namespace zarven::tool::service_query_test
