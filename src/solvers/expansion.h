// Cofactor expansion with shared minors, for the determinant and the inverse
// at orders 3 to 6.
//
// The minors of a set of rows over every subset of columns are built one
// level (one row) at a time: the minor over a column set C of k columns is
// the expansion along its k-th row, each element of that row times the
// (k-1)-row minor over C without its column, with alternating signs that
// start with +. Each minor is computed once and shared by every larger minor
// that uses it. Column sets are bit masks, the table is indexed by mask.
// Orders, levels, rows and masks are all known at compile time, so that the
// whole expansion is straight-line code.
#pragma once

#include <array>
#include <utility>

#include "frame/numeric.h"

namespace orl::expand {

// Column subsets of n columns, by number of columns and, within that, by mask.
template <int N>
struct Subsets {
    unsigned char mask[1 << N]{};
    int start[N + 2]{};  // subsets of k columns: mask[start[k]] .. mask[start[k+1]-1]
};

template <int N>
constexpr Subsets<N> subsets()
{
    Subsets<N> s;
    int x = 0;
    for (int k = 0; k <= N; ++k) {
        s.start[k] = x;
        for (int m = 0; m < (1 << N); ++m)
            if (__builtin_popcount(unsigned(m)) == k) s.mask[x++] = static_cast<unsigned char>(m);
    }
    s.start[N + 1] = x;
    return s;
}

template <int N>
inline constexpr Subsets<N> kSubsets = subsets<N>();

// Which way a minor is expanded along its newest row.
enum class Cols { Descending, Ascending };

// The columns of a mask in the order of expansion.
template <int N, int Mask, Cols C>
constexpr auto columnsOf()
{
    std::array<int, __builtin_popcount(unsigned(Mask))> cols{};
    int x = 0;
    for (int i = 0; i < N; ++i) {
        const int c = C == Cols::Descending ? N - 1 - i : i;
        if (Mask >> c & 1) cols[x++] = c;
    }
    return cols;
}

// Which row of the matrix a level adds: rows 0, 1, ... from the top, leaving
// out row Skip (none when negative); or from the bottom row upward.
template <int Skip = -1>
struct TopRows {
    static constexpr int of(int k) { return Skip < 0 || k - 1 < Skip ? k - 1 : k; }
};
template <int N>
struct BottomRows {
    static constexpr int of(int k) { return N - k; }
};

// One minor: the expansion of column set Mask along row r.
template <class Acc, Cols C, int N, int Mask, class A>
[[gnu::always_inline]] inline Acc expandOne(const A& a, const Acc* m, int r)
{
    constexpr auto cols = columnsOf<N, Mask, C>();
    if constexpr (cols.size() == 1) {
        return Acc(a(r, cols[0]));
    } else {
        Acc s = Acc(a(r, cols[0])) * m[Mask & ~(1 << cols[0])];
        [&]<int... X>(std::integer_sequence<int, X...>) __attribute__((always_inline)) {
            ((s = X % 2 == 0 ? s - Acc(a(r, cols[X + 1])) * m[Mask & ~(1 << cols[X + 1])]
                             : s + Acc(a(r, cols[X + 1])) * m[Mask & ~(1 << cols[X + 1])]),
             ...);
        }(std::make_integer_sequence<int, int(cols.size()) - 1>{});
        return s;
    }
}

// Fills levels From..To of the minor table `m` (levels below From must be
// there). Acc is the precision of the arithmetic; `keep(k, mask, v)` gives
// what is kept of a minor for its later uses (v itself, or v rounded to the
// element type).
template <class Acc, Cols C, int N, class Rows, int From, int To, class A, class Keep>
[[gnu::always_inline]] inline void buildMinors(const A& a, Acc* m, const Keep& keep)
{
    if constexpr (From <= To) {
        constexpr Subsets<N> sub = kSubsets<N>;
        constexpr int first = sub.start[From];
        constexpr int r = Rows::of(From);
        [&]<int... X>(std::integer_sequence<int, X...>) __attribute__((always_inline)) {
            ((m[sub.mask[first + X]] = keep(From, sub.mask[first + X], expandOne<Acc, C, N, sub.mask[first + X]>(a, m, r))), ...);
        }(std::make_integer_sequence<int, sub.start[From + 1] - first>{});
        buildMinors<Acc, C, N, Rows, From + 1, To>(a, m, keep);
    }
}

inline constexpr auto kAsIs = [](int, int, auto v) { return v; };

// Minors of rows 0..k-1 over every column set, in the element type, each
// expanded along its last row from the highest column: the element-type
// expansion of the determinant along the last row, whose full entry is the
// determinant itself.
template <class E, int N, class A>
[[gnu::always_inline]] inline void topMinors(const A& a, E* m)
{
    buildMinors<E, Cols::Descending, N, TopRows<>, 1, N>(a, m, kAsIs);
}

}  // namespace orl::expand
