// Matrix times vector against Eigen's fixed-size product and against a plain
// streaming loop over the same arrays, in the same run, one thread:
// a shared matrix times an array of vectors (mva) and an array of matrices
// times an array of vectors (mava), contiguous row-major items, unit strides,
// 1024 items (in cache) and 4M items (out of cache). Counters: ns per item
// of each, the ratio to Eigen (time) and the share of the streaming loop's
// bytes per second that the library reaches.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "orlm.h"
#include "peers.h"

#ifdef ORLM_HAVE_EIGEN
#include <Eigen/Core>
#endif

namespace {

constexpr int kInCache = 1024, kOutOfCache = 4 << 20;

template <class E>
struct Data {
    std::vector<E> a, x, y;
    Data(int n, int items, bool arrayOfMatrices)
        : a(std::size_t(n) * n * (arrayOfMatrices ? items : 1)), x(std::size_t(n) * items), y(std::size_t(n) * items)
    {
        std::mt19937 rng(5);
        std::uniform_real_distribution<E> u(E(-1), E(1));
        for (auto& v : a) v = u(rng);
        for (auto& v : x) v = u(rng);
    }
};

// Bytes read and written per item.
template <class E, int N, bool mava>
constexpr double bytesPerItem()
{
    return double(sizeof(E)) * (2 * N + (mava ? N * N : 0));
}

orlStatus mulvec(bool mava, const float* a, const float* x, float* y, int n, int items)
{
    const int e = 4, s1 = n * e, s0 = n * e;
    if (mava) return orlmMul_mava_32f(a, n * s1, s1, e, n, n, x, s0, e, n, y, s0, e, items);
    return orlmMul_mva_32f(a, s1, e, n, n, x, s0, e, n, y, s0, e, items);
}
orlStatus mulvec(bool mava, const double* a, const double* x, double* y, int n, int items)
{
    const int e = 8, s1 = n * e, s0 = n * e;
    if (mava) return orlmMul_mava_64f(a, n * s1, s1, e, n, n, x, s0, e, n, y, s0, e, items);
    return orlmMul_mva_64f(a, s1, e, n, n, x, s0, e, n, y, s0, e, items);
}

// The library, Eigen's fixed-size product and a streaming loop over the same
// arrays with next to no arithmetic (y = x plus the first element of each
// matrix row, which brings in every cache line of the matrices; rows are 12
// to 48 bytes), timed in the same iterations: `ratio` is ours / Eigen's time
// (target at most 1.0 in cache), `ratio_stream` ours / the streaming loop's,
// whose inverse is the share of its bytes per second that the library
// reaches (target at least 0.9 out of cache).
template <class E, int N, bool mava, int items>
void BM_compare(benchmark::State& st)
{
    Data<E> d(N, items, mava);
    E* y = d.y.data();
    std::vector<bench::Peer> peers;
#ifdef ORLM_HAVE_EIGEN
    peers.push_back({"eigen", "", [&] {
                         using M = Eigen::Matrix<E, N, N, Eigen::RowMajor>;
                         using V = Eigen::Matrix<E, N, 1>;
                         const E* a = d.a.data();
                         const E* x = d.x.data();
                         if constexpr (mava) {
                             for (int k = 0; k < items; ++k)
                                 Eigen::Map<V>(y + std::size_t(k) * N).noalias() =
                                     Eigen::Map<const M>(a + std::size_t(k) * N * N) * Eigen::Map<const V>(x + std::size_t(k) * N);
                         } else {
                             const M shared = Eigen::Map<const M>(a);
                             for (int k = 0; k < items; ++k)
                                 Eigen::Map<V>(y + std::size_t(k) * N).noalias() = shared * Eigen::Map<const V>(x + std::size_t(k) * N);
                         }
                         benchmark::ClobberMemory();
                     }});
#endif
    peers.push_back({"stream", "_stream", [&] {
                         const E* a = d.a.data();
                         const E* x = d.x.data();
                         for (std::size_t k = 0; k < std::size_t(items); ++k)
                             for (int i = 0; i < N; ++i) y[k * N + i] = x[k * N + i] + (mava ? a[(k * N + i) * N] : E(1));
                         benchmark::ClobberMemory();
                     }});
    bench::timeAgainst(
        st, items,
        [&] { return mulvec(mava, d.a.data(), d.x.data(), y, N, items) == orlStatusOk && (benchmark::ClobberMemory(), true); },
        peers);
    st.counters["GBps"] = bytesPerItem<E, N, mava>() / st.counters["ns_per_item"];
    st.counters["stream_share"] = 1.0 / st.counters["ratio_stream"];
}

#define BOTH(E, N, mava, name)                                                     \
    BENCHMARK(BM_compare<E, N, mava, kInCache>)->Name(name "_1024");              \
    BENCHMARK(BM_compare<E, N, mava, kOutOfCache>)->Name(name "_4M");

BOTH(float, 4, false, "mva_32f_4x4")
BOTH(float, 4, true, "mava_32f_4x4")
BOTH(float, 3, true, "mava_32f_3x3")
BOTH(double, 6, false, "mva_64f_6x6")

}  // namespace

BENCHMARK_MAIN();
