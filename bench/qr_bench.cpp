// QR decomposition plus one back-substitution per item, on arrays of 4x4 and
// 6x4 (six rows, four columns) 64f systems that stay in cache (1024 items),
// against Eigen's HouseholderQR on fixed-size matrices over the same data in
// the same run; the 6x4 systems are solved in the least-squares sense on
// both sides. One thread on both sides.
//
//   build/<dir>/bench/qr_bench
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "orlm.h"
#include "peers.h"

#include <Eigen/Dense>

namespace {

constexpr int kCount = 1024;

template <int H, int W>
struct Systems {
    std::vector<double> a, f, b, x, xe, buffer;
    Systems() : a(H * W * kCount), f(a.size()), b(H * kCount), x(W * kCount), xe(x.size()), buffer(H)
    {
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> u(-1.0, 1.0);
        for (double& v : a) v = u(rng);
        for (double& v : b) v = u(rng);
    }
    void orlm()
    {
        constexpr int e = 8, s1 = W * e, s0 = H * W * e;
        orlmQRDecomp_ma_64f(a.data(), s0, s1, e, buffer.data(), f.data(), s0, s1, e, W, H, kCount);
        orlmQRBackSubst_mava_64f(f.data(), s0, s1, e, buffer.data(), b.data(), H * e, e, x.data(), W * e, e, W, H, kCount);
    }
    void eigen()
    {
        using M = Eigen::Matrix<double, H, W, Eigen::RowMajor>;
        for (int k = 0; k < kCount; ++k) {
            const Eigen::HouseholderQR<Eigen::Matrix<double, H, W>> qr(Eigen::Map<const M>(a.data() + k * H * W));
            Eigen::Map<Eigen::Matrix<double, W, 1>>(xe.data() + k * W) =
                qr.solve(Eigen::Map<const Eigen::Matrix<double, H, 1>>(b.data() + k * H));
        }
    }
};

template <int H, int W>
void BM_DecompAndSolve(benchmark::State& state)
{
    Systems<H, W> s;
    bench::timePair(
        state, kCount, [&] { s.orlm(), benchmark::DoNotOptimize(s.x.data()); },
        [&] { s.eigen(), benchmark::DoNotOptimize(s.xe.data()); });
}

BENCHMARK_TEMPLATE(BM_DecompAndSolve, 4, 4)->Name("QRDecomp+QRBackSubst/4x4_64f");
BENCHMARK_TEMPLATE(BM_DecompAndSolve, 6, 4)->Name("QRDecomp+QRBackSubst/6x4_64f");

}  // namespace

BENCHMARK_MAIN();
