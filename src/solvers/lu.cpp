// LU decomposition with partial pivoting by rows: P A = L U.
//
// Rows are never moved. Logical row i of the factor lies in physical row
// perm[i] of dst, holding L[i][j] left of the diagonal (unit diagonal not
// stored) and U[i][j] from the diagonal on. perm has n entries an item.
//
// Two paths, chosen by size, with deliberately different rules:
//   - the unrolled path (sizes 3 to 6) works on a private copy of the matrix
//     and writes dst rows as they become final (all at once in `_P`);
//   - the general path (every other size) copies src into dst and works
//     there in place.
// Their tolerance, the sense of the pivot test, the order of exchange and
// test, the element of the final test and the precision of the updates are
// the rows of kUnrolled and kGeneral below; one elimination template reads
// them.
#include <cmath>
#include <cstdint>
#include <utility>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/numeric.h"
#include "frame/operand.h"
#include "frame/validate.h"
#include "solvers/elimination.h"

namespace orl::lu {

namespace decomp {

// ---- tables ----------------------------------------------------------------

enum class Pass { AtLeast, Above };            // |pivot| >= tol, |pivot| > tol
enum class Final { FixedLast, PermLast };      // element (n-1, n-1), or (perm[n-1], n-1)
enum class Upd { FirstStage, AllStages };      // stages whose update is extended

struct PathRule {
    float tol32;
    double tol64;
    Pass pass;
    bool exchangeBeforeTest;
    Final final;
    Upd extended;

    template <class E>
    constexpr E tol() const { return sizeof(E) == 4 ? E(tol32) : E(tol64); }
    template <class E>
    constexpr bool passes(E magnitude) const  // false for a NaN
    {
        return pass == Pass::AtLeast ? magnitude >= tol<E>() : magnitude > tol<E>();
    }
};

//                              tol 32f    tol 64f     pivot passes   exchange first  final test at      extended updates
constexpr PathRule kUnrolled{0x1p-125f, 0x1p-1021, Pass::AtLeast, true,  Final::FixedLast, Upd::FirstStage};
constexpr PathRule kGeneral {0x1p-23f,  0x1p-52,   Pass::Above,   false, Final::PermLast,  Upd::AllStages};

// Sizes with an unrolled form, in every kernel.
constexpr Sizes kUnrolledSizes{3, 4, 5, 6};

// Cost n*n*count; the driver is taken above the limit.
//                          Unit   Any    L Unit L Any  P
constexpr LimitRow kLimits{{20000, 20000, 40000, 20000, 20000, Test::GT},   // 32f
                           {20000, 20000, 20000, 20000, 20000, Test::GT}};  // 64f

// ---- elimination -----------------------------------------------------------

// Right-looking Gaussian elimination of the n-by-n matrix w(r, c), pivots
// sought down column k through `perm` (which holds the identity on entry).
// `rowFinal(r)` is told when physical row r holds its final values. N > 0
// fixes the size at compile time.
template <const PathRule& R, class E, int N, class W, class Perm, class RowFinal>
orlStatus eliminate(const W& w, Perm* perm, int size, const RowFinal& rowFinal)
{
    const int n = N ? N : size;
    for (int k = 0; k < n - 1; ++k) {
        const elim::Pivot<E> best = elim::pivotOf<E>(w, perm, k, n);
        if (R.exchangeBeforeTest) std::swap(perm[k], perm[best.pos]);
        if (!R.passes(best.mag)) return orlStatusSingular;
        if (!R.exchangeBeforeTest && best.pos != k) std::swap(perm[k], perm[best.pos]);

        const int pk = perm[k];
        const E r = E(1) / w(pk, k);
        rowFinal(pk);
        const bool extended = R.extended == Upd::AllStages || k == 0;
        elim::eliminateColumn<E>(w, perm, k, n, extended, [r](E a) { return a * r; });
    }
    const E last = R.final == Final::FixedLast ? w(n - 1, n - 1) : w(perm[n - 1], n - 1);
    if (!R.passes(std::fabs(last))) return orlStatusSingular;
    rowFinal(perm[n - 1]);
    return orlStatusOk;
}

// Unrolled path: the whole item is read into a private copy before anything
// is written, so dst may overlap src in any way. Standard and `_L` layouts
// write each row as it becomes final; `_P` writes the whole copy on success.
template <class E, int N, bool rowsWhenFinal, class S, class D>
orlStatus unrolledItem(const S& s, std::int32_t* perm, const D& d)
{
    E a[N][N];
    for (int i = 0; i < N; ++i)
        for (int j = 0; j < N; ++j) a[i][j] = s(i, j);
    int p[N];
    for (int i = 0; i < N; ++i) p[i] = i;

    const auto w = [&a](int r, int c) -> E& { return a[r][c]; };
    const auto rowFinal = [&](int r) {
        if constexpr (rowsWhenFinal)
            for (int j = 0; j < N; ++j) d(r, j) = a[r][j];
    };
    const orlStatus st = eliminate<kUnrolled, E, N>(w, p, N, rowFinal);

    for (int i = 0; i < N; ++i) perm[i] = p[i];
    if constexpr (!rowsWhenFinal) {
        if (st == orlStatusOk)
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) d(i, j) = a[i][j];
    }
    return st;
}

// General path: src copied into dst row by row (harmless when they are the
// same), then dst worked on in place.
template <class E, class S, class D>
orlStatus generalItem(const S& s, std::int32_t* perm, const D& d, int n)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) d(i, j) = s(i, j);
    for (int i = 0; i < n; ++i) perm[i] = i;
    return eliminate<kGeneral, E, 0>(d, perm, n, [](int) {});
}

// ---- kernel ----------------------------------------------------------------

// The loop over items, inside the size dispatch; it leaves at the first item
// that fails. N == 0 is the general path.
template <int N, Var V, class S, class D>
orlStatus run(int count, PerItem<std::int32_t> perm, const S& s, const D& d, int n)
{
    using E = typename D::Elem;
    constexpr bool unit = unitStep(V);
    for (int k = 0; k < count; ++k) {
        const auto si = matItem<unit>(s, k, n);
        const auto di = matItem<unit>(d, k, n);
        orlStatus st;
        if constexpr (N > 0)
            st = unrolledItem<E, N, V != Var::P>(si, perm.item(k), di);
        else
            st = generalItem<E>(si, perm.item(k), di, n);
        if (st != orlStatusOk) return st;
    }
    return orlStatusOk;
}

template <Var V, class S, class D>
orlStatus kernel(int count, PerItem<std::int32_t> perm, const S& s, const D& d, int n)
{
    return bySize<kUnrolledSizes>(
        n, [&](auto N) { return run<decltype(N)::value, V>(count, perm, s, d, n); },
        [&] { return run<0, V>(count, perm, s, d, n); });
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <class S, class D>
orlStatus select(int count, PerItem<std::int32_t> perm, const S& s, const D& d, int n)
{
    if (allUnit(s, d)) return kernel<varOf(D::lay, true)>(count, perm, s, d, n);
    return kernel<varOf(D::lay, false)>(count, perm, s, d, n);
}

}  // namespace decomp

// ---- entry -----------------------------------------------------------------

template <class S, class D>
orlStatus decompEntry(const S& src, std::int32_t* perm, const D& dst, int widthHeight, int count = 1)
{
    using E = typename D::Elem;
    Checks c = operandChecks(src, dst);
    c.N = c.N && perm != nullptr;
    c.C = count >= 1;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure(generalOrder(D::array, D::lay), c)) return st;

    const int n = widthHeight;
    const PerItem<std::int32_t> pm{perm, n};
    if constexpr (!D::array) {
        return decomp::select(1, pm, src, dst, n);
    } else {
        const std::int32_t cost = (Wrap(n) * n * count).value();
        return route(cost, decomp::kLimits.of<E>(), D::lay, count,
                     [&](int items, const auto&... o) { return decomp::select(items, o..., n); }, pm, src, dst);
    }
}

}  // namespace orl::lu

#include "lu.inc"
