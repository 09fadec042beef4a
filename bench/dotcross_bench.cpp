// Products of vectors and reductions, one thread: the dot product of
// 4-vectors (vava), the cross product of 3-vectors (vava), the Euclidean norm
// of 4-vectors (va) and the affine transform of 3D points, each in cache
// (1024 items) against an Eigen loop with the same flags, and out of cache
// (4M items) against a plain loop doing the same arithmetic over the same
// arrays (the streaming ceiling), timed in the same iterations.
//
//   cmake --workflow --preset bench && build/bench/bench/dotcross_bench
//
// Counters: ns_per_item, eigen_/plain_ns_per_item, ratio (ours / Eigen),
// ratio_plain (ours / plain loop), GBps (ours, bytes read plus written).
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "orlm.h"
#include "peers.h"

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

// What each operation reads and writes per item.
enum Op { Dot, Cross, Norm, Affine };
constexpr double kBytes[] = {36, 36, 20, 24};
const float kM[16] = {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0.01f, 0, 0, 1};

template <Op op>
bool lib(const float* a, const float* b, float* d, int n)
{
    orlStatus st = orlStatusOk;
    if constexpr (op == Dot) st = orlmDotProduct_vava_32f(a, 16, 4, b, 16, 4, d, 4, n);
    if constexpr (op == Cross) st = orlmCrossProduct_vava_32f(a, 12, 4, b, 12, 4, d, 12, 4, n);
    if constexpr (op == Norm) st = orlmL2Norm_va_32f(a, 16, 4, d, 4, n);
    if constexpr (op == Affine) st = orlmAffineTransform3DH_mva_32f(kM, 16, 4, a, 12, 4, d, 12, 4, n);
    return st == orlStatusOk;
}

template <Op op>
void plain(const float* a, const float* b, float* d, int n)
{
    for (int k = 0; k < n; ++k) {
        const float* x = a + (op == Dot || op == Norm ? 4 : 3) * k;
        const float* y = b + (op == Dot ? 4 : 3) * k;
        if constexpr (op == Dot) d[k] = (x[0] * y[0] + x[1] * y[1]) + (x[2] * y[2] + x[3] * y[3]);
        if constexpr (op == Cross)
            d[3 * k] = x[1] * y[2] - x[2] * y[1], d[3 * k + 1] = x[2] * y[0] - x[0] * y[2], d[3 * k + 2] = x[0] * y[1] - x[1] * y[0];
        if constexpr (op == Norm) d[k] = std::sqrt((x[0] * x[0] + x[1] * x[1]) + (x[2] * x[2] + x[3] * x[3]));
        if constexpr (op == Affine) {
            float r[4];
            for (int i = 0; i < 4; ++i) r[i] = kM[4 * i] * x[0] + kM[4 * i + 1] * x[1] + kM[4 * i + 2] * x[2] + kM[4 * i + 3];
            const float inv = 1.0f / r[3];
            d[3 * k] = r[0] * inv, d[3 * k + 1] = r[1] * inv, d[3 * k + 2] = r[2] * inv;
        }
    }
}

#ifdef ORLM_HAVE_EIGEN
template <Op op>
void eigen(const float* a, const float* b, float* d, int n)
{
    using V3 = Eigen::Vector3f;
    using V4 = Eigen::Vector4f;
    Eigen::Projective3f P;
    P.matrix() = Eigen::Map<const Eigen::Matrix<float, 4, 4, Eigen::RowMajor>>(kM);
    for (int k = 0; k < n; ++k) {
        if constexpr (op == Dot) d[k] = Eigen::Map<const V4>(a + 4 * k).dot(Eigen::Map<const V4>(b + 4 * k));
        if constexpr (op == Cross) Eigen::Map<V3>(d + 3 * k) = Eigen::Map<const V3>(a + 3 * k).cross(Eigen::Map<const V3>(b + 3 * k));
        if constexpr (op == Norm) d[k] = Eigen::Map<const V4>(a + 4 * k).norm();
        if constexpr (op == Affine) Eigen::Map<V3>(d + 3 * k) = (P * Eigen::Map<const V3>(a + 3 * k).homogeneous()).hnormalized();
    }
}
#endif

// The library, then Eigen and a plain loop doing the same arithmetic, in the
// same iteration: `ratio` is ours / Eigen's time, `ratio_plain` ours / the
// plain loop's (the same bytes, so its inverse is the share of the plain
// loop's bytes per second out of cache).
template <Op op>
void compare(benchmark::State& s)
{
    const int n = int(s.range(0));
    float *a = buf(0, 4 * size_t(n)).data(), *b = buf(1, 4 * size_t(n)).data(), *d = buf(2, 4 * size_t(n)).data();
    std::vector<bench::Peer> peers;
#ifdef ORLM_HAVE_EIGEN
    peers.push_back({"eigen", "", [&] { eigen<op>(a, b, d, n), benchmark::ClobberMemory(); }});
#endif
    peers.push_back({"plain", "_plain", [&] { plain<op>(a, b, d, n), benchmark::ClobberMemory(); }});
    bench::timeAgainst(s, n, [&] { return lib<op>(a, b, d, n) && (benchmark::ClobberMemory(), true); }, peers);
    s.counters["GBps"] = kBytes[op] / s.counters["ns_per_item"];
}

void args(benchmark::internal::Benchmark* b)
{
    b->ArgNames({"items"});
    for (int n : {kSmall, kLarge}) b->Args({n});
}

}  // namespace

BENCHMARK(compare<Dot>)->Name("dot_vava_32f_4")->Apply(args);
BENCHMARK(compare<Cross>)->Name("cross_vava_32f")->Apply(args);
BENCHMARK(compare<Norm>)->Name("l2norm_va_32f_4")->Apply(args);
BENCHMARK(compare<Affine>)->Name("affine3dh_mva_32f")->Apply(args);
BENCHMARK_MAIN();
