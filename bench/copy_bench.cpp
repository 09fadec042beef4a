// Data movement: Copy_ma_32f_SS and Transpose_ma_32f of 4x4 matrices, and
// 512x512 transposes, against memory bandwidth and against Eigen. Builds
// with the copy and transpose families:
//
//   cmake -S . -B build/devbench -DCMAKE_BUILD_TYPE=Release -DORLM_BENCH=ON -DORLM_TESTS=OFF \
//         -DORLM_FAMILY_FILTER="copy;transpose" && build/devbench/bench/copy_bench
//
// Counters on arrays far larger than the cache: `GBps` (bytes read plus bytes
// written per second), `vs_stream` = that / the bandwidth of a plain copy
// loop with non-temporal stores over the same number of bytes, `vs_memcpy`
// likewise against memcpy. In cache: `ns_per_item`, to hold against the
// Eigen loop of the same name.
#include <benchmark/benchmark.h>

#include <emmintrin.h>

#include <algorithm>
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
constexpr int kSide = 512;       // the large matrices
constexpr int kSideCount = 64;   // 512x512 matrices in 64 MiB

struct Threads {
    int saved = threads_omp_of_n_orl;
    explicit Threads(int n) { threads_omp_of_n_orl = n; }
    ~Threads() { threads_omp_of_n_orl = saved; }
};

// 64-byte aligned float buffers, kept between benchmarks.
float* buf(int which, size_t n)
{
    static std::vector<float> b[2];
    if (b[which].size() < n + 16) b[which].assign(n + 16, 1.0f + which);
    float* p = b[which].data();
    return p + (64 - reinterpret_cast<std::uintptr_t>(p) % 64) % 64 / sizeof(float);
}

// The ceiling: a copy that loads and stores 16 bytes at a time with
// non-temporal stores.
void streamCopy(const float* s, float* d, size_t n)
{
    for (size_t i = 0; i < n; i += 4) _mm_stream_ps(d + i, _mm_load_ps(s + i));
    _mm_sfence();
}

// Best of 5 of `run` moving `bytes` (read plus written), in bytes per second.
template <class F>
double bandwidth(double bytes, F run)
{
    double best = 0;
    for (int r = 0; r < 5; ++r) {
        const auto t0 = std::chrono::steady_clock::now();
        run();
        const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        best = std::max(best, bytes / s);
    }
    return best;
}

const size_t kFloats = size_t(kLarge) * 16;

double streamBandwidth()
{
    static const double bw = bandwidth(2.0 * kFloats * 4, [] { streamCopy(buf(0, kFloats), buf(1, kFloats), kFloats); });
    return bw;
}

double memcpyBandwidth()
{
    static const double bw = bandwidth(2.0 * kFloats * 4, [] {
        std::memcpy(buf(1, kFloats), buf(0, kFloats), kFloats * 4);
        benchmark::ClobberMemory();
    });
    return bw;
}

// The members as benchmarked: unit strides, items one after the other.
void copy4x4(const float* s, float* d, int n) { orlmCopy_ma_32f_SS(s, 64, 16, 4, d, 64, 16, 4, 4, 4, n); }
void transpose4x4(const float* s, float* d, int n) { orlmTranspose_ma_32f(s, 64, 16, 4, 4, 4, d, 64, 16, 4, n); }
void transpose512(const float* s, float* d, int n)
{
    constexpr int row = kSide * 4, item = kSide * row;
    if (n == 1)
        orlmTranspose_m_32f(s, row, 4, kSide, kSide, d, row, 4);
    else
        orlmTranspose_ma_32f(s, item, row, 4, kSide, kSide, d, item, row, 4, n);
}

// range(0): items, range(1): threads. All bytes read and written count.
template <void (*Op)(const float*, float*, int), int itemFloats>
void BM_large(benchmark::State& state)
{
    const int items = int(state.range(0));
    Threads th(int(state.range(1)));
    const size_t n = size_t(items) * itemFloats;
    const float* s = buf(0, n);
    float* d = buf(1, n);
    for (auto _ : state) {
        Op(s, d, items);
        benchmark::ClobberMemory();
    }
    const double bytes = 2.0 * n * 4 * state.iterations();
    state.counters["GBps"] = benchmark::Counter(bytes / 1e9, benchmark::Counter::kIsRate);
    state.counters["vs_stream"] = benchmark::Counter(bytes / streamBandwidth(), benchmark::Counter::kIsRate);
    state.counters["vs_memcpy"] = benchmark::Counter(bytes / memcpyBandwidth(), benchmark::Counter::kIsRate);
}

template <void (*Op)(const float*, float*, int), int itemFloats, int items>
void BM_cache(benchmark::State& state)
{
    Threads th(int(state.range(0)));
    const size_t n = size_t(items) * itemFloats;
    const float* s = buf(0, n);
    float* d = buf(1, n);
    for (auto _ : state) {
        Op(s, d, items);
        benchmark::ClobberMemory();
    }
    state.counters["ns_per_item"] =
        benchmark::Counter(double(items) * state.iterations() * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void streamLarge(const float* s, float* d, int n) { streamCopy(s, d, size_t(n) * 16); }

#ifdef ORLM_HAVE_EIGEN
using M4 = Eigen::Map<Eigen::Matrix4f, Eigen::Unaligned>;
using CM4 = Eigen::Map<const Eigen::Matrix4f, Eigen::Unaligned>;
void eigenCopy4x4(const float* s, float* d, int n)
{
    for (int k = 0; k < n; ++k) M4(d + 16 * k) = CM4(s + 16 * k);
}
void eigenTranspose4x4(const float* s, float* d, int n)
{
    for (int k = 0; k < n; ++k) M4(d + 16 * k) = CM4(s + 16 * k).transpose();
}
void eigenTranspose512(const float* s, float* d, int)
{
    using MX = Eigen::Map<Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>>;
    using CMX = Eigen::Map<const Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>>;
    MX(d, kSide, kSide) = CMX(s, kSide, kSide).transpose();
}
BENCHMARK(BM_cache<eigenCopy4x4, 16, kSmall>)->Name("eigen_copy_4x4_in_cache")->Arg(1);
BENCHMARK(BM_cache<eigenTranspose4x4, 16, kSmall>)->Name("eigen_transpose_4x4_in_cache")->Arg(1);
BENCHMARK(BM_cache<eigenTranspose512, kSide * kSide, 1>)->Name("eigen_transpose_512x512")->Arg(1);
#endif

BENCHMARK(BM_large<streamLarge, 16>)->Name("stream_copy_128MiB")->Args({kLarge, 1})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_large<copy4x4, 16>)->Name("Copy_ma_32f_SS_4x4_2M_items")->Args({kLarge, 1})->Args({kLarge, 2})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_large<transpose4x4, 16>)->Name("Transpose_ma_32f_4x4_2M_items")->Args({kLarge, 1})->Args({kLarge, 2})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_large<transpose512, kSide * kSide>)->Name("Transpose_ma_32f_512x512_64_items")->Args({kSideCount, 1})->Args({kSideCount, 2})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_cache<copy4x4, 16, kSmall>)->Name("Copy_ma_32f_SS_4x4_in_cache")->Arg(1)->Arg(2);
BENCHMARK(BM_cache<transpose4x4, 16, kSmall>)->Name("Transpose_ma_32f_4x4_in_cache")->Arg(1)->Arg(2);
BENCHMARK(BM_cache<transpose512, kSide * kSide, 1>)->Name("Transpose_m_32f_512x512")->Arg(1)->Arg(2);

}  // namespace

BENCHMARK_MAIN();
