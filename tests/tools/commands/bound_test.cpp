// `recalculo bound`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::bound_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, BoundTellsWhatAnyArrangementCouldPlace) {
    const Outcome outcome = run("bound -", two_streams);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(
        outcome.out.find("2 services loaded: no arrangement places more than 1, the engine placed 1: none "
                         "can do better\n"),
        std::string::npos)
        << outcome.out;
    const json report = json::parse(run("bound --json - --set 'modules[0].inputs=2'", two_streams).out);
    EXPECT_EQ(report.at("bound"), 1);
    EXPECT_EQ(report.at("placed"), 1);
    EXPECT_EQ(report.at("limits").at(0).at("allows"), 2);
}

} // namespace
} // namespace zarven::tool::bound_test
