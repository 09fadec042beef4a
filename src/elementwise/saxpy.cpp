// Saxpy and LComb of vectors: dst(k, j) = value * src1(k, j) + src2(k, j)
// and dst(k, j) = value1 * src1(k, j) + value2 * src2(k, j).
//
// Saxpy is LComb with a second scale of exactly one that is never
// multiplied. What differs between members is data: the limits, and the
// precision class of each kernel (where the products and the sum are
// rounded), which depends on the shape, the type, the kernel and whether
// the length has a straight-line form.
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::saxpy {

enum class Stem { Saxpy, LComb };

// ---- tables ----------------------------------------------------------------

// Precision classes:
//   R  each product rounded to the element type, then the sum rounded;
//   X  products and sum formed in the extended format, one rounding on the store.
enum class Cls { R, X, none };
using enum Cls;

struct ClassRow {
    Stem stem;
    std::string_view shape;
    Ty ty;
    // Unit stride: lengths 3-6, other; _L: lengths 3-6, other; _S2, _LS2, _P.
    Cls unitShort, unitOther, lShort, lOther, rest;
};
constexpr ClassRow kClasses[] = {
    //                                 Unit 3-6  Unit other  _L 3-6  _L other  _S2 _LS2 _P
    {Stem::Saxpy, "vv", Ty::F32,       R,        X,          none,   none,     X},
    {Stem::Saxpy, "vv", Ty::F64,       R,        R,          none,   none,     X},
    {Stem::Saxpy, "vav", Ty::F32,      R,        X,          R,      X,        X},
    {Stem::Saxpy, "vav", Ty::F64,      X,        X,          R,      X,        X},
    {Stem::Saxpy, "vva", Ty::F32,      R,        X,          R,      X,        R},
    {Stem::Saxpy, "vva", Ty::F64,      X,        X,          R,      X,        X},
    {Stem::Saxpy, "vava", Ty::F32,     R,        X,          R,      X,        X},
    {Stem::Saxpy, "vava", Ty::F64,     R,        X,          R,      X,        X},
};
// LComb, both types, all shapes.
constexpr ClassRow kLCombClasses{Stem::LComb, "", Ty::F32, R, X, R, X, X};

constexpr Cls classOf(Stem stem, std::string_view shape, Ty ty, Var v, bool straightLine)
{
    ClassRow row = kLCombClasses;
    for (const ClassRow& r : kClasses)
        if (r.stem == stem && r.shape == shape && r.ty == ty) row = r;
    switch (v) {
    case Var::Unit: return straightLine ? row.unitShort : row.unitOther;
    case Var::L: return straightLine ? row.lShort : row.lOther;
    default: return row.rest;
    }
}

// Every kernel has straight-line forms for lengths 3 to 6.
constexpr Sizes kForms{3, 4, 5, 6};

// Cost (2n+1)*L with a shared vector, 3*L*n with two arrays; the driver is
// taken above the limit (>).
//                                        Unit   Any    L Unit L Any  P
constexpr LimitRow kSaxpyLimits = both(40000, 40000, 40000, 40000, 40000, Test::GT);
constexpr LimitRow kLCombLimits = {{20000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                                   {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// ---- kernel ----------------------------------------------------------------

// The second scale of Saxpy: one, and never multiplied.
struct One {};

template <Cls cls, class E, class S>
inline E combine(E v1, E x, S v2, E y)
{
    if constexpr (cls == R) {
        const E p = v1 * x;
        if constexpr (std::is_same_v<S, One>)
            return p + y;
        else
            return p + E(v2 * y);
    } else {
        const Ext p = Ext(v1) * Ext(x);
        if constexpr (std::is_same_v<S, One>)
            return E(p + Ext(y));
        else
            return E(p + Ext(v2) * Ext(y));
    }
}

// Class R on adjacent elements in packed lanes, then single elements.
template <class E, class S>
[[gnu::always_inline]] inline void packedR(E* d, const E* x, E v1, const E* y, S v2, int n)
{
    using P = Lanes<E>;
    int j = 0;
    const auto s1 = P::splat(v1);
    for (; j + P::lanes <= n; j += P::lanes) {
        const auto p = P::mul(s1, P::load(x + j));
        if constexpr (std::is_same_v<S, One>)
            P::store(d + j, P::add(p, P::load(y + j)));
        else
            P::store(d + j, P::add(p, P::mul(P::splat(v2), P::load(y + j))));
    }
    for (; j < n; ++j) d[j] = combine<R>(v1, x[j], v2, y[j]);
}

// The loop over items and elements: a straight-line form for N > 0 (length
// known to the compiler, a shared vector held), the general loop for N == 0.
template <Cls cls, bool Unit, int N, class A, class B, class D, class S>
void run(const A a, typename D::Elem v1, const B b, S v2, const D d, int length, int count)
{
    const auto sa = vecSourceItems<Unit, N>(a);
    const auto sb = vecSourceItems<Unit, N>(b);
    const int n = N > 0 ? N : length;
    // Two items a step in the straight-line forms: short items are bound by
    // the loop overhead.
#pragma GCC unroll 2
    for (int k = 0; k < count; ++k) {
        const auto& x = sa(k);
        const auto& y = sb(k);
        const auto z = vecItem<Unit>(d, k);
        if constexpr (cls == R && Unit) {
            packedR(z.b, x.data(), v1, y.data(), v2, n);
        } else {
#pragma GCC unroll 6
            for (int j = 0; j < n; ++j) z(j) = combine<cls>(v1, x(j), v2, y(j));
        }
    }
}

template <Stem stem, Var V, class A, class B, class D, class S>
orlStatus kernel(const A& a, typename D::Elem v1, const B& b, S v2, const D& d, int length, int count)
{
    using E = typename D::Elem;
    constexpr std::string_view shape = kShape<A::kind, B::kind>.view();
    constexpr Cls straight = classOf(stem, shape, tyOf<E>, V, true), general = classOf(stem, shape, tyOf<E>, V, false);
    constexpr bool unit = unitStep(V);
    return bySize<kForms>(
        length,
        [&](auto n) { return run<straight, unit, decltype(n)::value>(a, v1, b, v2, d, length, count), orlStatusOk; },
        [&] { return run<general, unit, 0>(a, v1, b, v2, d, length, count), orlStatusOk; });
}

// The kernel that the stride2 test selects.
template <Stem stem, class A, class B, class D, class S>
orlStatus select(const A& a, typename D::Elem v1, const B& b, S v2, const D& d, int length, int count)
{
    if (allUnit(a, b, d)) return kernel<stem, varOf(D::lay, true)>(a, v1, b, v2, d, length, count);
    return kernel<stem, varOf(D::lay, false)>(a, v1, b, v2, d, length, count);
}

// ---- entry -----------------------------------------------------------------

template <Stem stem, class A, class B, class D, class S>
orlStatus checkAndRoute(const A& a, typename D::Elem v1, const B& b, S v2, const D& d, int length, int count)
{
    using E = typename D::Elem;
    constexpr Lay L = D::lay;

    Checks c = operandChecks(a, b, d);
    c.C = count >= 1;
    c.Z = length >= 1;
    if (const orlStatus st = firstFailure(generalOrder(D::array, L), c)) return st;

    if constexpr (!D::array) {
        return select<stem>(a, v1, b, v2, d, length, 1);
    } else {
        const Wrap items = A::array && B::array ? Wrap(3) * count : Wrap(2) * count + 1;
        const std::int32_t cost = (items * length).value();
        constexpr const LimitRow& limits = stem == Stem::Saxpy ? kSaxpyLimits : kLCombLimits;
        return route(cost, limits.of<E>(), L, count,
                     [&](int n, const auto& x, const auto& y, const auto& z) { return select<stem>(x, v1, y, v2, z, length, n); },
                     a, b, d);
    }
}

template <Stem stem, class A, class C, class B, class D>
    requires(stem == Stem::Saxpy)
orlStatus entry(const A& a, const C& value, const B& b, const D& d, int length, int count = 1)
{
    return checkAndRoute<stem>(a, value.p, b, One{}, d, length, count);
}

template <Stem stem, class A, class C, class B, class D>
    requires(stem == Stem::LComb)
orlStatus entry(const A& a, const C& value1, const B& b, const C& value2, const D& d, int length, int count = 1)
{
    return checkAndRoute<stem>(a, value1.p, b, value2.p, d, length, count);
}

}  // namespace orl::saxpy

#include "saxpy.inc"
