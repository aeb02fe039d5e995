// What is withheld, and what goes with it, as the engine finds it.

#include "placement/running/asked_for.h"

#include <gtest/gtest.h>

#include "placement/engine_by_hand.h"
#include "placement/result.h"

namespace zarven::tool::asked_for_test {
namespace {

using Flags = std::vector<bool>;

Service withheld(Service made) {
    made.ask = false;
    return made;
}

Pid pid_of(std::uint16_t sid) {
    Pid made;
    made.id = sid;
    made.sid = sid;
    return made;
}

TEST(AskedFor, EverythingByDefault) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    headend.clones = {clone_of(headend.services[0])};
    headend.pids = {pid_of(101)};
    const AskedFor asked = asked_for(headend);
    EXPECT_EQ(asked.services, Flags{true});
    EXPECT_EQ(asked.clones, Flags{true});
    EXPECT_EQ(asked.pids, Flags{true});
}

TEST(AskedFor, AServiceTakesItsClonesAndPidsWithIt) {
    Headend headend = two_modules();
    headend.services = {withheld(service(1, 10)), service(2, 10)};
    headend.clones = {clone_of(headend.services[0]), clone_of(headend.services[1])};
    headend.clones[0].sid = 201;
    headend.pids = {pid_of(101), pid_of(102), pid_of(201)};
    const AskedFor asked = asked_for(headend);
    EXPECT_EQ(asked.services, (Flags{false, true}));
    EXPECT_EQ(asked.clones, (Flags{false, true}));
    EXPECT_EQ(asked.pids, (Flags{false, true, false}));
}

TEST(AskedFor, AStreamOfTheSameNumbersElsewhereIsAnother) {
    Headend headend = two_modules();
    headend.services = {withheld(service(1, 10)), service(1, 20)};
    headend.clones = {clone_of(headend.services[0]), clone_of(headend.services[1])};
    EXPECT_EQ(asked_for(headend).clones, (Flags{false, true}));
}

TEST(AskedFor, ACloneThatNamesItsParentGoesWithThatOne) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), withheld(service(2, 10)), withheld(service(3, 10))};
    headend.clones = {clone_of(headend.services[0]), clone_of(headend.services[0]),
                      clone_of(headend.services[2]), clone_of(headend.services[0])};
    headend.clones[0].parent_sid = headend.services[1].osid;
    headend.clones[1].parent_sid = headend.services[0].osid;
    // Without a service of its key the engine would load it as a service.
    headend.clones[2].parent_sid = headend.services[0].osid;
    // It waits for ever, as without anything withheld.
    headend.clones[3].parent_sid = 999;
    EXPECT_EQ(asked_for(headend).clones, (Flags{false, true, false, true}));
}

TEST(AskedFor, WhereAKeyStandsTwiceTheSecondTakesTheFirstOnesPlace) {
    Headend headend = two_modules();
    headend.services = {withheld(service(1, 10)), service(1, 10)};
    headend.services[1].sid = headend.services[1].osid = 201;
    headend.clones = {clone_of(headend.services[0])};
    EXPECT_EQ(asked_for(headend).clones, Flags{true});
    const EngineRun run = load_engine(headend, "f");
    ASSERT_EQ(run.engine.listaServicios.size(), 1u);
    EXPECT_EQ(run.engine.listaServicios[0]->SID, 201);
    ASSERT_EQ(run.clones.size(), 1u);
    EXPECT_EQ(run.clones[0]->Parent_SID, 201);
}

TEST(AskedFor, APidBelongsToACloneBeforeItBelongsToAService) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), withheld(service(2, 10))};
    headend.clones = {clone_of(headend.services[1])};
    headend.clones[0].sid = headend.services[0].sid;
    headend.pids = {pid_of(headend.services[0].sid)};
    EXPECT_EQ(asked_for(headend).pids, Flags{false});
    // The second service of a key is a clone, too.
    headend.clones.clear();
    headend.services = {service(1, 10), service(2, 10), withheld(service(2, 10))};
    headend.services[2].sid = headend.services[0].sid;
    EXPECT_EQ(asked_for(headend).pids, Flags{false});
}

TEST(AskedFor, APidOfNoServiceIsLeftToTheEngine) {
    Headend headend = two_modules();
    headend.services = {withheld(service(1, 10))};
    headend.pids = {pid_of(999)};
    EXPECT_EQ(asked_for(headend).pids, Flags{true});
}

TEST(AskedFor, TheEngineIsGivenTheRestAndTheResultCountsThem) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), withheld(service(2, 10)), service(3, 20), withheld(service(4, 20))};
    headend.clones = {clone_of(headend.services[1])};
    headend.pids = {pid_of(101), pid_of(102)};
    Headend rest = headend;
    rest.services = {headend.services[0], headend.services[2]};
    rest.clones.clear();
    rest.pids.pop_back();

    const host::Log silence("");
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    EngineRun run_of_rest = load_engine(rest, "f");
    run_engine(run_of_rest, "f");
    const Result result = result_of(run, "");
    EXPECT_EQ(result.counts.loaded, 2u);
    EXPECT_EQ(result.counts.not_asked_for, 2u);
    EXPECT_EQ(result.counts.clones_waiting, 0u);
    EXPECT_EQ(result_of(run_of_rest, "").counts.placed, result.counts.placed);
    EXPECT_EQ(result_of(run_of_rest, "").counts.not_asked_for, 0u);
}

} // namespace
} // namespace zarven::tool::asked_for_test
