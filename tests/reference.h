// The suite's one reference: each numeric kind and each check class written
// once, as a plain transcription of the library's documented behaviour that
// never calls the library's own helpers. A family's test names the kind a
// kernel must run and lets this module compute the expected bits.
//
// Families add the kinds they need here (a sum tree, an estimate with its
// Newton step, a closed form shared by several tests), one section each.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

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

// ---- bits -----------------------------------------------------------------

template <class E>
bool sameBits(E a, E b)
{
    return std::memcmp(&a, &b, sizeof(E)) == 0;
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
