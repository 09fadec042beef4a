// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <algorithm>
#include <cstdint>
#include <array>
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <numeric>
#include <random>
#include <string_view>
#include <utility>
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

// ---- matrix-vector sums: trees, through the destination, the dot path ----

// The orders of the packed matrix-vector paths at sizes 3 to 6, for
// sumInOrder: across a row (32f m letters), down a column (32f t letters),
// by pairs (64f). Through the destination and the other scalar kinds are
// ref::dot's kinds; the 32f dot path of long rows is laneSum.
enum class Tree { Row, Column, Pair };

inline const char* treeOrder(Tree t, int n)
{
    static const char* const orders[3][4] = {
        {"(p0+p1)+p2", "(p0+p2)+(p1+p3)", "((p0+p1)+p4)+(p2+p3)", "((p0+p2)+p4)+((p1+p3)+p5)"},
        {"(p0+p1)+p2", "(p0+p1)+(p2+p3)", "((p0+p1)+p4)+(p2+p3)", "((p0+p1)+(p2+p3))+(p4+p5)"},
        {"(p0+p1)+p2", "(p0+p1)+(p2+p3)", "((p0+p1)+(p2+p3))+p4", "((p0+p1)+(p2+p3))+(p4+p5)"}};
    return orders[int(t)][n - 3];
}

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

// ---- processor estimates --------------------------------------------------

// Reciprocal square root: the processor's estimate (its bits depend on the
// processor maker, so the reference takes it from the same instruction), then
// one Newton step y0 * (t * y0 * y0 - 3) * (-0.5) in single precision.
inline float rsqrtEstimateNewton(float t)
{
    const float y0 = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(t)));
    return y0 * (t * y0 * y0 - 3.0f) * (-0.5f);
}

// 1 / sqrt(t) formed in the extended format and rounded once.
template <class E>
E rsqrtExt(E t)
{
    return E(Ext(1) / __builtin_sqrtl(Ext(t)));
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

// The determinant: orders 3 to 6 expanded, in the extended forms or in the
// element type along the last row; other orders eliminated with division,
// where a small pivot gives 0.0 or (`array`) a sign of 0 and goes on to the
// test of the last element.
template <class E>
double determinant(const std::vector<double>& src, int n, bool extendedForms, bool array)
{
    Sq<E> a(src.begin(), src.end());
    if (n >= 3 && n <= 6) return extendedForms ? detExtended(a, n) : minorLastRow(a, n, range(n), range(n));
    std::vector<int> P = range(n);
    const E tol = orderTol<E>(n);
    E d = 1, sign = 1;
    if (eliminate(a, n, P, n - 1, tol, true, d, sign) < n - 1) {
        if (!array) return 0.0;
        sign = 0;
    }
    const E x = a[P[n - 1] * n + n - 1];
    return tol >= std::fabs(x) ? E(0) : d * (x * sign);
}

// The singularity tests of the inverse: a tested value v (a pivot or a
// determinant) fails when tol > |v|, tol >= |v|, not |v| >= tol or not
// |v| > tol (the last two fail a NaN).
enum class Sense { TolAbove, TolAtLeast, NotAtLeast, NotAbove };

template <class E>
bool singularBy(Sense s, E v, E tol)
{
    const E m = std::fabs(v);
    return s == Sense::TolAbove ? tol > m : s == Sense::TolAtLeast ? tol >= m : s == Sense::NotAtLeast ? !(m >= tol) : !(m > tol);
}

// The inverse by the adjugate: D along the last row, each element a cofactor
// times 1/D (32f: with `estimate`, the estimate and its Newton step).
template <class E>
bool adjugateInverse(const Sq<E>& a, int n, Sense s, bool estimate, E tol, Sq<E>& inv)
{
    const E D = minorLastRow(a, n, range(n), range(n));
    if (singularBy(s, D, tol)) return false;
    E q = E(1) / D;
    if constexpr (sizeof(E) == 4)
        if (estimate) q = recipNewton(D);
    inv.assign(n * n, 0);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const E c = minorLastRow(a, n, range(n, i), range(n, j)) * q;
            inv[j * n + i] = (i + j) % 2 ? -c : c;
        }
    return true;
}

// The 32f block inverse: the pivot of row 0 (columns 3, 2, 1, 0 with ties to
// the earlier, then 4 and 5 only when strictly greater; `force` overrides),
// its Schur complement inverted by the adjugate at order 4 or by this method.
inline bool blockInverse(Sq<float> a, int n, float tol, Sq<float>& inv, int force = -1)
{
    const int scan[] = {3, 2, 1, 0, 4, 5};
    int pc = scan[0];
    for (int x = 1; x < n; ++x)
        if (std::fabs(a[scan[x]]) > std::fabs(a[pc])) pc = scan[x];
    if (force >= 0) pc = force;
    if (!(std::fabs(a[pc]) >= tol)) return false;
    for (int i = 0; i < n; ++i) std::swap(a[i * n], a[i * n + pc]);
    const int m = n - 1;
    const float p = recipNewton(a[0]);
    Sq<float> S(m * m), Si;
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < m; ++j) S[i * m + j] = a[(i + 1) * n + j + 1] - (a[(i + 1) * n] * p) * a[j + 1];
    if (!(m == 4 ? adjugateInverse(S, 4, Sense::NotAtLeast, true, tol, Si) : blockInverse(S, m, tol, Si))) return false;
    const auto dot = [m](auto x, auto y) { return sumElem<float>(m, [&](int k) { return x(k) * y(k); }); };
    const auto col0 = [&](int k) { return a[(k + 1) * n]; };
    std::vector<float> w(m);
    for (int j = 0; j < m; ++j) w[j] = dot([&](int k) { return a[k + 1]; }, [&](int k) { return Si[k * m + j]; });
    inv.assign(n * n, 0);
    inv[0] = p + (p * dot([&](int k) { return w[k]; }, col0)) * p;
    for (int i = 0; i < m; ++i) {
        inv[i + 1] = -(w[i] * p);
        inv[(i + 1) * n] = -(dot([&](int k) { return Si[i * m + k]; }, col0) * p);
        for (int j = 0; j < m; ++j) inv[(i + 1) * n + j + 1] = Si[i * m + j];
    }
    for (int j = 0; j < n; ++j) std::swap(inv[j], inv[pc * n + j]);
    return true;
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

// ---- data ------------------------------------------------------------------

// A value in (-1, 1) times 2^e, e drawn from [-spread/2, spread/2): exponents
// far enough apart that sums in different orders or precisions differ in
// the last bit.
template <class E>
E wild(std::mt19937& g, int spread)
{
    std::uniform_real_distribution<double> u(-1, 1);
    return E(std::ldexp(u(g), int(g() % unsigned(spread)) - spread / 2));
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

// ---- sums in a stated order: dot products, norms, trace ---------------------

namespace ref {

// A sum of terms t[k] in the order written as "(p0+p2)+(p1+p3)" (any letter
// before the index), each addition rounded to E.
template <class E>
E sumParsed(const char*& s, const E* t)
{
    auto term = [&]() -> E {
        while (*s == ' ') ++s;
        if (*s == '(') {
            ++s;
            const E v = sumParsed(s, t);
            ++s;
            return v;
        }
        ++s;
        return t[*s++ - '0'];
    };
    E v = term();
    while (*s == '+') {
        ++s;
        v = E(v + term());
    }
    return v;
}

template <class E>
E sumInOrder(const char* tree, const E* t)
{
    return sumParsed(tree, t);
}

// +0.0, then every term in ascending order.
template <class E>
E chainFromZero(int n, const E* t)
{
    E s = E(0);
    for (int k = 0; k < n; ++k) s = E(s + t[k]);
    return s;
}

// The 32f lane sum of long dot products: a chain below `limit` (or at an
// address that is no multiple of 4); else the terms before the next 16-byte
// boundary of `addr` as a chain into lane 0, rounds of 8 into two 4-lane
// accumulators (terms 0-3 of a round into the first, 4-7 into the second),
// t = first + second, (t0 + t2) + (t1 + t3), then the rest one by one. The
// aligned form has no peel and a limit of 8.
inline float laneSum(const float* t, int n, std::uintptr_t addr, int limit, bool aligned)
{
    if (n < (aligned ? 8 : limit) || (!aligned && addr % 4)) return chainFromZero(n, t);
    float u[4] = {}, v[4] = {};
    int k = aligned || addr % 16 == 0 ? 0 : int(16 - addr % 16) / 4;
    u[0] = chainFromZero(k, t);
    for (; k + 8 <= n; k += 8)
        for (int j = 0; j < 4; ++j) u[j] += t[k + j], v[j] += t[k + 4 + j];
    float s = ((u[0] + v[0]) + (u[2] + v[2])) + ((u[1] + v[1]) + (u[3] + v[3]));
    for (; k < n; ++k) s += t[k];
    return s;
}

// The 64f pair sum: a chain below `limit` (or at an address no multiple of 8);
// else, at an address no multiple of 16, the first term alone in lane 0 of A;
// rounds of 8: terms 0, 1, 4, 5 into A's lanes, 2, 3, 6, 7 into B's; then
// (A0 + B0) + (A1 + B1) and the rest one by one.
inline double pairSum(const double* t, int n, std::uintptr_t addr, int limit, bool aligned)
{
    if (n < (aligned ? 8 : limit) || (!aligned && addr % 8)) return chainFromZero(n, t);
    double a0 = 0, a1 = 0, b0 = 0, b1 = 0;
    int k = 0;
    if (!aligned && addr % 16) a0 = t[k++];
    for (; k + 8 <= n; k += 8) {
        a0 += t[k], a1 += t[k + 1], b0 += t[k + 2], b1 += t[k + 3];
        a0 += t[k + 4], a1 += t[k + 5], b0 += t[k + 6], b1 += t[k + 7];
    }
    double s = (a0 + b0) + (a1 + b1);
    for (; k < n; ++k) s += t[k];
    return s;
}

// The refined root: the processor's reciprocal square root estimate r of s,
// one Newton step, times s: s * (r * (0.5 * (3 - s * (r * r)))).
inline float refinedRoot(float s)
{
    const float r = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(s)));
    return s * (r * (0.5f * (3.0f - s * (r * r))));
}

}  // namespace ref

// ---- numeric kinds, orders, routes, LU ----------------------------------------

namespace ref {

// ---- numeric kinds by name ----------------------------------------------------

// The kinds of a sum of K products a(k) * b(k), always in ascending k:
//   Packed      element precision from the first product (dotElem)
//   Extended    80-bit products and sums, one rounding (dotExt)
//   Blocked     element precision from +0.0; a running value stored after
//               every product has the same bits
//   ThroughDst  +0.0, then each widened product added to the widened value
//               and rounded back to the element type (K roundings)
// Packed and Blocked differ only in the sign of a zero sum of -0.0 products.
enum class Num { Packed, Extended, Blocked, ThroughDst };

template <class E, class A, class B>
E dot(Num kind, int K, A a, B b)
{
    switch (kind) {
    case Num::Packed: return dotElem<E>(K, a, b);
    case Num::Extended: return dotExt<E>(K, a, b);
    case Num::Blocked: return sumElemFromZero<E>(K, [&](int k) { return E(a(k) * b(k)); });
    case Num::ThroughDst: break;
    }
    E d = E(0);
    for (int k = 0; k < K; ++k) d = E(Ext(a(k)) * Ext(b(k)) + Ext(d));
    return d;
}

// The general order of the classes: arrays test the count, members with a
// relation between sizes test it after the sizes, the standard layout has
// strides, _P and _L offsets too (single _P items have no strides).
inline std::string_view generalOrder(bool array, bool standard, bool relation = false)
{
    static constexpr std::string_view orders[2][2][2] = {
        {{"NZO", "NZT"}, {"NZRO", "NZRT"}}, {{"NCZTO", "NCZT"}, {"NCZRTO", "NCZRT"}}};
    return orders[array][relation][standard];
}

// ---- route ------------------------------------------------------------------

// The largest count whose cost stays on the calling thread: the driver is
// taken when cost(count) >= limit (ge) or > limit.
template <class Cost>
int lastSerialCount(Cost cost, long long limit, bool ge)
{
    int n = 1;
    while (ge ? cost(n + 1) < limit : cost(n + 1) <= limit) ++n;
    return n;
}

// ---- LU decomposition and back-substitution -------------------------------------

// Matrices are n*n doubles in physical row-major order, holding values of
// the element type E. Rows never move: logical row i of a factor lies in
// physical row perm[i]. Two paths with different rules, by size:
//   unrolled (3 to 6)  a private copy; exchange, then |pivot| >= 2^-125
//                      (64f 2^-1021); stage 0 updated in extended; the final
//                      test at physical (n-1, n-1); dst rows written as they
//                      become final, or in _P all at once on success
//   general            in dst itself; |pivot| > 2^-23 (64f 2^-52), then the
//                      exchange; every update in extended; the final test at
//                      (perm[n-1], n-1)
struct LU {
    orlStatus st;
    std::vector<double> dst;
    std::vector<std::int32_t> perm;
};

constexpr bool unrolledSize(int n) { return n >= 3 && n <= 6; }

template <class E>
LU luDecomp(int n, const std::vector<double>& src, bool pLayout, double untouched)
{
    const bool un = unrolledSize(n);
    const E tol = E(std::ldexp(1.0, un ? (sizeof(E) == 4 ? -125 : -1021) : (sizeof(E) == 4 ? -23 : -52)));
    const auto passes = [&](E v) { return un ? std::fabs(v) >= tol : std::fabs(v) > tol; };
    std::vector<E> a(src.begin(), src.end());
    LU r{orlStatusOk, std::vector<double>(n * n, untouched), std::vector<std::int32_t>(n)};
    std::vector<std::int32_t>& p = r.perm;
    std::iota(p.begin(), p.end(), 0);
    const auto final = [&](int row) {
        if (un && !pLayout) std::copy(a.begin() + row * n, a.begin() + row * n + n, r.dst.begin() + row * n);
    };
    const auto out = [&](orlStatus st) {
        if (!un || (pLayout && st == orlStatusOk)) r.dst.assign(a.begin(), a.end());
        r.st = st;
        return r;
    };
    for (int k = 0; k < n - 1; ++k) {
        int best = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[p[i] * n + k]) > std::fabs(a[p[best] * n + k])) best = i;
        const E pivot = a[p[best] * n + k];
        if (un) std::swap(p[k], p[best]);
        if (!passes(pivot)) return out(orlStatusSingular);
        if (!un) std::swap(p[k], p[best]);
        const int pk = p[k];
        const E rcp = E(1) / a[pk * n + k];
        final(pk);
        for (int i = k + 1; i < n; ++i) {
            E* row = &a[p[i] * n];
            row[k] = row[k] * rcp;
            for (int j = k + 1; j < n; ++j)
                row[j] = !un || k == 0 ? E(Ext(row[j]) - Ext(row[k]) * Ext(a[pk * n + j])) : row[j] - row[k] * a[pk * n + j];
        }
    }
    if (!passes(un ? a[n * n - 1] : a[p[n - 1] * n + n - 1])) return out(orlStatusSingular);
    final(p[n - 1]);
    return out(orlStatusOk);
}

// Solves with a factor and its perm; the right-hand side is read through perm.
//   unrolled  term by term, the upper part backward from the highest column,
//             times 1/diagonal (formed by true division)
//   general   sums from +0.0 in ascending column, one subtraction, a true
//             division for every unknown
template <class E>
std::vector<double> luSolve(int n, const std::vector<double>& f, const std::vector<std::int32_t>& p,
                            const std::vector<double>& rhs)
{
    const auto A = [&](int i, int j) { return E(f[p[i] * n + j]); };  // logical row i
    std::vector<E> x(n);
    for (int i = 0; i < n; ++i) x[i] = E(rhs[p[i]]);
    for (int i = 0; i < n; ++i) {
        if (unrolledSize(n))
            for (int j = 0; j < i; ++j) x[i] = x[i] - A(i, j) * x[j];
        else if (i > 0)
            x[i] = x[i] - sumElemFromZero<E>(i, [&](int j) { return E(A(i, j) * x[j]); });
    }
    for (int i = n - 1; i >= 0; --i) {
        if (unrolledSize(n)) {
            for (int j = n - 1; j > i; --j) x[i] = x[i] - A(i, j) * x[j];
            x[i] = x[i] * (E(1) / A(i, i));
        } else {
            const E s = i == n - 1 ? E(0) : sumElemFromZero<E>(n - 1 - i, [&](int q) { return E(A(i, i + 1 + q) * x[i + 1 + q]); });
            x[i] = (i == n - 1 ? x[i] : x[i] - s) / A(i, i);
        }
    }
    return std::vector<double>(x.begin(), x.end());
}

}  // namespace ref
