// The library against peer implementations over the same data in the same
// run, on one thread: each iteration runs the library's call and then each
// peer's, and the counters give nanoseconds per item and the ratios
// (library / peer), so that a loaded machine shifts both sides alike.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "orlcore.h"

namespace bench {

struct Peer {
    std::string name;  // counter `<name>_ns_per_item` and `ratio<suffix>`
    std::string ratioSuffix;
    std::function<void()> run;
};

inline void timeAgainst(benchmark::State& state, int itemsPerCall, const std::function<bool()>& ours,
                        const std::vector<Peer>& peers)
{
    const int saved = threads_omp_of_n_orl;
    threads_omp_of_n_orl = 1;
    using Clock = std::chrono::steady_clock;
    double mine = 0;
    std::vector<double> theirs(peers.size(), 0.0);
    for (auto _ : state) {
        auto t0 = Clock::now();
        if (!ours()) state.SkipWithError("the library's call failed");
        auto t1 = Clock::now();
        mine += std::chrono::duration<double, std::nano>(t1 - t0).count();
        for (std::size_t p = 0; p < peers.size(); ++p) {
            t0 = Clock::now();
            peers[p].run();
            t1 = Clock::now();
            theirs[p] += std::chrono::duration<double, std::nano>(t1 - t0).count();
        }
    }
    threads_omp_of_n_orl = saved;
    const double items = double(state.iterations()) * itemsPerCall;
    state.counters["ns_per_item"] = mine / items;
    for (std::size_t p = 0; p < peers.size(); ++p) {
        state.counters[peers[p].name + "_ns_per_item"] = theirs[p] / items;
        state.counters["ratio" + peers[p].ratioSuffix] = mine / theirs[p];
    }
}

// One peer (Eigen): counters `ns_per_item`, `eigen_ns_per_item` and `ratio`.
template <class Ours, class Peer>
void timePair(benchmark::State& state, int itemsPerCall, Ours&& ours, Peer&& peer)
{
    timeAgainst(state, itemsPerCall, [&] { return ours(), benchmark::ClobberMemory(), true; },
                {{"eigen", "", [&] { peer(), benchmark::ClobberMemory(); }}});
}

}  // namespace bench
