// The library against peer implementations over the same data in the same
// run, on one thread: each iteration runs the library's call and then each
// peer's, and the counters give nanoseconds per item of the thread's CPU
// time and the ratios (library / peer), so that a loaded machine shifts both
// sides alike.
#pragma once

#include <benchmark/benchmark.h>

#include <ctime>
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

// CPU time of the calling thread: on a machine shared with other work, the
// time this thread was not running counts for neither side.
inline double threadNs()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e9 + double(t.tv_nsec);
}

// Each side runs `batch` calls between two readings of the clock, so that a
// call of a few hundred nanoseconds is not lost in the clock's own cost; the
// batch is sized once from a first call of the library (about 20 us).
inline void timeAgainst(benchmark::State& state, int itemsPerCall, const std::function<bool()>& ours,
                        const std::vector<Peer>& peers)
{
    const int saved = threads_omp_of_n_orl;
    threads_omp_of_n_orl = 1;
    double t0 = threadNs();
    if (!ours()) state.SkipWithError("the library's call failed");
    const double first = threadNs() - t0;
    const int batch = first >= 20000.0 ? 1 : first <= 20.0 ? 1000 : int(20000.0 / first);
    double mine = 0;
    std::vector<double> theirs(peers.size(), 0.0);
    for (auto _ : state) {
        bool ok = true;
        t0 = threadNs();
        for (int r = 0; r < batch; ++r) ok = ours() && ok;
        mine += threadNs() - t0;
        if (!ok) state.SkipWithError("the library's call failed");
        for (std::size_t p = 0; p < peers.size(); ++p) {
            t0 = threadNs();
            for (int r = 0; r < batch; ++r) peers[p].run();
            theirs[p] += threadNs() - t0;
        }
    }
    threads_omp_of_n_orl = saved;
    const double items = double(state.iterations()) * batch * itemsPerCall;
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
