// The bound with prices that differ between kinds of modules. A module with four inputs and two outputs is
// short of bitrate, one with two inputs and four outputs of inputs; with one price for all of them what the
// one has too much of would make up for what the other lacks. docs/tool.md tells why it is a bound.
//
// Some thousands of services, a dozen kinds at the most; some hundreds of sums over all services.

#ifndef RECALCULO_BOUND_BY_KIND_H
#define RECALCULO_BOUND_BY_KIND_H

#include <cstdint>
#include <vector>

namespace zarven::tool {

/// What one service takes of each resource that has a price.
struct Demand {
    std::uint32_t bitrate = 0;
    std::uint32_t pids = 0;
    std::uint32_t transcoders = 0;
    std::uint64_t value = 1;
};

/// A number for each resource that has a price on all modules: how much of it, or what one of it costs.
struct PerResource {
    double bitrate = 0;
    double pids = 0;
    double transcoders = 0;
};

/// What all modules of a kind have.
struct KindTotals {
    std::uint64_t inputs = 0;
    std::uint64_t bitrate = 0;
    /// The most that one of them has.
    PerResource of_one = {};
};

/// Modules with as much bitrate for each input are one kind, and those with about as much where there would
/// be too many kinds. `modules`: each with an input.
std::vector<KindTotals> kinds_of(std::vector<KindTotals> modules);

/// What is to be priced. The lists must outlive it.
struct PricedDemands {
    /// By stream.
    const std::vector<std::vector<Demand>>& streams;
    /// Those that need no input.
    const std::vector<Demand>& of_any_stream;
    std::vector<KindTotals> kinds;
    std::uint64_t pids = 0;
    std::uint64_t transcoders = 0;
};

/// The least bound that is found, on the way from these prices on, at first the same for all kinds. The same
/// numbers give the same one.
double least_bound_by_kind(const PricedDemands& demands, const PerResource& start);

} // namespace zarven::tool

#endif
