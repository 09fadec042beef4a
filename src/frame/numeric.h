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

// ---- processor estimates --------------------------------------------------

// 1/sqrt(s) in single precision: the processor's estimate (about 12 bits)
// followed by one Newton step y*(s*y*y - 3)*(-0.5).
inline float rsqrtNewton(float s)
{
    const float y = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(s)));
    return y * (s * y * y - 3.0f) * -0.5f;
}

}  // namespace orl
