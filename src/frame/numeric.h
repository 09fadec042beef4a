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
#pragma once

#include <cstdint>
#include <string_view>

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

// ---- sum trees ----------------------------------------------------------------

// The order in which a straight-line path adds its n terms, written as the
// tables of the library write it ("(p0+p2)+(p1+p3)") and kept as a postfix
// program: term indices, and kAdd for "add the two values on top".
struct SumTree {
    static constexpr signed char kAdd = -1;
    signed char op[24]{};
    int len = 0;

    constexpr SumTree(const char* text)
    {
        const char* p = text;
        parseSum(p);
    }

private:
    constexpr void parseTerm(const char*& p)
    {
        while (*p == ' ') ++p;
        if (*p == '(') {
            ++p;
            parseSum(p);
            while (*p == ' ') ++p;
            ++p;  // ')'
        } else {
            ++p;  // 'p', 'q' or 'd': the letter of the terms
            op[len++] = static_cast<signed char>(*p++ - '0');
        }
    }
    constexpr void parseSum(const char*& p)
    {
        parseTerm(p);
        for (;;) {
            while (*p == ' ') ++p;
            if (*p != '+') return;
            ++p;
            parseTerm(p);
            op[len++] = kAdd;
        }
    }
};

// The sum of term(0) ... term(n-1) in the order of `tree`, each addition
// rounded to E. The program is known to the compiler, so this becomes
// straight-line code.
template <SumTree tree, class E, class Term>
[[gnu::always_inline]] inline E sumTree(const Term& term)
{
    E stack[8];
    int sp = 0;
#pragma GCC unroll 24
    for (int i = 0; i < tree.len; ++i) {
        if (tree.op[i] == SumTree::kAdd) {
            stack[sp - 2] = stack[sp - 2] + stack[sp - 1];
            --sp;
        } else {
            stack[sp++] = term(tree.op[i]);
        }
    }
    return stack[0];
}

// A chain: +0.0, then term(k) added in ascending k, in the precision of A.
template <class A, class Term>
inline A chainFromZero(int from, int to, const Term& term)
{
    A s = A(0);
    for (int k = from; k < to; ++k) s = s + term(k);
    return s;
}

// ---- sums across lanes: the dot paths of long vectors ------------------------

// 32f lane sum of p(0) ... p(K-1), in single precision. Unaligned form (the
// peel decided by `addr`, the address of the vector): below `limit` terms,
// or at an address that is no multiple of 4, a chain from +0.0. Otherwise
// the terms up to the next 16-byte boundary are summed as a chain into lane 0
// of the first of two 4-lane accumulators; rounds of 8 add terms 0..3 of the
// round to the first and 4..7 to the second; t = first + second;
// (t0 + t2) + (t1 + t3); then the remaining terms one at a time.
// Aligned form (`aligned`): no peel, and a chain below 8 terms.
template <class Term>
inline float laneSum(int K, std::uintptr_t addr, int limit, bool aligned, const Term& p)
{
    if (aligned ? K < 8 : (K < limit || addr % 4 != 0)) return chainFromZero<float>(0, K, p);
    float a[4] = {0, 0, 0, 0}, b[4] = {0, 0, 0, 0};
    int k = 0;
    if (!aligned && addr % 16 != 0) {
        k = int((16 - addr % 16) / 4);
        a[0] = chainFromZero<float>(0, k, p);
    }
    for (const int end = k + ((K - k) & ~7); k < end; k += 8)
        for (int j = 0; j < 4; ++j) {
            a[j] = a[j] + p(k + j);
            b[j] = b[j] + p(k + 4 + j);
        }
    float t[4];
    for (int j = 0; j < 4; ++j) t[j] = a[j] + b[j];
    float s = (t[0] + t[2]) + (t[1] + t[3]);
    for (; k < K; ++k) s = s + p(k);
    return s;
}

// 64f pair sum: below `limit` terms, or at an address that is no multiple of
// 8, a chain from +0.0. Otherwise, at an address that is no multiple of 16,
// the first term alone is lane 0 of accumulator A; rounds of 8 add terms
// 0, 1 and then 4, 5 to the two lanes of A, terms 2, 3 and then 6, 7 to B;
// then (A0 + B0) + (A1 + B1) and the remaining terms one at a time. The
// aligned form has no peel, and a chain below 8 terms.
template <class Term>
inline double pairSum(int K, std::uintptr_t addr, int limit, bool aligned, const Term& p)
{
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
