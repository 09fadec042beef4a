// Times the library against a peer over the same data in the same run, one
// thread on both sides, and reports ns per item and the ratio:
// `ns_per_item` (orlm), `eigen_ns_per_item` (the peer), `ratio` = orlm / peer.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

#include "orlcore.h"

template <class Ours, class Theirs>
void timeAgainst(benchmark::State& state, int itemsPerCall, Ours&& ours, Theirs&& theirs)
{
    const int saved = threads_omp_of_n_orl;
    threads_omp_of_n_orl = 1;
    double t_ours = 0, t_theirs = 0;
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        ours();
        const auto t1 = Clock::now();
        theirs();
        const auto t2 = Clock::now();
        t_ours += std::chrono::duration<double, std::nano>(t1 - t0).count();
        t_theirs += std::chrono::duration<double, std::nano>(t2 - t1).count();
    }
    threads_omp_of_n_orl = saved;
    const double items = double(state.iterations()) * itemsPerCall;
    state.counters["ns_per_item"] = t_ours / items;
    state.counters["eigen_ns_per_item"] = t_theirs / items;
    state.counters["ratio"] = t_ours / t_theirs;
}
