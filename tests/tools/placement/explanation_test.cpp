// Where a service stands, and which modules are listed.

#include "placement/reasons/explanation.h"

#include "placement/engine_by_hand.h"

namespace zarven::tool::explanation_test {
namespace {

class Explain : public EngineByHand {
protected:
    Explanation explain(const std::shared_ptr<tRec_Servicio>& service,
                        Listing listing = Listing::all_modules) {
        return Explainer(run, listing).explain(service);
    }

    /// The engine logs what it is asked.
    const host::Log silence{""};
};

TEST_F(Explain, AServiceThatIsLeftOut) {
    load({1}, {service(1, 10)});
    leave_out(loaded(0));
    const Explanation explanation = explain(loaded(0));
    EXPECT_EQ(explanation.service.lcn, 1);
    EXPECT_EQ(explanation.standing, Standing::left_out);
    EXPECT_EQ(explanation.sentence,
              "Module A has a free input and room: the engine's strategies did not use it.");
    ASSERT_EQ(explanation.modules.size(), 1u);
    EXPECT_TRUE(explanation.modules[0].engine_has_room());
}

TEST_F(Explain, AServiceThatIsPlaced) {
    load({1}, {transcoded(service(1, 10), 2)});
    place("A", loaded(0), 1, 1);
    const Explanation explanation = explain(loaded(0));
    EXPECT_EQ(explanation.standing, Standing::placed);
    EXPECT_EQ(explanation.transcoding, 2);
    EXPECT_EQ(explanation.sentence, "It is placed on module A, output 1.");
}

TEST_F(Explain, AServiceThatIsBothAndOneThatIsNeither) {
    load({1}, {service(1, 10), service(2, 10)});
    module("A").addService(loaded(0), 1, 1);
    leave_out(loaded(0));
    EXPECT_EQ(explain(loaded(0)).standing, Standing::placed_and_left_out);
    EXPECT_EQ(explain(loaded(0)).sentence,
              "It is on module A, output 1 all the same: the engine has placed it and left it out.");
    EXPECT_EQ(explain(loaded(1)).standing, Standing::neither);
    EXPECT_EQ(explain(loaded(1)).sentence,
              "It is neither placed nor left out: the engine's exchanges have lost it.");
}

TEST_F(Explain, AServiceThatNoInputReceives) {
    load({1, 1}, {service(1, 10)});
    run.labels["A"] = "Rack 1";
    put_on_output("A", loaded(0), 1);
    EXPECT_EQ(explain(loaded(0)).standing, Standing::neither);
    EXPECT_EQ(explain(loaded(0)).sentence,
              "It is on output 1 of module A (Rack 1) after the engine's exchanges, "
              "and on no input there that receives stream 1/10.");
    put_on_output("B", loaded(0), 1);
    EXPECT_NE(explain(loaded(0)).sentence.find("output 1 of module A (Rack 1) and output 1 of module B"),
              std::string::npos);
}

TEST_F(Explain, Clones) {
    load({1}, {service(1, 10)}, {clone_of(service(1, 10))});
    leave_out(loaded(0));
    EXPECT_EQ(explain(run.clones[0]).standing, Standing::waiting);
    EXPECT_EQ(explain(run.clones[0]).sentence, "Its parent, LCN 1 \"S1\", is left out.");
    EXPECT_TRUE(explain(run.clones[0]).service.is_clone);
    EXPECT_TRUE(explain(run.clones[0]).modules.empty());
    tune("A", 1, 10);
    module("A").addService(run.clones[0], 1, 1);
    run.engine.listaServiciosClonados.clear();
    EXPECT_EQ(explain(run.clones[0]).standing, Standing::attached);
    EXPECT_EQ(explain(run.clones[0]).sentence, "It stands beside its parent on module A, output 1.");
}

TEST_F(Explain, ModulesWithoutInputNeedNotBeListed) {
    load({1, 1, 1, 1}, {service(1, 10)});
    for (const char* mac : {"A", "C", "D"})
        occupy(mac);
    module("D").addService(loaded(0), 1, 1);
    EXPECT_EQ(explain(loaded(0)).modules.size(), 4u);
    EXPECT_EQ(explain(loaded(0)).unlisted, 0u);
    const Explanation brief = explain(loaded(0), Listing::with_an_input);
    ASSERT_EQ(brief.modules.size(), 2u);
    EXPECT_EQ(brief.modules[0].mac, "B");
    EXPECT_EQ(brief.modules[1].mac, "D");
    EXPECT_EQ(brief.unlisted, 2u);
}

TEST_F(Explain, TheEngineHasRoomWhateverTheInputsReceive) {
    ModuleRefusal answer;
    answer.limit = Limit::no_input;
    EXPECT_TRUE(answer.engine_has_room());
    answer.room.limit = Limit::pids;
    EXPECT_FALSE(answer.engine_has_room());
}

std::vector<std::string> problems_of(const Explanation& explanation) {
    std::vector<std::string> problems;
    for (const Finding& finding : explanation.findings)
        problems.push_back(finding.problem);
    return problems;
}

TEST_F(Explain, WhatTheAuditFoundAboutTheService) {
    load({1}, {service(1, 10), service(2, 10)});
    module("A").addService(loaded(0), 1, 1);
    tune("A", 1, 10);
    leave_out(loaded(0));
    EXPECT_EQ(problems_of(explain(loaded(0))),
              std::vector<std::string>{"placed and left out at once, it is on output 1 of module A"});
    EXPECT_EQ(problems_of(explain(loaded(1))), std::vector<std::string>{"neither placed nor left out"});
    EXPECT_EQ(texts_of(Explainer(run, Listing::all_modules).findings()), texts_of(audit(run)));
}

} // namespace
} // namespace zarven::tool::explanation_test
