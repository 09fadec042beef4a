// The steps of Gaussian elimination with partial pivoting by rows that the
// LU decomposition, the inverse and the determinant have in common.
//
// Rows are never moved: the matrix w(r, c) is addressed by physical row, and
// `perm` says which physical row stands at each logical position. The pivot
// of column k is sought down positions k..n-1 through `perm`, and a strictly
// greater magnitude wins, so ties keep the earliest position in `perm`.
#pragma once

#include <cmath>
#include <cstdint>

#include "frame/numeric.h"

namespace orl::elim {

// The position (k..n-1) of the pivot of column k and its magnitude. A NaN
// never wins, and a NaN first candidate is never replaced.
template <class E>
struct Pivot {
    int pos;
    E mag;
};

template <class E, class W, class Perm>
inline Pivot<E> pivotOf(const W& w, const Perm* perm, int k, int n)
{
    Pivot<E> p{k, std::fabs(E(w(perm[k], k)))};
    for (int i = k + 1; i < n; ++i) {
        const E m = std::fabs(E(w(perm[i], k)));
        if (m > p.mag) p = {i, m};
    }
    return p;
}

// Eliminates column k below logical row k: for each later position i, the
// element of row perm[i] in column k becomes the multiplier `mult(element)`,
// and columns k+1..n-1 of that row lose the multiplier times the pivot row.
// With `extended` the product and the difference are formed in the extended
// format and rounded once by the store; otherwise in the element type.
template <class E, class W, class Perm, class Mult>
inline void eliminateColumn(const W& w, const Perm* perm, int k, int n, bool extended, const Mult& mult)
{
    const int pk = perm[k];
    for (int i = k + 1; i < n; ++i) w(perm[i], k) = mult(E(w(perm[i], k)));
    for (int i = k + 1; i < n; ++i) {
        const int pi = perm[i];
        const E l = w(pi, k);
        if (extended) {
            for (int j = k + 1; j < n; ++j) w(pi, j) = E(Ext(w(pi, j)) - Ext(l) * Ext(w(pk, j)));
        } else {
            for (int j = k + 1; j < n; ++j) w(pi, j) = w(pi, j) - l * w(pk, j);
        }
    }
}

// The singularity tolerance of the inverse and the determinant at order n:
// the integer 2*n^3 in the element type times the smallest normal number.
template <class E>
inline E orderTolerance(int n)
{
    const E smallest = sizeof(E) == 4 ? E(0x1p-126f) : E(0x1p-1022);
    return E(2 * n * n * n) * smallest;
}

// ---- the elimination in a work buffer --------------------------------------

// The work buffer of the inverse and the determinant: the caller's n*(n+1)
// elements hold a matrix of order `n` (n or less) at row stride `stride`, and
// the row order, 32-bit integers, at element stride*stride.
template <class E>
struct Work {
    E* a;
    int stride, n;
    E& operator()(int r, int c) const { return a[r * stride + c]; }
    std::int32_t* perm() const { return reinterpret_cast<std::int32_t*>(a + stride * stride); }

    // Loads the matrix src(i, j) and sets the row order to the identity.
    template <class S>
    void load(const S& src) const
    {
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) (*this)(i, j) = src(i, j);
        for (int i = 0; i < n; ++i) perm()[i] = i;
    }
};

// How the multipliers of one stage are formed.
enum class Mult { Reciprocal, Division };  // m = a * (1 / pivot), or m = a / pivot

// Outcome of the elimination over `stages` columns: how many passed, the
// product of their pivots (in the order of the caller's rule), and the sign
// of the row order.
template <class E>
struct Run {
    int passed;   // == stages when every pivot passed
    E sign;
};

// Eliminates columns 0..stages-1 of the buffer with the pivot test
// |pivot| >= tol (a NaN fails), exchanging perm entries first and negating
// the sign. `onPivot(pivot)` sees each passing pivot; the run stops at the
// first pivot that fails.
template <Mult M, class E, class OnPivot>
inline Run<E> eliminateBuffer(const Work<E>& w, int stages, E tol, const OnPivot& onPivot)
{
    std::int32_t* perm = w.perm();
    E sign = E(1);
    for (int k = 0; k < stages; ++k) {
        const Pivot<E> p = pivotOf<E>(w, perm, k, w.n);
        if (p.pos != k) {
            const std::int32_t t = perm[k];
            perm[k] = perm[p.pos];
            perm[p.pos] = t;
            sign = -sign;
        }
        if (!(p.mag >= tol)) return {k, sign};
        const E pivot = w(perm[k], k);
        if constexpr (M == Mult::Reciprocal) {
            const E r = E(1) / pivot;
            eliminateColumn<E>(w, perm, k, w.n, false, [r](E a) { return a * r; });
        } else {
            eliminateColumn<E>(w, perm, k, w.n, false, [pivot](E a) { return a / pivot; });
        }
        onPivot(pivot);
    }
    return {stages, sign};
}

}  // namespace orl::elim
