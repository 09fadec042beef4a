// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <cmath>
#include <cstring>
#include <string_view>
#include <vector>

#include <xmmintrin.h>

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

// ---- determinants and inverses ----------------------------------------------

// Square matrices of order n, row-major.
template <class E>
using Sq = std::vector<E>;

// The singularity tolerance of order n: 2*n^3 units of the smallest normal.
template <class E>
E tolerance(int units)
{
    return E(units) * (sizeof(E) == 4 ? E(0x1p-126f) : E(0x1p-1022));
}
template <class E>
E orderTol(int n) { return tolerance<E>(2 * n * n * n); }

// 1/d by the processor's estimate (the same instruction as the library, its
// bits differ between processor makers) and one Newton step.
inline float recipNewton(float d)
{
    const float y0 = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    return (y0 + y0) - d * (y0 * y0);
}

// The minor over `rows` and `cols` expanded along the last of `rows`, from
// the highest column down, signs + - + ..., in the element type.
template <class E>
E minorLastRow(const Sq<E>& a, int n, std::vector<int> rows, const std::vector<int>& cols)
{
    if (rows.size() == 1) return a[rows[0] * n + cols[0]];
    const int r = rows.back();
    rows.pop_back();
    E s = 0;
    for (int x = int(cols.size()) - 1, sign = 1; x >= 0; --x, sign = -sign) {
        std::vector<int> sub = cols;
        sub.erase(sub.begin() + x);
        const E term = a[r * n + cols[x]] * minorLastRow(a, n, rows, sub);
        s = x == int(cols.size()) - 1 ? term : sign > 0 ? s + term : s - term;
    }
    return s;
}

inline std::vector<int> range(int n, int without = -1)
{
    std::vector<int> v;
    for (int i = 0; i < n; ++i)
        if (i != without) v.push_back(i);
    return v;
}

// The determinant in the extended format at orders 3 to 6: at 3 the written
// forms (32f along row 0, 64f along column 0); at 4 to 6 along the top row of
// the bottom rows, with the documented minors parked in the element type.
template <class E>
Ext minorTopRowExt(const Sq<E>& a, int n, const std::vector<int>& cols)
{
    const int k = int(cols.size()), r = n - k;
    if (k == 1) return a[r * n + cols[0]];
    Ext s = 0;
    for (int x = 0; x < k; ++x) {
        std::vector<int> sub = cols;
        sub.erase(sub.begin() + x);
        const Ext term = Ext(a[r * n + cols[x]]) * minorTopRowExt(a, n, sub);
        s = x == 0 ? term : x % 2 ? s - term : s + term;
    }
    const bool lastPair = k == 2 && cols[0] == n - 2, firstPair = k == 2 && cols[0] == 0 && cols[1] == 1;
    const bool park = k == 2 ? (n == 4 ? firstPair : !lastPair) : k >= 3 && k <= n - 2;
    return park ? Ext(E(s)) : s;
}

template <class E>
E detExtended(const Sq<E>& a, int n)
{
    auto m = [&](int i, int j) { return Ext(a[i * n + j]); };
    if (n == 3 && sizeof(E) == 4)
        return E((m(0, 1) * (m(2, 0) * m(1, 2) - m(1, 0) * m(2, 2)) + m(0, 2) * (m(2, 1) * m(1, 0) - m(2, 0) * m(1, 1))) +
                 m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)));
    if (n == 3)
        return E((m(2, 0) * (m(1, 2) * m(0, 1) - m(1, 1) * m(0, 2)) + m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1))) +
                 m(1, 0) * (m(2, 1) * m(0, 2) - m(2, 2) * m(0, 1)));
    return E(minorTopRowExt(a, n, range(n)));
}

// Gaussian elimination with pivots by strict greater magnitude through a row
// order, multipliers m = a / pivot (or a * (1 / pivot)), in the element type.
// Runs `stages` stages and returns how many passed |pivot| >= tol; `prod`
// is multiplied by each passing pivot (prod = pivot * prod), `sign` negated
// for each exchange.
template <class E>
int eliminate(Sq<E>& a, int n, std::vector<int>& P, int stages, E tol, bool divide, E& prod, E& sign)
{
    for (int k = 0; k < stages; ++k) {
        int b = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[P[i] * n + k]) > std::fabs(a[P[b] * n + k])) b = i;
        if (b != k) std::swap(P[k], P[b]), sign = -sign;
        const E piv = a[P[k] * n + k];
        if (!(std::fabs(piv) >= tol)) return k;
        const E r = E(1) / piv;
        for (int i = k + 1; i < n; ++i) {
            const E m = divide ? a[P[i] * n + k] / piv : a[P[i] * n + k] * r;
            for (int j = k + 1; j < n; ++j) a[P[i] * n + j] = a[P[i] * n + j] - a[P[k] * n + j] * m;
        }
        prod = piv * prod;
    }
    return stages;
}

// ---- bits -----------------------------------------------------------------

template <class E>
bool sameBits(E a, E b)
{
    return std::memcmp(&a, &b, sizeof(E)) == 0;
}

}  // namespace ref
