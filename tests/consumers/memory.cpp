// Measures what the engine takes from the heap, with the allocator's own overhead, and holds it against what
// docs/embedding.md tells. The head-end: 50 streams of 20 services, 2 PIDs and one clone for every fourth; 25
// modules of 4 inputs and 2 outputs.

#include <tRecalculo.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <new>
#include <string>

namespace {

std::size_t in_use = 0;
std::size_t peak = 0;

// glibc keeps one word before each block.
std::size_t cost(void* block) {
    return malloc_usable_size(block) + sizeof(std::size_t);
}

} // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc();
    in_use += cost(block);
    peak = std::max(peak, in_use);
    return block;
}

void operator delete(void* block) noexcept {
    if (block == nullptr)
        return;
    in_use -= cost(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

extern "C" void syslog(int, const char*, ...) {}

extern "C" unsigned int sleep(unsigned int) {
    return 0;
}

namespace {

using zarven::tRec_PID;
using zarven::tRec_Servicio;
using zarven::tRecalculo;

constexpr unsigned MODULES = 25;
constexpr unsigned STREAMS = 50;
constexpr unsigned PER_STREAM = 20;
constexpr unsigned SERVICES = STREAMS * PER_STREAM;

bool fits = true;

// Prints a measure in whole bytes, and checks it against what is promised for 32 and for 64 bits.
void report(const char* what, std::size_t bytes, unsigned count, std::size_t most_32, std::size_t most_64) {
    const std::size_t most = sizeof(void*) == 4 ? most_32 : most_64;
    const std::size_t each = bytes / count;
    std::printf("%-32s %5zu bytes (at most %zu)\n", what, each, most);
    fits = fits && each <= most;
}

// The heap that `step` leaves in use.
template <typename Step> std::size_t taken_by(Step step) {
    const std::size_t before = in_use;
    step();
    return in_use - before;
}

std::shared_ptr<tRec_Servicio> service(unsigned stream, unsigned key) {
    auto result = std::make_shared<tRec_Servicio>();
    result->idService = static_cast<long>(key);
    result->SID = result->OSID = result->LCN = static_cast<unsigned short>(key);
    result->ONID = 1;
    result->TSID = static_cast<unsigned short>(stream + 1);
    result->peakBitRate = 3000;
    result->NombreEntrada = result->NombreSalida = "Canal " + std::to_string(key);
    return result;
}

template <typename Load> void for_each_service(Load load) {
    for (unsigned stream = 0; stream < STREAMS; ++stream)
        for (unsigned n = 1; n <= PER_STREAM; ++n)
            load(stream, stream * PER_STREAM + n);
}

void load_modules(tRecalculo& engine) {
    for (unsigned m = 0; m < MODULES; ++m) {
        const std::string mac = "02:00:00:00:00:" + std::to_string(10 + m);
        engine.addModulo(mac, 3, 4, 2, 64, m == 0);
        engine.configurarSalida(mac, 1, 38000);
        engine.configurarSalida(mac, 2, 38000);
    }
}

void load_pids(tRecalculo& engine, unsigned key) {
    for (long n = 0; n < 2; ++n)
        engine.addRec_PID(std::make_unique<tRec_PID>(2 * static_cast<long>(key) + n, 0, 0, 0, "spa", 1,
                                                     static_cast<unsigned short>(key)));
}

void measure() {
    tRecalculo engine;
    report("module of 4 inputs, 2 outputs", taken_by([&] { load_modules(engine); }), MODULES, 660, 1090);
    report("service", taken_by([&] {
               for_each_service(
                   [&](unsigned stream, unsigned key) { engine.addRec_Servicio(service(stream, key)); });
           }),
           SERVICES, 220, 325);
    report("PID",
           taken_by([&] { for_each_service([&](unsigned, unsigned key) { load_pids(engine, key); }); }),
           2 * SERVICES, 100, 160);
    report("clone", taken_by([&] {
               for_each_service([&](unsigned stream, unsigned key) {
                   if (key % 4 == 0)
                       engine.addRec_Servicio(service(stream, key));
               });
           }),
           SERVICES / 4, 190, 250);
    const std::size_t loaded = in_use;
    peak = in_use;
    engine.Main_Recalculo();
    report("a run at its peak, for a service", peak - loaded, SERVICES, 180, 310);
    std::printf("%zu bytes in all for %u services with %u PIDs, %u clones and %u modules\n", peak, SERVICES,
                2 * SERVICES, SERVICES / 4, MODULES);
}

} // namespace

int main() {
    const std::size_t before = in_use;
    measure();
    if (in_use != before)
        std::printf("%zu bytes not given back\n", in_use - before);
    return fits && in_use == before ? 0 : 1;
}
