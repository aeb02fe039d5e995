// What would place a service, in words.

#include "report/remedy_text.h"

#include <gtest/gtest.h>

#include "report/fitting.h"
#include "report/result_fixture.h"

namespace zarven::tool::remedy_text_test {
namespace {

ServiceResult called(std::uint16_t lcn, const std::string& name) {
    ServiceResult service;
    service.lcn = lcn;
    service.name = name;
    return service;
}

Remedies one_of_each() {
    Remedies remedies;
    remedies.tried = 5;
    Remedy raised;
    raised.raise = some_advice().raises[0];
    raised.setting = raised.raise.setting;
    raised.placed = 5;
    raised.lost = {called(7, "Siete"), called(8, "Ocho\x1B")};
    Remedy withheld;
    withheld.kind = RemedyKind::withheld_service;
    withheld.withheld = called(9, "Nueve");
    withheld.setting = "services[3].ask=false";
    withheld.placed = 1;
    withheld.lost.assign(9, called(7, "Siete"));
    Remedy module;
    module.kind = RemedyKind::further_module;
    module.like = "M1";
    module.label = "Rack 1";
    module.placed = 6;
    remedies.found = {raised, withheld, module};
    return remedies;
}

TEST(RemedyText, OneOfEach) {
    EXPECT_EQ(
        remedies_text(one_of_each(), {}),
        "  Remedies, the smallest first (5 changes tried):\n"
        "    bitrate of output 10 from 38000 to 40001 on module M1 (Rack 1, slot 3): it is placed, 5 services in "
        "all; it costs 2 services: 7 \"Siete\", 8 \"Ocho\uFFFD\"; --set 'modules[0].outputs[1]=40001'.\n"
        "    without LCN 9 \"Nueve\": it is placed, 1 service in all; it costs 9 services: 7 \"Siete\", 7 "
        "\"Siete\", 7 \"Siete\", 7 \"Siete\", 7 \"Siete\", 7 \"Siete\", 7 \"Siete\", 7 \"Siete\" and 1 more; "
        "--set 'services[3].ask=false'.\n"
        "    one more module like M1 (Rack 1): it is placed, 6 services in all; no other service is lost.\n");
}

TEST(RemedyText, None) {
    EXPECT_EQ(remedies_text({{}, 1}, {}),
              "  Remedy: none found (1 change tried) with which it is placed and no limit broken.\n");
}

TEST(RemedyText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit([](const TextStyle& style) { return remedies_text(one_of_each(), style); });
}

} // namespace
} // namespace zarven::tool::remedy_text_test
