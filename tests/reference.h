// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <cstring>
#include <functional>
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


// ---- data movement --------------------------------------------------------

// Orders that test stride0 apart from the other strides name it S; its
// status is that of the strides.
inline orlStatus expectedStatusWithS(std::string_view order, std::string_view failing)
{
    for (char cls : order)
        if (failing.find(cls) != std::string_view::npos) return cls == 'S' ? orlStatusStride : statusOfClass(cls);
    return orlStatusOk;
}

// One row of a check-order table: the member's order, the classes that the
// call makes fail, and the call.
struct OrderCase {
    const char* what;
    const char* order;
    const char* failing;
    std::function<orlStatus()> call;
};

// Copying one element at a time in ascending item, row and column order, as
// bits: what a copy between overlapping places must give. `src(k, i, j)` and
// `dst(k, i, j)` give the elements' addresses.
template <class E, class S, class D>
void forwardCopy(int count, int rows, int cols, S src, D dst)
{
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < cols; ++j) std::memmove(dst(k, i, j), src(k, i, j), sizeof(E));
}

// A bit pattern for element number x: mostly random, every fifth one a
// signalling NaN, which must arrive unchanged where elements are moved as bits.
template <class E>
void patternBits(E* at, unsigned x)
{
    unsigned long long v = (x + 1) * 0x9E3779B97F4A7C15ull;
    v ^= v >> 29;
    if (x % 5 == 3) v = sizeof(E) == 4 ? 0x7f800001ull : 0x7ff0000000000001ull;
    std::memcpy(at, &v, sizeof(E));  // little-endian: the low bytes
}

}  // namespace ref
