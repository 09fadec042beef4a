// Dot and cross products of vectors: dst(k) = A(k) . B(k) and
// dst(k) = A(k) x B(k), a single vector paired with every item of an array.
//
// A dot product's result is one number per item, written to `count`
// adjacent elements in every layout. A cross product's vectors have three
// components by definition: no length, no size test.
//
// What differs between members is data: the order of additions of each
// kernel at lengths 3 to 6, the general path of each kernel, the check
// orders of the cross product, and the limits.
#include <cstdint>
#include <string_view>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::dotcross {

// ---- dot product: tables ------------------------------------------------------

// The straight-line form of a kernel at one length: the order of its
// additions in element precision, or "x": products and sums in the extended
// format, ascending, rounded once on the store.
struct DotForm {
    bool extended;
    Tree tree;
};

constexpr const char* kX = "x";
constexpr const char* kAscending[] = {"(p0+p1)+p2", "((p0+p1)+p2)+p3", "(((p0+p1)+p2)+p3)+p4",
                                      "((((p0+p1)+p2)+p3)+p4)+p5"};

struct DotRow {
    std::string_view shapes;
    std::string_view types;  // "32f 64f"
    std::string_view kernels;
    const char* at[4];       // lengths 3, 4, 5, 6
};

// Rows are tried in order; the last one takes every kernel not named before.
constexpr const char* A3 = kAscending[0];
constexpr const char* A5 = kAscending[2];
constexpr const char* A6 = kAscending[3];
constexpr DotRow kDotForms[] = {
    // shapes         types      kernels          3             4                  5                        6
    {"vv vava",     "32f",     "unit L",   {A3,           kAscending[1],     A5,                      A6}},
    {"vav",         "32f",     "unit L",   {A3,           "(p0+p1)+(p2+p3)", A5,                      A6}},
    {"vv vav vava", "64f",     "unit L",   {"(p0+p1)+p2", "(p0+p2)+(p1+p3)", "((p0+p2)+(p1+p3))+p4", "(p0+(p2+p4))+(p1+(p3+p5))"}},
    {"vav",         "32f 64f", "S2 LS2",   {A3,           kX,                kX,                      kX}},
    {"vv vav vava", "32f 64f", "S2 P LS2", {kX,           kX,                kX,                      kX}},
};

constexpr DotForm dotForm(std::string_view shape, Ty ty, Var v, int n)
{
    for (const DotRow& r : kDotForms)
        if (listed(r.shapes, shape) && listed(r.types, tyName(ty)) && listed(r.kernels, varName(v))) {
            const char* f = r.at[n - 3];
            return f[0] == 'x' ? DotForm{true, Tree("p0")} : DotForm{false, Tree(f)};
        }
    return {true, Tree("p0")};
}

// The general path of the unit-stride kernels of `vv` and `vava`: a lane sum
// (32f) or a pair sum (64f) below whose limit a chain is taken, and whether
// an aligned form exists. Every other kernel sums a chain from +0.0.
struct LongRow {
    std::string_view shape;
    Ty ty;
    int limit;
    bool alignedForm;
};
constexpr LongRow kLong[] = {
    {"vv", Ty::F32, 11, false},
    {"vava", Ty::F32, 11, true},
    {"vv", Ty::F64, 9, false},
    {"vava", Ty::F64, 9, true},
};

constexpr const LongRow* longRow(std::string_view shape, Ty ty, Var v)
{
    if (v != Var::Unit) return nullptr;
    for (const LongRow& r : kLong)
        if (r.shape == shape && r.ty == ty) return &r;
    return nullptr;
}

// Cost: length*count + length (vav), 2*length*count (vava); the driver is
// taken above the limit. The `_P` limit differs between the types.
//                                Unit   Any    L Unit L Any   P
constexpr LimitRow kDotLimits{{40000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                              {40000, 20000, 40000, 20000, 40000, Test::GT}};  // 64f

// ---- dot product: kernel --------------------------------------------------------

template <Var V, class A, class B>
orlStatus dotKernel(int count, PerItem<typename A::Elem> dst, const A& a, const B& b, int n)
{
    using E = typename A::Elem;
    constexpr std::string_view shape = kShape<A::kind, B::kind>.view();
    constexpr bool unit = unitStep(V);
    return bySize<Sizes{3, 4, 5, 6}>(
        n,
        [&](auto N) {
            constexpr DotForm form = dotForm(shape, tyOf<E>, V, decltype(N)::value);
            int k = 0;
            if constexpr (unit && !form.extended && sizeof(E) == 4 && decltype(N)::value == 4) {
                // Four items a step, one a lane: the same operations in the
                // same order. The operands are copied so that their bases and
                // strides stay in registers across the stores to dst. (The
                // casts are no-ops here: they keep the 64f instances, in which
                // this branch is discarded, well-formed for every compiler.)
                const A la = a;
                const B lb = b;
                const auto prod = [&](int i) {
                    return _mm_mul_ps(_mm_loadu_ps(reinterpret_cast<const float*>(vecItem<unit>(la, i).data())), _mm_loadu_ps(reinterpret_cast<const float*>(vecItem<unit>(lb, i).data())));
                };
                float* out = reinterpret_cast<float*>(dst.p);
                for (; k + 4 <= count; k += 4) {
                    __m128 p[4] = {prod(k), prod(k + 1), prod(k + 2), prod(k + 3)};
                    _MM_TRANSPOSE4_PS(p[0], p[1], p[2], p[3]);
                    _mm_storeu_ps(out + k, treeSum<form.tree>(p, [](__m128 u, __m128 v) { return _mm_add_ps(u, v); }));
                }
            }
            for (; k < count; ++k) {
                const auto x = vecItem<unit>(a, k);
                const auto y = vecItem<unit>(b, k);
                if constexpr (form.extended) {
                    *dst.item(k) = sumOfProducts<Num::Extended, E>(N, x, y);
                } else {
                    E p[decltype(N)::value];
                    for (int j = 0; j < N; ++j) p[j] = x(j) * y(j);
                    *dst.item(k) = treeSum<form.tree>(p, [](E u, E v) { return u + v; });
                }
            }
            return orlStatusOk;
        },
        [&] {
            constexpr const LongRow* lr = longRow(shape, tyOf<E>, V);
            bool aligned = false;
            if constexpr (lr != nullptr && lr->alignedForm)
                aligned = ((reinterpret_cast<std::uintptr_t>(a.p) | reinterpret_cast<std::uintptr_t>(b.p) |
                            std::uintptr_t(a.s0) | std::uintptr_t(b.s0)) & 15) == 0;
            for (int k = 0; k < count; ++k) {
                const auto x = vecItem<unit>(a, k);
                const auto y = vecItem<unit>(b, k);
                if constexpr (lr == nullptr) {
                    *dst.item(k) = sumOfProducts<Num::Blocked, E>(n, x, y);
                } else if constexpr (sizeof(E) == 4) {
                    *dst.item(k) = laneSum(&x(0), &y(0), n, lr->limit, aligned);
                } else {
                    *dst.item(k) = pairSum(&x(0), &y(0), n, lr->limit, aligned);
                }
            }
            return orlStatusOk;
        });
}

template <class A, class B>
orlStatus dotSelect(int count, PerItem<typename A::Elem> dst, const A& a, const B& b, int n)
{
    if (allUnit(a, b)) return dotKernel<varOf(A::lay, true)>(count, dst, a, b, n);
    return dotKernel<varOf(A::lay, false)>(count, dst, a, b, n);
}

// ---- cross product ----------------------------------------------------------------

// Check orders: no size test; `vav` tests its strides before the count.
struct OrderRow {
    std::string_view shape;
    Lay lay;
    std::string_view order;
};
constexpr OrderRow kCrossOrders[] = {
    {"vv", Lay::Std, "NT"},     {"vv", Lay::P, "NO"},
    {"vav", Lay::Std, "NTC"},   {"vav", Lay::P, "NTCO"},   {"vav", Lay::L, "NTOC"},
    {"vva", Lay::Std, "NCT"},   {"vva", Lay::P, "NCTO"},   {"vva", Lay::L, "NCTO"},
    {"vava", Lay::Std, "NCT"},  {"vava", Lay::P, "NCTO"},  {"vava", Lay::L, "NCTO"},
};

constexpr std::string_view crossOrder(std::string_view shape, Lay l)
{
    for (const OrderRow& r : kCrossOrders)
        if (r.shape == shape && r.lay == l) return r.order;
    return {};
}

// Cost 2*count + 1 (one single vector) or 3*count, tested before the stride2
// test: one limit for both stride cases, 40000 in the 32f `_L` members.
//                                  Unit   Any    L Unit L Any  P
constexpr LimitRow kCrossLimits{{20000, 20000, 40000, 40000, 20000, Test::GT},   // 32f
                                {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// The unit-stride kernels (standard and `_L`) hold the six components first
// and compute in element precision; the others form each component's two
// products and their difference in the extended format and round once,
// reading the sources anew after the earlier components are stored.
template <Var V, class A, class B, class D>
orlStatus crossKernel(int count, const A& a, const B& b, const D& d)
{
    using E = typename D::Elem;
    constexpr bool unit = unitStep(V);
    for (int k = 0; k < count; ++k) {
        const auto x = vecItem<unit>(a, k);
        const auto y = vecItem<unit>(b, k);
        const auto z = vecItem<unit>(d, k);
        if constexpr (unit) {
            const E a0 = x(0), a1 = x(1), a2 = x(2), b0 = y(0), b1 = y(1), b2 = y(2);
            z(0) = a1 * b2 - a2 * b1;
            z(1) = a2 * b0 - a0 * b2;
            z(2) = a0 * b1 - a1 * b0;
        } else {
            z(0) = E(Ext(x(1)) * Ext(y(2)) - Ext(x(2)) * Ext(y(1)));
            z(1) = E(Ext(x(2)) * Ext(y(0)) - Ext(x(0)) * Ext(y(2)));
            z(2) = E(Ext(x(0)) * Ext(y(1)) - Ext(x(1)) * Ext(y(0)));
        }
    }
    return orlStatusOk;
}

template <class A, class B, class D>
orlStatus crossSelect(int count, const A& a, const B& b, const D& d)
{
    if (allUnit(a, b, d)) return crossKernel<varOf(D::lay, true)>(count, a, b, d);
    return crossKernel<varOf(D::lay, false)>(count, a, b, d);
}

// ---- entries ------------------------------------------------------------------------

template <class A, class B>
orlStatus DotProductEntry(const A& a, const B& b, typename A::Elem* dst, int length, int count = 1)
{
    using E = typename A::Elem;
    constexpr bool array = A::array || B::array;
    Checks c = operandChecks(a, b);
    c.N = c.N && dst != nullptr;
    c.C = count >= 1;
    c.Z = length >= 1;
    if (const orlStatus st = firstFailure(generalOrder(array, A::lay), c)) return st;

    const PerItem<E> out{dst, 1};
    if constexpr (!array) {
        return dotSelect(1, out, a, b, length);
    } else {
        const Wrap n = length;
        const std::int32_t cost = (B::array ? Wrap(2) * n * count : n * count + n).value();
        return route(cost, kDotLimits.of<E>(), A::lay, count,
                     [&](int items, const auto&... o) { return dotSelect(items, o..., length); }, out, a, b);
    }
}

template <class A, class B, class D>
orlStatus CrossProductEntry(const A& a, const B& b, const D& d, int count = 1)
{
    using E = typename D::Elem;
    Checks c = operandChecks(a, b, d);
    c.C = count >= 1;
    if (const orlStatus st = firstFailure(crossOrder(kShape<A::kind, B::kind>.view(), D::lay), c)) return st;

    if constexpr (!D::array) {
        return crossSelect(1, a, b, d);
    } else {
        const std::int32_t cost = (A::array && B::array ? Wrap(3) * count : Wrap(2) * count + 1).value();
        return route(cost, kCrossLimits.of<E>(), D::lay, count,
                     [&](int items, const auto&... o) { return crossSelect(items, o...); }, a, b, d);
    }
}

}  // namespace orl::dotcross

#include "dotcross.inc"
