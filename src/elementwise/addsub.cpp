// Add and subtract of matrices, vectors and constants, element by element:
// dst(k, i, j) = A(k, i, j) +/- B(k, i, j) for matrices, dst(k, j) =
// src(k, j) +/- src2(k, j) or +/- a constant (or an array of constants, one
// for each item) for vectors, and constant minus vector for the shapes that
// start with a constant.
//
// One entry validates and routes, one kernel template serves every variant.
// What differs between members is data: the check orders, the limits and
// costs, which sizes of which kernel have straight-line forms, and where a
// 64f sum is rounded.
#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include <xmmintrin.h>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
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
    // vav tests the count last, in every layout
    {Op::Add, "vav", Lay::Std, "NZTC"},  {Op::Add, "vav", Lay::P, "NZTCO"},  {Op::Add, "vav", Lay::L, "NZTOC"},
    {Op::Sub, "vav", Lay::Std, "NZTC"},  {Op::Sub, "vav", Lay::P, "NZTCO"},  {Op::Sub, "vav", Lay::L, "NZTOC"},
};

constexpr std::string_view orderOf(Op op, std::string_view shape, bool array, Lay lay)
{
    for (const OrderRow& r : kOrders)
        if (r.op == op && r.shape == shape && r.lay == lay) return r.order;
    return generalOrder(array, lay);
}

// Members that leave one test out, though their like members have it.
enum class LeftOut { None, SrcStride0, Offsets };
struct LeftOutRow {
    Op op;
    std::string_view shape;
    Ty ty;
    Lay lay;
    LeftOut what;
};
constexpr LeftOutRow kLeftOut[] = {
    {Op::Add, "vaca", Ty::F32, Lay::P, LeftOut::SrcStride0},  // srcStride0 is not tested
    {Op::Add, "vca", Ty::F64, Lay::P, LeftOut::Offsets},      // no offset is tested
    {Op::Sub, "cav", Ty::F32, Lay::P, LeftOut::Offsets},      // no offset is tested
};

constexpr LeftOut leftOutOf(Op op, std::string_view shape, Ty ty, Lay lay)
{
    for (const LeftOutRow& r : kLeftOut)
        if (r.op == op && r.shape == shape && r.ty == ty && r.lay == lay) return r.what;
    return LeftOut::None;
}

// Cost W*H*(2n+1) with one shared operand, 3*W*H*n with two arrays; the
// driver is taken when the cost reaches the limit (>=).
//                                     Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits = both(36864, 18432, 18432, 18432, 9216, Test::GE);

// Vectors: the cost counts the elements touched, with n = count and L =
// length, as a*L*n + b*L + c*n + d; the driver is taken above the limit (>).
struct VecCostRow {
    std::string_view shape;
    int a, b, c, d;
};
constexpr VecCostRow kVecCosts[] = {
    //                       L*n  L  n  1
    {"vac", 2, 1, 0, 0},  {"vav", 2, 1, 0, 0},  {"vva", 2, 1, 0, 0},   // (2n+1)*L
    {"vaca", 2, 0, 1, 0}, {"cava", 2, 0, 1, 0},                       // (2L+1)*n
    {"vava", 3, 0, 0, 0},                                              // 3*L*n
    {"vca", 1, 1, 1, 0},  {"cav", 1, 1, 1, 0},                         // L*n + L + n
    {"cva", 0, 0, 2, 1},                                               // 2n+1, whatever the length
};

constexpr VecCostRow vecCostOf(std::string_view shape)
{
    for (const VecCostRow& r : kVecCosts)
        if (r.shape == shape) return r;
    return {};
}

//                                     Unit   Any    L Unit L Any  P
constexpr LimitRow kVecLimits = {{20000, 20000, 40000, 40000, 20000, Test::GT},   // 32f
                                 {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// Members that have a driver and test the limit, but stay on the calling
// thread on both sides of the test.
struct SerialRow {
    Op op;
    std::string_view shape;
    Ty ty;
    Lay lay;
};
constexpr SerialRow kSerialBothSides[] = {{Op::Sub, "vva", Ty::F64, Lay::P}};

constexpr bool serialBothSides(Op op, std::string_view shape, Ty ty, Lay lay)
{
    for (const SerialRow& r : kSerialBothSides)
        if (r.op == op && r.shape == shape && r.ty == ty && r.lay == lay) return true;
    return false;
}

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

// Vectors: lengths 3 to 6 have straight-line forms in the Unit, S2, L and
// LS2 kernels of the shapes with an array operand, except as this table
// says; the _P kernels and the shapes with no array operand (vv vc cv) have
// the general loop only.
struct VecFormRow {
    std::string_view shape;
    Var var;
    Forms forms;
};
constexpr VecFormRow kVecForms[] = {
    {"vac", Var::S2, kLoopOnly},  {"vac", Var::LS2, kLoopOnly},
    {"cva", Var::S2, kLoopOnly},  {"cva", Var::LS2, kLoopOnly},
    {"vav", Var::LS2, kPerItem},  {"vava", Var::LS2, kPerItem},   // call the vv _S2 kernel for each item
};

constexpr Forms vecFormsOf(std::string_view shape, bool array, Var var)
{
    if (var == Var::P || !array) return kLoopOnly;
    for (const VecFormRow& r : kVecForms)
        if (r.shape == shape && r.var == var) return r.forms;
    return k3456;
}

// Vectors: the unit-stride general loop of these shapes works on runs of
// packed elements once the length reaches kRunFrom.
struct RunRow {
    std::string_view shape;
    bool f32, f64;
};
constexpr RunRow kPackedRuns[] = {
    {"vv", true, true},   {"vc", true, true},   {"cv", true, true},   {"vava", true, false},
    {"vca", true, true},  {"vaca", true, true}, {"cav", true, true},  {"cava", true, true},
};
template <class E>
constexpr int kRunFrom = sizeof(E) == 4 ? 11 : 9;

constexpr bool packedRuns(std::string_view shape, Ty ty)
{
    for (const RunRow& r : kPackedRuns)
        if (r.shape == shape) return ty == Ty::F32 ? r.f32 : r.f64;
    return false;
}

// Where a 64f result is rounded: kernels marked extended form the sum in the
// 80-bit format and round once to double on the store; the others add in
// double. 32f sums are correctly rounded either way.
//
//   kernel                          64f matrices   64f vectors
//   standard unit, single item      double         double
//   standard unit, array            extended       double
//   _S2, _P                         extended       extended
//   _L (own forms)                  double         double
//   _LS2 (own loop)                 extended       extended, as the _S2 kernels it stands for
constexpr bool extended64(Var v, bool array, bool vector = false)
{
    switch (v) {
    case Var::Unit: return array && !vector;
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

// ---- vector kernel ---------------------------------------------------------

// A vector member's shape as it is named: the constant-first shapes (cv cva
// cav cava) take their vector group first in the argument list, so that
// the operands come as (vector, constant) and the name reverses them.
constexpr bool leadingConstant(std::string_view shape) { return shape.front() == 'c'; }

template <bool constFirst, class A, class B>
constexpr std::string_view vecShape()
{
    if constexpr (constFirst)
        return kShape<B::kind, A::kind>.view();
    else
        return kShape<A::kind, B::kind>.view();
}

// x from the vector group, y from the second group; constant-first shapes
// subtract the other way round.
template <Op op, bool constFirst, class Acc, class E>
inline E vcombine(E x, E y)
{
    return constFirst ? combine<op, Acc>(y, x) : combine<op, Acc>(x, y);
}

// The second source of a packed span: adjacent elements or one constant.
template <class E>
inline auto lanesOf(const E* y, int j) { return Lanes<E>::load(y + j); }
template <class E>
inline auto lanesOf(E c, int) { return Lanes<E>::splat(c); }
template <class E>
inline E scalarOf(const E* y, int j) { return y[j]; }
template <class E>
inline E scalarOf(E c, int) { return c; }

// n adjacent elements in element precision: packed groups, then single
// elements. Each lane is the correctly rounded sum or difference, as in
// scalar code.
template <Op op, bool constFirst, class E, class Y>
[[gnu::always_inline]] inline void packedSpan(E* d, const E* x, Y y, int n)
{
    using P = Lanes<E>;
    int j = 0;
    for (; j + P::lanes <= n; j += P::lanes) {
        const auto u = P::load(x + j), w = lanesOf(y, j);
        const auto l = constFirst ? w : u, r = constFirst ? u : w;
        P::store(d + j, op == Op::Add ? P::add(l, r) : P::sub(l, r));
    }
    for (; j < n; ++j) d[j] = vcombine<op, constFirst, E>(x[j], scalarOf(y, j));
}

// The unit-stride general loop as runs: single elements until the result is
// 16-byte aligned, then packed groups of 8 floats (4 doubles), then single
// elements; only for an element-aligned result of kRunFrom elements or more.
template <Op op, bool constFirst, class E, class Y>
inline void runsOf(E* d, const E* x, Y y, int n)
{
    const std::uintptr_t addr = reinterpret_cast<std::uintptr_t>(d);
    if (n < kRunFrom<E> || addr % sizeof(E) != 0) {
        for (int j = 0; j < n; ++j) d[j] = vcombine<op, constFirst, E>(x[j], scalarOf(y, j));
        return;
    }
    const int head = std::min<int>(n, int((16 - addr % 16) % 16 / sizeof(E)));
    for (int j = 0; j < head; ++j) d[j] = vcombine<op, constFirst, E>(x[j], scalarOf(y, j));
    constexpr int group = 2 * Lanes<E>::lanes;
    const int body = (n - head) / group * group;
    const auto y1 = [&] {
        if constexpr (std::is_pointer_v<Y>) return y + head; else return y;
    }();
    packedSpan<op, constFirst>(d + head, x + head, y1, body);
    for (int j = head + body; j < n; ++j) d[j] = vcombine<op, constFirst, E>(x[j], scalarOf(y, j));
}

// The loop over items and elements: a straight-line form for N > 0 (length
// known to the compiler, a shared vector held), the general loop for N == 0.
// Unit and extended decide whether the elements may go in packed lanes.
template <Op op, bool constFirst, class Acc, bool Unit, int N, bool runs, class A, class B, class D>
void runVec(const A a, const B b, const D d, int length, int count)
{
    using E = typename D::Elem;
    constexpr bool packed = Unit && std::is_same_v<Acc, E>;
    const auto sa = vecSourceItems<Unit, N>(a);
    const auto sb = vectorOrConstItems<Unit, N>(b);
    // Two items a step in the straight-line forms: short items are bound by
    // the loop overhead.
#pragma GCC unroll 2
    for (int k = 0; k < count; ++k) {
        const auto& x = sa(k);
        const auto& y = sb(k);
        const auto z = vecItem<Unit>(d, k);
        if constexpr (packed && (N > 0 || runs)) {
            const auto yv = [&] {
                if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(y)>>) return E(y); else return y.data();
            }();
            if constexpr (N > 0)
                packedSpan<op, constFirst>(z.b, x.data(), yv, N);
            else
                runsOf<op, constFirst>(z.b, x.data(), yv, length);
        } else {
            const int n = N > 0 ? N : length;
#pragma GCC unroll 6
            for (int j = 0; j < n; ++j) z(j) = vcombine<op, constFirst, Acc>(x(j), E(elemOf(y, j)));
        }
    }
}

template <Op op, bool constFirst, Var V, class A, class B, class D>
orlStatus vecKernel(const A& a, const B& b, const D& d, int length, int count)
{
    using E = typename D::Elem;
    constexpr std::string_view shape = vecShape<constFirst, A, B>();
    constexpr Forms forms = vecFormsOf(shape, D::array, V);
    if constexpr (forms.perItem) {
        constexpr Var single = singleVar(V);
        for (int k = 0; k < count; ++k)
            vecKernel<op, constFirst, single>(itemAsSingle(a, k), itemAsSingle(b, k), itemAsSingle(d, k), length, 1);
        return orlStatusOk;
    } else {
        using Acc = std::conditional_t<sizeof(E) == 8 && extended64(V, D::array, true), long double, E>;
        constexpr bool unit = unitStep(V);
        constexpr bool runs = unit && packedRuns(shape, tyOf<E>);
        return bySize<forms.sizes>(
            length,
            [&](auto n) { return runVec<op, constFirst, Acc, unit, decltype(n)::value, false>(a, b, d, length, count), orlStatusOk; },
            [&] { return runVec<op, constFirst, Acc, unit, 0, runs>(a, b, d, length, count), orlStatusOk; });
    }
}

template <Op op, bool constFirst, class A, class B, class D>
orlStatus selectVec(const A& a, const B& b, const D& d, int length, int count)
{
    if (allUnit(a, b, d)) return vecKernel<op, constFirst, varOf(D::lay, true)>(a, b, d, length, count);
    return vecKernel<op, constFirst, varOf(D::lay, false)>(a, b, d, length, count);
}

// ---- entry -----------------------------------------------------------------

template <Op op, class A, class B, class D>
    requires(isMatrix(D::kind))
orlStatus entry(const A& a, const B& b, const D& d, int width, int height, int count = 1)
{
    using E = typename D::Elem;
    constexpr Lay L = D::lay;
    constexpr std::string_view shape = kShape<A::kind, B::kind>.view();

    const std::string_view order = orderOf(op, shape, D::array, L);

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

template <Op op, bool constFirst, class A, class B, class D>
    requires(isVector(D::kind))
orlStatus entry(const A& a, const B& b, const D& d, int length, int count = 1)
{
    using E = typename D::Elem;
    constexpr Lay L = D::lay;
    constexpr std::string_view shape = vecShape<constFirst, A, B>();
    constexpr LeftOut leftOut = leftOutOf(op, shape, tyOf<E>, L);

    Checks c;
    if constexpr (leftOut == LeftOut::SrcStride0) {
        A untested = a;
        untested.s0 = sizeof(E);
        c = operandChecks(untested, b, d);
    } else {
        c = operandChecks(a, b, d);
    }
    if constexpr (leftOut == LeftOut::Offsets) c.O = true;
    c.C = count >= 1;
    c.Z = length >= 1;
    if (const orlStatus st = firstFailure(orderOf(op, shape, D::array, L), c)) return st;

    if constexpr (!D::array) {
        return selectVec<op, constFirst>(a, b, d, length, 1);
    } else {
        constexpr VecCostRow k = vecCostOf(shape);
        const std::int32_t cost = (Wrap(k.a) * length * count + Wrap(k.b) * length + Wrap(k.c) * count + k.d).value();
        constexpr std::int32_t never = std::numeric_limits<std::int32_t>::max();
        constexpr Limits lim = serialBothSides(op, shape, tyOf<E>, L) ? Limits{never, never, never, never, never, Test::GT}
                                                                       : kVecLimits.of<E>();
        return route(cost, lim, L, count,
                     [&](int n, const auto&... o) { return selectVec<op, constFirst>(o..., length, n); }, a, b, d);
    }
}

}  // namespace orl::addsub

#include "addsub.inc"
