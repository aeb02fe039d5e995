// `recalculo size`.

#include "commands/on_a_terminal.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::size_test {
namespace {

using nlohmann::json;

const std::string without_services =
    R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 1, "outputs": [5000], "pids_max": 0}]})";

TEST_F(CommandLine, SizeTellsHowManyModulesAreNeeded) {
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [5000], "pids_max": 0})");
    const Outcome outcome = run("size - --add " + kind, two_streams);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "") << "progress is for terminals";
    EXPECT_NE(outcome.out.find("  1 more module: the engine then places everything.\n"), std::string::npos)
        << outcome.out;
    const json report = json::parse(run("size - --json --jobs 3 --add " + kind, two_streams).out);
    EXPECT_EQ(report.at("add").at("number"), 1);
    EXPECT_TRUE(json::parse(run("size - --json --most 0 --add " + kind, two_streams).out)
                    .at("add")
                    .at("number")
                    .is_null());
    const std::string dear =
        write("dear.json", R"({"inputs": 8, "outputs": [50000], "pids_max": 0, "price": 100})");
    const json mix =
        json::parse(run("size - --json --add " + dear + " --add " + kind, two_streams).out).at("mix");
    EXPECT_EQ(mix.at("price"), 1) << mix;
    EXPECT_EQ(mix.at("kinds").at(0).at("number"), 0);
    EXPECT_EQ(mix.at("kinds").at(1).at("number"), 1);
    const std::string whole = write("whole.json", without_services);
    EXPECT_EQ(json::parse(run("size - --json --add " + whole, two_streams).out).at("add").at("number"), 1);
}

TEST_F(CommandLine, SizeTellsWhichKindHasNoPriceBesideOthers) {
    const std::string limits = R"("inputs": 1, "outputs": [50000], "pids_max": 0)";
    const std::string dear = write("dear.json", "{" + limits + R"(, "price": 10})");
    const std::string bare = write("bare.json", "{" + limits + "}");
    const std::string whole = write("whole.json", R"({"modules": [{"mac": "M", )" + limits + "}]}");
    const std::string whole_dear =
        write("whole_dear.json", R"({"modules": [{"mac": "M", "price": 1, )" + limits + "}]}");
    const auto told = [this](const std::string& kinds) { return run("size -" + kinds, two_streams).err; };
    const std::string problem =
        ": the kind has no price, and one of it counts as 1 beside kinds that have one\n";
    EXPECT_EQ(told(" --add " + dear + " --add " + bare), bare + problem);
    EXPECT_EQ(told(" --add " + whole + " --add " + whole_dear + " --add " + bare),
              whole + problem + bare + problem);
    EXPECT_EQ(told(" --add " + dear + " --add " + whole_dear), "");
    EXPECT_EQ(told(" --add " + bare + " --add " + whole), "") << "all count the same";
    EXPECT_EQ(told(" --add " + bare), "");
}

TEST_F(CommandLine, SizeSteersWhatIsAskedFor) {
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [50000], "pids_max": 0})");
    // The engine takes the larger stream, and the other one is the must.
    const std::string headend = R"({"modules": [{"mac": "M", "controller": true, "inputs": 1,
        "outputs": [50000], "pids_max": 0}], "services": [
        {"lcn": 1, "name": "a", "onid": 1, "tsid": 10, "sid": 1, "must": true},
        {"lcn": 2, "name": "b", "onid": 1, "tsid": 20, "sid": 2},
        {"lcn": 3, "name": "c", "onid": 1, "tsid": 20, "sid": 3}]})";
    const json asked_for_all = json::parse(run("size - --json --add " + kind, headend).out);
    EXPECT_EQ(asked_for_all.at("choose"), false);
    EXPECT_EQ(asked_for_all.at("add").at("number"), 1);
    const json chosen = json::parse(run("size - --json --choose --add " + kind, headend).out);
    EXPECT_EQ(chosen.at("choose"), true);
    EXPECT_EQ(chosen.at("add").at("number"), 0);
    EXPECT_EQ(chosen.at("add").at("tried").at(0).at("withheld"), 1);
    EXPECT_EQ(chosen.at("add").at("tried").at(0).at("missing"), 0);
    EXPECT_EQ(asked_for_all.at("add").at("withheld").size(), 0u);
    EXPECT_EQ(asked_for_all.at("mix"), nullptr);
    const json mixed =
        json::parse(run("size - --json --choose --add " + kind + " --add " + kind, headend).out);
    EXPECT_EQ(mixed.at("mix").at("withheld"), mixed.at("add").at("withheld"));
    // Without them the engine places what the answer says.
    const json& withheld = chosen.at("add").at("withheld");
    ASSERT_EQ(withheld.size(), 1u);
    json without = json::parse(headend);
    for (json& service : without["services"])
        service["ask"] = service.at("lcn") != withheld.at(0).at("lcn");
    EXPECT_EQ(json::parse(run("run --json -", without.dump()).out).at("summary").at("musts_placed"), 1);
    const std::string text = run("size - --choose --add " + kind + " --add " + kind, headend).out;
    EXPECT_NE(text.find("\n\nWithheld: 1 service\n     "), std::string::npos) << text;
    EXPECT_NE(text.find("\n\nWithheld with the mix: 1 service\n     "), std::string::npos) << text;
    EXPECT_EQ(run("size - --add " + kind, headend).out.find("Withheld"), std::string::npos);
}

TEST_F(OnATerminal, SizeTellsItsRuns) {
    // Each module has room for one of them, while by the total of bitrates fewer modules would do. So the
    // search has much to try.
    json headend = json::parse(
        R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 1, "outputs": [100],
        "pids_max": 0}], "services": []})");
    for (int lcn = 1; lcn <= 300; ++lcn)
        headend["services"].push_back({{"lcn", lcn},
                                       {"name", "s"},
                                       {"onid", 1},
                                       {"tsid", 10},
                                       {"sid", lcn},
                                       {"bitrate", lcn == 1 ? 1 : 60}});
    const std::string crowded = write("crowded.json", headend.dump());
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [100], "pids_max": 0})");
    start({"size", "--most", "10000", "--jobs", "1", crowded, "--add", kind});
    expect_runs_until_control_c();
}

TEST_F(CommandLine, SizeRefuses) {
    const std::string headend = write("headend.json", two_streams);
    expect_refused(run("size - --add -", two_streams),
                   "standard input: found \"-\" for the head-end and for --add, expected it once");
    expect_refused(run("size " + headend + " --add " + small),
                   small + ": /modules: found a list of 3 entries, expected just one module");
    expect_refused(
        run("size " + headend + " --add -", R"({"model": 2, "inputs": 1, "outputs": [], "pids_max": 0})"),
        "standard input: /modules/0: module \":01\": found model 2, expected 3, the one that the engine "
        "supports");
}

} // namespace
} // namespace zarven::tool::size_test
