// x: a service is on an output. y: a module receives a stream. h: a module transcodes an HD service.

#include "placement_program.h"

#include <map>
#include <set>
#include <vector>

#include <fmt/format.h>

#include "Reglas.h"
#include "headend/stream.h"
#include "placement/running/engine_run.h"
#include "placement/services.h"

namespace zarven::tool {

namespace {

class Program {
public:
    explicit Program(const Headend& headend) : run_(load_engine(headend, "")) {
        for (const auto& service : run_.engine.listaServicios)
            streams_.emplace(stream_of(*service), streams_.size());
    }

    std::string text();

private:
    const auto& services() const { return run_.engine.listaServicios; }
    static std::string x(std::size_t service, std::size_t output) {
        return fmt::format("x{}_{}", service, output);
    }
    static std::string y(std::size_t stream, std::size_t module) {
        return fmt::format("y{}_{}", stream, module);
    }

    void add(const tRec_Modulo& module);
    void add_output(const tRec_Salida& output, std::vector<std::size_t>& outputs);
    void limit(const std::string& sum, std::uint64_t most, const char* sign = "<=") {
        if (!sum.empty())
            limits_ += fmt::format("{} {} {}\n", sum, sign, most);
    }
    template <class Weight>
    std::string sum(const std::vector<std::size_t>& outputs, const Weight& weight) const;

    EngineRun run_;
    std::map<Stream, std::size_t> streams_;
    std::string goal_;
    std::string limits_;
    std::string variables_;
    std::vector<std::string> places_;
    std::size_t modules_ = 0;
    std::size_t outputs_ = 0;
};

template <class Weight>
std::string Program::sum(const std::vector<std::size_t>& outputs, const Weight& weight) const {
    std::string text;
    for (std::size_t service = 0; service < services().size(); ++service)
        if (const std::uint64_t number = weight(*services()[service]); number != 0)
            for (const std::size_t output : outputs)
                text += fmt::format(" + {} {}", number, x(service, output));
    return text;
}

void Program::add_output(const tRec_Salida& output, std::vector<std::size_t>& outputs) {
    if (!reglas::bajoTecho(0, output.BitRateMax))
        return;
    const std::vector<std::size_t> one = {outputs_++};
    outputs.push_back(one.front());
    limit(sum(one, [](const tRec_Servicio& service) { return service.peakBitRate; }),
          reglas::cargaMaxima(output.BitRateMax));
    limit(sum(one, [](const tRec_Servicio&) { return 1; }), output.NumServiciosMax);
}

void Program::add(const tRec_Modulo& module) {
    std::vector<std::size_t> outputs;
    for (const auto& [number, output] : module.mapSalidas)
        add_output(output, outputs);
    const std::size_t number = modules_++;
    limit(sum(outputs, [](const tRec_Servicio& service) { return service.number_PIDs_CA; }),
          module.PIDsModuloMax);
    const auto is_hd = [](const tRec_Servicio& service) {
        return reglas::ocupaTranscoder(service.Transcoding) && reglas::esHD(service.VideoFormatE) ? 1 : 0;
    };
    const auto is_transcoded = [](const tRec_Servicio& service) {
        return reglas::ocupaTranscoder(service.Transcoding) ? 1 : 0;
    };
    // Without the SD ceiling none can begin.
    const std::uint32_t sd = module.SD_MAX_Transcoding;
    const std::uint32_t hd = sd == 0 ? 0 : module.HD_MAX_Transcoding;
    if (const std::string all = sum(outputs, is_transcoded); !all.empty()) {
        variables_ += fmt::format(" h{}\n", number);
        limits_ += fmt::format("{} + {} h{} <= {}\n", all, static_cast<std::int64_t>(sd) - hd, number, sd);
        if (const std::string some = sum(outputs, is_hd); !some.empty())
            limits_ += fmt::format("{} - {} h{} <= 0\n", some, hd, number);
    }
    std::string inputs;
    for (const auto& [stream, place] : streams_) {
        inputs += fmt::format(" + {}", y(place, number));
        variables_ += fmt::format(" {}\n", y(place, number));
    }
    limit(inputs, module.mapEntradas.size());
    for (std::size_t service = 0; service < services().size(); ++service) {
        std::string here;
        for (const std::size_t output : outputs) {
            here += fmt::format(" + {}", x(service, output));
            variables_ += fmt::format(" {}\n", x(service, output));
            goal_ += fmt::format(" + {}\n", x(service, output));
        }
        if (here.empty())
            continue;
        places_[service] += here;
        limits_ +=
            fmt::format("{} - {} <= 0\n", here, y(streams_.at(stream_of(*services()[service])), number));
    }
}

std::string Program::text() {
    places_.resize(services().size());
    for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Inicial)
        add(module);
    for (const std::string& places : places_)
        limit(places, 1);
    // A head-end without outputs is one without variables, which the format does not know.
    return fmt::format("Maximize\n{} + 0 none\nSubject To\n{} none <= 1\nBinary\n{} none\nEnd\n", goal_,
                       limits_, variables_);
}

} // namespace

std::string placement_program(const Headend& headend) {
    return Program(headend).text();
}

} // namespace zarven::tool
