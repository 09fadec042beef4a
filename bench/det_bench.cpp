// Determinant of 1024 matrices in cache (3x3, 4x4 32f, 6x6 64f) against
// Eigen's fixed-size determinant() over the same data, one thread.
//
//   build/<dir>/bench/det_bench
#include <random>
#include <vector>

#include <Eigen/Dense>

#include "orlm.h"
#include "peers.h"

namespace {

constexpr int kCount = 1024;

orlStatus det(const float* a, float* buf, float* d, int s1, int s0, int n)
{
    return orlmDet_ma_32f(a, s0, s1, 4, n, buf, d, kCount);
}
orlStatus det(const double* a, double* buf, double* d, int s1, int s0, int n)
{
    return orlmDet_ma_64f(a, s0, s1, 8, n, buf, d, kCount);
}

template <class E, int N>
void BM_Det(benchmark::State& state)
{
    using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
    std::vector<E> a(N * N * kCount), d(kCount), de(kCount), buf(N * (N + 1));
    std::mt19937 rng(1);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (E& v : a) v = E(u(rng));
    bench::timePair(
        state, kCount, [&] { det(a.data(), buf.data(), d.data(), N * sizeof(E), N * N * sizeof(E), N); },
        [&] {
            for (int k = 0; k < kCount; ++k) de[k] = Eigen::Map<const M>(a.data() + k * N * N).determinant();
        });
}

BENCHMARK_TEMPLATE(BM_Det, float, 3)->Name("Det/3x3_32f");
BENCHMARK_TEMPLATE(BM_Det, float, 4)->Name("Det/4x4_32f");
BENCHMARK_TEMPLATE(BM_Det, double, 6)->Name("Det/6x6_64f");

}  // namespace

BENCHMARK_MAIN();
