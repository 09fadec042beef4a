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

// ---- element-wise sums and scaled sums -------------------------------------

// A sum or difference formed in the extended format and rounded once to E.
template <class E>
E addExt(E a, E b)
{
    return E(Ext(a) + Ext(b));
}

// v1*x + v2*y in the two precision classes of the scaled sums: R rounds each
// product to E and then the sum; X forms products and sum in the extended
// format and rounds once. With v2 absent (Saxpy) the second term is y itself.
template <class E>
E scaledSumR(E v1, E x, E v2, E y)
{
    const E p = v1 * x, q = v2 * y;
    return p + q;
}

template <class E>
E scaledSumX(E v1, E x, E v2, E y)
{
    return E(Ext(v1) * Ext(x) + Ext(v2) * Ext(y));
}

template <class E>
E saxpyR(E v, E x, E y)
{
    const E p = v * x;
    return p + y;
}

template <class E>
E saxpyX(E v, E x, E y)
{
    return E(Ext(v) * Ext(x) + Ext(y));
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
