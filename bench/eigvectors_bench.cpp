// General eigenproblems on arrays of 1024 matrices that stay in cache,
// against Eigen's EigenSolver on fixed-size matrices over the same data in
// the same run, one thread on both sides: the values alone
// (orlmEigenValues_ma against compute(A, false)) and the values with the
// right eigenvectors (orlmEigenValuesVectorsRight_ma against compute(A, true)).
//
//   build/<dir>/bench/eigvectors_bench
//
// Counters: `ns_per_item` (orlm), `eigen_ns_per_item`, `ratio` = orlm / Eigen.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "orlm.h"
#include "peers.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Eigenvalues>
#endif

namespace {

constexpr int kCount = 1024;

template <class E, int N>
struct Problems {
    std::vector<E> a, vectors, re, im, buffer;
    Problems() : a(N * N * kCount), vectors(a.size()), re(N * kCount), im(N * kCount)
    {
        std::int32_t bytes = 0;
        if (sizeof(E) == 4) orlmEigenValuesVectorsGetBufSize_32f(N, &bytes);
        else orlmEigenValuesVectorsGetBufSize_64f(N, &bytes);
        buffer.resize(bytes / sizeof(E));
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> u(-1.0, 1.0);
        for (E& v : a) v = E(u(rng));
    }
};

orlStatus values(Problems<float, 4>& p)
{
    return orlmEigenValues_ma_32f(p.a.data(), 64, 16, 4, p.re.data(), p.im.data(), 4, kCount, p.buffer.data());
}

template <int N>
orlStatus values(Problems<double, N>& p)
{
    return orlmEigenValues_ma_64f(p.a.data(), N * N * 8, N * 8, 8, p.re.data(), p.im.data(), N, kCount, p.buffer.data());
}

orlStatus right(Problems<float, 4>& p)
{
    return orlmEigenValuesVectorsRight_ma_32f(p.a.data(), 64, 16, 4, p.vectors.data(), 64, 16, 4, p.re.data(), p.im.data(), 4,
                                              kCount, p.buffer.data());
}

template <int N>
orlStatus right(Problems<double, N>& p)
{
    constexpr int s0 = N * N * 8, s1 = N * 8;
    return orlmEigenValuesVectorsRight_ma_64f(p.a.data(), s0, s1, 8, p.vectors.data(), s0, s1, 8, p.re.data(), p.im.data(), N,
                                              kCount, p.buffer.data());
}

#ifdef ORLM_HAVE_EIGEN
template <class E, int N>
void eigen(Problems<E, N>& p, bool vectors)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    Eigen::EigenSolver<Eigen::Matrix<E, N, N>> es;
    for (int k = 0; k < kCount; ++k) {
        es.compute(Eigen::Map<const M>(p.a.data() + k * N * N), vectors);
        benchmark::DoNotOptimize(es.eigenvalues().data());
        if (vectors) benchmark::DoNotOptimize(es.pseudoEigenvectors().data());
    }
}
#endif

template <class E, int N, bool vectors>
void BM_Eigen(benchmark::State& state)
{
    Problems<E, N> p;
    std::vector<bench::Peer> peers;
#ifdef ORLM_HAVE_EIGEN
    peers.push_back({"eigen", "", [&] { eigen(p, vectors); }});
#endif
    bench::timeAgainst(state, kCount, [&] {
        const bool ok = (vectors ? right(p) : values(p)) == orlStatusOk;
        benchmark::DoNotOptimize(p.re.data());
        return ok;
    }, peers);
}

BENCHMARK_TEMPLATE(BM_Eigen, double, 4, false)->Name("EigenValues/4x4_64f");
BENCHMARK_TEMPLATE(BM_Eigen, double, 6, false)->Name("EigenValues/6x6_64f");
BENCHMARK_TEMPLATE(BM_Eigen, float, 4, false)->Name("EigenValues/4x4_32f");
BENCHMARK_TEMPLATE(BM_Eigen, double, 4, true)->Name("EigenValuesVectorsRight/4x4_64f");
BENCHMARK_TEMPLATE(BM_Eigen, double, 6, true)->Name("EigenValuesVectorsRight/6x6_64f");
BENCHMARK_TEMPLATE(BM_Eigen, float, 4, true)->Name("EigenValuesVectorsRight/4x4_32f");

}  // namespace

BENCHMARK_MAIN();
