// Matrix add and subtract: dst(k, i, j) = A(k, i, j) +/- B(k, i, j).
//
// One entry validates and routes, one kernel template serves every variant.
// What differs between members is data: the check orders, the limits, which
// sizes of which kernel have straight-line forms, and where a 64f sum is
// rounded.
#include <cstdint>
#include <string_view>

#include <xmmintrin.h>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::addsub {

enum class Op { Add, Sub };

// ---- tables ----------------------------------------------------------------

// Check orders that depart from the general rule (standard layout only).
struct OrderRow {
    Op op;
    std::string_view shape;
    Lay lay;
    std::string_view order;
};
constexpr OrderRow kOrders[] = {
    {Op::Add, "mam", Lay::Std, "NCTZ"},
    {Op::Sub, "mam", Lay::Std, "NCTZ"},
    {Op::Sub, "mma", Lay::Std, "NCTZ"},
};

// Cost W*H*(2n+1) with one shared operand, 3*W*H*n with two arrays; the
// driver is taken when the cost reaches the limit (>=).
//                                     Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits = both(36864, 18432, 18432, 18432, 9216, Test::GE);

// Straight-line forms of a kernel: the sizes that have one, or a kernel that
// calls the single-item kernel of its stride case for each item (so it has
// that kernel's sizes and rereads a shared operand for each item).
struct Forms {
    Sizes sizes;
    bool perItem = false;
};
constexpr Forms k3456{{3, 4, 5, 6}}, k345{{3, 4, 5}}, k456{{4, 5, 6}}, kLoopOnly{{}}, kPerItem{{}, true};

struct FormRow {
    Op op;
    std::string_view shape;
    Ty ty;
    Var var;
    Forms forms;
};
// Every kernel not listed here has forms for 3, 4, 5 and 6. Every `_LS2`
// kernel not listed here calls the single-item `_S2` kernel for each item.
constexpr FormRow kForms[] = {
    {Op::Add, "mm", Ty::F32, Var::Unit, k345},   {Op::Add, "tm", Ty::F32, Var::Unit, k345},
    {Op::Add, "tt", Ty::F32, Var::Unit, k345},   {Op::Add, "mm", Ty::F64, Var::Unit, k345},
    {Op::Add, "tm", Ty::F64, Var::Unit, k345},   {Op::Add, "tt", Ty::F64, Var::Unit, k345},

    {Op::Add, "mat", Ty::F32, Var::Unit, k456},  {Op::Add, "mat", Ty::F32, Var::L, k456},

    {Op::Add, "mat", Ty::F32, Var::P, kLoopOnly},    {Op::Add, "mat", Ty::F64, Var::P, kLoopOnly},
    {Op::Add, "mat", Ty::F64, Var::S2, kLoopOnly},   {Op::Add, "mat", Ty::F64, Var::L, kLoopOnly},
    {Op::Add, "mat", Ty::F32, Var::LS2, kLoopOnly},  {Op::Add, "mat", Ty::F64, Var::LS2, kLoopOnly},
    {Op::Sub, "mat", Ty::F32, Var::P, kLoopOnly},    {Op::Sub, "mat", Ty::F64, Var::P, kLoopOnly},
    {Op::Sub, "mata", Ty::F32, Var::P, kLoopOnly},   {Op::Sub, "mata", Ty::F64, Var::P, kLoopOnly},
    {Op::Sub, "mata", Ty::F32, Var::S2, kLoopOnly},  {Op::Sub, "mata", Ty::F64, Var::S2, kLoopOnly},
    {Op::Sub, "mata", Ty::F64, Var::L, kLoopOnly},   {Op::Sub, "mata", Ty::F32, Var::LS2, kLoopOnly},
    {Op::Sub, "mata", Ty::F64, Var::LS2, kLoopOnly},

    {Op::Add, "mam", Ty::F64, Var::L, kPerItem},   {Op::Add, "mama", Ty::F64, Var::L, kPerItem},
    {Op::Sub, "mam", Ty::F64, Var::L, kPerItem},   {Op::Sub, "mama", Ty::F64, Var::L, kPerItem},
    {Op::Sub, "mat", Ty::F32, Var::L, kPerItem},   {Op::Sub, "mat", Ty::F64, Var::L, kPerItem},
    {Op::Sub, "mma", Ty::F64, Var::L, kPerItem},   {Op::Sub, "tma", Ty::F64, Var::L, kPerItem},
    {Op::Sub, "tama", Ty::F64, Var::L, kPerItem},  {Op::Sub, "tata", Ty::F32, Var::L, kPerItem},
};

constexpr Forms formsOf(Op op, std::string_view shape, Ty ty, Var var)
{
    for (const FormRow& r : kForms)
        if (r.op == op && r.shape == shape && r.ty == ty && r.var == var) return r.forms;
    return var == Var::LS2 ? kPerItem : k3456;
}

// Where a 64f result is rounded: kernels marked extended form the sum in the
// 80-bit format and round once to double on the store; the others add in
// double. 32f sums are correctly rounded either way.
//
//   kernel                          64f sum
//   standard unit, single item      double
//   standard unit, array            extended
//   _S2, _P                         extended
//   _L (own forms)                  double
//   _LS2 (own loop)                 extended, as the _S2 kernels it stands for
constexpr bool extended64(Var v, bool array)
{
    switch (v) {
    case Var::Unit: return array;
    case Var::L: return false;
    default: return true;
    }
}

// ---- kernel ----------------------------------------------------------------

template <Op op, class Acc, class E>
inline E combine(E a, E b)
{
    if constexpr (op == Op::Add)
        return static_cast<E>(static_cast<Acc>(a) + static_cast<Acc>(b));
    else
        return static_cast<E>(static_cast<Acc>(a) - static_cast<Acc>(b));
}

// Stored width of an operand: a transposed source is stored with `width`
// rows of `height` elements.
template <class O>
constexpr int storedCols(int width, int height)
{
    return O::trans ? height : width;
}

// One row of a straight-line 32f form on adjacent elements: a group of four
// lanes in packed single precision, then the lanes that remain one by one.
// Each lane is the correctly rounded sum or difference, as in scalar code.
template <Op op, int N>
inline void rowF32(float* d, const float* a, const float* b)
{
    int j = 0;
    if constexpr (N >= 4) {
        const __m128 x = _mm_loadu_ps(a), y = _mm_loadu_ps(b);
        _mm_storeu_ps(d, op == Op::Add ? _mm_add_ps(x, y) : _mm_sub_ps(x, y));
        j = 4;
    }
    for (; j < N; ++j) d[j] = combine<op, float>(a[j], b[j]);
}

// The loop over items, rows and columns: a straight-line form for N > 0
// (sizes known to the compiler, shared operand held), the general loop for
// N == 0.
// The operands come by value: local copies that the stores cannot alias,
// so their pointers and strides stay in registers.
template <Op op, class Acc, bool Unit, int N, class A, class B, class D>
void run(const A a, const B b, const D d, int width, int height, int count)
{
    const auto sa = sourceItems<Unit, N>(a, storedCols<A>(width, height));
    const auto sb = sourceItems<Unit, N>(b, storedCols<B>(width, height));
    // Rows of adjacent floats in every operand go through the packed row form.
    constexpr bool packedRows = N > 0 && Unit && std::is_same_v<typename D::Elem, float> && !A::trans && !B::trans;
    if constexpr (packedRows && A::array && B::array && D::lay != Lay::P) {
        // The common case of one row step for all three operands keeps the
        // row addresses in a few registers.
        if (a.s1 == d.s1 && b.s1 == d.s1) {
            const std::ptrdiff_t rs = d.s1;
            for (int k = 0; k < count; ++k) {
                const auto x = sa(k), y = sb(k);
                const auto z = matItem<Unit>(d, k, width);
#pragma GCC unroll 6
                for (int i = 0; i < N; ++i) rowF32<op, N>(at(z.b, i * rs), at(x.b, i * rs), at(y.b, i * rs));
            }
            return;
        }
    }
    for (int k = 0; k < count; ++k) {
        const auto& x = sa(k);
        const auto& y = sb(k);
        const auto z = matItem<Unit>(d, k, width);
        if constexpr (packedRows) {
#pragma GCC unroll 6
            for (int i = 0; i < N; ++i) rowF32<op, N>(z.row(i), x.row(i), y.row(i));
        } else if constexpr (N > 0) {
#pragma GCC unroll 6
            for (int i = 0; i < N; ++i)
#pragma GCC unroll 6
                for (int j = 0; j < N; ++j) z(i, j) = combine<op, Acc>(x(i, j), y(i, j));
        } else {
            for (int i = 0; i < height; ++i)
                for (int j = 0; j < width; ++j) z(i, j) = combine<op, Acc>(x(i, j), y(i, j));
        }
    }
}

template <Op op, Var V, class A, class B, class D>
orlStatus kernel(const A& a, const B& b, const D& d, int width, int height, int count)
{
    using E = typename D::Elem;
    constexpr Forms forms = formsOf(op, kShape<A::kind, B::kind>.view(), tyOf<E>, V);
    if constexpr (forms.perItem) {
        constexpr Var single = singleVar(V);
        for (int k = 0; k < count; ++k)
            kernel<op, single>(itemAsSingle(a, k), itemAsSingle(b, k), itemAsSingle(d, k), width, height, 1);
        return orlStatusOk;
    } else {
        using Acc = std::conditional_t<sizeof(E) == 8 && extended64(V, D::array), long double, E>;
        constexpr bool unit = unitStep(V);
        return bySize<forms.sizes>(
            width == height ? width : 0,
            [&](auto n) { return run<op, Acc, unit, decltype(n)::value>(a, b, d, width, height, count), orlStatusOk; },
            [&] { return run<op, Acc, unit, 0>(a, b, d, width, height, count), orlStatusOk; });
    }
}

// The kernel that the stride2 test selects.
template <Op op, class A, class B, class D>
orlStatus select(const A& a, const B& b, const D& d, int width, int height, int count)
{
    if (allUnit(a, b, d)) return kernel<op, varOf(D::lay, true)>(a, b, d, width, height, count);
    return kernel<op, varOf(D::lay, false)>(a, b, d, width, height, count);
}

// ---- entry -----------------------------------------------------------------

template <Op op, class A, class B, class D>
orlStatus entry(const A& a, const B& b, const D& d, int width, int height, int count = 1)
{
    using E = typename D::Elem;
    constexpr Lay L = D::lay;
    constexpr std::string_view shape = kShape<A::kind, B::kind>.view();

    std::string_view order = generalOrder(D::array, L);
    for (const OrderRow& r : kOrders)
        if (r.op == op && r.shape == shape && r.lay == L) order = r.order;

    Checks c = operandChecks(a, b, d);
    c.C = count >= 1;
    c.Z = sizesOk({width, height});
    if (const orlStatus st = firstFailure(order, c)) return st;

    if constexpr (!D::array) {
        return select<op>(a, b, d, width, height, 1);
    } else {
        const Wrap items = A::array && B::array ? Wrap(3) * count : Wrap(2) * count + 1;
        const std::int32_t cost = (Wrap(width) * height * items).value();
        return route(cost, kLimits.of<E>(), L, count,
                     [&](int n, const auto&... o) { return select<op>(o..., width, height, n); }, a, b, d);
    }
}

}  // namespace orl::addsub

#include "addsub.inc"
