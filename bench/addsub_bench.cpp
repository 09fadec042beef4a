// Matrix add: bandwidth on arrays far larger than the cache, as a fraction of
// memcpy's in the same run, and time per item in cache against an Eigen
// loop over mapped fixed-size matrices compiled with the same flags.
//
//   cmake --workflow --preset bench && build/bench/bench/addsub_bench
//
// Counters: `vs_memcpy` = bytes moved per second / memcpy's bytes per second
// (bytes read plus bytes written, both sides); `ns_per_item`.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <vector>

#include "orlcore.h"
#include "orlm.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Core>
#endif

namespace {

constexpr int kLarge = 2 << 20;  // items of 4x4 floats: 128 MiB an array
constexpr int kSmall = 256;      // 16 KiB an array: stays in L1/L2

struct Threads {
    int saved = threads_omp_of_n_orl;
    explicit Threads(int n) { threads_omp_of_n_orl = n; }
    ~Threads() { threads_omp_of_n_orl = saved; }
};

std::vector<float>& buf(int which, size_t n)
{
    static std::vector<float> b[4];
    if (b[which].size() != n) b[which].assign(n, 1.0f + which);
    return b[which];
}

// memcpy bandwidth of a large buffer (bytes read + written per second), best of 5.
double memcpyBandwidth()
{
    static double bw = [] {
        const size_t n = size_t(kLarge) * 16;
        std::vector<float>& a = buf(0, n);
        std::vector<float>& b = buf(3, n);
        double best = 0;
        for (int r = 0; r < 5; ++r) {
            const auto t0 = std::chrono::steady_clock::now();
            std::memcpy(b.data(), a.data(), n * sizeof(float));
            const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
            best = std::max(best, 2.0 * n * sizeof(float) / s);
            benchmark::DoNotOptimize(b.data());
        }
        return best;
    }();
    return bw;
}

void BM_memcpy(benchmark::State& state)
{
    const size_t n = size_t(kLarge) * 16;
    std::vector<float>& a = buf(0, n);
    std::vector<float>& b = buf(3, n);
    for (auto _ : state) {
        std::memcpy(b.data(), a.data(), n * sizeof(float));
        benchmark::ClobberMemory();
    }
    const double bytes = 2.0 * n * sizeof(float) * state.iterations();
    state.counters["GBps"] = benchmark::Counter(bytes / 1e9, benchmark::Counter::kIsRate);
}

// Add_mam_32f (shared second matrix) or Add_mama_32f on 4x4 unit-stride arrays.
template <bool shared>
void add4x4(const std::vector<float>& a, const std::vector<float>& b, std::vector<float>& d, int count)
{
    if (shared)
        orlmAdd_mam_32f(a.data(), 64, 16, 4, b.data(), 16, 4, d.data(), 64, 16, 4, 4, 4, count);
    else
        orlmAdd_mama_32f(a.data(), 64, 16, 4, b.data(), 64, 16, 4, d.data(), 64, 16, 4, 4, 4, count);
}

// range(0): items, range(1): threads. Large arrays report bandwidth, arrays
// in cache the time per item.
template <bool shared>
void BM_add(benchmark::State& state)
{
    const int items = int(state.range(0));
    Threads th(int(state.range(1)));
    const size_t n = size_t(items) * 16;
    std::vector<float>& a = buf(0, n);
    std::vector<float>& b = buf(1, shared ? 16 : n);
    std::vector<float>& d = buf(2, n);
    for (auto _ : state) {
        add4x4<shared>(a, b, d, items);
        benchmark::ClobberMemory();
    }
    if (items == kLarge) {
        const double streams = shared ? 2 : 3;
        const double bytes = streams * n * sizeof(float) * state.iterations();
        state.counters["GBps"] = benchmark::Counter(bytes / 1e9, benchmark::Counter::kIsRate);
        state.counters["vs_memcpy"] = benchmark::Counter(bytes / memcpyBandwidth(), benchmark::Counter::kIsRate);
    } else {
        state.counters["ns_per_item"] = benchmark::Counter(double(items) * state.iterations() * 1e-9,
                                                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    }
}

#ifdef ORLM_HAVE_EIGEN
template <bool shared>
void BM_eigen_cache(benchmark::State& state)
{
    using M = Eigen::Map<Eigen::Matrix4f, Eigen::Unaligned>;
    using CM = Eigen::Map<const Eigen::Matrix4f, Eigen::Unaligned>;
    const size_t n = size_t(kSmall) * 16;
    std::vector<float>& a = buf(0, n);
    std::vector<float>& b = buf(1, shared ? 16 : n);
    std::vector<float>& d = buf(2, n);
    for (auto _ : state) {
        for (int k = 0; k < kSmall; ++k)
            M(d.data() + 16 * k) = CM(a.data() + 16 * k) + CM(b.data() + (shared ? 0 : 16 * k));
        benchmark::ClobberMemory();
    }
    state.counters["ns_per_item"] =
        benchmark::Counter(double(kSmall) * state.iterations() * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_eigen_cache<false>)->Name("eigen_add_4x4_array_array_in_cache");
BENCHMARK(BM_eigen_cache<true>)->Name("eigen_add_4x4_array_shared_in_cache");
#endif

BENCHMARK(BM_memcpy)->Name("memcpy_128MiB")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_add<false>)->Name("Add_mama_32f_4x4_2M_items")->Args({kLarge, 1})->Args({kLarge, 2})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_add<true>)->Name("Add_mam_32f_4x4_2M_items")->Args({kLarge, 1})->Args({kLarge, 2})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_add<false>)->Name("Add_mama_32f_4x4_in_cache")->Args({kSmall, 1});
BENCHMARK(BM_add<true>)->Name("Add_mam_32f_4x4_in_cache")->Args({kSmall, 1});

}  // namespace

BENCHMARK_MAIN();
