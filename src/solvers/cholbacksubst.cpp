// Cholesky back-substitution: solves A x = b from the factor that the
// Cholesky decomposition left, for one system (mv), one factor against an
// array of right-hand sides (mva), or an array of factors each with its own
// right-hand side (mava).
//
// The factor's diagonal holds r[i] = 1 / L[i][i], so both passes multiply
// and never divide:
//   forward,  L y = b:    y[i] = (b[i] - L[i][0] y[0] - ... - L[i][i-1] y[i-1]) * r[i]
//   backward, L^T x = y:  x[i] = (y[i] - L[n-1][i] x[n-1] - ... - L[i+1][i] x[i+1]) * r[i]
// each term subtracted in turn, in the element type. Only the lower triangle
// of the factor is read. The straight-line forms (sizes 3 to 6) keep y and x
// in locals and store dst once all of rhs is read; the general form keeps y
// in dst. Both round alike. Nothing can fail after the argument checks.
#include <cstdint>
#include <string_view>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::chol {

namespace subst {

// ---- tables ----------------------------------------------------------------

constexpr Sizes kUnrolledSizes{3, 4, 5, 6};

// mva: cost (n + 2*count)*n; mava: cost (n*n + 2*n)*count; the driver is
// taken above the limit.
//                              Unit  Any   L Unit L Any  P
constexpr LimitRow kLimitsMva {{1200, 1200, 720,   720,   720,  Test::GT},   // 32f
                               {720,  720,  720,   720,   720,  Test::GT}};  // 64f
constexpr LimitRow kLimitsMava{{2050, 1700, 1700,  1700,  1700, Test::GT},   // 32f
                               {1700, 1700, 1700,  1700,  2050, Test::GT}};  // 64f

// Check order: the general one, but for mva in `_L`.
constexpr std::string_view orderOf(bool mva, Lay lay, bool array)
{
    return mva && lay == Lay::L ? "NTOZC" : generalOrder(array, lay);
}

// ---- one system ------------------------------------------------------------

template <int N, class E, class A, class B, class X>
inline void solve(const A& a, const B& rhs, const X& dst, int size)
{
    const int n = N ? N : size;
    E local[N ? N : 1];
    const auto y = [&](int i) -> E& {
        if constexpr (N > 0) return local[i];
        else return dst(i);
    };
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
        E t = rhs(i);
#pragma GCC unroll 6
        for (int j = 0; j < i; ++j) t = t - a(i, j) * y(j);
        y(i) = t * a(i, i);
    }
#pragma GCC unroll 6
    for (int i = n - 1; i >= 0; --i) {
        E t = y(i);
#pragma GCC unroll 6
        for (int j = n - 1; j > i; --j) t = t - a(j, i) * y(j);
        y(i) = t * a(i, i);
    }
    if constexpr (N > 0)
        for (int i = 0; i < N; ++i) dst(i) = local[i];
}

// ---- kernel ----------------------------------------------------------------

// A shared factor (mva) is read into locals once, before the loop, in the
// straight-line forms.
template <Var V, class S, class B, class X>
orlStatus kernel(int count, const S& s, const B& b, const X& x, int n)
{
    using E = typename X::Elem;
    constexpr bool unit = unitStep(V);
    const auto run = [&](auto size) {
        constexpr int N = decltype(size)::value;
        const auto factors = sourceItems<unit, N>(s, n);
        for (int k = 0; k < count; ++k) solve<N, E>(factors(k), vecItem<unit>(b, k), vecItem<unit>(x, k), n);
        return orlStatusOk;
    };
    return bySize<kUnrolledSizes>(n, run, [&] { return run(std::integral_constant<int, 0>{}); });
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class B, class X>
orlStatus select(int count, const S& s, const B& b, const X& x, int n)
{
    if (allUnit(s, b, x)) return kernel<varOf(X::lay, true)>(count, s, b, x, n);
    return kernel<varOf(X::lay, false)>(count, s, b, x, n);
}

}  // namespace subst

// ---- entry -----------------------------------------------------------------

template <class S, class B, class X>
orlStatus backSubstEntry(const S& src, const B& rhs, const X& dst, int widthHeight, int count = 1)
{
    using E = typename X::Elem;
    Checks c = operandChecks(src, rhs, dst);
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    constexpr bool mva = X::array && !S::array;
    if (const orlStatus st = firstFailure(subst::orderOf(mva, X::lay, X::array), c)) return st;

    const int n = widthHeight;
    if constexpr (!X::array) {
        return subst::select(1, src, rhs, dst, n);
    } else {
        const Wrap items = count;
        const std::int32_t cost = (mva ? (Wrap(n) + Wrap(2) * items) * n : (Wrap(n) * n + Wrap(2) * n) * items).value();
        const LimitRow& lim = mva ? subst::kLimitsMva : subst::kLimitsMava;
        return route(cost, lim.of<E>(), X::lay, count,
                     [&](int slice, const auto&... o) { return subst::select(slice, o..., n); }, src, rhs, dst);
    }
}

}  // namespace orl::chol

#include "cholbacksubst.inc"
