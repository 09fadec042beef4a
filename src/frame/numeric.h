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

#include <cstdint>

#include <xmmintrin.h>

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

// ---- chains and lane sums ------------------------------------------------------

// A chain: +0.0, then term(k) added in ascending k, in the precision of A.
template <class A, class Term>
inline A chainFromZero(int from, int to, const Term& term)
{
    A s = A(0);
    for (int k = from; k < to; ++k) s = s + term(k);
    return s;
}

// ---- sums across lanes: the dot paths of long vectors ------------------------

// 32f lane sum of the products a[k]*b[k], k < K, in single precision.
// Unaligned form (the peel decided by the address of b): below `limit`
// terms, or at an address that is no multiple of 4, a chain from +0.0.
// Otherwise the terms up to b's next 16-byte boundary are summed as a chain
// into lane 0 of the first of two 4-lane accumulators; rounds of 8 add terms
// 0..3 of the round to the first and 4..7 to the second; t = first + second;
// (t0 + t2) + (t1 + t3); then the remaining terms one at a time.
// Aligned form (`aligned`): no peel, and a chain below 8 terms.
inline float laneSum(const float* a, const float* b, int K, int limit, bool aligned)
{
    const auto p = [&](int k) { return a[k] * b[k]; };
    const auto addr = reinterpret_cast<std::uintptr_t>(b);
    if (aligned ? K < 8 : (K < limit || addr % 4 != 0)) return chainFromZero<float>(0, K, p);
    int k = 0;
    __m128 acc0 = _mm_setzero_ps(), acc1 = _mm_setzero_ps();
    if (!aligned && addr % 16 != 0) {
        k = int((16 - addr % 16) / 4);
        acc0 = _mm_set_ss(chainFromZero<float>(0, k, p));
    }
    for (const int end = k + ((K - k) & ~7); k < end; k += 8) {
        acc0 = _mm_add_ps(acc0, _mm_mul_ps(_mm_loadu_ps(a + k), _mm_loadu_ps(b + k)));
        acc1 = _mm_add_ps(acc1, _mm_mul_ps(_mm_loadu_ps(a + k + 4), _mm_loadu_ps(b + k + 4)));
    }
    float t[4];
    _mm_storeu_ps(t, _mm_add_ps(acc0, acc1));
    float s = (t[0] + t[2]) + (t[1] + t[3]);
    for (; k < K; ++k) s = s + p(k);
    return s;
}

// 64f pair sum of the products x[k]*y[k] (the peel decided by the address
// of y): below `limit` terms, or at an address that is no multiple of
// 8, a chain from +0.0. Otherwise, at an address that is no multiple of 16,
// the first term alone is lane 0 of accumulator A; rounds of 8 add terms
// 0, 1 and then 4, 5 to the two lanes of A, terms 2, 3 and then 6, 7 to B;
// then (A0 + B0) + (A1 + B1) and the remaining terms one at a time. The
// aligned form has no peel, and a chain below 8 terms.
inline double pairSum(const double* x, const double* y, int K, int limit, bool aligned)
{
    const auto p = [&](int k) { return x[k] * y[k]; };
    const auto addr = reinterpret_cast<std::uintptr_t>(y);
    if (aligned ? K < 8 : (K < limit || addr % 8 != 0)) return chainFromZero<double>(0, K, p);
    double a[2] = {0, 0}, b[2] = {0, 0};
    int k = 0;
    if (!aligned && addr % 16 != 0) a[0] = p(k++);
    for (const int end = k + ((K - k) & ~7); k < end; k += 8) {
        a[0] = a[0] + p(k), a[1] = a[1] + p(k + 1);
        b[0] = b[0] + p(k + 2), b[1] = b[1] + p(k + 3);
        a[0] = a[0] + p(k + 4), a[1] = a[1] + p(k + 5);
        b[0] = b[0] + p(k + 6), b[1] = b[1] + p(k + 7);
    }
    double s = (a[0] + b[0]) + (a[1] + b[1]);
    for (; k < K; ++k) s = s + p(k);
    return s;
}

// ---- processor estimates ------------------------------------------------------

// The processor's 12-bit estimate of 1/sqrt(s) (+infinity at 0).
inline float rsqrtEstimate(float s)
{
    return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(s)));
}

// 1/d from the processor's reciprocal estimate (about 12 bits) refined by
// one Newton step, y1 = y0 + y0 - d * (y0 * y0), in single precision.
inline float reciprocalEstimate(float d)
{
    const float y0 = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    return (y0 + y0) - d * (y0 * y0);
}

// The same on four values at once: the packed estimate gives each lane the
// bits of the scalar one.
inline __m128 reciprocalEstimate(__m128 d)
{
    const __m128 y0 = _mm_rcp_ps(d);
    return _mm_sub_ps(_mm_add_ps(y0, y0), _mm_mul_ps(d, _mm_mul_ps(y0, y0)));
}

// The reciprocal square root refined by one Newton step,
// y1 = y0 * (t * y0 * y0 - 3) * (-0.5), every operation in single precision.
// No second step and no final correction: about 22 good bits.
inline float rsqrtNewton(float t)
{
    const float y0 = rsqrtEstimate(t);
    return y0 * (t * y0 * y0 - 3.0f) * (-0.5f);
}

// The norm of a sum of squares s without a square root instruction: one
// Newton step on the estimate r, then a multiplication by s, in single
// precision with the products in just this order. No guard: s = 0 gives NaN
// (r is infinite), and so does an infinite s (r is 0).
inline float refinedRoot(float s)
{
    const float r = rsqrtEstimate(s);
    return s * (r * (0.5f * (3.0f - s * (r * r))));
}

// The same on four sums at once: the packed estimate gives each lane the
// bits of the scalar one.
inline __m128 refinedRoot(__m128 s)
{
    const __m128 r = _mm_rsqrt_ps(s);
    return _mm_mul_ps(s, _mm_mul_ps(r, _mm_mul_ps(_mm_set1_ps(0.5f), _mm_sub_ps(_mm_set1_ps(3.0f), _mm_mul_ps(s, _mm_mul_ps(r, r))))));
}

// Four items of four adjacent floats each, turned so that lane g of
// column j holds element j of item g: what lets a straight-line form run on
// four items at once with each lane doing one item's scalar arithmetic.
template <class Row>
inline void columnsOf4(const Row& row, __m128 col[4])
{
    col[0] = _mm_loadu_ps(row(0)), col[1] = _mm_loadu_ps(row(1));
    col[2] = _mm_loadu_ps(row(2)), col[3] = _mm_loadu_ps(row(3));
    _MM_TRANSPOSE4_PS(col[0], col[1], col[2], col[3]);
}

}  // namespace orl
