// The order of loading is the engine's: modules and their outputs, services, clones, PIDs, home channels.

#include "placement/running/engine_run.h"

#include <algorithm>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/failure.h"
#include "base/utf8.h"
#include "headend/mac.h"
#include "placement/one_of.h"
#include "placement/running/asked_for.h"
#include "placement/running/bounded_run.h"

namespace zarven::tool {

namespace {

/// Where a record stands in the head-end, and what the planner calls it.
struct Element {
    std::string place;
    std::string name;
};

/// Loads one head-end and knows how to complain about it.
class Loader {
public:
    Loader(EngineRun& run, const std::string& file) : run_(run), file_(file) {}

    void load(const Module& module, std::size_t index);
    void load(const Service& service, std::size_t index);
    void load(const Clone& clone, std::size_t index);
    void load(const Pid& pid, std::size_t index);
    void load(const HomeChannel& channel, std::size_t index);

    template <class Record> void load_all(const std::vector<Record>& records) {
        for (std::size_t index = 0; index < records.size(); ++index)
            load(records[index], index);
    }
    template <class Record>
    void load_all(const std::vector<Record>& records, const std::vector<bool>& asked) {
        for (std::size_t index = 0; index < records.size(); ++index)
            if (asked[index])
                load(records[index], index);
    }

private:
    [[noreturn]] void complain(const Element& element, const std::string& problem) const {
        throw Failure(fmt::format("{}: {}: {}: {}", file_, element.place, element.name, problem));
    }

    void check(int code, const Element& element) const {
        if (code != tRecalculo::RETURN_OK)
            complain(element, fmt::format("the engine refuses it: {} ({})", meaning_of_refusal(code), code));
    }

    /// Loads a service and keeps note of it if the engine takes it for a clone.
    void add(const std::shared_ptr<tRec_Servicio>& service, const Element& element) {
        const std::size_t clones_before = run_.engine.listaServiciosClonados.size();
        check(run_.engine.addRec_Servicio(service), element);
        if (run_.engine.listaServiciosClonados.size() > clones_before)
            run_.clones.push_back(service);
    }

    EngineRun& run_;
    const std::string& file_;
    /// As they are spelled. The engine would take each spelling for a module of its own.
    std::map<std::string, std::string> macs_;
};

Element element_of(const char* kind, const char* list, std::size_t index, const Programme& programme) {
    return {fmt::format("/{}/{}", list, index),
            fmt::format("{} \"{}\" (LCN {}, stream {}/{})", kind, shortened(programme.name), programme.lcn,
                        programme.onid, programme.tsid)};
}

void Loader::load(const Module& module, std::size_t index) {
    const Element element{fmt::format("/modules/{}", index),
                          fmt::format("module \"{}\"", shortened(module.mac))};
    if (module.mac.empty())
        complain(element, "found an empty MAC, expected one that names the module");
    const auto [known, is_new] = macs_.emplace(canonical_mac(module.mac), module.mac);
    if (!is_new && known->second != module.mac)
        complain(element, fmt::format("a module with this MAC is already loaded, as \"{}\"",
                                      shortened(known->second)));
    tRecalculo& engine = run_.engine;
    check(engine.addModulo(module.mac, module.model, module.inputs,
                           static_cast<std::uint16_t>(module.outputs.size()), module.pids_max,
                           module.controller),
          element);
    tRec_Modulo& loaded = engine.Mapa_ModulosCabecera_Inicial.at(module.mac);
    if (loaded.Modelo != module.model || module.model != tRec_Modulo::MODELO_SOPORTADO)
        complain(element, fmt::format("found model {}, expected {}, the one that the engine supports",
                                      module.model, tRec_Modulo::MODELO_SOPORTADO));
    loaded.SD_MAX_Transcoding = module.sd_transcoders;
    loaded.HD_MAX_Transcoding = module.hd_transcoders;
    loaded.AUX_MAX_Transcoding = module.aux_transcoders;
    std::uint16_t number = 0;
    for (const std::uint32_t bitrate : module.outputs) {
        ++number;
        check(engine.configurarSalida(module.mac, number, bitrate),
              {fmt::format("{}/outputs/{}", element.place, number - 1),
               fmt::format("output {} of {}", number, element.name)});
    }
}

void Loader::load(const Service& service, std::size_t index) {
    const auto record = std::make_shared<tRec_Servicio>(
        service.osid, service.sid, service.lcn, service.reserved1, service.simulcast_lcn, service.descramble,
        service.ca_pids, service.ca_pids_max, service.video_bitrate, service.bitrate, service.type,
        service.video_format, service.reserved2, service.name, service.output_name, service.forced_name,
        service.transcoding, service.onid, service.tsid, service.reserved3, service.sat_id);
    add(record, element_of("service", "services", index, service));
    run_.services[index] = record.get();
    if (service.measured)
        run_.measured.emplace(record.get(), service.mean_bitrate);
}

void Loader::load(const Clone& clone, std::size_t index) {
    const Element element = element_of("clone", "clones", index, clone);
    // The engine would load it as an ordinary service, one that takes no bitrate.
    if (!reglas::esClonAlCargar(run_.engine.Mapa_ONIDs_Inicial, clone.onid, clone.tsid, clone.lcn))
        complain(element, fmt::format("a clone without parent: no service of stream {}/{} has the LCN {}",
                                      clone.onid, clone.tsid, clone.lcn));
    add(std::make_shared<tRec_Servicio>(clone.osid, clone.sid, clone.lcn, clone.reserved1,
                                        clone.simulcast_lcn, clone.descramble, clone.type, clone.video_format,
                                        clone.reserved2, clone.name, clone.output_name, clone.video_bitrate,
                                        clone.forced_name, clone.transcoding, clone.onid, clone.tsid,
                                        clone.reserved3, clone.parent_sid, clone.sat_id),
        element);
}

void Loader::load(const Pid& pid, std::size_t index) {
    check(run_.engine.addRec_PID(std::make_unique<tRec_PID>(pid.id, pid.reserved1, pid.reserved2,
                                                            pid.reserved3, pid.audio, pid.order, pid.sid)),
          {fmt::format("/pids/{}", index), fmt::format("PID {} of SID {}", pid.id, pid.sid)});
}

void Loader::load(const HomeChannel& channel, std::size_t index) {
    check(run_.engine.addHomeChannel(channel.onid, channel.tsid),
          {fmt::format("/home_channels/{}", index),
           fmt::format("home channel {}/{}", channel.onid, channel.tsid)});
}

void note_groups_and_musts(const Headend& headend, EngineRun& run) {
    std::map<std::string, std::size_t> known;
    bool has_variants = false;
    run.musts_wanted = musts_wanted(headend.services);
    for (std::size_t index = 0; index < headend.services.size(); ++index) {
        const Service& service = headend.services[index];
        has_variants = has_variants || is_variant(service);
        if (run.services[index] == nullptr)
            continue;
        if (service.must)
            run.musts.insert(run.services[index]);
        if (service.group.empty())
            continue;
        const auto [group, is_new] = known.emplace(service.group, run.groups.size());
        if (is_new)
            run.groups.push_back(service.group);
        run.group_of.emplace(run.services[index], group->second);
    }
    if (!has_variants)
        return;
    for (const OneOf& group : one_of_groups(headend.services)) {
        for (std::size_t place = 0; place < group.variants.size(); ++place)
            if (const tRec_Servicio* const record = run.services[group.variants[place]])
                run.variants.push_back({group.name, record, place + 1, group.variants.size()});
    }
}

} // namespace

std::string name_in(const EngineRun& run, const std::string& mac) {
    const auto label = run.labels.find(mac);
    return module_name(mac, label == run.labels.end() ? "" : label->second);
}

std::string meaning_of_refusal(int code) {
    switch (code) {
    case 0:
        return "there is nothing to load";
    case tRecalculo::ERROR_INDICE_INCOHERENTE:
        return "its index of services is inconsistent";
    case tRecalculo::ERROR_MODULO_YA_CARGADO:
        return "a module with this MAC is already loaded";
    case tRecalculo::ERROR_SIN_MODULO:
        return "there is no such module";
    case tRecalculo::ERROR_SIN_SALIDA:
        return "the module has no such output";
    case tRecalculo::ERROR_HOME_CHANNEL_YA_CARGADO:
        return "this home channel is already loaded";
    case tRecalculo::ERROR_CLON_SIN_PADRE:
        return "a clone without parent";
    case tRecalculo::ERROR_PID_SIN_SERVICIO:
        return "no service has this SID";
    default:
        return "for a reason unknown to this program";
    }
}

EngineRun load_engine(const Headend& headend, const std::string& file) {
    EngineRun run;
    Loader loader(run, file);
    loader.load_all(headend.modules);
    const AskedFor asked = asked_for(headend);
    run.services.resize(headend.services.size());
    loader.load_all(headend.services, asked.services);
    loader.load_all(headend.clones, asked.clones);
    loader.load_all(headend.pids, asked.pids);
    loader.load_all(headend.home_channels);
    note_groups_and_musts(headend, run);
    run.not_asked_for =
        static_cast<std::size_t>(std::count(asked.services.begin(), asked.services.end(), false));
    for (const Module& module : headend.modules)
        if (!module.label.empty())
            run.labels.emplace(module.mac, module.label);
    run.receptions = by_stream(headend.streams);
    return run;
}

void run_engine(EngineRun& run, const std::string& file) {
    int code = 0;
    run_bounded(run, file, [&] { code = run.engine.Main_Recalculo(); });
    if (code != tRecalculo::RETURN_OK)
        throw Failure(fmt::format("{}: the engine could not run: no module is the controller; give one of "
                                  "/modules the member \"controller\": true",
                                  file),
                      ExitCode::engine_did_not_run);
}

} // namespace zarven::tool
