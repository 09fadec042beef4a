// Saxpy and LComb on arrays of 4-vectors of floats, with the vector add of
// the add/sub family beside them as the plainest of the three (so this
// program needs both families: -DORLM_FAMILY_FILTER="addsub;saxpy").
//
// Out of cache: bytes moved per second (bytes read plus bytes written) as a
// fraction of a plain streaming loop that does the same arithmetic over the
// same arrays with non-temporal stores, on the same number of threads
// (`vs_stream`, target >= 0.9), and of memcpy's (`vs_memcpy`, information).
// In cache: time per item as a fraction of an Eigen loop over mapped
// fixed-size vectors compiled with the same flags (`vs_eigen`, target <= 1).
//
//   cmake -S . -B build/devbench -DCMAKE_BUILD_TYPE=Release -DORLM_BENCH=ON -DORLM_TESTS=OFF \
//         -DORLM_FAMILY_FILTER="addsub;saxpy"
//   cmake --build build/devbench -j2 --target saxpy_bench && build/devbench/bench/saxpy_bench
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <cstring>
#include <thread>
#include <vector>

#include <xmmintrin.h>

#include "orlcore.h"
#include "orlm.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Core>
#endif

namespace {

constexpr int kLarge = 4 << 20;  // items of 4 floats: 64 MiB an array
constexpr int kSmall = 256;      // 4 KiB an array: stays in L1
constexpr float kV1 = 1.5f, kV2 = -0.75f;

enum class Op { Add, Saxpy, LComb };

struct Threads {
    int saved = threads_omp_of_n_orl;
    explicit Threads(int n) { threads_omp_of_n_orl = n; }
    ~Threads() { threads_omp_of_n_orl = saved; }
};

std::vector<float>& buf(int which, size_t n)
{
    static std::vector<float> b[3];
    if (b[which].size() != n) b[which].assign(n, 1.0f + which);
    return b[which];
}

orlStatus library(Op op, const float* a, const float* b, float* d, int items)
{
    switch (op) {
    case Op::Add: return orlmAdd_vava_32f(a, 16, 4, b, 16, 4, d, 16, 4, 4, items);
    case Op::Saxpy: return orlmSaxpy_vava_32f(a, 16, 4, kV1, b, 16, 4, d, 16, 4, 4, items);
    case Op::LComb: return orlmLComb_vava_32f(a, 16, 4, kV1, b, 16, 4, kV2, d, 16, 4, 4, items);
    }
    return orlStatusOk;
}

// The ceiling: the same arithmetic with packed loads and non-temporal stores.
void streamRange(Op op, const float* a, const float* b, float* d, size_t from, size_t to)
{
    const __m128 v1 = _mm_set1_ps(kV1), v2 = _mm_set1_ps(kV2);
    for (size_t i = from; i < to; i += 4) {
        const __m128 x = _mm_load_ps(a + i), y = _mm_load_ps(b + i);
        const __m128 r = op == Op::Add     ? _mm_add_ps(x, y)
                         : op == Op::Saxpy ? _mm_add_ps(_mm_mul_ps(v1, x), y)
                                           : _mm_add_ps(_mm_mul_ps(v1, x), _mm_mul_ps(v2, y));
        _mm_stream_ps(d + i, r);
    }
    _mm_sfence();
}

void stream(Op op, const float* a, const float* b, float* d, size_t n, int threads)
{
    std::vector<std::thread> pool;
    const size_t part = (n / 4 + threads - 1) / threads * 4;
    for (int t = 1; t < threads; ++t)
        pool.emplace_back(streamRange, op, a, b, d, std::min(n, t * part), std::min(n, (t + 1) * part));
    streamRange(op, a, b, d, 0, std::min(n, part));
    for (std::thread& t : pool) t.join();
}

// Best of 5, in wall time, or in the calling thread's CPU time (what the
// in-cache benchmarks report, so that the ratio compares like with like on a
// loaded machine).
template <class F>
double bestSeconds(F f, clockid_t clock = CLOCK_MONOTONIC)
{
    double best = 1e30;
    for (int r = 0; r < 5; ++r) {
        timespec t0, t1;
        clock_gettime(clock, &t0);
        f();
        clock_gettime(clock, &t1);
        best = std::min(best, double(t1.tv_sec - t0.tv_sec) + 1e-9 * double(t1.tv_nsec - t0.tv_nsec));
    }
    return best;
}

double memcpyBandwidth()
{
    static const double bw = [] {
        const size_t n = size_t(kLarge) * 4;
        std::vector<float>& a = buf(0, n);
        std::vector<float>& d = buf(2, n);
        return 2.0 * n * sizeof(float) / bestSeconds([&] {
            std::memcpy(d.data(), a.data(), n * sizeof(float));
            benchmark::DoNotOptimize(d.data());
        });
    }();
    return bw;
}

// Bytes per second of the streaming loop, per operation and thread count.
double streamBandwidth(Op op, int threads)
{
    static double bw[3][3] = {};
    double& x = bw[int(op)][threads];
    if (x == 0) {
        const size_t n = size_t(kLarge) * 4;
        std::vector<float>& a = buf(0, n);
        std::vector<float>& b = buf(1, n);
        std::vector<float>& d = buf(2, n);
        x = 3.0 * n * sizeof(float) / bestSeconds([&] {
            stream(op, a.data(), b.data(), d.data(), n, threads);
            benchmark::DoNotOptimize(d.data());
        });
    }
    return x;
}

#ifdef ORLM_HAVE_EIGEN
void eigenLoop(Op op, const float* a, const float* b, float* d, int items)
{
    using M = Eigen::Map<Eigen::Vector4f, Eigen::Unaligned>;
    using CM = Eigen::Map<const Eigen::Vector4f, Eigen::Unaligned>;
    for (int k = 0; k < items; ++k) {
        const CM x(a + 4 * k), y(b + 4 * k);
        if (op == Op::Add)
            M(d + 4 * k) = x + y;
        else if (op == Op::Saxpy)
            M(d + 4 * k) = kV1 * x + y;
        else
            M(d + 4 * k) = kV1 * x + kV2 * y;
    }
}

// Seconds per item of the Eigen loop in cache.
double eigenPerItem(Op op)
{
    static double t[3] = {};
    if (t[int(op)] == 0) {
        const size_t n = size_t(kSmall) * 4;
        std::vector<float>& a = buf(0, n);
        std::vector<float>& b = buf(1, n);
        std::vector<float>& d = buf(2, n);
        t[int(op)] = bestSeconds([&] {
                         for (int r = 0; r < 2000; ++r) {
                             eigenLoop(op, a.data(), b.data(), d.data(), kSmall);
                             benchmark::ClobberMemory();
                         }
                     }, CLOCK_THREAD_CPUTIME_ID) /
                     (2000.0 * kSmall);
    }
    return t[int(op)];
}

void BM_eigen(benchmark::State& state)
{
    const Op op = Op(state.range(0));
    const size_t n = size_t(kSmall) * 4;
    std::vector<float>& a = buf(0, n);
    std::vector<float>& b = buf(1, n);
    std::vector<float>& d = buf(2, n);
    for (auto _ : state) {
        eigenLoop(op, a.data(), b.data(), d.data(), kSmall);
        benchmark::ClobberMemory();
    }
    state.counters["ns_per_item"] =
        benchmark::Counter(double(kSmall) * state.iterations() * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_eigen)->Name("eigen_in_cache/Add")->Arg(int(Op::Add));
BENCHMARK(BM_eigen)->Name("eigen_in_cache/Saxpy")->Arg(int(Op::Saxpy));
BENCHMARK(BM_eigen)->Name("eigen_in_cache/LComb")->Arg(int(Op::LComb));
#endif

// range(0): operation, range(1): items, range(2): threads.
void BM_lib(benchmark::State& state)
{
    const Op op = Op(state.range(0));
    const int items = int(state.range(1));
    const int threads = int(state.range(2));
    Threads th(threads);
    const size_t n = size_t(items) * 4;
    std::vector<float>& a = buf(0, n);
    std::vector<float>& b = buf(1, n);
    std::vector<float>& d = buf(2, n);
    for (auto _ : state) {
        library(op, a.data(), b.data(), d.data(), items);
        benchmark::ClobberMemory();
    }
    if (items == kLarge) {
        const double bytes = 3.0 * n * sizeof(float) * state.iterations();
        state.counters["GBps"] = benchmark::Counter(bytes / 1e9, benchmark::Counter::kIsRate);
        state.counters["vs_stream"] = benchmark::Counter(bytes / streamBandwidth(op, threads), benchmark::Counter::kIsRate);
        state.counters["vs_memcpy"] = benchmark::Counter(bytes / memcpyBandwidth(), benchmark::Counter::kIsRate);
    } else {
        state.counters["ns_per_item"] = benchmark::Counter(double(items) * state.iterations() * 1e-9,
                                                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
#ifdef ORLM_HAVE_EIGEN
        // time per item / Eigen's time per item
        state.counters["vs_eigen"] = benchmark::Counter(double(items) * state.iterations() * eigenPerItem(op),
                                                        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
#endif
    }
}

BENCHMARK(BM_lib)->Name("Add_vava_32f_4/out_of_cache")->Args({int(Op::Add), kLarge, 1})->Args({int(Op::Add), kLarge, 2})
    ->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_lib)->Name("Saxpy_vava_32f_4/out_of_cache")->Args({int(Op::Saxpy), kLarge, 1})->Args({int(Op::Saxpy), kLarge, 2})
    ->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_lib)->Name("LComb_vava_32f_4/out_of_cache")->Args({int(Op::LComb), kLarge, 1})->Args({int(Op::LComb), kLarge, 2})
    ->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_lib)->Name("Add_vava_32f_4/in_cache")->Args({int(Op::Add), kSmall, 1});
BENCHMARK(BM_lib)->Name("Saxpy_vava_32f_4/in_cache")->Args({int(Op::Saxpy), kSmall, 1});
BENCHMARK(BM_lib)->Name("LComb_vava_32f_4/in_cache")->Args({int(Op::LComb), kSmall, 1});

}  // namespace

BENCHMARK_MAIN();
