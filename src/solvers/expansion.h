// Cofactor expansion with shared minors, for the determinant and the inverse
// at orders 3 to 6.
//
// The minors of a set of rows over every subset of columns are built one
// level (one row) at a time: the minor over a column set C of k columns is
// the expansion along its k-th row, each element of that row times the
// (k-1)-row minor over C without its column, with alternating signs that
// start with +. Each minor is computed once and shared by every larger minor
// that uses it. Column sets are bit masks, the table is indexed by mask.
#pragma once

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

// Fills levels `from`..`to` of the minor table `m` (levels below `from` must
// be there): the level-k minors expand along row rows[k-1] of `a`. Acc is the
// precision of the arithmetic; `keep(k, mask, v)` gives what is kept of a
// minor for its later uses (v itself, or v rounded to the element type).
template <class Acc, Cols C, int N, class A, class Keep>
inline void buildMinors(const A& a, Acc* m, const int* rows, int from, int to, const Keep& keep)
{
    constexpr Subsets<N> sub = kSubsets<N>;
    if (to > N) __builtin_unreachable();
#pragma GCC unroll 8
    for (int k = from; k <= to; ++k) {
        const int r = rows[k - 1];
#pragma GCC unroll 64
        for (int x = sub.start[k]; x < sub.start[k + 1]; ++x) {
            const int mask = sub.mask[x];
            if (k == 1) {
                m[mask] = keep(k, mask, Acc(a(r, __builtin_ctz(unsigned(mask)))));
                continue;
            }
            Acc s = 0;
            bool first = true, plus = true;
#pragma GCC unroll 8
            for (int i = 0; i < N; ++i) {
                const int c = C == Cols::Descending ? N - 1 - i : i;
                if (!(mask >> c & 1)) continue;
                const Acc term = Acc(a(r, c)) * m[mask & ~(1 << c)];
                s = first ? term : plus ? s + term : s - term;
                first = false;
                plus = !plus;
            }
            m[mask] = keep(k, mask, s);
        }
    }
}

// Minors of rows 0..k-1 over every column set, in the element type, each
// expanded along its last row from the highest column: the element-type
// expansion of the determinant along the last row, whose full entry is the
// determinant itself.
template <class E, int N, class A>
inline void topMinors(const A& a, E* m, int levels = N)
{
    int rows[N];
    for (int i = 0; i < N; ++i) rows[i] = i;
    buildMinors<E, Cols::Descending, N>(a, m, rows, 1, levels, [](int, int, E v) { return v; });
}

}  // namespace orl::expand
