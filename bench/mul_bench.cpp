// Matrix multiply against Eigen's fixed-size product on the same data, in
// the same run: one shared matrix times an array (mam, mma) and array times
// array (mama), arrays of contiguous row-major items with unit strides.
// One thread (the library's 32f members would otherwise split even short
// arrays over threads). Prints ns per item and, at the end, the ratio
// library / Eigen for each case.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "orlcore.h"
#include "orlm.h"
#include "peers.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Core>
#endif

namespace {

constexpr int kItems = 1024;

enum class Shape { mam, mma, mama };

template <class E>
struct Data {
    std::vector<E> a, b, d;
    Data(int n, int items)
        : a(std::size_t(n) * n * items), b(std::size_t(n) * n * items), d(std::size_t(n) * n * items)
    {
        std::mt19937 rng(5);
        std::uniform_real_distribution<E> u(E(-1), E(1));
        for (auto& v : a) v = u(rng);
        for (auto& v : b) v = u(rng);
    }
};

// The members timed, by element type.
template <class E>
struct Members;
template <>
struct Members<float> {
    static constexpr auto mam = orlmMul_mam_32f, mma = orlmMul_mma_32f, mama = orlmMul_mama_32f;
};
template <>
struct Members<double> {
    static constexpr auto mam = orlmMul_mam_64f, mma = orlmMul_mma_64f, mama = orlmMul_mama_64f;
};

// Contiguous row-major items, unit strides.
template <class E>
orlStatus lib(Shape s, const E* a, const E* b, E* d, int n, int items)
{
    using Mb = Members<E>;
    const int e = sizeof(E), s1 = n * e, s0 = n * n * e;
    switch (s) {
    case Shape::mam: return Mb::mam(a, s0, s1, e, n, n, b, s1, e, n, n, d, s0, s1, e, items);
    case Shape::mma: return Mb::mma(a, s1, e, n, n, b, s0, s1, e, n, n, d, s0, s1, e, items);
    case Shape::mama: return Mb::mama(a, s0, s1, e, n, n, b, s0, s1, e, n, n, d, s0, s1, e, items);
    }
    return orlStatusOk;
}

void perItem(benchmark::State& st)
{
    st.counters["ns/item"] = benchmark::Counter(double(kItems) * 1e-9,
                                                benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class E, int N, Shape S>
void BM_lib(benchmark::State& st)
{
    threads_omp_of_n_orl = 1;
    Data<E> x(N, kItems);
    for (auto _ : st) {
        lib<E>(S, x.a.data(), x.b.data(), x.d.data(), N, kItems);
        benchmark::DoNotOptimize(x.d.data());
        benchmark::ClobberMemory();
    }
    perItem(st);
}

#ifdef ORLM_HAVE_EIGEN
template <class E, int N, Shape S>
void BM_eigen(benchmark::State& st)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    Data<E> x(N, kItems);
    for (auto _ : st) {
        const E* a = x.a.data();
        const E* b = x.b.data();
        E* d = x.d.data();
        if constexpr (S == Shape::mam) {
            const M shared = Eigen::Map<const M>(b);
            for (int k = 0; k < kItems; ++k)
                Eigen::Map<M>(d + k * N * N).noalias() = Eigen::Map<const M>(a + k * N * N) * shared;
        } else if constexpr (S == Shape::mma) {
            const M shared = Eigen::Map<const M>(a);
            for (int k = 0; k < kItems; ++k)
                Eigen::Map<M>(d + k * N * N).noalias() = shared * Eigen::Map<const M>(b + k * N * N);
        } else {
            for (int k = 0; k < kItems; ++k)
                Eigen::Map<M>(d + k * N * N).noalias() = Eigen::Map<const M>(a + k * N * N) * Eigen::Map<const M>(b + k * N * N);
        }
        benchmark::DoNotOptimize(x.d.data());
        benchmark::ClobberMemory();
    }
    perItem(st);
}
#endif

// The general path (sizes without an unrolled form) against a plain triple
// loop in the same order on the same data, with the size known only at run
// time as in the library.
template <class E, int Size>
void BM_loop(benchmark::State& st)
{
    Data<E> x(Size, kItems);
    volatile int runtimeSize = Size;
    const int N = runtimeSize;
    for (auto _ : st) {
        for (int k = 0; k < kItems; ++k) {
            const E* a = x.a.data() + k * N * N;
            const E* b = x.b.data() + k * N * N;
            E* d = x.d.data() + k * N * N;
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) {
                    E s = E(0);
                    for (int q = 0; q < N; ++q) s = s + a[i * N + q] * b[q * N + j];
                    d[i * N + j] = s;
                }
        }
        benchmark::DoNotOptimize(x.d.data());
        benchmark::ClobberMemory();
    }
    perItem(st);
}

#define GENERAL(E, N)                                                            \
    BENCHMARK(BM_lib<E, N, Shape::mama>)->Name("mama_" #E "_" #N "x" #N "/orlm"); \
    BENCHMARK(BM_loop<E, N>)->Name("mama_" #E "_" #N "x" #N "/loop");
GENERAL(float, 7)
GENERAL(float, 8)
GENERAL(double, 7)
GENERAL(double, 8)

#ifdef ORLM_HAVE_EIGEN
#define CASE(E, N, S)                                                   \
    BENCHMARK(BM_lib<E, N, Shape::S>)->Name(#S "_" #E "_" #N "x" #N "/orlm");     \
    BENCHMARK(BM_eigen<E, N, Shape::S>)->Name(#S "_" #E "_" #N "x" #N "/eigen");
#else
#define CASE(E, N, S) BENCHMARK(BM_lib<E, N, Shape::S>)->Name(#S "_" #E "_" #N "x" #N "/orlm");
#endif

#define SIZES(E, N) CASE(E, N, mam) CASE(E, N, mma) CASE(E, N, mama)
SIZES(float, 3)
SIZES(float, 4)
SIZES(float, 5)
SIZES(float, 6)
SIZES(double, 3)
SIZES(double, 4)
SIZES(double, 5)
SIZES(double, 6)

}  // namespace

int main(int argc, char** argv)
{
    // The peer is Eigen, or a plain loop for 7x7 and 8x8.
    return bench::runWithSideTable(argc, argv, {"eigen", "loop"}, "(ratio: library / peer)");
}
