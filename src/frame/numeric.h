// Numeric kinds: how a sum of products is formed and where it is rounded.
//
// Every kind adds the K products of one result element in ascending k, left
// to right, with no pairwise or split sums and no fused multiply-add. The
// kinds differ in the precision of the running value and in where it lives:
//
//   Packed      element precision; the sum starts with the first product
//               (the scalar form of one lane of the vector code), so that
//               K products cost 2K-1 roundings.
//   Extended    elements widened to the 80-bit format, products and sums
//               there, one rounding on the store. The sum starts with the
//               first product.
//   Blocked     element precision; an accumulator starts at +0.0 and every
//               product is added to it; stored once.
//   Running     as Blocked in value, but the destination is cleared first
//               and the running value is stored to it after every product.
//   ThroughDst  the destination is cleared first; each step adds the widened
//               product to the widened destination in the 80-bit format and
//               rounds the result back into the destination (K roundings).
//
// Running and ThroughDst touch the destination while they read the sources,
// which is what a caller sees when a destination overlaps a source.
//
// The packed matrix-vector paths add their products in the order that the
// lanes of their data arrangement give, not in ascending k: a sum tree per
// size, written below as the sum it stands for and read at compile time.
#pragma once

namespace orl {

enum class Num { Packed, Extended, Blocked, Running, ThroughDst };

// The processor's extended format (64-bit significand on both ABIs).
using Ext = long double;

// Value of the kinds that store once: Packed, Extended, Blocked. a(k) and
// b(k) give the two factors of product k; K >= 1. The loops are unrolled
// where K is a size known to the compiler (the straight-line forms).
template <Num kind, class E, class Fa, class Fb>
inline E sumOfProducts(int K, const Fa& a, const Fb& b)
{
    static_assert(kind == Num::Packed || kind == Num::Extended || kind == Num::Blocked);
    if constexpr (kind == Num::Packed) {
        E s = a(0) * b(0);
#pragma GCC unroll 8
        for (int k = 1; k < K; ++k) s = s + a(k) * b(k);
        return s;
    } else if constexpr (kind == Num::Extended) {
        Ext s = Ext(a(0)) * Ext(b(0));
#pragma GCC unroll 8
        for (int k = 1; k < K; ++k) s = s + Ext(a(k)) * Ext(b(k));
        return E(s);
    } else {
        E s = E(0);
        for (int k = 0; k < K; ++k) s = s + a(k) * b(k);
        return s;
    }
}

// One result element of any kind, written into `d`.
template <Num kind, class E, class Fa, class Fb>
inline void productsInto(E& d, int K, const Fa& a, const Fb& b)
{
    if constexpr (kind == Num::Running) {
        d = E(0);
        E r = E(0);
        for (int k = 0; k < K; ++k) {
            r = r + a(k) * b(k);
            d = r;
        }
    } else if constexpr (kind == Num::ThroughDst) {
        d = E(0);
        for (int k = 0; k < K; ++k) d = E(Ext(a(k)) * Ext(b(k)) + Ext(d));
    } else {
        d = sumOfProducts<kind, E>(K, a, b);
    }
}

// A sum of products followed by one addend, y = sum + b: the last step in the
// kind's own arithmetic. Packed and Blocked add in element precision after
// the sum is rounded; Extended adds in the 80-bit format and rounds once;
// Running and ThroughDst add to what the destination holds, reading `b()`
// only after the sum has gone through the destination.
template <Num kind, class E, class Fa, class Fb, class Fc>
inline void productsPlus(E& d, int K, const Fa& a, const Fb& b, const Fc& addend)
{
    if constexpr (kind == Num::Extended) {
        Ext s = Ext(a(0)) * Ext(b(0));
#pragma GCC unroll 8
        for (int k = 1; k < K; ++k) s = s + Ext(a(k)) * Ext(b(k));
        d = E(s + Ext(addend()));
    } else if constexpr (kind == Num::ThroughDst) {
        productsInto<kind, E>(d, K, a, b);
        d = E(Ext(d) + Ext(addend()));
    } else if constexpr (kind == Num::Running) {
        productsInto<kind, E>(d, K, a, b);
        d = d + addend();
    } else {
        d = sumOfProducts<kind, E>(K, a, b) + addend();
    }
}

// ---- sum trees ------------------------------------------------------------

// The order of the additions of one sum of products p0 .. p(n-1), written as
// the sum itself, "(p0+p2)+(p1+p3)", and read into nodes at compile time. A
// node is a leaf (product `leaf`) or the sum of two nodes, left plus right.
struct Tree {
    struct Node {
        signed char leaf = -1, l = -1, r = -1;
    };
    Node node[16]{};
    int n = 0, root = 0;

    constexpr Tree(const char* s)
    {
        int pos = 0;
        root = sum(s, pos);
    }
    // Number of products: each of p0 .. p(n-1) must occur once.
    constexpr int leaves() const
    {
        int c = 0;
        for (int i = 0; i < n; ++i) c += node[i].leaf >= 0;
        return c;
    }
    constexpr bool usesEachOnce() const
    {
        unsigned seen = 0;
        for (int i = 0; i < n; ++i)
            if (node[i].leaf >= 0) {
                if ((seen >> node[i].leaf) & 1u) return false;
                seen |= 1u << node[i].leaf;
            }
        return seen == (1u << leaves()) - 1;
    }

private:
    static constexpr void blanks(const char* s, int& pos)
    {
        while (s[pos] == ' ') ++pos;
    }
    // sum := term ('+' term)*, left to right
    constexpr int sum(const char* s, int& pos)
    {
        int a = term(s, pos);
        for (blanks(s, pos); s[pos] == '+'; blanks(s, pos)) {
            ++pos;
            const int b = term(s, pos);
            node[n] = {-1, static_cast<signed char>(a), static_cast<signed char>(b)};
            a = n++;
        }
        return a;
    }
    // term := '(' sum ')' | 'p' digit
    constexpr int term(const char* s, int& pos)
    {
        blanks(s, pos);
        if (s[pos] == '(') {
            ++pos;
            const int a = sum(s, pos);
            blanks(s, pos);
            ++pos;  // ')'
            return a;
        }
        ++pos;  // 'p'
        node[n] = {static_cast<signed char>(s[pos++] - '0'), -1, -1};
        return n++;
    }
};

// The trees of sizes 3, 4, 5, 6.
struct Trees {
    Tree at[4];
    constexpr const Tree& of(int n) const { return at[n - 3]; }
};

// Sums across a row of the matrix (matrix letters m in 32f), down a column
// (letters t in 32f), and by pairs of lanes (64f).
//                              size 3        size 4             size 5                   size 6
inline constexpr Trees kRowTree{{"(p0+p1)+p2", "(p0+p2)+(p1+p3)", "((p0+p1)+p4)+(p2+p3)", "((p0+p2)+p4)+((p1+p3)+p5)"}};
inline constexpr Trees kColumnTree{{"(p0+p1)+p2", "(p0+p1)+(p2+p3)", "((p0+p1)+p4)+(p2+p3)", "((p0+p1)+(p2+p3))+(p4+p5)"}};
inline constexpr Trees kPairTree{{"(p0+p1)+p2", "(p0+p1)+(p2+p3)", "((p0+p1)+(p2+p3))+p4", "((p0+p1)+(p2+p3))+(p4+p5)"}};

constexpr bool treesWellFormed(const Trees& t)
{
    for (int n = 3; n <= 6; ++n)
        if (t.of(n).leaves() != n || !t.of(n).usesEachOnce()) return false;
    return true;
}
static_assert(treesWellFormed(kRowTree) && treesWellFormed(kColumnTree) && treesWellFormed(kPairTree),
              "a sum tree of size n adds each of p0 .. p(n-1) once");

// The sum of p[0 .. n-1] in the order of tree T: straight-line code, for any
// value type with the addition `add` (element values or vectors of lanes,
// each lane then summed in the same order).
template <Tree T, int i = T.root, class V, class Add>
[[gnu::always_inline]] inline V treeSum(const V* p, const Add& add)
{
    constexpr Tree::Node nd = T.node[i];
    if constexpr (nd.leaf >= 0)
        return p[nd.leaf];
    else
        return add(treeSum<T, nd.l>(p, add), treeSum<T, nd.r>(p, add));
}

}  // namespace orl
