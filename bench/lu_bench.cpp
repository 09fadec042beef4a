// LU decomposition plus one back-substitution per item, on arrays of 4x4
// 32f and 6x6 64f systems that stay in cache, against Eigen's PartialPivLU
// on fixed-size matrices over the same data in the same run. One thread on
// both sides.
//
//   build/<dir>/bench/lu_bench
//
// Counters: `ns_per_item` (orlm: LUDecomp_ma + LUBackSubst_mava),
// `eigen_ns_per_item` (PartialPivLU + solve), `ratio` = orlm / Eigen.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <vector>

#include "orlcore.h"
#include "orlm.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr int kCount = 1024;

template <class E, int N>
struct Systems {
    std::vector<E> a, lu, b, x, xe;
    std::vector<std::int32_t> perm;
    Systems() : a(N * N * kCount), lu(a.size()), b(N * kCount), x(b.size()), xe(b.size()), perm(b.size())
    {
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> u(-1.0, 1.0);
        for (int k = 0; k < kCount; ++k)
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) a[(k * N + i) * N + j] = E(u(rng) + (i == j ? 0.5 * N : 0.0));
        for (E& v : b) v = E(u(rng));
    }
};

void orlm(Systems<float, 4>& s)
{
    constexpr int e = 4, s1 = 4 * e, s0 = 16 * e;
    orlmLUDecomp_ma_32f(s.a.data(), s0, s1, e, s.perm.data(), s.lu.data(), s0, s1, e, 4, kCount);
    orlmLUBackSubst_mava_32f(s.lu.data(), s0, s1, e, s.perm.data(), s.b.data(), 4 * e, e, s.x.data(), 4 * e, e, 4, kCount);
}

void orlm(Systems<double, 6>& s)
{
    constexpr int e = 8, s1 = 6 * e, s0 = 36 * e;
    orlmLUDecomp_ma_64f(s.a.data(), s0, s1, e, s.perm.data(), s.lu.data(), s0, s1, e, 6, kCount);
    orlmLUBackSubst_mava_64f(s.lu.data(), s0, s1, e, s.perm.data(), s.b.data(), 6 * e, e, s.x.data(), 6 * e, e, 6, kCount);
}

#ifdef ORLM_HAVE_EIGEN
template <class E, int N>
void eigen(Systems<E, N>& s)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    using V = Eigen::Matrix<E, N, 1>;
    for (int k = 0; k < kCount; ++k) {
        const Eigen::PartialPivLU<Eigen::Matrix<E, N, N>> lu(Eigen::Map<const M>(s.a.data() + k * N * N));
        Eigen::Map<V>(s.xe.data() + k * N) = lu.solve(Eigen::Map<const V>(s.b.data() + k * N));
    }
}
#endif

template <class E, int N>
void BM_DecompAndSolve(benchmark::State& state)
{
    const int saved = threads_omp_of_n_orl;
    threads_omp_of_n_orl = 1;
    Systems<E, N> s;
    double ours = 0, theirs = 0;
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        orlm(s);
        benchmark::DoNotOptimize(s.x.data());
        const auto t1 = Clock::now();
#ifdef ORLM_HAVE_EIGEN
        eigen(s);
        benchmark::DoNotOptimize(s.xe.data());
#endif
        const auto t2 = Clock::now();
        ours += std::chrono::duration<double, std::nano>(t1 - t0).count();
        theirs += std::chrono::duration<double, std::nano>(t2 - t1).count();
    }
    threads_omp_of_n_orl = saved;
    const double items = double(state.iterations()) * kCount;
    state.counters["ns_per_item"] = ours / items;
#ifdef ORLM_HAVE_EIGEN
    state.counters["eigen_ns_per_item"] = theirs / items;
    state.counters["ratio"] = ours / theirs;
#endif
}

BENCHMARK_TEMPLATE(BM_DecompAndSolve, float, 4)->Name("LUDecomp+LUBackSubst/4x4_32f");
BENCHMARK_TEMPLATE(BM_DecompAndSolve, double, 6)->Name("LUDecomp+LUBackSubst/6x6_64f");

}  // namespace

BENCHMARK_MAIN();
