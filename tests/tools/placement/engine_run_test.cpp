// Loading: every field arrives, every refusal is told with its code, its meaning and the element.

#include "placement/running/engine_run.h"

#include <gtest/gtest.h>

#include "failure_message.h"
#include "headend/headend_json.h"

namespace zarven::tool::engine_run_test {
namespace {

Headend headend_of(const std::string& text) {
    return read_headend("f", text);
}

std::string refusal(const std::string& text) {
    return failure_message([&] { load_engine(headend_of(text), "headend.json"); });
}

const std::string module_text =
    R"({"mac": "M1", "controller": true, "inputs": 2, "outputs": [38000], "pids_max": 8})";
const std::string service_text = R"({"lcn": 5, "name": "Canal", "onid": 1, "tsid": 2, "sid": 3})";

std::string with(const std::string& members) {
    return R"({"modules": [)" + module_text + "], " + members + "}";
}

TEST(LoadEngine, AModuleArrivesWhole) {
    const EngineRun run =
        load_engine(headend_of(R"({"modules": [{"mac": "M1", "controller": true, "inputs": 3,
        "outputs": [38000, 4294967295], "pids_max": 40, "sd_transcoders": 1, "hd_transcoders": 2,
        "aux_transcoders": 3}]})"),
                    "f");
    const tRec_Modulo& module = run.engine.Mapa_ModulosCabecera_Inicial.at("M1");
    EXPECT_EQ(module.Modelo, 3);
    EXPECT_TRUE(module.Controlador);
    EXPECT_EQ(module.mapEntradas.size(), 3u);
    EXPECT_EQ(module.mapSalidas.at(1).BitRateMax, 38000u);
    EXPECT_EQ(module.mapSalidas.at(2).BitRateMax, 4294967295u);
    EXPECT_EQ(module.PIDsModuloMax, 40);
    EXPECT_EQ(module.SD_MAX_Transcoding, 1);
    EXPECT_EQ(module.HD_MAX_Transcoding, 2);
    EXPECT_EQ(module.AUX_MAX_Transcoding, 3);
}

TEST(LoadEngine, AServiceArrivesWhole) {
    const EngineRun run =
        load_engine(headend_of(with(R"("services": [{"lcn": 1, "name": "a", "output_name": "b",
        "onid": 2, "tsid": 3, "sid": 4, "osid": 5, "type": 6, "video_format": 7, "bitrate": 8, "video_bitrate": 9,
        "descramble": 10, "transcoding": 11, "forced_name": 12, "simulcast_lcn": 13, "sat_id": 14, "reserved1": 15,
        "reserved2": 16, "reserved3": 17, "ca_pids": 18, "ca_pids_max": 19}])")),
                    "f");
    const tRec_Servicio& service = *run.engine.listaServicios.at(0);
    EXPECT_EQ(service.idService, 1);
    EXPECT_EQ(service.LCN, 1);
    EXPECT_EQ(service.NombreEntrada, "a");
    EXPECT_EQ(service.NombreSalida, "b");
    EXPECT_EQ(service.ONID, 2);
    EXPECT_EQ(service.TSID, 3);
    EXPECT_EQ(service.SID, 4);
    EXPECT_EQ(service.OSID, 5);
    EXPECT_EQ(service.Tipo, 6);
    EXPECT_EQ(service.VideoFormatE, 7);
    EXPECT_EQ(service.peakBitRate, 8u);
    EXPECT_EQ(service.videoPeakBitRate, 9u);
    EXPECT_EQ(service.Descifrar, 10);
    EXPECT_EQ(service.Transcoding, 11);
    EXPECT_EQ(service.NombreForzado, 12);
    EXPECT_EQ(service.SimulcastLCN, 13);
    EXPECT_EQ(service.SatId, 14);
    EXPECT_EQ(service.Reservado1, 15);
    EXPECT_EQ(service.Reservado2, 16);
    EXPECT_EQ(service.Reservado3, 17);
    EXPECT_EQ(service.number_PIDs_CA, 18);
    EXPECT_EQ(service.number_PIDs_CA_Max, 19);
}

TEST(LoadEngine, ACloneArrivesWhole) {
    const EngineRun run =
        load_engine(headend_of(with("\"services\": [" + service_text + R"(], "clones": [{"lcn": 5,
        "name": "a", "output_name": "b", "onid": 1, "tsid": 2, "sid": 4, "osid": 6, "type": 7, "video_format": 8,
        "video_bitrate": 9, "descramble": 10, "transcoding": 11, "forced_name": 12, "simulcast_lcn": 13, "sat_id": 14,
        "reserved1": 15, "reserved2": 16, "reserved3": 17, "parent_sid": 18}])")),
                    "f");
    ASSERT_EQ(run.clones.size(), 1u);
    const tRec_Servicio& clone = *run.clones[0];
    EXPECT_EQ(clone.LCN, 5);
    EXPECT_EQ(clone.NombreEntrada, "a");
    EXPECT_EQ(clone.NombreSalida, "b");
    EXPECT_EQ(clone.SID, 4);
    EXPECT_EQ(clone.OSID, 6);
    EXPECT_EQ(clone.Tipo, 7);
    EXPECT_EQ(clone.VideoFormatE, 8);
    EXPECT_EQ(clone.videoPeakBitRate, 9u);
    EXPECT_EQ(clone.Descifrar, 10);
    EXPECT_EQ(clone.Transcoding, 11);
    EXPECT_EQ(clone.NombreForzado, 12);
    EXPECT_EQ(clone.SimulcastLCN, 13);
    EXPECT_EQ(clone.SatId, 14);
    EXPECT_EQ(clone.Reservado1, 15);
    EXPECT_EQ(clone.Reservado2, 16);
    EXPECT_EQ(clone.Reservado3, 17);
    EXPECT_EQ(clone.Parent_SID, 18);
    EXPECT_EQ(clone.peakBitRate, 0u);
}

TEST(LoadEngine, ThePlannerMayLeaveTheParentToTheEngine) {
    const EngineRun run = load_engine(
        headend_of(with("\"services\": [" + service_text + "], \"clones\": [" + service_text + "]")), "f");
    EXPECT_EQ(run.clones.at(0)->Parent_SID, 3);
    EXPECT_EQ(run.engine.listaServicios.size(), 1u);
}

TEST(LoadEngine, AServiceWithTheLcnOfAnotherInItsStreamIsAClone) {
    const EngineRun run =
        load_engine(headend_of(with("\"services\": [" + service_text + ", " + service_text + "]")), "f");
    EXPECT_EQ(run.engine.listaServicios.size(), 1u);
    ASSERT_EQ(run.clones.size(), 1u);
    EXPECT_EQ(run.clones[0], run.engine.listaServiciosClonados.at(0));
}

TEST(LoadEngine, PidsAndHomeChannelsArrive) {
    const EngineRun run =
        load_engine(headend_of(with("\"services\": [" + service_text + R"(], "pids": [{"id": -7,
        "sid": 3, "audio": "spa", "order": 1, "reserved1": 2, "reserved2": 4, "reserved3": 5}],
        "home_channels": [{"onid": 8, "tsid": 9}])")),
                    "f");
    const tRec_PID& pid = *run.engine.listaServicios.at(0)->MapaPIDs.at(-7);
    EXPECT_EQ(pid.AudioCode, "spa");
    EXPECT_EQ(pid.Orden, 1);
    EXPECT_EQ(pid.Reservado1, 2);
    EXPECT_EQ(pid.Reservado2, 4);
    EXPECT_EQ(pid.Reservado3, 5);
    EXPECT_EQ(run.engine.Mapa_HomeChannels.at(8).MapRec_TSIDs.count(9), 1u);
}

TEST(LoadEngine, AModuleThatIsLoadedAlready) {
    EXPECT_EQ(
        refusal("{\"modules\": [" + module_text + ", " + module_text + "]}"),
        "headend.json: /modules/1: module \"M1\": the engine refuses it: a module with this MAC is already "
        "loaded (-102)");
}

TEST(LoadEngine, AModuleWithoutMac) {
    EXPECT_EQ(
        refusal(R"({"modules": [{"mac": "", "inputs": 1, "outputs": [], "pids_max": 1}]})"),
        "headend.json: /modules/0: module \"\": found an empty MAC, expected one that names the module");
}

TEST(LoadEngine, AModelThatIsNotSupported) {
    for (const std::string model : {"0", "1", "2", "4", "99", "65535"})
        EXPECT_EQ(refusal(R"({"modules": [{"mac": "M1", "model": )" + model +
                          R"(, "inputs": 1, "outputs": [1], "pids_max": 1}]})"),
                  "headend.json: /modules/0: module \"M1\": found model " + model +
                      ", expected 3, the one that the engine supports");
}

TEST(LoadEngine, ACloneWhoseStreamLacksItsLcn) {
    EXPECT_EQ(
        refusal(with("\"services\": [" + service_text +
                     R"(], "clones": [{"lcn": 6, "name": "Copia", "onid": 1, "tsid": 2, "sid": 3}])")),
        "headend.json: /clones/0: clone \"Copia\" (LCN 6, stream 1/2): a clone without parent: no service of "
        "stream 1/2 has the LCN 6");
    EXPECT_EQ(
        refusal(with("\"clones\": [" + service_text + "]")),
        "headend.json: /clones/0: clone \"Canal\" (LCN 5, stream 1/2): a clone without parent: no service of "
        "stream 1/2 has the LCN 5");
}

TEST(LoadEngine, ANameIsShownAsFarAsItCanBe) {
    EXPECT_EQ(refusal(with(R"("services": [], "clones": [{"lcn": 6, "name": "a\u0000b", "onid": 1, "tsid": 2,
        "sid": 3}])")),
              "headend.json: /clones/0: clone \"a\uFFFDb\" (LCN 6, stream 1/2): a clone without parent: no "
              "service of stream 1/2 has the LCN 6");
    const std::string mac(61, 'M');
    const std::string module = R"({"mac": ")" + mac + R"(", "inputs": 1, "outputs": [], "pids_max": 0})";
    EXPECT_EQ(refusal(R"({"modules": [)" + module + ", " + module + "]}"),
              "headend.json: /modules/1: module \"" + std::string(60, 'M') +
                  "…\": the engine refuses it: a module with this MAC is already loaded (-102)");
}

TEST(LoadEngine, AnotherServiceWithLcnZero) {
    const std::string zero = R"({"lcn": 0, "name": "Canal", "onid": 1, "tsid": 2, "sid": 3})";
    EXPECT_EQ(
        refusal(with("\"services\": [" + zero + ", " + zero + "]")),
        "headend.json: /services/1: service \"Canal\" (LCN 0, stream 1/2): the engine refuses it: a clone "
        "without parent (-109)");
}

TEST(LoadEngine, APidWithoutService) {
    EXPECT_EQ(refusal(with("\"services\": [" + service_text + R"(], "pids": [{"id": 1, "sid": 3},
                           {"id": 2, "sid": 4}])")),
              "headend.json: /pids/1: PID 2 of SID 4: the engine refuses it: no service has this SID (-110)");
}

TEST(LoadEngine, AHomeChannelThatIsLoadedAlready) {
    EXPECT_EQ(
        refusal(with(R"("home_channels": [{"onid": 1, "tsid": 2}, {"onid": 1, "tsid": 2}])")),
        "headend.json: /home_channels/1: home channel 1/2: the engine refuses it: this home channel is already "
        "loaded (-106)");
}

TEST(MeaningOfRefusal, EveryCodeOfTheLoadingOperationsHasOne) {
    EXPECT_EQ(meaning_of_refusal(0), "there is nothing to load");
    EXPECT_EQ(meaning_of_refusal(-101), "its index of services is inconsistent");
    EXPECT_EQ(meaning_of_refusal(-102), "a module with this MAC is already loaded");
    EXPECT_EQ(meaning_of_refusal(-104), "there is no such module");
    EXPECT_EQ(meaning_of_refusal(-105), "the module has no such output");
    EXPECT_EQ(meaning_of_refusal(-106), "this home channel is already loaded");
    EXPECT_EQ(meaning_of_refusal(-109), "a clone without parent");
    EXPECT_EQ(meaning_of_refusal(-110), "no service has this SID");
    EXPECT_EQ(meaning_of_refusal(-999), "for a reason unknown to this program");
}

TEST(RunEngine, WithoutControllerItCannotRun) {
    EngineRun run = load_engine(
        headend_of(R"({"modules": [{"mac": "M1", "inputs": 1, "outputs": [1], "pids_max": 1}]})"), "f");
    try {
        run_engine(run, "headend.json");
        FAIL() << "it ran";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "headend.json: the engine could not run: no module is the controller; give one of "
                     "/modules the member \"controller\": true");
        EXPECT_EQ(failure.code, ExitCode::engine_did_not_run);
    }
}

TEST(RunEngine, AMovedEngineRuns) {
    EngineRun loaded = load_engine(headend_of(with("\"services\": [" + service_text + "]")), "f");
    EngineRun run = std::move(loaded);
    run_engine(run, "f");
    EXPECT_EQ(run.engine.Mapa_ModulosCabecera_Final.at("M1").mapSalidas.at(1).MapaServicios.size(), 1u);
}

} // namespace
} // namespace zarven::tool::engine_run_test
