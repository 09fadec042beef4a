// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <cstring>
#include <string_view>

#include "orlm.h"

namespace ref {

using Ext = long double;  // the 80-bit extended format on both ABIs

// ---- sums of products -----------------------------------------------------

// Element precision, ascending k, starting from the first product
// (2K-1 roundings).
template <class E, class F>
E sumElem(int K, F term)
{
    E s = term(0);
    for (int k = 1; k < K; ++k) s = s + term(k);
    return s;
}

// Element precision, ascending k, starting from +0.0 (2K roundings; differs
// from sumElem only in the sign of a zero sum of negative zeros).
template <class E, class F>
E sumElemFromZero(int K, F term)
{
    E s = E(0);
    for (int k = 0; k < K; ++k) s = s + term(k);
    return s;
}

// Extended format, ascending k, one rounding at the end. `term(k)` returns
// the term already formed in the extended format.
template <class E, class F>
E sumExt(int K, F term)
{
    Ext s = term(0);
    for (int k = 1; k < K; ++k) s = s + term(k);
    return E(s);
}

// Dot products of two element sequences in each precision.
template <class E, class A, class B>
E dotElem(int K, A a, B b)
{
    return sumElem<E>(K, [&](int k) { return E(a(k) * b(k)); });
}

template <class E, class A, class B>
E dotExt(int K, A a, B b)
{
    return sumExt<E>(K, [&](int k) { return Ext(a(k)) * Ext(b(k)); });
}

// A double-rounding witness for 64f: with a = 1 and b = 2^-53 + 2^-65,
// a + b in double is 1 + 2^-52, while a + b formed in the extended format
// (which rounds to 1 + 2^-53, a tie) and then rounded to double is 1.0.
inline constexpr double kWitnessA = 1.0, kWitnessB = 0x1p-53 + 0x1p-65;

// ---- matrix-vector sums: trees, through the destination, the dot path ----

// Products p[0 .. n-1], already rounded, added in the order of the packed
// matrix-vector paths: across a row (32f m letters), down a column (32f t
// letters), by pairs (64f). Sizes 3 to 6.
enum class Tree { Row, Column, Pair };

template <class E>
E treeSum(Tree t, const E* p, int n)
{
    switch (n) {
    case 3: return (p[0] + p[1]) + p[2];
    case 4: return t == Tree::Row ? (p[0] + p[2]) + (p[1] + p[3]) : (p[0] + p[1]) + (p[2] + p[3]);
    case 5: return t == Tree::Pair ? ((p[0] + p[1]) + (p[2] + p[3])) + p[4] : ((p[0] + p[1]) + p[4]) + (p[2] + p[3]);
    case 6: return t == Tree::Row ? ((p[0] + p[2]) + p[4]) + ((p[1] + p[3]) + p[5])
                                  : ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]);
    }
    return E(0);
}

// Through the destination: d = +0.0, then for each k d = round(a*b + d)
// formed in the extended format.
template <class E, class A, class B>
E dotThroughDst(int K, A a, B b)
{
    E d = E(0);
    for (int k = 0; k < K; ++k) d = E(Ext(a(k)) * Ext(b(k)) + Ext(d));
    return d;
}

// Element precision from +0.0 (blocked and running scalar kinds).
template <class E, class A, class B>
E dotFromZero(int K, A a, B b)
{
    return sumElemFromZero<E>(K, [&](int k) { return E(a(k) * b(k)); });
}

// The dot path of the 32f matrix-vector kernel: x's address decides. Aligned
// (all bases and strides multiples of 16): K < 8 a chain from +0.0; else two
// 4-lane sums over blocks of 8 from 0, lane sums t = acc0 + acc1,
// (t0+t2)+(t1+t3), then the rest one at a time. Unaligned: K < 11 (or x not
// on an element boundary) a chain from +0.0; else the elements up to x's next
// 16-byte boundary summed from +0.0 into lane 0 of the first sum, then as
// above.
inline float dotPath32f(int K, const float* r, const float* x, bool aligned)
{
    auto chain = [&](int from, int to) {
        float s = 0.0f;
        for (int k = from; k < to; ++k) s = s + r[k] * x[k];
        return s;
    };
    const unsigned long ax = reinterpret_cast<unsigned long>(x);
    if (aligned ? K < 8 : (K < 11 || ax % 4 != 0)) return chain(0, K);
    float acc[2][4] = {};
    int start = 0;
    if (!aligned && ax % 16 != 0) {
        start = int(16 - ax % 16) / 4;
        acc[0][0] = chain(0, start);
    }
    const int end = start + ((K - start) / 8) * 8;
    for (int k = start; k < end; k += 8)
        for (int l = 0; l < 4; ++l) {
            acc[0][l] = acc[0][l] + r[k + l] * x[k + l];
            acc[1][l] = acc[1][l] + r[k + 4 + l] * x[k + 4 + l];
        }
    float t[4];
    for (int l = 0; l < 4; ++l) t[l] = acc[0][l] + acc[1][l];
    float s = (t[0] + t[2]) + (t[1] + t[3]);
    for (int k = end; k < K; ++k) s = s + r[k] * x[k];
    return s;
}

// ---- check classes --------------------------------------------------------

// The status of a check class letter.
constexpr orlStatus statusOfClass(char cls)
{
    switch (cls) {
    case 'N': return orlStatusNullPointer;
    case 'C': return orlStatusCount;
    case 'Z': return orlStatusSize;
    case 'R': return orlStatusSizeMismatch;
    case 'T': return orlStatusStride;
    case 'O': return orlStatusOffset;
    }
    return orlStatusOk;
}

// What a member whose checks run in `order` returns when the classes in
// `failing` fail: the first failing class in the member's order.
inline orlStatus expectedStatus(std::string_view order, std::string_view failing)
{
    for (char cls : order)
        if (failing.find(cls) != std::string_view::npos) return statusOfClass(cls);
    return orlStatusOk;
}

// ---- bits -----------------------------------------------------------------

template <class E>
bool sameBits(E a, E b)
{
    return std::memcmp(&a, &b, sizeof(E)) == 0;
}

}  // namespace ref
