// The option --wish, of each command that has it.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::wish_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, RunAsksForWishesAlone) {
    const std::string headend = write("headend.json", two_streams);
    const std::string wishes = write("wishes.csv", "name,lcn\nB,7\nnobody,\n");
    const Outcome outcome = run("run --json " + headend + " --wish " + wishes);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, wishes + ": line 3: no service is called \"nobody\"\n" + wishes +
                               ": read as table: 2 wishes, of which 1 found, 1 not found\n");
    const json summary = json::parse(outcome.out).at("summary");
    EXPECT_EQ(summary.at("loaded"), 1);
    EXPECT_EQ(summary.at("not_asked_for"), 1);
    EXPECT_EQ(outcome.out.find("\"lcn\": 7"), std::string::npos);
    EXPECT_NE(run("run --json --wish-lcns " + headend + " --wish " + wishes).out.find("\"lcn\": 7"),
              std::string::npos);
    EXPECT_EQ(json::parse(run("run --json " + headend + " --wish " + wishes + " --exclude name=B").out)
                  .at("summary")
                  .at("loaded"),
              0);
}

TEST_F(CommandLine, WishesThatNobodyMeetsAreAFailure) {
    const Outcome outcome = run("run " + small + " --wish " + write("wishes", "nobody\n"));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("recalculo: none of the wishes is found, and nothing is asked for\n"),
              std::string::npos);
    expect_refused(run("run - --wish -", two_streams),
                   "standard input: found \"-\" for --wish and for something else, expected it once");
    expect_refused(run("run " + small + " --wish - --wish -"),
                   "standard input: found \"-\" for two --wish, expected it once");
    expect_refused(run("run " + small + " --select - --wish -", "Canal Uno\n"),
                   "standard input: found \"-\" for --select and for --wish, expected it once");
    const std::string no_list = "--wish-lcns: found no --wish, expected the list with the LCNs";
    expect_refused(run("run " + small + " --wish-lcns"), no_list);
    expect_refused(run("import " + examples + "/sample.lamedb --modules " + small + " --wish-lcns"), no_list);
}

TEST_F(CommandLine, ImportTakesOfTheWishesWhatElseIsWanted) {
    const std::string wishes = write("wishes", "[Radio]\nRadio Faro\n[TV]\ncanal norte\n");
    const std::string import =
        "import " + examples + "/sample.dvbv5.conf --modules " + small + " --wish " + wishes;
    // The group is that of the list, and the place in the list is the value, as for `run`.
    const Outcome outcome = run(import + " --only group=TV");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_NE(outcome.err.find("2 wishes, of which 2 found\n"), std::string::npos) << outcome.err;
    const json services = json::parse(outcome.out).at("services");
    ASSERT_EQ(services.size(), 1u);
    EXPECT_EQ(services.at(0).at("name"), "Canal Norte");
    EXPECT_EQ(services.at(0).value("value", 1), 1);
    const json first = json::parse(run(import + " --exclude group=TV").out).at("services");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first.at(0).at("value"), 2);
    const Outcome nothing = run(import + " --exclude tv,radio");
    EXPECT_EQ(nothing.code, 1);
    EXPECT_EQ(nothing.err.find("no service is called"), std::string::npos) << nothing.err;
}

TEST_F(CommandLine, ImportTakesWishesInTheirOrder) {
    const std::string wishes = write("wishes", "[Radio]\nRadio Faro\n[TV]\ncanal norte\nRia Cultura\n");
    const Outcome outcome = run("import " + examples + "/sample.dvbv5.conf --modules " + small + " --wish " +
                                wishes + " --wish-lcns");
    EXPECT_EQ(outcome.code, 0);
    std::vector<std::string> told;
    const json headend = json::parse(outcome.out);
    for (const json& service : headend.at("services"))
        told.push_back(service.at("name").get<std::string>() + " " + service.at("lcn").dump() + " " +
                       service.value("group", "") + " " + std::to_string(service.value("value", 1)));
    EXPECT_EQ(told,
              (std::vector<std::string>{"Radio Faro 1 Radio 3", "Canal Norte 2 TV 2", "Ría Cultura 3 TV 1"}));
    EXPECT_NE(outcome.err.find("1 service not wanted\n"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find("\"Ria Cultura\" is taken for \"Ría Cultura\""), std::string::npos);
}

TEST_F(CommandLine, EveryCommandAsksForOneOfAGroup) {
    const std::string headend = small + " --set 'services[0].one_of=X' --set 'services[3].one_of=X' ";
    const std::string figures = "11 services loaded, 1 not asked for: ";
    const auto tells = [this](const std::string& arguments, const std::string& text) {
        const Outcome outcome = run(arguments);
        return (outcome.out + outcome.err).find(text) != std::string::npos;
    };
    EXPECT_TRUE(tells("run " + headend,
                      "\nOne of several is asked for in 1 group: 1 with the best variant placed\n"));
    EXPECT_TRUE(tells("run --summary " + headend, figures + "10 placed, 1 left out;"));
    EXPECT_TRUE(
        tells("explain --service 1 " + headend,
              "\"Canal Uno\" (LCN 1, stream 1/1001) is not asked for: another of its group \"X\" is asked "
              "for, \"Canal Dos HD\" (LCN 12, stream 1/1002)\n"));
    EXPECT_TRUE(tells("bound " + headend, figures + "no arrangement places more than 10,"));
    EXPECT_TRUE(tells("size --most 0 --add " + examples + "/module.json " + headend, figures));
    EXPECT_TRUE(tells("drill " + headend, figures));
    EXPECT_TRUE(tells("compare " + small + " " + headend, "10 of 11 services placed, 1 not asked for\n"));
    EXPECT_TRUE(
        tells("choose --runs 100 --jobs 1 " + headend, "\nOne of several is asked for in 1 group: 1 with"));
}

TEST_F(CommandLine, ChooseWritesWhatIsWished) {
    const std::string headend = write("headend.json", two_streams);
    const std::string wishes = write("wishes.csv", "name,lcn,group\nB,7,Best\n");
    const Outcome outcome =
        run("choose --runs 10 --jobs 1 " + headend + " --wish-lcns --wish " + wishes + " -o -");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    const json services = json::parse(outcome.out).at("services");
    EXPECT_EQ(services.at(0).at("ask"), false);
    EXPECT_EQ(services.at(1).value("ask", true), true);
    EXPECT_EQ(services.at(1).at("lcn"), 7);
    EXPECT_EQ(services.at(1).at("group"), "Best");
}

} // namespace
} // namespace zarven::tool::wish_test
