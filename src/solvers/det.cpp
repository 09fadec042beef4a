// Determinant of one square matrix or of an array of them.
//
// Orders 3 to 6 are cofactor expansions without pivoting: in the extended
// format for single matrices in the plain layout, in the element type along
// the last row everywhere else. Every other order is Gaussian elimination
// with partial pivoting in the caller's buffer (or a thread's scratch). No
// matrix is an error: a singular one gives 0.0 or what the expansion rounds
// to, and every kernel returns orlStatusOk.
#include <cmath>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"
#include "solvers/elimination.h"
#include "solvers/expansion.h"

namespace orl::det {

// ---- tables ----------------------------------------------------------------

// Orders with an expansion, in every kernel.
constexpr Sizes kExpanded{3, 4, 5, 6};

// How an order 3..6 is expanded: the extended forms of the single plain
// kernel, or the element type along the last row.
enum class Expansion { Extended, LastRowElem };

// What the elimination does with a pivot below the tolerance: end with 0.0,
// or (array kernels) set the sign to 0 and go on to the last element.
enum class OnSmallPivot { ZeroResult, ZeroSign };

struct KernelRule {
    Expansion expansion;
    OnSmallPivot small;
};

//                                        orders 3..6             small pivot in the elimination
constexpr KernelRule kSinglePlain{Expansion::Extended,    OnSmallPivot::ZeroResult};
constexpr KernelRule kSingleOther{Expansion::LastRowElem, OnSmallPivot::ZeroResult};  // _S2, _P
constexpr KernelRule kArray      {Expansion::LastRowElem, OnSmallPivot::ZeroSign};    // every array kernel

template <bool array, Var V>
constexpr const KernelRule& ruleOf()
{
    if constexpr (array) return kArray;
    else if constexpr (V == Var::Unit) return kSinglePlain;
    else return kSingleOther;
}

// Cost n*count; the driver is taken above the limit.
//                          Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits{{20000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                           {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// ---- expansions ------------------------------------------------------------

template <class E, int N>
using Square = E[N][N];

// Order 3 in the extended format: 32f along row 0, 64f along column 0, the
// three terms added in the order written.
template <class E, class A>
E extended3(const A& a)
{
    const auto m = [&a](int i, int j) { return Ext(a(i, j)); };
    if constexpr (sizeof(E) == 4)
        return E((m(0, 1) * (m(2, 0) * m(1, 2) - m(1, 0) * m(2, 2)) + m(0, 2) * (m(2, 1) * m(1, 0) - m(2, 0) * m(1, 1))) +
                 m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)));
    else
        return E((m(2, 0) * (m(1, 2) * m(0, 1) - m(1, 1) * m(0, 2)) + m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1))) +
                 m(1, 0) * (m(2, 1) * m(0, 2) - m(2, 2) * m(0, 1)));
}

// Orders 4 to 6 in the extended format: minors of the bottom rows upward,
// each along its top row from column 0. The minors of two rows are parked in
// the element type, except M(2,3; 2,3) of order 4 and M(n-2,n-1; n-2,n-1)
// of orders 5 and 6; at order 4 M(2,3; 0,1) is the one parked. Minors of
// three rows up to order n-2 are parked; the cofactors of row 0 and the
// result stay extended until the result is stored.
template <class E, int N>
constexpr bool parked(int k, int mask)
{
    if (k == 2) {
        if (N == 4) return mask == 0b0011;
        return mask != (3 << (N - 2));
    }
    return k >= 3 && k <= N - 2;
}

template <class E, int N, class A>
[[gnu::always_inline]] inline E extendedN(const A& a)
{
    if constexpr (N == 3) {
        return extended3<E>(a);
    } else {
        Ext m[1 << N];
        expand::buildMinors<Ext, expand::Cols::Ascending, N, expand::BottomRows<N>, 1, N>(
            a, m, [](int k, int mask, Ext v) { return parked<E, N>(k, mask) ? Ext(E(v)) : v; });
        return E(m[(1 << N) - 1]);
    }
}

// P is the element type or a Pack of items.
template <class P, int N>
[[gnu::always_inline]] inline P lastRowElem(const P (&a)[N][N])
{
    P m[1 << N];
    expand::topMinors<P, N>([&a](int i, int j) { return a[i][j]; }, m);
    return m[(1 << N) - 1];
}

// The expansions at order N of a private copy: inline at orders 3 and 4,
// one out-of-line copy an element type at 5 and 6.
template <class E, int N, Expansion X>
[[gnu::always_inline]] inline E expansion(const Square<E, N>& a)
{
    if constexpr (X == Expansion::Extended)
        return extendedN<E, N>([&a](int i, int j) { return a[i][j]; });
    else
        return lastRowElem<E, N>(a);
}

template <class E, int N, Expansion X>
[[gnu::noinline]] E expansionOutOfLine(const Square<E, N>& a)
{
    return expansion<E, N, X>(a);
}

// ---- elimination -----------------------------------------------------------

// Orders 1, 2 and 7 up: the running product lives in the result.
template <const KernelRule& R, class E, class S>
void eliminated(const S& s, int n, E* buffer, E* dst)
{
    using namespace elim;
    const E tol = orderTolerance<E>(n);
    const Work<E> w{buffer, n, n};
    w.load(s);
    *dst = E(1);
    const Run<E> run = eliminateBuffer<Mult::Division>(w, n - 1, tol, [dst](E pivot) { *dst = pivot * *dst; });
    E sign = run.sign;
    if (run.passed < n - 1) {
        if constexpr (R.small == OnSmallPivot::ZeroResult) {
            *dst = E(0);
            return;
        } else {
            sign = E(0);
        }
    }
    const E x = w(w.perm()[n - 1], n - 1);
    *dst = tol >= std::fabs(x) ? E(0) : *dst * (x * sign);
}

// ---- groups of items at once -----------------------------------------------

// Orders 3 and 4 of the unit-step array kernels take items a Pack at a time.
template <class E, int N, Var V, bool array>
constexpr bool kPacked = array && N <= 4 && unitStep(V) && ruleOf<array, V>().expansion == Expansion::LastRowElem;

// Items k .. k+G-1 at once, each lane doing one item's arithmetic; false,
// with nothing written, when a result would land where a later item of the
// group is still to be read (`apart`: no result meets a source item).
template <class E, int N, bool unit, class S>
bool packedGroup(const S& s, PerItem<E> dst, int k, bool apart, bool dense)
{
    constexpr int G = Pack<E>::items;
    decltype(matItem<unit>(s, 0, N)) si[G];
    Span ss[G], ds[G];
#pragma GCC unroll 4
    for (int g = 0; g < G; ++g) {
        si[g] = matItem<unit>(s, k + g, N);
        ss[g] = spanOf<N>(si[g]), ds[g] = spanOf(dst.item(k + g), sizeof(E));
    }
    if (!apart && !readsBeforeWrites(ss, ds)) return false;
    Pack<E> a[N][N];
    loadItems<E, N>(si, a, dense);
    E out[G];
    lastRowElem<Pack<E>, N>(a).lanesTo(out);
#pragma GCC unroll 4
    for (int g = 0; g < G; ++g) *dst.item(k + g) = out[g];
    return true;
}

// ---- kernel ----------------------------------------------------------------

template <int N, Var V, bool array, class S, class E>
orlStatus run(int count, E* buffer, PerItem<E> dst, const S& s, int n)
{
    constexpr const KernelRule& R = ruleOf<array, V>();
    constexpr bool unit = unitStep(V);
    int k = 0;
    if constexpr (N > 0 && kPacked<E, N, V, array>) {
        bool apart = false, dense = false;
        if constexpr (V == Var::Unit) {
            dense = s.s1 == N * std::ptrdiff_t(sizeof(E)) && s.s0 == N * s.s1;
            const Span src = hullOf(spanOf<N>(matItem<unit>(s, 0, N)), spanOf<N>(matItem<unit>(s, count - 1, N)));
            apart = !src.meets(hullOf(spanOf(dst.item(0), sizeof(E)), spanOf(dst.item(count - 1), sizeof(E))));
        }
        for (; k + Pack<E>::items <= count; k += Pack<E>::items)
            if (!packedGroup<E, N, unit>(s, dst, k, apart, dense)) break;
    }
    for (; k < count; ++k) {
        const auto a = matItem<unit>(s, k, n);
        E* d = dst.item(k);
        if constexpr (N == 0)
            eliminated<R>(a, n, buffer, d);
        else {
            Square<E, N> x;
#pragma GCC unroll 8
            for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
                for (int j = 0; j < N; ++j) x[i][j] = a(i, j);
            if constexpr (N <= 4)
                *d = expansion<E, N, R.expansion>(x);
            else
                *d = expansionOutOfLine<E, N, R.expansion>(x);
        }
    }
    return orlStatusOk;
}

template <class S, class E>
orlStatus select(int count, E* buffer, PerItem<E> dst, const S& s, int n)
{
    const auto go = [&]<Var V>() {
        return bySize<kExpanded>(
            n, [&](auto N) { return run<decltype(N)::value, V, S::array>(count, buffer, dst, s, n); },
            [&] { return run<0, V, S::array>(count, buffer, dst, s, n); });
    };
    if (s.unit()) return go.template operator()<varOf(S::lay, true)>();
    return go.template operator()<varOf(S::lay, false)>();
}

// ---- entry -----------------------------------------------------------------

template <class S, class E>
orlStatus entry(const S& src, int widthHeight, E* buffer, E* dst, int count = 1)
{
    Checks c = operandChecks(src);
    c.N = c.N && buffer != nullptr && dst != nullptr;
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure(generalOrder(S::array, S::lay), c)) return st;

    const int n = widthHeight;
    const PerItem<E> out{dst, 1};
    if constexpr (!S::array) {
        return select(1, buffer, out, src, n);
    } else {
        const std::int32_t cost = (Wrap(n) * count).value();
        const Limits& lim = kLimits.of<E>();
        if (!parallelRoute(cost, lim, S::lay, src.unit())) return select(count, buffer, out, src, n);
        // Each thread eliminates in its own n*(n+1) elements of scratch.
        const std::size_t scratch = std::size_t(n) * std::size_t(n + 1) * sizeof(E);
        return drive(count, scratch, [&](int first, int items, void* own) {
            return select(items, own ? static_cast<E*>(own) : buffer, out.from(first), src.from(first), n);
        });
    }
}

}  // namespace orl::det

#include "det.inc"
