// LU back-substitution: solves A x = b from the factor and perm that the LU
// decomposition left, for one system (mv), one factor against an array of
// right-hand sides (mva), or an array of factors each with its own right-hand
// side (mava).
//
// The factor is read through perm: logical row i lies in physical row
// perm[i], L left of the diagonal (unit diagonal implied), U from it on. The
// right-hand side is read through perm too, so the solution comes out in
// natural order. Nothing can fail after the argument checks.
//
// Two paths, chosen by size, that round differently on purpose:
//
//   path       sizes       one unknown                        reciprocals
//   unrolled   3 to 6      rhs - a*y - a*y ..., term by term;  1/diagonal formed once per
//                          backward from the highest column,   factor (once a call in mva),
//                          times the reciprocal                by true division
//   general    1, 2, >= 7  s = 0 + a*y + a*y ... ascending;    none: a true division
//                          (b - s) / diagonal                  for every unknown
//
// All arithmetic is in the element type.
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::lu {

namespace subst {

// ---- tables ----------------------------------------------------------------

// Sizes with an unrolled form, in every kernel.
constexpr Sizes kUnrolledSizes{3, 4, 5, 6};

// Cost (n + 2*count)*n for mva, n*(n + 2)*count for mava; the driver is
// taken above the limit, the same in every layout and type.
//                                      Unit  Any   L Unit L Any P
constexpr LimitRow kLimits = both(1700, 1700, 1700, 1700, 1700, Test::GT);

// ---- unrolled path ---------------------------------------------------------

// One factor as the unrolled path holds it: perm, the rows in logical order
// and the reciprocals of the diagonal. Every loop is written out at the size
// known to the compiler, so that the rows and the unknowns stay in registers.
template <class E, int N>
struct Factor {
    int p[N];
    E a[N][N];  // a[i][j] = element (perm[i], j)
    E inv[N];

    template <class A>
    void load(const A& m, const std::int32_t* perm)
    {
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i) p[i] = perm[i];
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
            #pragma GCC unroll 8
            for (int j = 0; j < N; ++j) a[i][j] = m(p[i], j);
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i) inv[i] = E(1) / a[i][i];
    }

    // All of rhs is read before the first store, so dst may equal rhs.
    template <class B, class X>
    void solve(const B& rhs, const X& dst) const
    {
        E y[N];
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i) y[i] = rhs(p[i]);
        #pragma GCC unroll 8
        for (int i = 1; i < N; ++i)
            #pragma GCC unroll 8
            for (int j = 0; j < i; ++j) y[i] = y[i] - a[i][j] * y[j];
        #pragma GCC unroll 8
        for (int i = N - 1; i >= 0; --i) {
            #pragma GCC unroll 8
            for (int j = N - 1; j > i; --j) y[i] = y[i] - a[i][j] * y[j];
            y[i] = y[i] * inv[i];
        }
        #pragma GCC unroll 8
        for (int i = 0; i < N; ++i) dst(i) = y[i];
    }
};

// A shared factor (mva) is loaded and inverted once, before the loop.
template <int N, bool unit, class S, class B, class X>
void unrolled(int count, PerItem<const std::int32_t> perm, const S& s, const B& b, const X& x)
{
    using E = typename X::Elem;
    Factor<E, N> f;
    if constexpr (!S::array) f.load(matItem<unit>(s, 0, N), perm.item(0));
    for (int k = 0; k < count; ++k) {
        if constexpr (S::array) f.load(matItem<unit>(s, k, N), perm.item(k));
        f.solve(vecItem<unit>(b, k), vecItem<unit>(x, k));
    }
}

// ---- general path ----------------------------------------------------------

// dst is the work vector: it is written while rhs is still read through perm.
template <bool unit, class S, class B, class X>
void general(int count, PerItem<const std::int32_t> perm, const S& s, const B& b, const X& x, int n)
{
    using E = typename X::Elem;
    for (int k = 0; k < count; ++k) {
        const auto a = matItem<unit>(s, k, n);
        const auto rhs = vecItem<unit>(b, k);
        const auto dst = vecItem<unit>(x, k);
        const std::int32_t* p = perm.item(k);
        dst(0) = rhs(p[0]);
        for (int i = 1; i < n; ++i) {
            E sum = E(0);
            for (int j = 0; j < i; ++j) sum = sum + a(p[i], j) * dst(j);
            dst(i) = rhs(p[i]) - sum;
        }
        dst(n - 1) = dst(n - 1) / a(p[n - 1], n - 1);
        for (int i = n - 2; i >= 0; --i) {
            E sum = E(0);
            for (int j = i + 1; j < n; ++j) sum = sum + a(p[i], j) * dst(j);
            dst(i) = (dst(i) - sum) / a(p[i], i);
        }
    }
}

// ---- kernel ----------------------------------------------------------------

template <Var V, class S, class B, class X>
orlStatus kernel(int count, PerItem<const std::int32_t> perm, const S& s, const B& b, const X& x, int n)
{
    constexpr bool unit = unitStep(V);
    return bySize<kUnrolledSizes>(
        n, [&](auto N) { return unrolled<decltype(N)::value, unit>(count, perm, s, b, x), orlStatusOk; },
        [&] { return general<unit>(count, perm, s, b, x, n), orlStatusOk; });
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class B, class X>
orlStatus select(int count, PerItem<const std::int32_t> perm, const S& s, const B& b, const X& x, int n)
{
    if (allUnit(s, b, x)) return kernel<varOf(X::lay, true)>(count, perm, s, b, x, n);
    return kernel<varOf(X::lay, false)>(count, perm, s, b, x, n);
}

}  // namespace subst

// ---- entry -----------------------------------------------------------------

template <class S, class B, class X>
orlStatus backSubstEntry(const S& src, const std::int32_t* perm, const B& rhs, const X& dst, int widthHeight,
                         int count = 1)
{
    using E = typename X::Elem;
    Checks c = operandChecks(src, rhs, dst);
    c.N = c.N && perm != nullptr;
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure(generalOrder(X::array, X::lay), c)) return st;

    const int n = widthHeight;
    // mava: a table of n entries per factor; mva and mv: one table for all.
    const PerItem<const std::int32_t> pm{perm, S::array ? n : 0};
    if constexpr (!X::array) {
        return subst::select(1, pm, src, rhs, dst, n);
    } else {
        const Wrap items = count;
        const std::int32_t cost = (S::array ? Wrap(n) * (Wrap(n) + 2) * items : (Wrap(n) + Wrap(2) * items) * n).value();
        return route(cost, subst::kLimits.of<E>(), X::lay, count,
                     [&](int slice, const auto&... o) { return subst::select(slice, o..., n); }, pm, src, rhs, dst);
    }
}

}  // namespace orl::lu

#include "lubacksubst.inc"
