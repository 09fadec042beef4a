// Inverse of 1024 matrices in cache (3x3, 4x4 32f and 64f, 6x6 64f) against
// Eigen's fixed-size inverse() over the same data, one thread.
//
//   build/<dir>/bench/invert_bench
#include <random>
#include <vector>

#include <Eigen/Dense>

#include "orlm.h"
#include "peers.h"

namespace {

constexpr int kCount = 1024;

orlStatus invert(const float* a, float* buf, float* d, int s1, int s0, int n)
{
    return orlmInvert_ma_32f(a, s0, s1, 4, buf, d, s0, s1, 4, n, kCount);
}
orlStatus invert(const double* a, double* buf, double* d, int s1, int s0, int n)
{
    return orlmInvert_ma_64f(a, s0, s1, 8, buf, d, s0, s1, 8, n, kCount);
}

template <class E, int N>
void BM_Invert(benchmark::State& state)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    std::vector<E> a(N * N * kCount), d(a.size()), de(a.size()), buf(N * (N + 1));
    std::mt19937 rng(1);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (int x = 0; x < int(a.size()); ++x) a[x] = E(u(rng) + (x % (N * N) % (N + 1) == 0 ? N : 0));
    bench::timePair(
        state, kCount, [&] { invert(a.data(), buf.data(), d.data(), N * sizeof(E), N * N * sizeof(E), N); },
        [&] {
            for (int k = 0; k < kCount; ++k) Eigen::Map<M>(de.data() + k * N * N) = Eigen::Map<const M>(a.data() + k * N * N).inverse();
        });
}

BENCHMARK_TEMPLATE(BM_Invert, float, 3)->Name("Invert/3x3_32f");
BENCHMARK_TEMPLATE(BM_Invert, float, 4)->Name("Invert/4x4_32f");
BENCHMARK_TEMPLATE(BM_Invert, double, 3)->Name("Invert/3x3_64f");
BENCHMARK_TEMPLATE(BM_Invert, double, 4)->Name("Invert/4x4_64f");
BENCHMARK_TEMPLATE(BM_Invert, double, 6)->Name("Invert/6x6_64f");

}  // namespace

BENCHMARK_MAIN();
