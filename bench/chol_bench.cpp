// Cholesky decomposition plus one back-substitution per item, on arrays of
// 4x4 32f and 6x6 64f positive definite systems that stay in cache (1024
// items), against Eigen's LLT on fixed-size matrices over the same data in
// the same run. One thread on both sides.
//
//   build/<dir>/bench/chol_bench
//
// Counters: `ns_per_item` (orlm: CholeskyDecomp_ma + CholeskyBackSubst_mava),
// `eigen_ns_per_item` (LLT + solve), `ratio` = orlm / Eigen.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "orlm.h"
#include "peers.h"

#include <Eigen/Dense>

namespace {

constexpr int kCount = 1024;

template <class E, int N>
struct Systems {
    std::vector<E> a, f, b, x, xe;
    Systems() : a(N * N * kCount), f(a.size()), b(N * kCount), x(b.size()), xe(b.size())
    {
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> u(-1.0, 1.0);
        std::vector<double> m(N * N);
        for (int k = 0; k < kCount; ++k) {
            for (double& v : m) v = u(rng);
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) {
                    double s = i == j ? N : 0.0;
                    for (int l = 0; l < N; ++l) s += m[i * N + l] * m[j * N + l];
                    a[(k * N + i) * N + j] = E(s);
                }
        }
        for (E& v : b) v = E(u(rng));
    }
};

void orlm(Systems<float, 4>& s)
{
    constexpr int e = 4, s1 = 4 * e, s0 = 16 * e;
    orlmCholeskyDecomp_ma_32f(s.a.data(), s0, s1, e, s.f.data(), s0, s1, e, 4, kCount);
    orlmCholeskyBackSubst_mava_32f(s.f.data(), s0, s1, e, s.b.data(), 4 * e, e, s.x.data(), 4 * e, e, 4, kCount);
}

void orlm(Systems<double, 6>& s)
{
    constexpr int e = 8, s1 = 6 * e, s0 = 36 * e;
    orlmCholeskyDecomp_ma_64f(s.a.data(), s0, s1, e, s.f.data(), s0, s1, e, 6, kCount);
    orlmCholeskyBackSubst_mava_64f(s.f.data(), s0, s1, e, s.b.data(), 6 * e, e, s.x.data(), 6 * e, e, 6, kCount);
}

template <class E, int N>
void eigen(Systems<E, N>& s)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    using V = Eigen::Matrix<E, N, 1>;
    for (int k = 0; k < kCount; ++k) {
        const Eigen::LLT<Eigen::Matrix<E, N, N>> llt(Eigen::Map<const M>(s.a.data() + k * N * N));
        Eigen::Map<V>(s.xe.data() + k * N) = llt.solve(Eigen::Map<const V>(s.b.data() + k * N));
    }
}

template <class E, int N>
void BM_DecompAndSolve(benchmark::State& state)
{
    Systems<E, N> s;
    bench::timePair(
        state, kCount, [&] { orlm(s), benchmark::DoNotOptimize(s.x.data()); },
        [&] { eigen(s), benchmark::DoNotOptimize(s.xe.data()); });
}

BENCHMARK_TEMPLATE(BM_DecompAndSolve, float, 4)->Name("CholeskyDecomp+CholeskyBackSubst/4x4_32f");
BENCHMARK_TEMPLATE(BM_DecompAndSolve, double, 6)->Name("CholeskyDecomp+CholeskyBackSubst/6x6_64f");

}  // namespace

BENCHMARK_MAIN();
