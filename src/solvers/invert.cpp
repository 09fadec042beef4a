// Inverse of one square matrix or of an array of them.
//
// A family of several methods, chosen by order, element type and kernel:
//   - order 1 is decided in the entry;
//   - orders 3 to 6 have closed forms: the adjugate (every cofactor by
//     expansion, the determinant as the last row times its cofactors, each
//     element of the inverse a cofactor times 1/D, transposed), and in the
//     32f plain kernels at orders 5 and 6 a block method that eliminates one
//     or two pivots of row 0 and inverts the 4-by-4 Schur complement;
//   - order 2 and orders from 7 up form the adjugate one cofactor at a time
//     by elimination in the caller's buffer.
// Each method has its own singularity test (tolerance, sense, what a NaN
// does) and its own way to 1/D; those are the rows of the tables below.
#include <cmath>
#include <cstdint>
#include <utility>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"
#include "solvers/elimination.h"
#include "solvers/expansion.h"

namespace orl::invert {

// ---- tables ----------------------------------------------------------------

// When a tested value v (a pivot or a determinant) makes the matrix singular.
enum class Sense {
    TolAbove,    // tol >  |v|: a NaN passes
    TolAtLeast,  // tol >= |v|: a NaN passes
    NotAtLeast,  // not |v| >= tol: a NaN fails
    NotAbove,    // not |v| >  tol: a NaN fails
};

template <class E>
constexpr bool singular(Sense s, E v, E tol)
{
    const E m = std::fabs(v);
    switch (s) {
    case Sense::TolAbove: return tol > m;
    case Sense::TolAtLeast: return tol >= m;
    case Sense::NotAtLeast: return !(m >= tol);
    case Sense::NotAbove: return !(m > tol);
    }
    return true;
}

enum class Method { Adjugate, Block };
enum class Recip { Estimate, Division };  // estimate and one Newton step, or 1 / D

struct MethodRule {
    Method method;
    Sense sense;
    Recip recip;
    int units;  // tolerance in units of the smallest normal number; 0: T(n) = 2*n^3 units

    template <class E>
    E tolerance(int n) const
    {
        if (units == 0) return elim::orderTolerance<E>(n);
        return E(units) * (sizeof(E) == 4 ? E(0x1p-126f) : E(0x1p-1022));
    }
};

using SizeRow = MethodRule[4];  // orders 3, 4, 5, 6

constexpr MethodRule kAdjEst  {Method::Adjugate, Sense::TolAbove,   Recip::Estimate, 0};
constexpr MethodRule kBlock   {Method::Block,    Sense::NotAtLeast, Recip::Estimate, 0};
constexpr MethodRule kAdjDivS {Method::Adjugate, Sense::NotAtLeast, Recip::Division, 0};
constexpr MethodRule kAdjDivA {Method::Adjugate, Sense::TolAbove,   Recip::Division, 0};

//                                 order 3                                            order 4                                              order 5                                              order 6
constexpr SizeRow kPlain32     = {kAdjEst,                                            kAdjEst,                                             kBlock,                                              kBlock};
constexpr SizeRow kPlain64     = {{Method::Adjugate, Sense::TolAbove, Recip::Division, 108}, {Method::Adjugate, Sense::NotAtLeast, Recip::Division, 256}, {Method::Adjugate, Sense::NotAtLeast, Recip::Division, 250}, {Method::Adjugate, Sense::NotAtLeast, Recip::Division, 432}};
constexpr SizeRow kOtherSingle = {kAdjDivS,                                           kAdjDivS,                                            kAdjDivS,                                            kAdjDivS};  // _S2, _P
constexpr SizeRow kOtherArray  = {kAdjDivA,                                           kAdjDivA,                                            kAdjDivA,                                            kAdjDivA};  // _S2, _LS2, _P

// The plain kernels are those of the unit-stride standard layout and of _L.
template <class E, Var V, bool array>
constexpr const SizeRow& methodsOf()
{
    if constexpr (V == Var::Unit || V == Var::L) return sizeof(E) == 4 ? kPlain32 : kPlain64;
    else if constexpr (array) return kOtherArray;
    else return kOtherSingle;
}

// Order 1, in the entry: the test of the single form and that of the arrays.
constexpr Sense kOrder1Single = Sense::NotAbove;
constexpr Sense kOrder1Array = Sense::TolAtLeast;

// The elimination of orders 2 and 7 up: pivots, then the whole determinant.
constexpr Sense kEliminationPivot = Sense::NotAtLeast;
constexpr Sense kEliminationDet = Sense::TolAtLeast;

// Block method: the order in which the columns of a row compete for the
// pivot; a later column wins only with a strictly greater magnitude.
constexpr int kScan5[5] = {3, 2, 1, 0, 4};
constexpr int kScan6[6] = {3, 2, 1, 0, 4, 5};

constexpr Sizes kClosedForms{3, 4, 5, 6};

// Cost 2*count*n; the driver is taken above the limit.
//                          Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits{{20000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                           {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// ---- adjugate --------------------------------------------------------------

template <class E, int N>
using Square = E[N][N];

// inv = adj(a) / det(a) by cofactor expansion in the element type; false when
// `reciprocal(D, q)` finds the determinant singular (nothing written then)
// and otherwise sets q to 1/D. P is the element type or a Pack of items.
template <int N, class P, class Reciprocal>
[[gnu::always_inline]] inline bool adjugateForm(const P (&a)[N][N], P (&inv)[N][N], const Reciprocal& reciprocal)
{
    constexpr int full = (1 << N) - 1;
    const auto at = [&a](int i, int j) { return a[i][j]; };
    P m[1 << N];  // minors of rows 0..k-1
    expand::topMinors<P, N>(at, m);
    P q;
    if (!reciprocal(m[full], q)) return false;
    // Cofactors of row i from the minors of the other rows: those of rows
    // 0..i-1 are shared, the levels above are rebuilt, last row first so
    // that each rebuild overwrites only what later rows no longer need.
    [&]<int... X>(std::integer_sequence<int, X...>) __attribute__((always_inline)) {
        ([&]() __attribute__((always_inline)) {
            constexpr int i = N - 1 - X;
            expand::buildMinors<P, expand::Cols::Descending, N, expand::TopRows<i>, i + 1, N - 1>(at, m, expand::kAsIs);
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) {
                const P c = m[full & ~(1 << j)] * q;
                inv[j][i] = (i + j) & 1 ? -c : c;
            }
        }(), ...);
    }(std::make_integer_sequence<int, N>{});
    return true;
}

// The rule's test of D and its way to 1/D, on one determinant or on a Pack
// of them (false when any item's determinant fails).
template <class E>
[[gnu::always_inline]] inline bool reciprocalOf(const MethodRule& rule, E tol, E D, E& q)
{
    if (singular(rule.sense, D, tol)) return false;
    if constexpr (sizeof(E) == 4)
        q = rule.recip == Recip::Estimate ? reciprocalEstimate(D) : E(1) / D;
    else
        q = E(1) / D;
    return true;
}

template <class E>
[[gnu::always_inline]] inline bool reciprocalOf(const MethodRule& rule, E tol, Pack<E> D, Pack<E>& q)
{
    using L = Lanes<E>;
    const auto m = L::abs(D.v), t = L::bcast(tol);
    typename L::V fails;
    switch (rule.sense) {
    case Sense::TolAbove: fails = L::lt(m, t); break;
    case Sense::TolAtLeast: fails = L::le(m, t); break;
    case Sense::NotAtLeast: fails = L::nge(m, t); break;
    case Sense::NotAbove: fails = L::ngt(m, t); break;
    }
    if (L::any(fails)) return false;
    if constexpr (sizeof(E) == 4)
        q = rule.recip == Recip::Estimate ? Pack<E>(reciprocalEstimate(D.v)) : Pack<E>(E(1)) / D;
    else
        q = Pack<E>(E(1)) / D;
    return true;
}

template <class E, int N>
[[gnu::always_inline]] inline bool adjugateBody(const Square<E, N>& a, Square<E, N>& inv, const MethodRule& rule, E tol)
{
    return adjugateForm<N>(a, inv, [&](E D, E& q) { return reciprocalOf(rule, tol, D, q); });
}

// Inline at orders 3 and 4; at 5 and 6 one out-of-line copy an element type
// serves every kernel.
template <class E, int N>
[[gnu::noinline]] bool adjugateOutOfLine(const Square<E, N>& a, Square<E, N>& inv, const MethodRule& rule, E tol)
{
    return adjugateBody<E, N>(a, inv, rule, tol);
}

template <class E, int N>
[[gnu::always_inline]] inline bool adjugate(const Square<E, N>& a, Square<E, N>& inv, const MethodRule& rule, E tol)
{
    if constexpr (N <= 4)
        return adjugateBody<E, N>(a, inv, rule, tol);
    else
        return adjugateOutOfLine<E, N>(a, inv, rule, tol);
}

// ---- block method (32f plain, orders 5 and 6) ------------------------------

// Inverse of a by one pivot of row 0 and the inverse of its Schur
// complement: by the adjugate at order 4, by this method again above.
template <int N>
[[gnu::noinline]] bool blockInverse(Square<float, N>& a, Square<float, N>& inv, float tol)
{
    constexpr int M = N - 1;
    const int* scan = N == 6 ? kScan6 : kScan5;
    int pc = scan[0];
    float big = std::fabs(a[0][pc]);
    for (int x = 1; x < N; ++x)
        if (std::fabs(a[0][scan[x]]) > big) big = std::fabs(a[0][scan[x]]), pc = scan[x];
    if (!(big >= tol)) return false;
    if (pc != 0)
        for (int i = 0; i < N; ++i) std::swap(a[i][0], a[i][pc]);

    const float p = reciprocalEstimate(a[0][0]);
    Square<float, M> S, Si;
    for (int i = 0; i < M; ++i) {
        const float l = a[i + 1][0] * p;
        for (int j = 0; j < M; ++j) S[i][j] = a[i + 1][j + 1] - l * a[0][j + 1];
    }
    if constexpr (M == 4) {
        if (!adjugate<float, 4>(S, Si, kBlock, tol)) return false;
    } else {
        if (!blockInverse<M>(S, Si, tol)) return false;
    }

    // [a00 r; c B]^-1 = [p + p (r Si c) p, -(r Si) p; -(Si c) p, Si].
    float w[M], z[M];
    for (int j = 0; j < M; ++j) w[j] = sumOfProducts<Num::Packed, float>(M, [&](int k) { return a[0][k + 1]; }, [&](int k) { return Si[k][j]; });
    for (int i = 0; i < M; ++i) z[i] = sumOfProducts<Num::Packed, float>(M, [&](int k) { return Si[i][k]; }, [&](int k) { return a[k + 1][0]; });
    const float x = sumOfProducts<Num::Packed, float>(M, [&](int k) { return w[k]; }, [&](int k) { return a[k + 1][0]; });
    inv[0][0] = p + (p * x) * p;
    for (int j = 0; j < M; ++j) inv[0][j + 1] = -(w[j] * p);
    for (int i = 0; i < M; ++i) {
        inv[i + 1][0] = -(z[i] * p);
        for (int j = 0; j < M; ++j) inv[i + 1][j + 1] = Si[i][j];
    }
    // The column exchange of a is a row exchange of its inverse.
    if (pc != 0)
        for (int j = 0; j < N; ++j) std::swap(inv[0][j], inv[pc][j]);
    return true;
}

// ---- closed forms ----------------------------------------------------------

// Everything is read before anything is written, so dst may equal src.
template <class E, int N, class S, class D>
orlStatus closedForm(const S& s, const D& d, const MethodRule& rule)
{
    Square<E, N> a, inv;
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) a[i][j] = s(i, j);
    bool ok;
    if constexpr (sizeof(E) == 4 && N >= 5) {
        if (rule.method == Method::Block) {
            // Row 0 (and row 1 at order 6) of dst serve as work space: a
            // failure leaves the rows read there.
            for (int i = 0; i < N - 4; ++i)
                for (int j = 0; j < N; ++j) d(i, j) = a[i][j];
            ok = blockInverse<N>(a, inv, rule.tolerance<E>(N));
        } else {
            ok = adjugate<E, N>(a, inv, rule, rule.tolerance<E>(N));
        }
    } else {
        ok = adjugate<E, N>(a, inv, rule, rule.tolerance<E>(N));
    }
    if (!ok) return orlStatusSingular;
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) d(i, j) = inv[i][j];
    return orlStatusOk;
}

// ---- groups of items at once -----------------------------------------------

// Orders 3 and 4 of the plain array kernels take items a Pack at a time.
template <class E, int N, Var V, bool array>
constexpr bool kPacked = array && N <= 4 && unitStep(V);

// Items k .. k+G-1 at once, each lane doing one item's arithmetic. False,
// with nothing written, when an item is singular or writes where a later
// item of the group reads: the caller then takes them one at a time.
// `apart`: no source item meets a destination item anywhere in the array.
template <class E, int N, const MethodRule& R, bool unit, class S, class D>
bool packedGroup(const S& s, const D& d, int k, bool apart, bool dense)
{
    constexpr int G = Pack<E>::items;
    decltype(matItem<unit>(s, 0, N)) si[G];
    decltype(matItem<unit>(d, 0, N)) di[G];
    Span ss[G], ds[G];
#pragma GCC unroll 4
    for (int g = 0; g < G; ++g) {
        si[g] = matItem<unit>(s, k + g, N), di[g] = matItem<unit>(d, k + g, N);
        ss[g] = spanOf<N>(si[g]), ds[g] = spanOf<N>(di[g]);
    }
    if (!apart && !readsBeforeWrites(ss, ds)) return false;
    Pack<E> a[N][N], inv[N][N];
    loadItems<E, N>(si, a, dense);
    const E tol = R.tolerance<E>(N);
    if (!adjugateForm<N>(a, inv, [&](Pack<E> det, Pack<E>& q) { return reciprocalOf(R, tol, det, q); })) return false;
    storeItems<E, N>(inv, di);
    return true;
}

// ---- orders 2 and 7 up: cofactors by elimination ---------------------------

// src is read again for every cofactor while dst is written, so the two must
// not overlap. A pivot below the tolerance ends the call with no store.
template <class E, class S, class D>
orlStatus byElimination(const S& s, const D& d, int n, E* buffer)
{
    using namespace elim;
    const E tol = orderTolerance<E>(n);
    const Work<E> w{buffer, n, n};
    w.load(s);
    E det = E(1);
    const Run<E> run = eliminateBuffer<Mult::Reciprocal>(w, n - 1, tol, [&det](E pivot) { det = det * pivot; });
    if (run.passed < n - 1) return orlStatusSingular;
    det = det * (run.sign * w(w.perm()[n - 1], n - 1));
    if (singular(kEliminationDet, det, tol)) return orlStatusSingular;
    const E q = E(1) / det;

    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            // Cofactor (i, j): src without row i and column j, at row stride n.
            const Work<E> m{buffer, n, n - 1};
            m.load([&](int r, int c) { return s(r < i ? r : r + 1, c < j ? c : c + 1); });
            E c = E(1), sign = E(1);
            if (n >= 3) {
                const Run<E> sub = eliminateBuffer<Mult::Reciprocal>(m, n - 2, tol, [&c](E pivot) { c = c * pivot; });
                sign = sub.sign;
                if (sub.passed < n - 2) c = tol;  // a small pivot is no error here
            }
            const E x = m(m.perm()[n - 2], n - 2);
            c = tol >= std::fabs(x) ? tol : c * (x * sign);
            const E v = c * q;
            d(j, i) = (i + j) & 1 ? -v : v;
        }
    }
    return orlStatusOk;
}

// ---- kernel ----------------------------------------------------------------

template <int N, Var V, bool array, class S, class D, class E>
orlStatus run(int count, E* buffer, const S& s, const D& d, int n)
{
    constexpr bool unit = unitStep(V);
    const auto one = [&](int k) {
        const auto si = matItem<unit>(s, k, n);
        const auto di = matItem<unit>(d, k, n);
        if constexpr (N == 0)
            return byElimination<E>(si, di, n, buffer);
        else
            return closedForm<E, N>(si, di, methodsOf<E, V, array>()[N - 3]);
    };
    int k = 0;
    if constexpr (N > 0 && kPacked<E, N, V, array>) {
        constexpr int G = Pack<E>::items;
        bool apart = false, dense = false;
        if constexpr (V == Var::Unit) {
            dense = s.s1 == N * std::ptrdiff_t(sizeof(E)) && s.s0 == N * s.s1;
            const Span src = hullOf(spanOf<N>(matItem<unit>(s, 0, N)), spanOf<N>(matItem<unit>(s, count - 1, N)));
            apart = !src.meets(hullOf(spanOf<N>(matItem<unit>(d, 0, N)), spanOf<N>(matItem<unit>(d, count - 1, N))));
        }
        while (k + G <= count) {
            if (packedGroup<E, N, methodsOf<E, V, array>()[N - 3], unit>(s, d, k, apart, dense)) {
                k += G;
                continue;
            }
            for (const int end = k + G; k < end; ++k)
                if (const orlStatus st = one(k)) return st;
        }
    }
    for (; k < count; ++k)
        if (const orlStatus st = one(k)) return st;
    return orlStatusOk;
}

template <class S, class D, class E>
orlStatus select(int count, E* buffer, const S& s, const D& d, int n)
{
    const auto go = [&]<Var V>() {
        return bySize<kClosedForms>(
            n, [&](auto N) { return run<decltype(N)::value, V, D::array>(count, buffer, s, d, n); },
            [&] { return run<0, V, D::array>(count, buffer, s, d, n); });
    };
    if (allUnit(s, d)) return go.template operator()<varOf(D::lay, true)>();
    return go.template operator()<varOf(D::lay, false)>();
}

// Order 1: no kernel and no parallel route. The arrays store each result
// until the first item that fails.
template <class S, class D>
orlStatus order1(const S& s, const D& d, int count)
{
    using E = typename D::Elem;
    const E tol = elim::orderTolerance<E>(1);
    const Sense sense = D::array ? kOrder1Array : kOrder1Single;
    for (int k = 0; k < count; ++k) {
        const E x = matItem<false>(s, k, 1)(0, 0);
        if (singular(sense, x, tol)) return orlStatusSingular;
        matItem<false>(d, k, 1)(0, 0) = E(1) / x;
    }
    return orlStatusOk;
}

// ---- entry -----------------------------------------------------------------

template <class S, class D, class E>
orlStatus entry(const S& src, E* buffer, const D& dst, int widthHeight, int count = 1)
{
    Checks c = operandChecks(src, dst);
    c.N = c.N && buffer != nullptr;
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay), c)) return st;

    const int n = widthHeight;
    if (n == 1) return order1(src, dst, count);
    if constexpr (!D::array) {
        return select(1, buffer, src, dst, n);
    } else {
        const std::int32_t cost = (Wrap(2) * count * n).value();
        if (!parallelRoute(cost, kLimits.of<E>(), D::lay, allUnit(src, dst))) return select(count, buffer, src, dst, n);
        // Each thread eliminates in its own n*(n+1) elements of scratch.
        const std::size_t scratch = std::size_t(n) * std::size_t(n + 1) * sizeof(E);
        return drive(count, scratch, [&](int first, int items, void* own) {
            return select(items, own ? static_cast<E*>(own) : buffer, src.from(first), dst.from(first), n);
        });
    }
}

}  // namespace orl::invert

#include "invert.inc"
