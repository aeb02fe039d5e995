// What the reasons say of random head-ends, recomputed from the engine's own maps.

#include "placement/reasons/reason.h"

#include <map>
#include <regex>

#include "Generador.h"
#include "Reglas.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::reason_truth_test {
namespace {

/// A finished run and the services that wait in it.
class Recomputed {
public:
    explicit Recomputed(const EngineRun& run) : run_(run) {}

    void expect_true(const Reason& reason, const std::shared_ptr<tRec_Servicio>& service) const {
        SCOPED_TRACE(reason.text);
        switch (reason.cause) {
        case Cause::impossible:
            return expect_impossible(service);
        case Cause::no_input:
            return expect_no_input(reason.text, *service);
        case Cause::stream_not_chosen:
            return expect_not_chosen(reason.text, *service);
        case Cause::unused_input:
            EXPECT_TRUE(has_free_input(nearest(reason)));
            EXPECT_TRUE(takes(nearest(reason), service));
            return;
        case Cause::unused_room:
            EXPECT_TRUE(receives(nearest(reason), *service));
            EXPECT_TRUE(takes(nearest(reason), service));
            return;
        case Cause::contradictory:
            return;
        default:
            expect_modules(reason.text, *service);
            return expect_short(reason, service);
        }
    }

private:
    const tRec_Modulo& nearest(const Reason& reason) const {
        return run_.engine.Mapa_ModulosCabecera_Final.at(reason.nearest);
    }

    static bool takes(tRec_Modulo module, const std::shared_ptr<tRec_Servicio>& service) {
        tRec_Entrada input(1);
        tMapaServicios services{{service->idService, service}};
        return tRecalculo().Try_to_Insert_Service_Input_Output(module, input, services.begin()) != 0;
    }

    static bool has_free_input(const tRec_Modulo& module) {
        for (const auto& [number, input] : module.mapEntradas)
            if (input.MapaServicios.empty())
                return true;
        return false;
    }

    static bool receives(const tRec_Modulo& module, const tRec_Servicio& service) {
        for (const auto& [number, input] : module.mapEntradas)
            if (reglas::sintonizada(input) && reglas::recibe(input, service.ONID, service.TSID))
                return true;
        return false;
    }

    void expect_impossible(const std::shared_ptr<tRec_Servicio>& service) const {
        for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Inicial)
            EXPECT_FALSE(!module.mapEntradas.empty() && takes(module, service)) << mac;
    }

    void expect_no_input(const std::string& text, const tRec_Servicio& service) const {
        std::size_t inputs = 0;
        for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Final) {
            EXPECT_FALSE(has_free_input(module)) << mac;
            EXPECT_FALSE(receives(module, service)) << mac;
            inputs += module.mapEntradas.size();
        }
        const std::string all = " all " + std::to_string(inputs) + " inputs on ";
        EXPECT_EQ(text.find(inputs == 1 ? "the only input" : all) == std::string::npos, false);
    }

    /// "N modules receive", or one alone.
    void expect_modules(const std::string& text, const tRec_Servicio& service) const {
        std::size_t receiving = 0;
        for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Final)
            receiving += receives(module, service) ? 1 : 0;
        std::smatch found;
        std::size_t told = receiving;
        if (text.find(" alone receives ") != std::string::npos)
            told = 1;
        else if (std::regex_search(text, found, std::regex("^(\\d+) modules receive stream")))
            told = std::stoul(found[1]);
        else if (text.find("receive") == std::string::npos)
            told = 0;
        EXPECT_EQ(receiving, told);
    }

    void expect_not_chosen(const std::string& text, const tRec_Servicio& service) const {
        bool someone_asks = false;
        bool lcn_0_asks = false;
        bool others_wait = false;
        for (const auto& [onid, network] : run_.engine.Mapa_ONIDs_Final)
            for (const auto& [tsid, stream] : network.MapRec_TSIDs)
                for (const auto& [key, each] : stream.MapRec_Services) {
                    others_wait = others_wait || key > 0;
                    if (onid != service.ONID || tsid != service.TSID || each->Transcoding != 0)
                        continue;
                    someone_asks = someone_asks || key > 0;
                    lcn_0_asks = lcn_0_asks || key <= 0;
                }
        EXPECT_FALSE(someone_asks);
        const auto says = [&text](const char* words) { return text.find(words) != std::string::npos; };
        EXPECT_FALSE(lcn_0_asks && says("no service without transcoding asks"));
        EXPECT_FALSE(!others_wait && says("services with other LCNs are left"));
    }

    /// So much is short, and not one less: what the sentence says is freed, and the engine asked again.
    void expect_short(const Reason& reason, const std::shared_ptr<tRec_Servicio>& service) const {
        static const std::regex bitrate(
            "output (\\d+) is short by (\\d+) kbit/s \\((\\d+) \\+ (\\d+) must stay "
            "below (\\d+)\\)(?:, its PIDs by (\\d+))?");
        static const std::regex pids("PIDs are short by (\\d+) \\((\\d+) of (\\d+) in use, (\\d+) needed\\)");
        static const std::regex transcoders("no transcoder is left \\((\\d+) of (\\d+) in use\\)");
        tRec_Modulo module = nearest(reason);
        EXPECT_FALSE(takes(module, service));
        std::smatch found;
        const auto number = [&found](std::size_t place) {
            return static_cast<std::uint32_t>(std::stoul(found[place]));
        };
        if (std::regex_search(reason.text, found, bitrate)) {
            EXPECT_EQ(reason.cause, Cause::bitrate);
            tRec_Salida& output = module.mapSalidas.at(static_cast<unsigned short>(number(1)));
            EXPECT_EQ(output.BitRateActual, number(3));
            EXPECT_EQ(service->peakBitRate, number(4));
            EXPECT_EQ(output.BitRateMax, number(5));
            if (found[6].matched) {
                EXPECT_EQ(module.PIDsModulo + service->number_PIDs_CA, module.PIDsModuloMax + number(6));
            }
            module.PIDsModulo = 0;
            module.PIDsModuloMax = 65535;
            module.SD_MAX_Transcoding = module.HD_MAX_Transcoding = 65535;
            output.BitRateMax += number(2) - 1;
            EXPECT_FALSE(takes(module, service));
            ++output.BitRateMax;
            EXPECT_TRUE(takes(module, service));
        } else if (std::regex_search(reason.text, found, pids)) {
            EXPECT_EQ(reason.cause, Cause::pids);
            EXPECT_EQ(module.PIDsModulo, number(2));
            EXPECT_EQ(module.PIDsModuloMax, number(3));
            EXPECT_EQ(service->number_PIDs_CA, number(4));
            module.SD_MAX_Transcoding = module.HD_MAX_Transcoding = 65535;
            module.PIDsModuloMax = static_cast<unsigned short>(module.PIDsModuloMax + number(1) - 1);
            EXPECT_FALSE(takes(module, service));
            ++module.PIDsModuloMax;
            EXPECT_TRUE(takes(module, service));
        } else if (std::regex_search(reason.text, found, transcoders)) {
            EXPECT_EQ(reason.cause, Cause::transcoders);
            EXPECT_EQ(module.SD_Transcoding + module.HD_Transcoding, static_cast<int>(number(1)));
            module.SD_MAX_Transcoding = module.HD_MAX_Transcoding =
                static_cast<unsigned short>(number(1) + 1);
            EXPECT_TRUE(takes(module, service));
        } else {
            EXPECT_EQ(reason.cause, Cause::places);
        }
    }

    const EngineRun& run_;
};

TEST(ReasonsOverRandomHeadends, HoldWhenTheyAreRecomputed) {
    const host::Log silence("");
    std::map<Cause, std::size_t> met;
    for (std::uint32_t seed = 1; seed <= 600 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        EngineRun run;
        generador::cargar(run.engine, generador::escasa(seed));
        run.engine.Main_Recalculo();
        const FinalState state(run);
        const Recomputed recomputed(run);
        for (const auto& service : left_out_of(run)) {
            const Reason reason = reason_left_out(state, *service);
            recomputed.expect_true(reason, service);
            ++met[reason.cause];
        }
    }
    // That the generator does not go stale.
    for (const Cause cause : {Cause::impossible, Cause::no_input, Cause::stream_not_chosen, Cause::bitrate,
                              Cause::pids, Cause::transcoders, Cause::unused_input, Cause::unused_room})
        EXPECT_GE(met[cause], 20u) << static_cast<int>(cause);
}

} // namespace
} // namespace zarven::tool::reason_truth_test
