// The library against peer implementations over the same data in the same
// run, on one thread: each iteration runs the library's call and then each
// peer's, and the counters give nanoseconds per item of the thread's CPU
// time and the ratios (library / peer), so that a loaded machine shifts both
// sides alike.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
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

// Benchmarks named "<case>/<side>" with an "ns/item" counter, the library's
// side named "orlm": console output as usual, then one line per case with the
// library's ns per item and, for each other side, its ns per item and the
// ratio library / side (a missing side prints "-"). With
// --benchmark_repetitions the median stands for the case.
class SideTable : public benchmark::ConsoleReporter {
public:
    SideTable(std::vector<std::string> sides, const char* legend) : sides_(std::move(sides)), legend_(legend) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            if (r.run_type == Run::RT_Aggregate && r.aggregate_name != "median") continue;
            const std::string name = r.run_name.function_name;
            const auto slash = name.rfind('/');
            const auto it = r.counters.find("ns/item");
            if (slash == std::string::npos || it == r.counters.end()) continue;
            ns_[name.substr(0, slash)][name.substr(slash + 1)] = it->second.value;
        }
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\n%-22s %10s", "case", "orlm ns");
        for (const std::string& s : sides_) std::printf(" %10s %10s", (s + " ns").c_str(), ("/" + s).c_str());
        std::printf("   %s\n", legend_);
        for (auto& [name, bySide] : ns_) {
            if (!bySide.count("orlm")) continue;
            const double ours = bySide["orlm"];
            std::printf("%-22s %10.2f", name.c_str(), ours);
            for (const std::string& s : sides_) {
                if (bySide.count(s))
                    std::printf(" %10.2f %10.2f", bySide[s], ours / bySide[s]);
                else
                    std::printf(" %10s %10s", "-", "-");
            }
            std::printf("\n");
        }
    }

private:
    std::vector<std::string> sides_;
    const char* legend_;
    std::map<std::string, std::map<std::string, double>> ns_;
};

// main() of a benchmark program that ends with a SideTable.
inline int runWithSideTable(int argc, char** argv, std::vector<std::string> sides, const char* legend)
{
    benchmark::Initialize(&argc, argv);
    SideTable table(std::move(sides), legend);
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::Shutdown();
    return 0;
}

}  // namespace bench
