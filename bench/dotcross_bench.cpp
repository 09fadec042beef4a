// Products of vectors and reductions, one thread: the dot product of
// 4-vectors (vava), the cross product of 3-vectors (vava), the Euclidean norm
// of 4-vectors (va) and the affine transform of 3D points, each in cache
// (1024 items) against an Eigen loop with the same flags, and out of cache
// (4M items) against a plain loop doing the same arithmetic over the same
// arrays (the streaming ceiling).
//
//   cmake --workflow --preset bench && build/bench/bench/dotcross_bench
//
// Counters: ns_per_item; GBps (bytes read plus written per second).
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "orlcore.h"
#include "orlm.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Geometry>
#endif

namespace {

constexpr int kSmall = 1024, kLarge = 4 << 20;

std::vector<float>& buf(int which, size_t n)
{
    static std::vector<float> b[3];
    if (b[which].size() < n) b[which].assign(n, 0.5f + 0.25f * which);
    return b[which];
}

// Reports time per item and bytes per second for `bytesPerItem`.
template <class F>
void measure(benchmark::State& state, int items, double bytesPerItem, F&& f)
{
    threads_omp_of_n_orl = 1;
    for (auto _ : state) {
        f();
        benchmark::ClobberMemory();
    }
    const double n = double(items) * state.iterations();
    state.counters["ns_per_item"] = benchmark::Counter(n * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["GBps"] = benchmark::Counter(n * bytesPerItem * 1e-9, benchmark::Counter::kIsRate);
}

// What each operation reads and writes per item, and a plain loop doing it.
enum Op { Dot, Cross, Norm, Affine };
constexpr double kBytes[] = {36, 36, 20, 24};

void lib(benchmark::State& s)
{
    const Op op = Op(s.range(0));
    const int n = int(s.range(1));
    float *a = buf(0, 4 * size_t(n)).data(), *b = buf(1, 4 * size_t(n)).data(), *d = buf(2, 4 * size_t(n)).data();
    static const float m[16] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0.01f, 0, 0, 1};
    measure(s, n, kBytes[op], [&] {
        switch (op) {
        case Dot: orlmDotProduct_vava_32f(a, 16, 4, b, 16, 4, d, 4, n); break;
        case Cross: orlmCrossProduct_vava_32f(a, 12, 4, b, 12, 4, d, 12, 4, n); break;
        case Norm: orlmL2Norm_va_32f(a, 16, 4, d, 4, n); break;
        case Affine: orlmAffineTransform3DH_mva_32f(m, 16, 4, a, 12, 4, d, 12, 4, n); break;
        }
    });
}

void plain(benchmark::State& s)
{
    const Op op = Op(s.range(0));
    const int n = int(s.range(1));
    float *a = buf(0, 4 * size_t(n)).data(), *b = buf(1, 4 * size_t(n)).data(), *d = buf(2, 4 * size_t(n)).data();
    static const float m[16] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0.01f, 0, 0, 1};
    measure(s, n, kBytes[op], [&] {
        for (int k = 0; k < n; ++k) {
            const float* x = a + (op == Dot || op == Norm ? 4 : 3) * k;
            const float* y = b + (op == Dot ? 4 : 3) * k;
            switch (op) {
            case Dot: d[k] = (x[0] * y[0] + x[1] * y[1]) + (x[2] * y[2] + x[3] * y[3]); break;
            case Cross:
                d[3 * k] = x[1] * y[2] - x[2] * y[1], d[3 * k + 1] = x[2] * y[0] - x[0] * y[2], d[3 * k + 2] = x[0] * y[1] - x[1] * y[0];
                break;
            case Norm: d[k] = std::sqrt((x[0] * x[0] + x[1] * x[1]) + (x[2] * x[2] + x[3] * x[3])); break;
            case Affine: {
                float r[4];
                for (int i = 0; i < 4; ++i) r[i] = m[4 * i] * x[0] + m[4 * i + 1] * x[1] + m[4 * i + 2] * x[2] + m[4 * i + 3];
                const float inv = 1.0f / r[3];
                d[3 * k] = r[0] * inv, d[3 * k + 1] = r[1] * inv, d[3 * k + 2] = r[2] * inv;
            }
            }
        }
    });
}

#ifdef ORLM_HAVE_EIGEN
void eigen(benchmark::State& s)
{
    const Op op = Op(s.range(0));
    const int n = int(s.range(1));
    float *a = buf(0, 4 * size_t(n)).data(), *b = buf(1, 4 * size_t(n)).data(), *d = buf(2, 4 * size_t(n)).data();
    Eigen::Projective3f P;
    P.matrix() << 1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0.01f, 0, 0, 1;
    measure(s, n, kBytes[op], [&] {
        for (int k = 0; k < n; ++k) {
            switch (op) {
            case Dot: d[k] = Eigen::Map<const Eigen::Vector4f>(a + 4 * k).dot(Eigen::Map<const Eigen::Vector4f>(b + 4 * k)); break;
            case Cross:
                Eigen::Map<Eigen::Vector3f>(d + 3 * k) =
                    Eigen::Map<const Eigen::Vector3f>(a + 3 * k).cross(Eigen::Map<const Eigen::Vector3f>(b + 3 * k));
                break;
            case Norm: d[k] = Eigen::Map<const Eigen::Vector4f>(a + 4 * k).norm(); break;
            case Affine:
                Eigen::Map<Eigen::Vector3f>(d + 3 * k) = (P * Eigen::Map<const Eigen::Vector3f>(a + 3 * k).homogeneous()).hnormalized();
                break;
            }
        }
    });
}
#endif

void args(benchmark::internal::Benchmark* b)
{
    b->ArgNames({"op", "items"});
    for (int op = Dot; op <= Affine; ++op)
        for (int n : {kSmall, kLarge}) b->Args({op, n});
}

}  // namespace

BENCHMARK(lib)->Apply(args);
BENCHMARK(plain)->Apply(args);
#ifdef ORLM_HAVE_EIGEN
BENCHMARK(eigen)->Apply(args);
#endif
BENCHMARK_MAIN();
