// Cholesky decomposition A = L L^T of symmetric positive definite matrices,
// row by row (Cholesky-Banachiewicz), in the element type.
//
// The factor stands in the lower triangle of dst: L[i][j] left of the
// diagonal, and on the diagonal the reciprocal 1 / L[i][i], so that neither
// the rest of the factorisation nor the back-substitution divides. Only the
// lower triangle of src is read; the strict upper triangle of dst is never
// written. Each element of src is read before the element of dst at the same
// place is written, so dst may be src itself.
//
// What differs between kernels is data: the threshold of the pivot test by
// kernel and size (kThresholds), the method of the reciprocal square root by
// type, kernel and size (kRecipSqrt), and where the `_P` form of size 3 keeps
// its rows until they are stored (lateStore).
#include <cmath>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::chol {

namespace decomp {

// ---- tables ----------------------------------------------------------------

// A kernel: element type, single matrix or array, variant.
struct KernelKey {
    Ty ty;
    bool array;
    Var var;
};

// Threshold t0 of the test "t > t0" on each diagonal before its root.
struct Threshold {
    double size3, size45, size6, other;
    constexpr double at(int n) const { return n == 3 ? size3 : n == 4 || n == 5 ? size45 : n == 6 ? size6 : other; }
};

constexpr Threshold kNone{0, 0, 0, 0};
//                                     size 3    size 4, 5  size 6    other sizes
constexpr Threshold kPKernels       {0x1p-23,    0,         0,        0};
constexpr Threshold kArray64S2      {0,          0,         0x1p-52,  0x1p-52};

constexpr Threshold thresholdOf(KernelKey k)
{
    if (k.var == Var::P) return kPKernels;                                        // m and ma, 32f and 64f
    if (k.ty == Ty::F64 && k.array && k.var == Var::S2) return kArray64S2;       // ma_64f_S2 only
    return kNone;                                                                 // every other kernel
}

// How 1 / sqrt(t) is formed.
enum class Rsq {
    Extended,   // square root and division in the extended format, one rounding by the store
    Estimate,   // 32f: the processor's estimate, then one Newton step
    SqrtDiv,    // 64f: double square root, then 1.0 divided by it
};

struct RsqRow {
    Rsq size3, other;
};

//                               size 3          all other sizes
constexpr RsqRow k32Single     {Rsq::Extended, Rsq::Estimate};   // 32f, m plain and _S2
constexpr RsqRow k32Others     {Rsq::Estimate, Rsq::Estimate};   // 32f, m _P and every ma kernel
constexpr RsqRow k64Single     {Rsq::Extended, Rsq::SqrtDiv};    // 64f, m plain and _S2
constexpr RsqRow k64Others     {Rsq::SqrtDiv,  Rsq::SqrtDiv};    // 64f, m _P and every ma kernel

constexpr Rsq recipSqrtOf(KernelKey k, int n)
{
    const bool single = !k.array && (k.var == Var::Unit || k.var == Var::S2);
    const RsqRow& r = k.ty == Ty::F32 ? (single ? k32Single : k32Others) : (single ? k64Single : k64Others);
    return n == 3 ? r.size3 : r.other;
}

// The `_P` forms of size 3 work in locals and store rows 0 and 1 together
// once row 1 is complete, row 2 at the end; every other form stores each
// element as it is formed.
constexpr bool lateStore(KernelKey k, int n) { return k.var == Var::P && n == 3; }

// Sizes with a straight-line form, in every kernel.
constexpr Sizes kUnrolledSizes{3, 4, 5, 6};

// Cost n*n*count; the driver is taken above the limit.
//                          Unit  Any   L Unit L Any  P
constexpr LimitRow kLimits{{7500, 7500, 2000,  2000,  2000, Test::GT},   // 32f
                           {2000, 2000, 720,   2000,  2000, Test::GT}};  // 64f

// ---- one matrix ------------------------------------------------------------

template <class E>
inline E recipSqrt(E t, Rsq how)
{
    if (how == Rsq::Extended) return E(Ext(1) / std::sqrt(Ext(t)));
    if constexpr (sizeof(E) == 4) {
        if (how == Rsq::Estimate) return rsqrtNewton(t);
    }
    return E(1) / std::sqrt(t);
}

// Factors one matrix. N > 0 is a straight-line size: the factor is then also
// kept in locals, from which the recurrence reads; the general form reads
// its earlier rows back from dst.
template <KernelKey key, int N, class E, class S, class D>
orlStatus factor(const S& src, const D& dst, int size)
{
    const int n = N ? N : size;
    constexpr bool late = N > 0 && lateStore(key, N);
    const E t0 = E(thresholdOf(key).at(n));
    const Rsq rsq = recipSqrtOf(key, n);

    E l[N ? N : 1][N ? N : 1];
    const auto get = [&](int i, int j) -> E {
        if constexpr (N > 0) return l[i][j];
        else return dst(i, j);
    };
    const auto put = [&](int i, int j, E v) {
        if constexpr (N > 0) l[i][j] = v;
        if constexpr (!late) dst(i, j) = v;
    };
    const auto storeRows = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            for (int j = 0; j <= i; ++j) dst(i, j) = l[i][j];
    };

#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
#pragma GCC unroll 6
        for (int j = 0; j < i; ++j) {
            E t = src(i, j);
#pragma GCC unroll 6
            for (int k = 0; k < j; ++k) t = t - get(i, k) * get(j, k);
            put(i, j, t * get(j, j));  // the diagonal holds the reciprocal
        }
        E t = src(i, i);
#pragma GCC unroll 6
        for (int k = 0; k < i; ++k) t = t - get(i, k) * get(i, k);
        if (!(t > t0)) return orlStatusNotPosDefinite;  // zero, negative and NaN fail
        put(i, i, recipSqrt(t, rsq));
        if constexpr (late) {
            if (i == n - 2) storeRows(0, n - 1);
        }
    }
    if constexpr (late) storeRows(n - 1, n);
    return orlStatusOk;
}

// ---- kernel ----------------------------------------------------------------

// The loop over items, inside the size dispatch; it leaves at the first item
// that fails.
template <bool array, Var V, class S, class D>
orlStatus kernel(int count, const S& s, const D& d, int n)
{
    using E = typename D::Elem;
    constexpr KernelKey key{tyOf<E>, array, V};
    constexpr bool unit = unitStep(V);
    const auto run = [&](auto N) {
        for (int k = 0; k < count; ++k)
            if (const orlStatus st = factor<key, decltype(N)::value, E>(matItem<unit>(s, k, n), matItem<unit>(d, k, n), n))
                return st;
        return orlStatusOk;
    };
    return bySize<kUnrolledSizes>(n, run, [&] { return run(std::integral_constant<int, 0>{}); });
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class D>
orlStatus select(int count, const S& s, const D& d, int n)
{
    if (allUnit(s, d)) return kernel<D::array, varOf(D::lay, true)>(count, s, d, n);
    return kernel<D::array, varOf(D::lay, false)>(count, s, d, n);
}

}  // namespace decomp

// ---- entry -----------------------------------------------------------------

template <class S, class D>
orlStatus decompEntry(const S& src, const D& dst, int widthHeight, int count = 1)
{
    using E = typename D::Elem;
    Checks c = operandChecks(src, dst);
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay), c)) return st;

    const int n = widthHeight;
    if constexpr (!D::array) {
        return decomp::select(1, src, dst, n);
    } else {
        const std::int32_t cost = (Wrap(n) * n * count).value();
        return route(cost, decomp::kLimits.of<E>(), D::lay, count,
                     [&](int items, const auto&... o) { return decomp::select(items, o..., n); }, src, dst);
    }
}

}  // namespace orl::chol

#include "chol.inc"
