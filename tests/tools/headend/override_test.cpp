// Changes to a head-end for one run: which places a path names, and what is said of those that it cannot.

#include "headend/override.h"

#include <gtest/gtest.h>

#include "failure_message.h"
#include "headend/headend_json.h"

namespace zarven::tool::override_test {
namespace {

const std::string text = R"({"modules": [
    {"mac": "A", "controller": true, "inputs": 1, "outputs": [10, 20], "pids_max": 1},
    {"mac": "B", "inputs": 2, "outputs": [30], "pids_max": 2}],
  "services": [
    {"lcn": 1, "name": "Uno", "onid": 1, "tsid": 1, "sid": 1, "bitrate": 100},
    {"lcn": 2, "name": "Dos", "onid": 1, "tsid": 1, "sid": 2}]})";

Headend changed(const std::vector<std::string>& settings) {
    return read_headend("f", text, settings);
}

std::string complaint(const std::vector<std::string>& settings, const std::string& about = text) {
    return failure_message([&] { read_headend("f", about, settings); });
}

TEST(Override, WithoutChangesTheFileIsRead) {
    EXPECT_EQ(write_headend(changed({})), write_headend(read_headend("f", text)));
}

TEST(Override, OneEntryOfAList) {
    const Headend headend = changed({"modules[1].pids_max=64"});
    EXPECT_EQ(headend.modules[0].pids_max, 1);
    EXPECT_EQ(headend.modules[1].pids_max, 64);
}

TEST(Override, AModuleByItsMac) {
    EXPECT_EQ(changed({"modules[B].pids_max=64"}).modules[1].pids_max, 64);
    // Also one of which the MAC has just been changed; a number stays a place.
    const Headend headend = changed({"modules[0].mac=02:00:1", "modules[02:00:1].inputs=5",
                                     R"(modules[1].mac="0")", "modules[0].pids_max=9"});
    EXPECT_EQ(headend.modules[0].inputs, 5);
    EXPECT_EQ(headend.modules[0].pids_max, 9);
}

TEST(Override, AMacThatNoModuleHas) {
    EXPECT_EQ(
        complaint({"modules[C].inputs=1"}),
        "--set 'modules[C].inputs=1': f: /modules: found a list of 2 entries, expected a module with the MAC "
        "\"C\"");
    EXPECT_EQ(
        complaint({"modules[1].mac=02:00:01", "modules[02:00:02].inputs=1"}),
        "--set 'modules[02:00:02].inputs=1': f: /modules: found a list of 2 entries, expected a module with "
        "the MAC \"02:00:02\"; did you mean \"02:00:01\"?");
    EXPECT_EQ(complaint({"modules[C].inputs=1"}, R"({"modules": [{"inputs": 1}]})"),
              "--set 'modules[C].inputs=1': f: /modules/0: found no \"mac\", expected text");
}

TEST(Override, AllEntriesOfAList) {
    const Headend headend = changed({"services[*].bitrate=4000", "modules[*].outputs[*]=7"});
    EXPECT_EQ(headend.services[0].bitrate, 4000u);
    EXPECT_EQ(headend.services[1].bitrate, 4000u);
    EXPECT_EQ(headend.modules[0].outputs, (std::vector<std::uint32_t>{7, 7}));
    EXPECT_EQ(headend.modules[1].outputs, std::vector<std::uint32_t>{7});
}

TEST(Override, AnEntryOfAListInAnEntry) {
    EXPECT_EQ(changed({"modules[0].outputs[1]=5"}).modules[0].outputs, (std::vector<std::uint32_t>{10, 5}));
}

TEST(Override, FieldsLeftToTheirDefault) {
    const Headend headend = changed({"modules[1].sd_transcoders=3", "services[1].descramble=true",
                                     "name=Casa", R"(home_channels=[{"onid": 4, "tsid": 5}])"});
    EXPECT_EQ(headend.modules[1].sd_transcoders, 3);
    EXPECT_EQ(headend.services[1].descramble, 1);
    EXPECT_EQ(headend.name, "Casa");
    ASSERT_EQ(headend.home_channels.size(), 1u);
    EXPECT_EQ(headend.home_channels[0].tsid, 5);
}

TEST(Override, WhatIsNotJsonIsAText) {
    EXPECT_EQ(changed({"name=Casa \"del\" Mar = Sur"}).name, "Casa \"del\" Mar = Sur");
    EXPECT_EQ(changed({"name=\"5\""}).name, "5");
    EXPECT_EQ(changed({"name="}).name, "");
}

TEST(Override, TheLastChangeOfAPlaceHolds) {
    EXPECT_EQ(changed({"modules[*].pids_max=5", "modules[0].pids_max=6"}).modules[0].pids_max, 6);
    EXPECT_EQ(changed({"modules[0].pids_max=6", "modules[*].pids_max=5"}).modules[0].pids_max, 5);
}

TEST(Override, AChangeMayMendTheFile) {
    const std::string broken = R"({"modules": [{"mac": "A", "inputs": 1, "outputs": []}]})";
    EXPECT_EQ(read_headend("f", broken, {"modules[0].pids_max=3"}).modules[0].pids_max, 3);
}

TEST(Override, AValueOfTheWrongTypeIsToldWithItsChange) {
    EXPECT_EQ(
        complaint({"modules[0].pids_max=1", "modules[1].pids_max=many", "name=x"}),
        "--set 'modules[1].pids_max=many': f: /modules/1/pids_max: found \"many\", expected a whole number "
        "from 0 to 65535");
    EXPECT_EQ(
        complaint({"modules[0].outputs=[1, -1]"}),
        "--set 'modules[0].outputs=[1, -1]': f: /modules/0/outputs/1: found -1, expected a whole number "
        "from 0 to 4294967295");
    EXPECT_EQ(
        complaint({"modules[*].inputs=2", "modules[*].inputs=x"}),
        "--set 'modules[*].inputs=x': f: /modules/0/inputs: found \"x\", expected a whole number from 0 to "
        "65535");
}

TEST(Override, AComplaintAboutTheFileNamesNoChange) {
    const std::string broken = R"({"modules": [], "services": 5})";
    EXPECT_EQ(complaint({"name=x"}, broken), "f: /services: found 5, expected a list");
    // /modules/1 is no part of /modules/10.
    std::string many = R"({"modules": [{"mac": "0", "inputs": 1, "outputs": [], "pids_max": 1})";
    for (int module = 1; module <= 10; ++module)
        many += R"(, {"mac": "M", "inputs": 1, "outputs": [], "pids_max": )" +
                std::string(module == 10 ? "\"x\"" : "1") + "}";
    EXPECT_EQ(
        complaint({R"(modules[1]={"mac": "N", "inputs": 1, "outputs": [], "pids_max": 1})"}, many + "]}"),
        "f: /modules/10/pids_max: found \"x\", expected a whole number from 0 to 65535");
}

TEST(Override, AnUnknownKey) {
    EXPECT_EQ(
        complaint({"modules[0].pid_max=1"}),
        "--set 'modules[0].pid_max=1': f: /modules/0: found the unknown key \"pid_max\", expected a known "
        "one, such as \"pids_max\"");
    EXPECT_EQ(
        complaint({"module[0].pids_max=1"}),
        "--set 'module[0].pids_max=1': f: top level: found the unknown key \"module\", expected a known one, "
        "such as \"modules\"");
    EXPECT_EQ(
        complaint({"services[0].pids_max=1"}),
        "--set 'services[0].pids_max=1': f: /services/0: found the unknown key \"pids_max\", expected a "
        "known one, such as \"ca_pids_max\"");
}

TEST(Override, AnEntryThatIsNotThere) {
    EXPECT_EQ(changed({"modules[1].pids_max=9"}).modules[1].pids_max, 9);
    EXPECT_EQ(
        complaint({"modules[2].pids_max=9"}),
        "--set 'modules[2].pids_max=9': f: /modules: found a list of 2 entries, expected an entry [2]; the "
        "last one is [1]");
    EXPECT_EQ(complaint({"clones[0].lcn=1"}),
              "--set 'clones[0].lcn=1': f: top level: found no \"clones\", expected a list");
    EXPECT_EQ(
        complaint({"modules[*].inputs=1"}, R"({"modules": []})"),
        "--set 'modules[*].inputs=1': f: /modules: found a list of 0 entries, expected one with entries");
}

TEST(Override, AStepIntoSomethingElse) {
    EXPECT_EQ(complaint({"name[0]=1"}),
              "--set 'name[0]=1': f: top level: found no \"name\", expected a list");
    EXPECT_EQ(complaint({"modules.pids_max=1"}), "--set 'modules.pids_max=1': f: /modules: found a list of 2 "
                                                 "entries, expected nothing further in the path");
    EXPECT_EQ(
        complaint({"modules[0].mac.x=1"}),
        "--set 'modules[0].mac.x=1': f: /modules/0/mac: found \"A\", expected nothing further in the path");
    EXPECT_EQ(complaint({"modules[0][1]=1"}),
              "--set 'modules[0][1]=1': f: /modules/0: found an object, expected a list");
}

TEST(Override, APathThatIsNone) {
    EXPECT_EQ(complaint({"modules"}), "--set 'modules': found no \"=\", expected PATH=VALUE");
    EXPECT_EQ(complaint({"=1"}), "--set '=1': found \"\", expected a key");
    EXPECT_EQ(complaint({"modules[0].=1"}), "--set 'modules[0].=1': found \"\", expected a key");
    EXPECT_EQ(complaint({"modules[0]pids_max=1"}),
              "--set 'modules[0]pids_max=1': found \"pids_max\", expected \".\" or \"[\"");
    for (const std::string bracket : {"[", "[]", "[-1]", "[x]", "[**]", "[1", "[1234567890]"})
        EXPECT_EQ(complaint({"services" + bracket + "=1"}),
                  "--set 'services" + bracket + "=1': found \"" + bracket +
                      "\", expected [n] with a whole number from 0, or [*]");
    for (const std::string bracket : {"[", "[]", "[1", "[A"})
        EXPECT_EQ(complaint({"modules" + bracket + "=1"}),
                  "--set 'modules" + bracket + "=1': found \"" + bracket +
                      "\", expected [n] with a whole number from 0, [MAC], or [*]");
    EXPECT_EQ(complaint({"modules[0].outputs[A]=1"}),
              "--set 'modules[0].outputs[A]=1': found \"[A]\", expected "
              "[n] with a whole number from 0, or [*]");
    EXPECT_EQ(complaint({"name=\xFF"}), "--set 'name=\xFF': found bytes that are not UTF-8");
    EXPECT_EQ(
        complaint({R"(modules[0]={"mac": 1, "mac": 2})"}),
        R"(--set 'modules[0]={"mac": 1, "mac": 2}': top level: found the key "mac" twice, expected it once)");
}

TEST(ReadModule, OfAHeadendWithOne) {
    EXPECT_EQ(read_module("f", R"({"name": "x", "modules": [{"mac": "A", "inputs": 2, "outputs": [5],
        "pids_max": 1}]})")
                  .inputs,
              2);
}

TEST(ReadModule, AsABareObject) {
    const Module module = read_module("f", R"({"inputs": 2, "outputs": [5], "pids_max": 1})");
    EXPECT_EQ(module.mac, "");
    EXPECT_EQ(module.outputs, std::vector<std::uint32_t>{5});
    EXPECT_EQ(read_module("f", R"({"mac": "M", "inputs": 2, "outputs": [5], "pids_max": 1})").mac, "M");
    EXPECT_EQ(read_module("f", R"({"label": "Rack", "inputs": 2, "outputs": [5], "pids_max": 1})").label,
              "Rack");
}

TEST(ReadModule, NothingElse) {
    EXPECT_EQ(failure_message([] { read_module("f", text); }),
              "f: /modules: found a list of 2 entries, expected just one module");
    EXPECT_EQ(failure_message([] { read_module("f", R"({"modules": []})"); }),
              "f: /modules: found a list of 0 entries, expected just one module");
    EXPECT_EQ(failure_message([] { read_module("f", "[]"); }),
              "f: top level: found a list of 0 entries, expected an object");
    EXPECT_EQ(failure_message([] { read_module("f", R"({"inputs": 1, "outputs": []})"); }),
              "f: top level: found no \"pids_max\", expected a whole number from 0 to 65535");
}

} // namespace
} // namespace zarven::tool::override_test
