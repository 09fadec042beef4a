// Timing of one library call over an array against a peer's loop over the
// same data in the same run, one thread on both sides. Counters:
// `ns_per_item` (library), `eigen_ns_per_item` (peer), `ratio` = ours / peer.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

#include "orlcore.h"

namespace bench {

template <class Ours, class Peer>
void timePair(benchmark::State& state, int items, Ours&& ours, Peer&& peer)
{
    const int saved = threads_omp_of_n_orl;
    threads_omp_of_n_orl = 1;
    double a = 0, b = 0;
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        ours();
        benchmark::ClobberMemory();
        const auto t1 = Clock::now();
        peer();
        benchmark::ClobberMemory();
        const auto t2 = Clock::now();
        a += std::chrono::duration<double, std::nano>(t1 - t0).count();
        b += std::chrono::duration<double, std::nano>(t2 - t1).count();
    }
    threads_omp_of_n_orl = saved;
    const double n = double(state.iterations()) * items;
    state.counters["ns_per_item"] = a / n;
    state.counters["eigen_ns_per_item"] = b / n;
    state.counters["ratio"] = a / b;
}

}  // namespace bench
