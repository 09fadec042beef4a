// Eigenvalues and eigenvectors of symmetric matrices, on arrays of 1024
// matrices that stay in cache (3x3 32f, 4x4 64f, 6x6 64f), against Eigen's
// SelfAdjointEigenSolver on fixed-size matrices over the same data in the
// same run; for 3x3 also against its closed-form computeDirect. One thread.
//
//   build/<dir>/bench/eigsym_bench
//
// Counters: `ns_per_item` (orlm: EigenValuesVectorsSym_ma), `eigen_ns_per_item`
// (SelfAdjointEigenSolver::compute), `ratio` = orlm / Eigen, and for 3x3
// `direct_ns_per_item` and `ratio_direct` against computeDirect.
#include <benchmark/benchmark.h>

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
    std::vector<E> a, buffer, vectors, values, eigVectors, eigValues;
    Problems() : a(N * N * kCount), buffer(N * N), vectors(a.size()), values(N * kCount), eigVectors(a.size()), eigValues(values.size())
    {
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> u(-1.0, 1.0);
        for (int k = 0; k < kCount; ++k)
            for (int i = 0; i < N; ++i)
                for (int j = 0; j <= i; ++j) a[(k * N + i) * N + j] = a[(k * N + j) * N + i] = E(u(rng));
    }
};

orlStatus orlm(Problems<float, 3>& p)
{
    constexpr int e = 4, s1 = 3 * e, s0 = 9 * e;
    return orlmEigenValuesVectorsSym_ma_32f(p.a.data(), s0, s1, e, p.buffer.data(), p.vectors.data(), s0, s1, e, p.values.data(), 3, kCount);
}

template <int N>
orlStatus orlm(Problems<double, N>& p)
{
    constexpr int e = 8, s1 = N * e, s0 = N * N * e;
    return orlmEigenValuesVectorsSym_ma_64f(p.a.data(), s0, s1, e, p.buffer.data(), p.vectors.data(), s0, s1, e, p.values.data(), N, kCount);
}

#ifdef ORLM_HAVE_EIGEN
template <bool direct, class E, int N>
void eigen(Problems<E, N>& p)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    using V = Eigen::Matrix<E, N, 1>;
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix<E, N, N>> solver;
    for (int k = 0; k < kCount; ++k) {
        const Eigen::Matrix<E, N, N> a = Eigen::Map<const M>(p.a.data() + k * N * N);
        if constexpr (direct)
            solver.computeDirect(a);
        else
            solver.compute(a);
        Eigen::Map<M>(p.eigVectors.data() + k * N * N) = solver.eigenvectors();
        Eigen::Map<V>(p.eigValues.data() + k * N) = solver.eigenvalues();
    }
}
#endif

template <class E, int N>
void BM_ValuesVectors(benchmark::State& state)
{
    Problems<E, N> p;
    std::vector<bench::Peer> peers;
#ifdef ORLM_HAVE_EIGEN
    peers.push_back({"eigen", "", [&] { eigen<false>(p); benchmark::DoNotOptimize(p.eigValues.data()); }});
    if (N == 3) peers.push_back({"direct", "_direct", [&] { eigen<true>(p); benchmark::DoNotOptimize(p.eigValues.data()); }});
#endif
    bench::timeAgainst(state, kCount, [&] {
        const bool ok = orlm(p) == orlStatusOk;
        benchmark::DoNotOptimize(p.values.data());
        return ok;
    }, peers);
}

BENCHMARK_TEMPLATE(BM_ValuesVectors, float, 3)->Name("EigenValuesVectorsSym/3x3_32f");
BENCHMARK_TEMPLATE(BM_ValuesVectors, double, 4)->Name("EigenValuesVectorsSym/4x4_64f");
BENCHMARK_TEMPLATE(BM_ValuesVectors, double, 6)->Name("EigenValuesVectorsSym/6x6_64f");

}  // namespace

BENCHMARK_MAIN();
