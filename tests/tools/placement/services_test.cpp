// What became of the services, and in which order they are listed.

#include "placement/services.h"

#include "placement/engine_by_hand.h"

namespace zarven::tool::services_test {
namespace {

class ServicesOfARun : public EngineByHand {
protected:
    /// Two streams, the later one loaded first, and a clone.
    ServicesOfARun() {
        load({2}, {service(1, 20), service(2, 10), service(3, 10)}, {clone_of(service(1, 20))});
    }
};

TEST_F(ServicesOfARun, LeftOutByStreamAndOnce) {
    EXPECT_EQ(left_out_of(run), Services());
    leave_out(loaded(0));
    leave_out(loaded(1));
    EXPECT_EQ(left_out_of(run), (Services{loaded(1), loaded(0)}));
    // A second time, as the engine's exchanges may leave it.
    run.engine.Mapa_ONIDs_Final[2].MapRec_TSIDs[1].MapRec_Services.emplace(1, loaded(0));
    EXPECT_EQ(left_out_of(run), (Services{loaded(1), loaded(0)}));
}

TEST_F(ServicesOfARun, NeitherPlacedNorLeftOut) {
    leave_out(loaded(0));
    tune("A", 1, 10);
    tune("A", 2, 20);
    module("A").addService(loaded(1), 1, 1);
    EXPECT_EQ(neither_of(run), Services{loaded(2)});
    run.engine.listaServiciosClonados.clear();
    EXPECT_EQ(neither_of(run), (Services{loaded(2), run.clones[0]}));
    module("A").addService(run.clones[0], 2, 1);
    module("A").addService(loaded(2), 1, 1);
    EXPECT_EQ(neither_of(run), Services());
    EXPECT_EQ(placed_of(run), (ServiceSet{loaded(1).get(), loaded(2).get(), run.clones[0].get()}));
    // None of the module's inputs receives it.
    tune("A", 2, 30);
    EXPECT_EQ(neither_of(run), Services{run.clones[0]});
    EXPECT_EQ(placed_of(run), (ServiceSet{loaded(1).get(), loaded(2).get()}));
}

TEST_F(ServicesOfARun, OnAnInputAloneIsNeither) {
    module("A").mapEntradas.at(1).MapaServicios.emplace(3, loaded(2));
    leave_out(loaded(0));
    leave_out(loaded(1));
    EXPECT_EQ(neither_of(run), Services{loaded(2)});
}

TEST_F(ServicesOfARun, WhatIsOnNoOutput) {
    leave_out(loaded(0));
    leave_out(loaded(1));
    EXPECT_EQ(unplaced_of(run), (Services{loaded(1), loaded(0), run.clones[0], loaded(2)}));
    run.engine.listaServiciosClonados.clear();
    EXPECT_EQ(unplaced_of(run), (Services{loaded(1), loaded(0), loaded(2), run.clones[0]}));
}

TEST_F(ServicesOfARun, OnTheOutputsOfAModule) {
    EXPECT_EQ(services_on_outputs(module("A")), ServiceSet());
    module("A").addService(loaded(0), 1, 1);
    EXPECT_EQ(services_on_outputs(module("A")), ServiceSet{loaded(0).get()});
}

} // namespace
} // namespace zarven::tool::services_test
