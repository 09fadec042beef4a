// Reductions: the Euclidean norm of vectors, the Frobenius norm and the trace
// of matrices, one number per item written to `count` adjacent elements.
//
// A norm has no overflow protection and no scaling pass: squares are summed
// as they stand. What distinguishes the kernels is data: the order and
// precision of the sum, the root (the refined estimate, or a true root in
// element precision or in the extended format), and the treatment of tiny
// sums (none, "above eps", "at least eps", or the lane-0 guard).
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::norms {

template <class E>
constexpr E kEps = sizeof(E) == 4 ? E(FLT_EPSILON) : E(DBL_EPSILON);

// ---- roots ------------------------------------------------------------------------

enum class Root { Refined, Sqrt, SqrtExt };

template <class E>
inline E rootOf(Root r, Ext s)
{
    if constexpr (sizeof(E) == 4) {
        if (r == Root::Refined) return refinedRoot(float(s));
    }
    if (r == Root::SqrtExt) return E(sqrtl(s));
    return std::sqrt(E(s));
}

// ---- lane accumulators ----------------------------------------------------------

// Four lanes of element precision. A round of 8 squares adds square j of the
// round to lane j mod 4, as two additions a lane; squares outside rounds go
// into lane 0. The lanes combine as (l0 + l2) + (l1 + l3).
template <class E>
struct LaneSums {
    E l[4] = {0, 0, 0, 0};
    template <class Q>
    void round8(const Q& q, int k)
    {
        for (int j = 0; j < 4; ++j) l[j] = l[j] + q(k + j);
        for (int j = 0; j < 4; ++j) l[j] = l[j] + q(k + 4 + j);
    }
    void one(E q) { l[0] = l[0] + q; }
    // q(from) ... q(to-1): rounds of 8, then one by one into lane 0.
    template <class Q>
    void run(const Q& q, int from, int to)
    {
        int k = from;
        for (; k + 8 <= to; k += 8) round8(q, k);
        for (; k < to; ++k) one(q(k));
    }
    E combined() const { return (l[0] + l[2]) + (l[1] + l[3]); }
};

// The 64f arrangement of the same rounds: squares 0, 1 and then 4, 5 of a
// round into the two lanes of A, 2, 3 and then 6, 7 into B; lane 0 is A0;
// combined as (A0 + B0) + (A1 + B1).
struct Pairs64 {
    double a[2] = {0, 0}, b[2] = {0, 0};
    template <class Q>
    void run(const Q& q, int from, int to)
    {
        int k = from;
        for (; k + 8 <= to; k += 8) {
            a[0] = a[0] + q(k), a[1] = a[1] + q(k + 1);
            b[0] = b[0] + q(k + 2), b[1] = b[1] + q(k + 3);
            a[0] = a[0] + q(k + 4), a[1] = a[1] + q(k + 5);
            b[0] = b[0] + q(k + 6), b[1] = b[1] + q(k + 7);
        }
        for (; k < to; ++k) a[0] = a[0] + q(k);
    }
    double lane0() const { return a[0]; }
    double combined() const { return (a[0] + b[0]) + (a[1] + b[1]); }
};

// ---- L2Norm: table ----------------------------------------------------------------

enum class Long { Chain, LaneSum, PairSum };

constexpr const char* kX = "x";  // ascending in the extended format, one rounding

struct L2Row {
    std::string_view shapes, types, kernels;
    const char* at[4];  // order of the sum at lengths 3, 4, 5, 6
    Root root;          // root at lengths 3 to 6 (of an extended sum: see extRoot)
    bool extRoot;       // the root of an extended sum is taken in the extended format
    Long general;       // general path; its root is a true root in element precision
};

constexpr L2Row kL2[] = {
    // shapes  types  kernels         3              4                  5                        6
    {"v",    "32f", "unit",         {"(q0+q1)+q2", "(q0+q1)+(q2+q3)", "((q0+q1)+(q2+q3))+q4", "((q0+q1)+(q2+q3))+(q4+q5)"}, Root::Refined, false, Long::LaneSum},
    {"va",   "32f", "unit L",       {"(q0+q1)+q2", "((q0+q1)+q2)+q3", "((q0+q2)+(q1+q3))+q4", "((q0+q2)+q4)+((q1+q3)+q5)"}, Root::Refined, false, Long::Chain},
    {"v va", "32f", "S2 P LS2",     {"(q0+q1)+q2", "((q0+q1)+q2)+q3", "(((q0+q1)+q2)+q3)+q4", "((((q0+q1)+q2)+q3)+q4)+q5"}, Root::Sqrt, false, Long::Chain},
    {"v",    "64f", "unit",         {"(q0+q2)+q1", "(q0+q2)+(q1+q3)", "((q0+q2)+q4)+(q1+q3)", "((q0+q2)+q4)+((q1+q3)+q5)"}, Root::Sqrt, false, Long::PairSum},
    {"va",   "64f", "unit L",       {"(q0+q2)+q1", "(q0+q2)+(q1+q3)", "((q0+q2)+q4)+(q1+q3)", "((q0+q2)+q4)+((q1+q3)+q5)"}, Root::Sqrt, false, Long::Chain},
    {"va",   "64f", "P",            {kX,           kX,                kX,                      kX},                          Root::Sqrt, true,  Long::Chain},
    {"va",   "64f", "LS2",          {"(q0+q1)+q2", kX,                kX,                      kX},                          Root::Sqrt, true,  Long::Chain},
    {"v va", "64f", "S2 P",         {"(q0+q1)+q2", "((q0+q1)+q2)+q3", "(((q0+q1)+q2)+q3)+q4", kX},                          Root::Sqrt, false, Long::Chain},
};

constexpr const L2Row& l2Row(std::string_view shape, Ty ty, Var v)
{
    for (const L2Row& r : kL2)
        if (listed(r.shapes, shape) && listed(r.types, tyName(ty)) && listed(r.kernels, varName(v))) return r;
    return kL2[0];
}

// ---- FrobNorm: table ----------------------------------------------------------------

// How the squares of one matrix are summed.
enum class Sum {
    Lanes4,     // row-major square k into lane k mod 4, (l0+l2)+(l1+l3)
    Lanes2,     // row-major square k into lane k mod 2, l0 + l1
    Chain,      // ascending row-major, element precision
    ChainExt,   // ascending row-major, extended format
    Pairs,      // pairs in table order: s += (a*a + b*b), an odd last square alone
    Rows,       // rows, rounds of 8 within each row into the lanes
    Run,        // the contiguous kernel's reading of the shape (see runSum)
};

// What is done with a small sum: nothing; s above eps gives the root, else
// 0.0; s at least eps; or the lane-0 guard: lane 0 of the accumulators,
// before they are combined, above eps.
enum class Guard { None, Above, AtLeast, Lane0 };

struct FrobRow {
    std::string_view shapes, types, kernels;
    Sizes unrolled;   // square sizes with straight-line forms
    Sum sum;          // their sum
    Root root;        // their root
    Guard guard;      // their guard
    Sizes grouped;    // sizes done four items at a time, refined and unguarded,
                      // the rest one at a time with the lane-0 guard
    Sizes extended;   // sizes whose straight-line sum is in the extended format
    Sum general;      // the general path's sum; its root is a true one unless refined
    Root generalRoot;
    Guard generalGuard;
};

constexpr FrobRow kFrob[] = {
    {"m",  "32f",     "unit S2",        {3, 4, 5}, Sum::Lanes4, Root::Refined, Guard::Above, {}, {}, Sum::Run, Root::Refined, Guard::Above},
    {"m",  "64f",     "unit S2",        {},        Sum::Chain, Root::Sqrt, Guard::None, {}, {}, Sum::Chain, Root::Sqrt, Guard::None},
    {"m",  "32f 64f", "P",              {},        Sum::Chain, Root::Sqrt, Guard::None, {}, {}, Sum::Pairs, Root::Sqrt, Guard::AtLeast},
    {"ma", "32f",     "unit",           {3, 4, 5, 6}, Sum::Lanes4, Root::Refined, Guard::None, {3, 4}, {}, Sum::Run, Root::Refined, Guard::Lane0},
    {"ma", "64f",     "unit",           {3, 4, 5, 6}, Sum::Lanes2, Root::Sqrt, Guard::None, {}, {}, Sum::Rows, Root::Sqrt, Guard::Lane0},
    {"ma", "32f",     "S2 LS2",         {3, 4, 5, 6}, Sum::Chain, Root::Sqrt, Guard::None, {}, {}, Sum::Pairs, Root::Sqrt, Guard::AtLeast},
    {"ma", "64f",     "S2 LS2",         {3, 4, 5, 6}, Sum::Chain, Root::SqrtExt, Guard::None, {}, {6}, Sum::Pairs, Root::Sqrt, Guard::AtLeast},
    {"ma", "32f 64f", "L",              {3, 4, 5, 6}, Sum::Chain, Root::Sqrt, Guard::None, {}, {}, Sum::Rows, Root::Sqrt, Guard::AtLeast},
    {"ma", "32f 64f", "P",              {3},          Sum::Chain, Root::Sqrt, Guard::None, {}, {}, Sum::Pairs, Root::Sqrt, Guard::AtLeast},
};

constexpr const FrobRow& frobRow(std::string_view shape, Ty ty, Var v)
{
    for (const FrobRow& r : kFrob)
        if (listed(r.shapes, shape) && listed(r.types, tyName(ty)) && listed(r.kernels, varName(v))) return r;
    return kFrob[0];
}

// ---- limits ----------------------------------------------------------------------------

// Cost length*count, width*height*count, widthHeight*count; the driver is
// taken above the limit.
//                                  Unit   Any    L Unit L Any  P
constexpr LimitRow kL2Limits = both(20000, 20000, 20000, 20000, 20000, Test::GT);
constexpr LimitRow kMatLimits{{20000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                              {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// ---- L2Norm: kernel ----------------------------------------------------------------------

template <Var V, class S>
orlStatus l2Kernel(int count, PerItem<typename S::Elem> dst, const S& s, int n)
{
    using E = typename S::Elem;
    constexpr bool unit = unitStep(V);
    constexpr L2Row row = l2Row(kShape<S::kind>.view(), tyOf<E>, V);
    return bySize<Sizes{3, 4, 5, 6}>(
        n,
        [&](auto N) {
            constexpr const char* order = row.at[decltype(N)::value - 3];
            int k = 0;
            if constexpr (S::array && unit && row.root == Root::Refined && decltype(N)::value == 4) {
                // Four items a step with one estimate, one item a lane.
                for (; k + 4 <= count; k += 4) {
                    __m128 x[4];
                    columnsOf4([&](int g) { return &vecItem<unit>(s, k + g)(0); }, x);
                    for (__m128& v : x) v = _mm_mul_ps(v, v);
                    const __m128 sum = treeSum<Tree(order)>(x, [](__m128 u, __m128 v) { return _mm_add_ps(u, v); });
                    // A no-op cast for 32f; it keeps the discarded 64f instances well-formed for clang.
                    _mm_storeu_ps(reinterpret_cast<float*>(dst.item(k)), refinedRoot(sum));
                }
            }
            for (; k < count; ++k) {
                const auto x = vecItem<unit>(s, k);
                if constexpr (order[0] == 'x') {
                    const Ext sum = sumOfProducts<Num::Extended, Ext>(N, x, x);
                    *dst.item(k) = row.extRoot ? E(sqrtl(sum)) : std::sqrt(E(sum));
                } else {
                    E q[decltype(N)::value];
                    for (int j = 0; j < N; ++j) q[j] = x(j) * x(j);
                    const E sum = treeSum<Tree(order)>(q, [](E u, E v) { return u + v; });
                    *dst.item(k) = rootOf<E>(row.root, sum);
                }
            }
            return orlStatusOk;
        },
        [&] {
            for (int k = 0; k < count; ++k) {
                const auto x = vecItem<unit>(s, k);
                const auto q = [&](int j) { return E(x(j) * x(j)); };
                E sum;
                if constexpr (row.general == Long::LaneSum)
                    sum = laneSum(&x(0), &x(0), n, 11, false);
                else if constexpr (row.general == Long::PairSum)
                    sum = pairSum(&x(0), &x(0), n, 9, false);
                else
                    sum = chainFromZero<E>(0, n, q);
                *dst.item(k) = std::sqrt(sum);
            }
            return orlStatusOk;
        });
}

// ---- FrobNorm: kernel ----------------------------------------------------------------------

// The contiguous 32f kernel's reading of the shape, on one matrix with row-
// major squares q(k) of a w-by-h item x:
//  - base not a multiple of 4: rows, rounds of 8 within each row;
//  - rows not adjacent: with unit stride2 each row by rounds of 8, the rest
//    of a row into lane 0; otherwise rows as above (the same sums);
//  - rows adjacent: one run of w*h squares; with unit stride2 the squares
//    up to the first 16-byte boundary go one by one into lane 0, then rounds
//    of 8, then the rest into lane 0; with other stride2, rounds of 8 and the
//    rest into lane 0.
template <class E, class Item>
LaneSums<E> runSum(const Item& x, const E* base, std::ptrdiff_t s1, std::ptrdiff_t s2, int w, int h)
{
    LaneSums<E> acc;
    const auto sq = [&](int k) { const E v = x(k / w, k % w); return E(v * v); };
    const auto addr = reinterpret_cast<std::uintptr_t>(base);
    if (addr % sizeof(E) == 0 && s1 == s2 * w) {
        int k = 0;
        if (s2 == std::ptrdiff_t(sizeof(E)))
            for (; k < w * h && (addr + std::uintptr_t(k) * sizeof(E)) % 16 != 0; ++k) acc.one(sq(k));
        acc.run(sq, k, w * h);
    } else {
        for (int i = 0; i < h; ++i) acc.run([&](int j) { const E v = x(i, j); return E(v * v); }, 0, w);
    }
    return acc;
}

template <class E>
inline E guarded(Guard g, E s, E lane0, Root r)
{
    switch (g) {
    case Guard::Above: if (!(s > kEps<E>)) return E(0); break;
    case Guard::AtLeast: if (!(s >= kEps<E>)) return E(0); break;
    case Guard::Lane0: if (!(lane0 > kEps<E>)) return E(0); break;
    case Guard::None: break;
    }
    return rootOf<E>(r, s);
}

// The sum of one item's squares of the kinds other than Run; lane0 receives
// the part of the sum that the lane-0 guard tests.
template <Sum kind, class E, class Item>
Ext squares(const Item& x, int w, int h, E& lane0)
{
    const int n = w * h;
    const auto sq = [&](int k) { const E v = x(k / w, k % w); return E(v * v); };
    if constexpr (kind == Sum::Lanes4) {
        LaneSums<E> acc;
        acc.run(sq, 0, n);
        lane0 = acc.l[0];
        return acc.combined();
    } else if constexpr (kind == Sum::Lanes2) {
        E l[2] = {0, 0};
        for (int k = 0; k < n; ++k) l[k % 2] = l[k % 2] + sq(k);
        lane0 = l[0];
        return l[0] + l[1];
    } else if constexpr (kind == Sum::Chain) {
        return chainFromZero<E>(0, n, sq);
    } else if constexpr (kind == Sum::ChainExt) {
        return sumOfProducts<Num::Extended, Ext>(n, [&](int k) { return x(k / w, k % w); },
                                                 [&](int k) { return x(k / w, k % w); });
    } else if constexpr (kind == Sum::Pairs) {
        E s = 0;
        int k = 0;
        for (; k + 1 < n; k += 2) {
            const E a = x(k / w, k % w), b = x((k + 1) / w, (k + 1) % w);
            s = s + (a * a + b * b);
        }
        if (k < n) s = s + sq(k);
        return s;
    } else {  // Rows
        if constexpr (sizeof(E) == 8) {
            Pairs64 acc;
            for (int i = 0; i < h; ++i) acc.run([&](int j) { const E v = x(i, j); return E(v * v); }, 0, w);
            lane0 = acc.lane0();
            return acc.combined();
        } else {
            LaneSums<E> acc;
            for (int i = 0; i < h; ++i) acc.run([&](int j) { const E v = x(i, j); return E(v * v); }, 0, w);
            lane0 = acc.l[0];
            return acc.combined();
        }
    }
}

// Standard-layout base, row and column steps of item k (for the Run sum).
template <bool Unit, class S>
inline auto stdItem(const S& s, int k)
{
    return matItem<Unit>(s, k, 0);
}

template <Var V, class S>
orlStatus frobKernel(int count, PerItem<typename S::Elem> dst, const S& s, int w, int h)
{
    using E = typename S::Elem;
    constexpr bool unit = unitStep(V);
    constexpr FrobRow row = frobRow(kShape<S::kind>.view(), tyOf<E>, V);
    const auto item = [&](int k) { return matItem<unit>(s, k, w); };
    return bySize<row.unrolled>(
        w == h ? w : 0,
        [&](auto N) {
            constexpr int n = decltype(N)::value;
            int k = 0;
            if constexpr (row.grouped.has(n))
                for (; k + 4 <= count; k += 4)  // one item a lane: an ascending sum, refined, no guard
                    for (int g = 0; g < 4; ++g) {
                        const auto x = item(k + g);
                        *dst.item(k + g) = refinedRoot(chainFromZero<E>(0, n * n, [&](int j) { const E v = x(j / n, j % n); return E(v * v); }));
                    }
            constexpr Guard guard = row.grouped.has(n) ? Guard::Lane0 : row.guard;
            constexpr Sum sum = row.extended.has(n) ? Sum::ChainExt : row.sum;
            for (; k < count; ++k) {
                E lane0 = 0;
                const Ext total = squares<sum, E>(item(k), n, n, lane0);
                if constexpr (sum == Sum::ChainExt)
                    *dst.item(k) = rootOf<E>(row.root, total);
                else
                    *dst.item(k) = guarded<E>(guard, E(total), lane0, row.root == Root::SqrtExt ? Root::Sqrt : row.root);
            }
            return orlStatusOk;
        },
        [&] {
            for (int k = 0; k < count; ++k) {
                const auto x = item(k);
                E lane0 = 0, total;
                if constexpr (row.general == Sum::Run) {
                    const auto b = stdItem<unit>(s, k);
                    const LaneSums<E> acc = runSum<E>(x, b.b, b.s1, unit ? std::ptrdiff_t(sizeof(E)) : b.s2, w, h);
                    lane0 = acc.l[0];
                    total = acc.combined();
                } else {
                    total = E(squares<row.general, E>(x, w, h, lane0));
                }
                *dst.item(k) = guarded<E>(row.generalGuard, total, lane0, row.generalRoot);
            }
            return orlStatusOk;
        });
}

// ---- Trace: kernel ----------------------------------------------------------------------------

// Straight-line forms at 3 to 6: element precision, one rounding an addition,
// in the unit-stride kernels; the extended format with one rounding in the
// others. General: the result cleared, a running sum from +0.0 stored to it
// after every addition.
template <Var V, class S>
orlStatus traceKernel(int count, PerItem<typename S::Elem> dst, const S& s, int n)
{
    using E = typename S::Elem;
    constexpr bool unit = unitStep(V);
    return bySize<Sizes{3, 4, 5, 6}>(
        n,
        [&](auto N) {
            for (int k = 0; k < count; ++k) {
                const auto x = matItem<unit>(s, k, N);
                const auto d = [&](int i) { return x(i, i); };
                if constexpr (unit)
                    *dst.item(k) = sumOfProducts<Num::Packed, E>(N, d, [](int) { return E(1); });
                else
                    *dst.item(k) = E(sumOfProducts<Num::Extended, Ext>(N, d, [](int) { return E(1); }));
            }
            return orlStatusOk;
        },
        [&] {
            for (int k = 0; k < count; ++k) {
                const auto x = matItem<unit>(s, k, n);
                E* out = dst.item(k);
                *out = E(0);
                E r = E(0);
                for (int i = 0; i < n; ++i) {
                    r = r + x(i, i);
                    *out = r;
                }
            }
            return orlStatusOk;
        });
}

// ---- entries ----------------------------------------------------------------------------------

// The checks of every reduction: src and dst, count, sizes, strides, offsets.
template <class S>
orlStatus check(const S& s, const void* dst, std::initializer_list<int> sizes, int count)
{
    Checks c = operandChecks(s);
    c.N = c.N && dst != nullptr;
    c.C = count >= 1;
    c.Z = sizesOk(sizes);
    return firstFailure(generalOrder(S::array, S::lay), c);
}

// Single items take the kernel of their stride case (FrobNorm_m has one
// kernel for both); arrays go through the route.
template <template <Var> class K, class S, class... Sz>
orlStatus run(const S& s, typename S::Elem* dst, std::int32_t cost, const LimitRow& lim, int count, Sz... sizes)
{
    using E = typename S::Elem;
    const PerItem<E> out{dst, 1};
    const auto select = [&](int items, const PerItem<E>& o, const S& x) {
        return x.unit() ? K<varOf(S::lay, true)>::call(items, o, x, sizes...) : K<varOf(S::lay, false)>::call(items, o, x, sizes...);
    };
    if constexpr (!S::array) return select(1, out, s);
    else return route(cost, lim.of<E>(), S::lay, count, select, out, s);
}

template <Var V>
struct L2 {
    template <class... A> static orlStatus call(A&&... a) { return l2Kernel<V>(a...); }
};
template <Var V>
struct Frob {
    template <class... A> static orlStatus call(A&&... a) { return frobKernel<V>(a...); }
};
template <Var V>
struct Tr {
    template <class... A> static orlStatus call(A&&... a) { return traceKernel<V>(a...); }
};

template <class S>
orlStatus L2NormEntry(const S& s, typename S::Elem* dst, int length, int count = 1)
{
    if (const orlStatus st = check(s, dst, {length}, count)) return st;
    return run<L2>(s, dst, (Wrap(length) * count).value(), kL2Limits, count, length);
}

template <class S>
orlStatus FrobNormEntry(const S& s, int width, int height, typename S::Elem* dst, int count = 1)
{
    if (const orlStatus st = check(s, dst, {width, height}, count)) return st;
    return run<Frob>(s, dst, (Wrap(width) * height * count).value(), kMatLimits, count, width, height);
}

template <class S>
orlStatus TraceEntry(const S& s, int widthHeight, typename S::Elem* dst, int count = 1)
{
    if (const orlStatus st = check(s, dst, {widthHeight}, count)) return st;
    return run<Tr>(s, dst, (Wrap(widthHeight) * count).value(), kMatLimits, count, widthHeight);
}

}  // namespace orl::norms

#include "norms.inc"
