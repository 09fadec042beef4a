// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
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

// ---- general eigenproblems ------------------------------------------------

// Largest |(M v)_r - lambda v_r| over the rows for a real n-by-n matrix
// m(r, c) and a complex vector v(r).
template <class M, class V>
double eigenResidual(int n, M m, std::complex<double> lambda, V v)
{
    double worst = 0;
    for (int r = 0; r < n; ++r) {
        std::complex<double> s = 0;
        for (int c = 0; c < n; ++c) s += m(r, c) * v(c);
        worst = std::max(worst, std::abs(s - lambda * v(r)));
    }
    return worst;
}

// The two eigenvalues that the general eigenvalue family reads off an
// unsplit 2-by-2 block (a b; c d) of its working matrix, transcribed from the
// steps of the standardisation: exact-zero tests against the safe minimum,
// equal diagonals always a complex pair, the rotation to equal diagonals
// with the offset q of the unrotated block. 32f forms the root of the
// hypotenuse and the rotation's cosine in double.
template <class E>
std::array<std::complex<E>, 2> standardisedRoots(E a, E b, E c, E d)
{
    std::array<std::complex<E>, 2> out;
    const bool f32 = sizeof(E) == 4;
    const E safmin = f32 ? E(1.1754943508222875e-38) : E(2.2250738585072014e-308);
    const E ulp4 = f32 ? E(4.76837158203125e-07) : E(8.881784197001252e-16);
    const auto hyp = [&](E x, E y) {
        const E w = std::max(std::fabs(x), std::fabs(y)), z = std::min(std::fabs(x), std::fabs(y));
        if (z >= safmin) return E(w * E(std::sqrt(double(z) * double(z) / (double(w) * double(w)) + 1.0)));
        return w;
    };
    const auto sgn = [](E x) { return x >= E(0) ? 1 : -1; };
    const auto pairOf = [&](E re, E bb, E cc) {
        const E w = std::sqrt(std::fabs(bb)) * std::sqrt(std::fabs(cc));
        out[0] = {re, w}, out[1] = {re, -w};
        return out;
    };
    if (std::fabs(c) <= safmin) {
        out[0] = {a, 0}, out[1] = {d, 0};
    } else if (std::fabs(b) <= safmin) {
        out[0] = {d, 0}, out[1] = {a, 0};
    } else if (std::fabs(a - d) <= safmin) {
        const E w = std::sqrt(std::fabs(c)) * std::sqrt(std::fabs(b));
        out[0] = {a, w}, out[1] = {d, -w};
    } else {
        const E t = a - d, q = E(0.5) * t;
        const E bcmax = std::max(std::fabs(b), std::fabs(c));
        const E bcmis = std::min(std::fabs(b), std::fabs(c)) * E(sgn(b) * sgn(c));
        const E scale = std::max(std::fabs(q), bcmax);
        E z = (q / scale) * q + (bcmax / scale) * bcmis;
        if (z >= ulp4) {
            z = q > 0 ? q + std::sqrt(scale) * std::sqrt(z) : q - std::sqrt(scale) * std::sqrt(z);
            out[0] = {d + z, 0}, out[1] = {d - (bcmax / z) * bcmis, 0};
        } else {
            const E sigma = b + c, tau = hyp(sigma, t);
            const E cs = E(std::sqrt((double(std::fabs(sigma)) / double(tau) + 1.0) * 0.5));
            const E sn = -(q / (tau * cs)) * E(sgn(sigma));
            const E aa = a * cs + b * sn, bb = b * cs - a * sn, cc = c * cs + d * sn, dd = d * cs - c * sn;
            const E b2 = bb * cs + dd * sn, c2 = cc * cs - aa * sn;
            const E temp = E(0.5) * (aa * cs + cc * sn + (dd * cs - bb * sn));
            const bool big = std::fabs(b2) > safmin && std::fabs(c2) > safmin;
            if (big && sgn(b2) != sgn(c2)) return pairOf(temp, b2, c2);
            const E p = big ? (c2 >= 0 ? q : -q) : E(0);
            out[0] = {temp + p, 0}, out[1] = {temp - p, 0};
        }
    }
    return out;
}

// ---- symmetric eigenproblem of order 2 -------------------------------------

// The closed form of order 2 from a = (0,0), b = (0,1), d = (1,1), in the
// arithmetic type A: the values in their unsorted order and the vectors by
// the single-matrix formula or the array formula. `rootsInDouble` forms
// sqrt(u*u + 1) in double; `testEps` is the bound of the singularity test.
template <class A>
struct SymOrder2 {
    bool singular;
    A l0, l1;
    A q[2][2];  // q[r][c]: component r of vector c
};

template <class A, bool rootsInDouble>
SymOrder2<A> symOrder2(A a, A b, A d, A eps, A testEps, bool arrayForm)
{
    SymOrder2<A> o{};
    const A D = a * d - b * b;
    if (testEps >= std::fabs(D)) return o.singular = true, o;
    const A t = a - d, s = a + d, b2 = 2 * b, r = std::sqrt(t * t + b2 * b2);
    int g = +1;
    if (s > eps) {
        o.l0 = (s + r) * A(0.5);
        o.l1 = (a * d - b * b) / o.l0;
    } else if (s >= -eps) {
        o.l0 = A(0.5) * r;
        o.l1 = A(-0.5) * r;
    } else {
        o.l0 = A(0.5) * (s - r);
        o.l1 = (a * d - b * b) / o.l0;
        g = -1;
    }
    const auto root = [](A u) { return rootsInDouble ? A(std::sqrt(double(u) * double(u) + 1.0)) : std::sqrt(u * u + 1); };
    const int h = arrayForm || t >= -eps ? +1 : -1;
    const A c = h == +1 ? t + r : t - r;
    A cs, sn;
    if (std::fabs(c) > (arrayForm ? A(0) : std::fabs(b2))) {
        const A u = -b2 / c;
        cs = 1 / root(u), sn = u * cs;
    } else if (eps >= std::fabs(b2)) {
        sn = 1, cs = 0;
    } else {
        const A u = -c / b2;
        sn = 1 / root(u), cs = u * sn;
    }
    A p, q;
    if (arrayForm)
        p = g == +1 ? -cs : sn, q = g == +1 ? sn : cs;
    else if (g != h)
        p = sn, q = cs;
    else
        p = -cs, q = sn;
    o.q[0][0] = p, o.q[1][0] = q, o.q[0][1] = -q, o.q[1][1] = p;
    return o;
}

// ---- bits -----------------------------------------------------------------

template <class E>
bool sameBits(E a, E b)
{
    return std::memcmp(&a, &b, sizeof(E)) == 0;
}

}  // namespace ref
