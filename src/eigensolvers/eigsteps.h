// The steps of the general eigensolvers, one function per step.
//
// Eigenvalues (EigenValues) and eigenvectors (EigenValuesVectorsRight, -Left
// and the combined EigenValuesVectors) share the copy into a column-major
// working matrix, the Householder reduction to Hessenberg form, the Francis
// double-shift QR iteration and the standardisation of 2-by-2 blocks. What
// differs between the two is a `Method` row: the deflation test (absolute
// ulp, or relative to the neighbouring diagonal) and whether the orthogonal
// transformations are kept (full-matrix updates, accumulated Z, rotation of
// standardised blocks). The vector families add back-substitution on the
// quasi-triangular factor, the block solves, the back-transformation, the
// normalisation and the copy out.
//
// Indices follow the method's description: 1-based, H(r, c) at
// buf[(c-1)*n + (r-1)]. Since the copy fills buf[i*n + j] with source (i, j),
// H is the transpose of the source.
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/numeric.h"
#include "orlm.h"

namespace orl::eig {

// ---- constants -------------------------------------------------------------

template <class E>
struct Mach;

template <>
struct Mach<float> {
    static constexpr float ulp = 1.1920928955078125e-07f;
    static constexpr float safmin = 1.1754943508222875e-38f;
    static constexpr float ulp4 = 4.76837158203125e-07f;
    static constexpr float invUlp = 8388608.0f;
    static constexpr float oneMinusUlp = 0.9999998807907104f;
    static constexpr float sminiFloor = 2.350988701644575e-38f;
    static constexpr float solveLimit = 4.253529586511731e+37f;
};

template <>
struct Mach<double> {
    static constexpr double ulp = 2.220446049250313e-16;
    static constexpr double safmin = 2.2250738585072014e-308;
    static constexpr double ulp4 = 8.881784197001252e-16;
    static constexpr double invUlp = 4503599627370496.0;
    static constexpr double oneMinusUlp = 0.9999999999999998;
    static constexpr double sminiFloor = 4.450147717014403e-308;
    static constexpr double solveLimit = 2.247116418577895e+307;
};

// smlnum = n*(1/ulp)*safmin and bignum = (1 - ulp)/smlnum, in the element type.
template <class E>
inline E smallNumber(int n)
{
    return E(n) * Mach<E>::invUlp * Mach<E>::safmin;
}

// ---- what differs between the values and the vector families --------------

enum class Deflation { Absolute, Relative };

struct Method {
    Deflation deflation;
    bool keepTransforms;  // Z accumulated, whole-matrix updates, blocks rotated
};

//                         deflation test        keep transformations
constexpr Method kValues{Deflation::Absolute, false};
constexpr Method kVectors{Deflation::Relative, true};

// ---- the working matrices --------------------------------------------------

// An n-by-n column-major matrix in the buffer, 1-based.
template <class E>
struct ColMajor {
    E* p;
    int n;
    E& operator()(int r, int c) const { return p[(c - 1) * n + (r - 1)]; }
    E* col(int c) const { return p + (c - 1) * n; }
};

// Stage 1: the source copied so that buffer element i*n + j is source
// element (i, j) (0-based); the source is not read again.
template <class E, class S>
void copyIn(const S& src, E* buf, int n)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) buf[i * n + j] = src(i, j);
}

// The last stage: destination (r, c) = V(r, c), 0-based.
template <class E, class D>
void copyOut(const ColMajor<E>& V, const D& dst, int n)
{
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) dst(r, c) = V(r + 1, c + 1);
}

// ---- scalar helpers --------------------------------------------------------

// sqrt(x*x + y*y) without overflow: the ratio of the squares, and in 32f the
// root of it formed in double.
template <class E>
inline E scaledHypot(E x, E y)
{
    const E ax = std::fabs(x), ay = std::fabs(y);
    const E w = std::max(ax, ay), z = std::min(ax, ay);
    if (!(z >= Mach<E>::safmin)) return w;
    const double zz = double(z) * double(z), ww = double(w) * double(w);
    return w * E(std::sqrt(zz / ww + 1.0));
}

// Elementary reflector: alpha and x[0..len-1] are replaced by beta and the
// scaled reflector vector; returns tau (0 with nothing changed when x is
// negligible).
template <class E>
inline E reflect(E& alpha, E* x, int len)
{
    E ss = E(0);
    for (int t = 0; t < len; ++t) ss = ss + x[t] * x[t];
    const E xnorm = std::sqrt(ss);
    if (xnorm < Mach<E>::safmin) return E(0);
    const E y = scaledHypot(xnorm, alpha);
    const E sigma = alpha >= E(0) ? y : -y;
    const E beta = -sigma;
    const E tau = (beta - alpha) / beta;
    const E scal = E(1) / (alpha - beta);
    for (int t = 0; t < len; ++t) x[t] = x[t] * scal;
    alpha = beta;
    return tau;
}

// 1/sqrt(s): the full root and a divide in 64f; in 32f the processor's
// estimate with one Newton step.
template <class E>
inline E invSqrt(E s)
{
    if constexpr (sizeof(E) == 4)
        return rsqrtNewton(s);
    else
        return E(1) / std::sqrt(s);
}

// ---- stage 2: Hessenberg reduction -----------------------------------------

// Reflectors from the left and right, tau of reflector k in tau[k-2]; the
// reflector vectors stay below the subdiagonal (zeroed by the caller once
// they are no longer needed). `w` holds n elements.
template <class E>
void reduceToHessenberg(const ColMajor<E>& H, E* tau, E* w)
{
    const int n = H.n;
    const E safmin = Mach<E>::safmin;
    for (int k = 2; k <= n; ++k) {
        const int m = n - k + 1;
        E alpha = H(k, k - 1);
        const E t = m < 2 ? E(0) : reflect(alpha, &H(k + 1, k - 1), m - 1);
        tau[k - 2] = t;
        H(k, k - 1) = E(1);
        const E* v = &H(k, k - 1);
        if (std::fabs(t) > safmin) {
            // Right update on all rows, then left update on the trailing block.
            for (int r = 1; r <= n; ++r) {
                E s = E(0);
                for (int q = 0; q < m; ++q) s = s + H(r, k + q) * v[q];
                w[r - 1] = s;
            }
            for (int q = 0; q < m; ++q) {
                E* hc = H.col(k + q);
                const E vq = v[q];
                for (int r = 1; r <= n; ++r) hc[r - 1] = hc[r - 1] - (t * w[r - 1]) * vq;
            }
            for (int c = k; c <= n; ++c) {
                E s = E(0);
                for (int q = 0; q < m; ++q) s = s + H(k + q, c) * v[q];
                w[c - 1] = s;
            }
            for (int c = k; c <= n; ++c)
                for (int q = 0; q < m; ++q) H(k + q, c) = H(k + q, c) - (t * v[q]) * w[c - 1];
        }
        H(k, k - 1) = alpha;
    }
}

template <class E>
void zeroBelowSubdiagonal(const ColMajor<E>& H)
{
    for (int c = 1; c <= H.n; ++c)
        for (int r = c + 2; r <= H.n; ++r) H(r, c) = E(0);
}

// ---- stage 3 of the vector families: the orthogonal matrix Z ---------------

// The reflectors moved one column to the right into Z, then the product
// formed backwards column by column.
template <class E>
void formOrthogonal(const ColMajor<E>& H, const E* tau, const ColMajor<E>& Z, E* w)
{
    const int n = Z.n;
    const E safmin = Mach<E>::safmin;
    for (int c = 1; c <= n; ++c)
        for (int r = 1; r <= n; ++r) Z(r, c) = (c >= 2 && r > c) ? H(r, c - 1) : E(0);
    Z(1, 1) = E(1);
    for (int i = n; i >= 2; --i) {
        const E t = tau[i - 2];
        if (i < n) {
            Z(i, i) = E(1);
            if (std::fabs(t) > safmin) {
                const E* v = &Z(i, i);
                for (int c = i + 1; c <= n; ++c) {
                    E s = E(0);
                    for (int q = 0; q <= n - i; ++q) s = s + v[q] * Z(i + q, c);
                    w[c - 1] = s;
                }
                for (int c = i + 1; c <= n; ++c)
                    for (int q = 0; q <= n - i; ++q) Z(i + q, c) = Z(i + q, c) - (v[q] * t) * w[c - 1];
            }
            for (int r = i + 1; r <= n; ++r) Z(r, i) = Z(r, i) * -t;
        }
        Z(i, i) = E(1) - t;
        for (int r = 1; r < i; ++r) Z(r, i) = E(0);
    }
}

// ---- stage 3/4: QR iteration -----------------------------------------------

template <class E>
struct Rotation {
    E cs = E(0), sn = E(0);
};

template <class E>
struct Roots {
    E re1, im1, re2, im2;
};

template <class E>
inline bool differInSign(E x, E y) { return (x >= E(0)) != (y >= E(0)); }

// Standardisation of the 2-by-2 block (a b; c d) into upper triangular form
// or a complex pair with equal diagonal; the rotation that does it is kept
// in `rot` (the values family ignores it).
template <class E>
Roots<E> standardise(E& a, E& b, E& c, E& d, Rotation<E>& rot)
{
    const E safmin = Mach<E>::safmin;
    bool pair = false;
    if (!(std::fabs(c) > safmin)) {
        rot = {E(1), E(0)};
    } else if (!(std::fabs(b) > safmin)) {
        std::swap(a, d);
        b = -c;
        c = E(0);
        rot = {E(0), E(1)};
    } else if (!(std::fabs(a - d) > safmin)) {
        // Reported as a pair whatever the signs of b and c.
        if (differInSign(b, c)) rot = {E(1), E(0)};
        const E w = std::sqrt(std::fabs(c)) * std::sqrt(std::fabs(b));
        return {a, w, d, -w};
    } else {
        const E t = a - d;
        const E q = E(0.5) * t;
        const E bcmax = std::max(std::fabs(b), std::fabs(c));
        const E bcmis = std::min(std::fabs(b), std::fabs(c)) * (differInSign(b, c) ? E(-1) : E(1));
        const E scale = std::max(std::fabs(q), bcmax);
        E z = (q / scale) * q + (bcmax / scale) * bcmis;
        if (z >= Mach<E>::ulp4) {
            // Real roots.
            z = q > E(0) ? q + std::sqrt(scale) * std::sqrt(z) : q - std::sqrt(scale) * std::sqrt(z);
            const E tau = scaledHypot(c, z);
            rot = {z / tau, c / tau};
            a = d + z;
            d = d - (bcmax / z) * bcmis;
            b = b - c;
            c = E(0);
        } else {
            // Complex or nearly equal real roots: equalise the diagonal.
            const E sigma = b + c;
            const E tau = scaledHypot(sigma, t);
            const E cs = E(std::sqrt((double(std::fabs(sigma)) / double(tau) + 1.0) * 0.5));
            E sn = -(q / (tau * cs));
            if (sigma < E(0)) sn = -sn;
            const E aa = a * cs + b * sn, bb = b * cs - a * sn;
            const E cc = c * cs + d * sn, dd = d * cs - c * sn;
            const E a1 = aa * cs + cc * sn, b1 = bb * cs + dd * sn;
            const E c1 = cc * cs - aa * sn, d1 = dd * cs - bb * sn;
            const E temp = E(0.5) * (a1 + d1);
            rot = {cs, sn};
            const bool big = std::fabs(b1) > safmin && std::fabs(c1) > safmin;
            if (big && !differInSign(b1, c1)) {
                // Real: the offset is the q of the unrotated block.
                const E sab = std::sqrt(std::fabs(b1)), sac = std::sqrt(std::fabs(c1));
                const E w = E(1) / std::sqrt(std::fabs(b1 + c1));
                rot = {(cs * sab - sn * sac) * w, (cs * sab + sn * sac) * w};
                const E p = c1 >= E(0) ? q : -q;
                a = temp + p;
                d = temp - p;
                b = b1 - c1;
                c = E(0);
            } else if (big) {
                a = d = temp;
                b = b1;
                c = c1;
                pair = true;
            } else {
                a = d = temp;
                b = -c1;
                c = E(0);
                rot = {-sn, cs};
            }
        }
    }
    if (pair) {
        const E w = std::sqrt(std::fabs(b)) * std::sqrt(std::fabs(c));
        return {a, w, d, -w};
    }
    return {a, E(0), d, E(0)};
}

// The block's rotation applied to the rest of the factor and to Z: rows
// i-1, i of H right of the block, columns i-1, i of H above it, and columns
// i-1, i of Z.
template <class E>
void rotateBlock(const ColMajor<E>& H, const ColMajor<E>& Z, int i, Rotation<E> rot)
{
    const int n = H.n;
    const E cs = rot.cs, sn = rot.sn;
    const auto pairRot = [cs, sn](E& x, E& y) {
        const E x1 = cs * x + sn * y, y1 = cs * y - sn * x;
        x = x1;
        y = y1;
    };
    for (int c = i + 1; c <= n; ++c) pairRot(H(i - 1, c), H(i, c));
    for (int r = 1; r <= i - 2; ++r) pairRot(H(r, i - 1), H(r, i));
    for (int r = 1; r <= n; ++r) pairRot(Z(r, i - 1), Z(r, i));
}

// The largest sum of magnitudes of the runs of elements that the relative
// deflation test falls back on when the two diagonal entries are negligible
// (buffer positions as the method gives them, which may reach into Z).
template <class E>
E replacementNorm(const E* buf, int n, int l, int i)
{
    E best = E(0);
    for (int j = l - 1; j <= i - 1; ++j) {
        const int cnt = std::min(j + 1, i);
        const E* e = buf + (l - 1) * n + (l - 1) + j * n;
        E s = E(0);
        for (int q = 0; q < cnt; ++q) s = s + std::fabs(e[q]);
        if (s > best) best = s;
    }
    return best;
}

// The row k (l <= k <= i) at which the active block splits: H(k, k-1) is
// negligible, or k = l.
template <const Method& M, class E>
int splitPoint(const ColMajor<E>& H, const E* buf, int l, int i)
{
    const E ulp = Mach<E>::ulp;
    int k = i;
    for (; k > l; --k) {
        const E sub = std::fabs(H(k, k - 1));
        if constexpr (M.deflation == Deflation::Absolute) {
            if (!(sub > ulp)) break;
        } else {
            E tst = std::fabs(H(k - 1, k - 1)) + std::fabs(H(k, k));
            if (!(tst > Mach<E>::safmin)) tst = replacementNorm(buf, H.n, l, i);
            if (!(sub > std::max(ulp * tst, smallNumber<E>(H.n)))) break;
        }
    }
    return k;
}

// The double shift: h33, h44 and the product p, exceptional at its 10 and 20.
template <class E>
struct Shift {
    E h33, h44, p;
};

template <class E>
Shift<E> shiftsOf(const ColMajor<E>& H, int i, int its)
{
    if (its == 10 || its == 20) {
        const E s = std::fabs(H(i, i - 1)) + std::fabs(H(i - 1, i - 2));
        const E h44 = E(0.75) * s + H(i, i);
        return {h44, h44, E(-0.4375) * s * s};
    }
    Shift<E> sh{H(i - 1, i - 1), H(i, i), H(i, i - 1) * H(i - 1, i)};
    const E half = (sh.h33 - sh.h44) * E(0.5);
    E disc = half * half + sh.p;
    if (disc > E(0)) {
        disc = std::sqrt(disc);
        const E ave = (sh.h33 + sh.h44) * E(0.5);
        const E f = ave >= E(0) ? ave + disc : ave - disc;
        if (!(double(std::fabs(sh.h33)) - double(std::fabs(sh.h44)) > 0.0))
            sh.h44 = f;
        else
            sh.h44 = (sh.h33 * sh.h44 - sh.p) / f;
        sh.h33 = sh.h44;
        sh.p = E(0);
    }
    return sh;
}

// The row m where the sweep starts, with the first column of the shifted
// product in g[0..2].
template <class E>
int sweepStart(const ColMajor<E>& H, int l, int i, const Shift<E>& sh, E* g)
{
    const E ulp = Mach<E>::ulp;
    int m = i - 2;
    for (;; --m) {
        const E h11 = H(m, m), h22 = H(m + 1, m + 1);
        const E a = sh.h44 - h11, b = sh.h33 - h11;
        E g1 = (a * b - sh.p) / H(m + 1, m) + H(m, m + 1);
        E g2 = h22 - h11 - a - b;
        E g3 = H(m + 2, m + 1);
        const E s = E(double(std::fabs(g1)) + double(std::fabs(g2)) + double(std::fabs(g3)));
        g1 = g1 / s;
        g2 = g2 / s;
        g3 = g3 / s;
        g[0] = g1, g[1] = g2, g[2] = g3;
        if (m == l) break;
        const double lhs = double(std::fabs(H(m, m - 1))) * double(std::fabs(g2) + std::fabs(g3));
        const E diag = E(double(std::fabs(H(m - 1, m - 1))) + double(std::fabs(h11)) + double(std::fabs(h22)));
        const E rhs = std::fabs(g1) * diag * ulp;
        if (lhs <= double(rhs)) break;
    }
    return m;
}

// One double-shift sweep over rows and columns m..i, chasing the bulge.
template <const Method& M, class E>
void sweep(const ColMajor<E>& H, const ColMajor<E>& Z, int l, int i, int m, const E* g)
{
    const int n = H.n;
    const int rowEnd = M.keepTransforms ? n : i;
    const int colFrom = M.keepTransforms ? 1 : l;
    for (int k = m; k <= i - 1; ++k) {
        const int nr = std::min(3, i - k + 1);
        E v[3] = {g[0], g[1], g[2]};
        if (k > m)
            for (int q = 0; q < nr; ++q) v[q] = H(k + q, k - 1);
        const E t1 = nr > 1 ? reflect(v[0], v + 1, nr - 1) : E(0);
        if (k > m) {
            H(k, k - 1) = v[0];
            H(k + 1, k - 1) = E(0);
            if (k < i - 1) H(k + 2, k - 1) = E(0);
        } else if (m > l) {
            H(k, k - 1) = -H(k, k - 1);
        }
        const E g2 = v[1], t2 = t1 * g2;
        if (nr == 3) {
            const E g3 = v[2], t3 = t1 * g3;
            for (int j = k; j <= rowEnd; ++j) {
                const E sum = H(k, j) + g2 * H(k + 1, j) + g3 * H(k + 2, j);
                H(k, j) = H(k, j) - sum * t1;
                H(k + 1, j) = H(k + 1, j) - sum * t2;
                H(k + 2, j) = H(k + 2, j) - sum * t3;
            }
            const auto cols = [&](const ColMajor<E>& A, int from, int to) {
                for (int j = from; j <= to; ++j) {
                    const E sum = A(j, k) + g2 * A(j, k + 1) + g3 * A(j, k + 2);
                    A(j, k) = A(j, k) - sum * t1;
                    A(j, k + 1) = A(j, k + 1) - sum * t2;
                    A(j, k + 2) = A(j, k + 2) - sum * t3;
                }
            };
            cols(H, colFrom, std::min(k + 3, i));
            if constexpr (M.keepTransforms) cols(Z, 1, n);
        } else {
            for (int j = k; j <= rowEnd; ++j) {
                const E sum = H(k, j) + g2 * H(k + 1, j);
                H(k, j) = H(k, j) - sum * t1;
                H(k + 1, j) = H(k + 1, j) - sum * t2;
            }
            const auto cols = [&](const ColMajor<E>& A, int from, int to) {
                for (int j = from; j <= to; ++j) {
                    const E sum = A(j, k) + g2 * A(j, k + 1);
                    A(j, k) = A(j, k) - sum * t1;
                    A(j, k + 1) = A(j, k + 1) - sum * t2;
                }
            };
            cols(H, colFrom, i);
            if constexpr (M.keepTransforms) cols(Z, 1, n);
        }
    }
}

// The QR iteration to the quasi-triangular form, eigenvalues written from
// the bottom up into re[], im[] (0-based) as their blocks deflate. On
// orlStatusNoConvergence the positions of the undeflated block are untouched.
template <const Method& M, class E>
orlStatus iterateQR(const ColMajor<E>& H, const ColMajor<E>& Z, E* re, E* im)
{
    const int n = H.n;
    Rotation<E> rot;
    int budget = 30 * n;
    int i = n;
    while (i >= 1) {
        int l = 1, its = 0;
        if (budget >= 1) {
            for (;;) {
                const int k = splitPoint<M>(H, H.p, l, i);
                l = k;
                if (l > 1) H(l, l - 1) = E(0);
                if (l >= i - 1) break;
                const Shift<E> sh = shiftsOf(H, i, its);
                E g[3];
                const int m = sweepStart(H, l, i, sh, g);
                sweep<M>(H, Z, l, i, m, g);
                ++its;
                if (its >= budget) break;
            }
        }
        if (l < i - 1) return orlStatusNoConvergence;
        if (l == i) {
            re[i - 1] = H(i, i);
            im[i - 1] = E(0);
        } else {
            E a = H(i - 1, i - 1), b = H(i - 1, i), c = H(i, i - 1), d = H(i, i);
            const Roots<E> rt = standardise(a, b, c, d, rot);
            H(i - 1, i - 1) = a, H(i - 1, i) = b, H(i, i - 1) = c, H(i, i) = d;
            if constexpr (M.keepTransforms) rotateBlock(H, Z, i, rot);
            re[i - 2] = rt.re1, im[i - 2] = rt.im1;
            re[i - 1] = rt.re2, im[i - 1] = rt.im2;
        }
        budget -= its;
        i = l - 1;
    }
    return orlStatusOk;
}

// ---- stage 6: the shifted block solves -------------------------------------

// A solve ends normally, or stops the whole kernel: silently (a real 2-by-2
// block below the threshold) or with orlStatusSmallBlock (a complex one).
enum class Solve { Done, StopSilently, SmallBlock };

// Solution of one 1-by-1 or 2-by-2 block: x[row][0] real, x[row][1]
// imaginary part; the right-hand side was multiplied by `scale`.
template <class E>
struct Sol {
    E x[2][2] = {{E(0), E(0)}, {E(0), E(0)}};
    E scale = E(1), xnorm = E(0);
};

// (T(j,j) - (wr + i*wi)) x = scale*b, real when wi = 0 and `cplx` is false.
// The complex quotient takes the plain formula. Real solves scale against
// the solve limit, complex ones against bignum.
template <class E, bool cplx>
Sol<E> solve1(E tjj, E wr, E wi, E br, E bi, E smin, E bignum)
{
    const E smini = std::max(smin, Mach<E>::sminiFloor);
    const E bound = cplx ? bignum : Mach<E>::solveLimit;
    Sol<E> s;
    E csr = tjj - wr;
    if constexpr (!cplx) {
        E cnorm = std::fabs(csr);
        if (cnorm < smini) csr = smini, cnorm = smini;
        const E bnorm = std::fabs(br);
        if (cnorm < E(1) && bnorm > E(1) && bnorm > bound * cnorm) s.scale = E(1) / bnorm;
        s.x[0][0] = (br * s.scale) / csr;
        s.xnorm = std::fabs(s.x[0][0]);
    } else {
        E csi = -wi;
        E cnorm = std::fabs(csr) + std::fabs(csi);
        if (cnorm < smini) csr = smini, csi = E(0), cnorm = smini;
        const E bnorm = std::fabs(br) + std::fabs(bi);
        if (cnorm < E(1) && bnorm > E(1) && bnorm > bound * cnorm) s.scale = E(1) / bnorm;
        const E f = s.scale / (csr * csr + csi * csi);
        s.x[0][0] = (br * csr + bi * csi) * f;
        s.x[0][1] = (bi * csr - br * csi) * f;
        s.xnorm = std::fabs(s.x[0][0]) + std::fabs(s.x[0][1]);
    }
    return s;
}

// The pivoted 2-by-2 solve: a row of iPivot for each position of the
// largest element (column-major positions of the shifted block), with the
// row exchange and the solution exchange flags of that position.
inline constexpr int kPivot[4][4] = {{0, 1, 2, 3}, {1, 0, 3, 2}, {2, 3, 0, 1}, {3, 2, 1, 0}};
inline constexpr bool kRowSwap[4] = {false, true, false, true};
inline constexpr bool kSolSwap[4] = {false, false, true, true};

// (B - (wr + i*wi)) x = scale*b for the 2-by-2 block B = T(j..j+1, j..j+1),
// transposed for the left vectors. b[row][0] real, b[row][1] imaginary.
template <class E, bool cplx>
Solve solve2(const ColMajor<E>& T, int j, bool trans, E wr, E wi, const E (&b)[2][2], E smin, E bignum, Sol<E>& s)
{
    const E smini = std::max(smin, Mach<E>::sminiFloor);
    const E bound = cplx ? bignum : Mach<E>::solveLimit;
    // Column-major: cr[0] = (1,1), cr[1] = (2,1), cr[2] = (1,2), cr[3] = (2,2).
    E cr[4] = {T(j, j) - wr, trans ? T(j, j + 1) : T(j + 1, j), trans ? T(j + 1, j) : T(j, j + 1), T(j + 1, j + 1) - wr};
    E ci[4] = {-wi, E(0), E(0), -wi};
    E cmax = E(0);
    int p = 0;
    for (int q = 0; q < 4; ++q) {
        const E mag = cplx ? std::fabs(cr[q]) + std::fabs(ci[q]) : std::fabs(cr[q]);
        if (mag > cmax) cmax = mag, p = q;
    }
    if (cmax < smini) return cplx ? Solve::SmallBlock : Solve::StopSilently;
    const int* piv = kPivot[p];
    const E ur11 = cr[p], cr21 = cr[piv[1]], ur12 = cr[piv[2]], cr22 = cr[piv[3]];
    E br1 = b[kRowSwap[p] ? 1 : 0][0], br2 = b[kRowSwap[p] ? 0 : 1][0];
    E xr1, xr2, xi1 = E(0), xi2 = E(0);
    if constexpr (!cplx) {
        const E ur11r = E(1) / ur11;
        const E lr21 = ur11r * cr21;
        E ur22 = cr22 - ur12 * lr21;
        if (std::fabs(ur22) < smini) ur22 = smini;
        br2 = br2 - lr21 * br1;
        const E bbnd = std::max(std::fabs(br1 * (ur22 * ur11r)), std::fabs(br2));
        if (bbnd > E(1) && std::fabs(ur22) < E(1) && bbnd >= bound * std::fabs(ur22)) s.scale = E(1) / bbnd;
        xr2 = (br2 * s.scale) / ur22;
        xr1 = (s.scale * br1) * ur11r - xr2 * (ur11r * ur12);
        s.xnorm = std::max(std::fabs(xr1), std::fabs(xr2));
    } else {
        const E ui11 = ci[p], ci21 = ci[piv[1]], ui12 = ci[piv[2]], ci22 = ci[piv[3]];
        E bi1 = b[kRowSwap[p] ? 1 : 0][1], bi2 = b[kRowSwap[p] ? 0 : 1][1];
        E ur11r, ui11r, lr21, li21, ur12s, ui12s, ur22, ui22;
        if (p == 0 || p == 3) {
            // Off-diagonals of the pivoted block are real.
            if (std::fabs(ur11) > std::fabs(ui11)) {
                const E t = ui11 / ur11;
                ur11r = E(1) / (ur11 * (E(1) + t * t));
                ui11r = -t * ur11r;
            } else {
                const E t = ur11 / ui11;
                ui11r = -E(1) / (ui11 * (E(1) + t * t));
                ur11r = -t * ui11r;
            }
            lr21 = cr21 * ur11r;
            li21 = cr21 * ui11r;
            ur12s = ur12 * ur11r;
            ui12s = ur12 * ui11r;
            ur22 = cr22 - ur12 * lr21;
            ui22 = ci22 - ur12 * li21;
        } else {
            // Diagonals of the pivoted block are real.
            ur11r = E(1) / ur11;
            ui11r = E(0);
            lr21 = cr21 * ur11r;
            li21 = ci21 * ur11r;
            ur12s = ur12 * ur11r;
            ui12s = ui12 * ur11r;
            ur22 = cr22 - ur12 * lr21 + ui12 * li21;
            ui22 = -ur12 * li21 - ui12 * lr21;
        }
        const E u22abs = std::fabs(ur22) + std::fabs(ui22);
        if (u22abs < smini) ur22 = smini, ui22 = E(0);
        const E nbr2 = br2 - lr21 * br1 + li21 * bi1;
        bi2 = bi2 - li21 * br1 - lr21 * bi1;
        br2 = nbr2;
        // The bound reads the magnitude before any perturbation, as published.
        const E bbnd = std::max((std::fabs(br1) + std::fabs(bi1)) * (u22abs * (std::fabs(ur11r) + std::fabs(ui11r))),
                                std::fabs(br2) + std::fabs(bi2));
        if (bbnd > E(1) && u22abs < E(1) && bbnd >= bound * u22abs) {
            s.scale = E(1) / bbnd;
            br1 = s.scale * br1, bi1 = s.scale * bi1, br2 = s.scale * br2, bi2 = s.scale * bi2;
        }
        const E f = E(1) / (ur22 * ur22 + ui22 * ui22);
        xr2 = (br2 * ur22 + bi2 * ui22) * f;
        xi2 = (bi2 * ur22 - br2 * ui22) * f;
        xr1 = ur11r * br1 - ui11r * bi1 - ur12s * xr2 + ui12s * xi2;
        xi1 = ui11r * br1 + ur11r * bi1 - ui12s * xr2 - ur12s * xi2;
        s.xnorm = std::max(std::fabs(xr1) + std::fabs(xi1), std::fabs(xr2) + std::fabs(xi2));
    }
    const bool sw = kSolSwap[p];
    s.x[0][0] = sw ? xr2 : xr1, s.x[1][0] = sw ? xr1 : xr2;
    s.x[0][1] = sw ? xi2 : xi1, s.x[1][1] = sw ? xi1 : xi2;
    if (s.xnorm > E(1) && cmax > E(1) && s.xnorm > bound / cmax) {
        const E temp = cmax / bound;
        for (auto& row : s.x) row[0] = temp * row[0], row[1] = temp * row[1];
        s.xnorm = temp * s.xnorm;
        s.scale = temp * s.scale;
    }
    return Solve::Done;
}

// ---- stage 5: eigenvectors of the quasi-triangular factor ------------------

template <class E>
struct VecWork {
    E* colSum;  // sum of |T(r, j)| over r < j, at j-1
    E* xr;      // real part of the solution, at k-1
    E* xi;      // imaginary part
};

template <class E>
void columnSums(const ColMajor<E>& T, E* colSum)
{
    colSum[0] = E(0);
    for (int j = 2; j <= T.n; ++j) {
        E s = E(0);
        for (int r = 1; r < j; ++r) s = s + std::fabs(T(r, j));
        colSum[j - 1] = s;
    }
}

template <class E>
inline bool pairBelow(const ColMajor<E>& T, int j)  // T(j+1, j) couples rows j, j+1
{
    return std::fabs(T(j + 1, j)) > Mach<E>::safmin;
}

// x[from..to] *= f (1-based).
template <class E>
inline void scaleRange(E* x, int from, int to, E f)
{
    for (int k = from; k <= to; ++k) x[k - 1] = x[k - 1] * f;
}

// V(:, c) = V(:, c)*own + sum over k in [from, to] of V(:, k)*x[k].
template <class E>
void combineColumns(const ColMajor<E>& V, int c, E own, const E* x, int from, int to)
{
    for (int r = 1; r <= V.n; ++r) {
        E y = V(r, c) * own;
        for (int k = from; k <= to; ++k) y = y + V(r, k) * x[k - 1];
        V(r, c) = y;
    }
}

template <class E>
inline E bigNumber(int n)
{
    return Mach<E>::oneMinusUlp / smallNumber<E>(n);
}

// The guard against overflow in the next update of the right-hand side.
template <class E>
inline void guardGrowth(Sol<E>& s, E colWork, E bignum, int rows, bool cplx)
{
    if (s.xnorm > E(1) && colWork > bignum / s.xnorm) {
        for (int r = 0; r < rows; ++r) {
            s.x[r][0] = s.x[r][0] / s.xnorm;
            if (cplx) s.x[r][1] = s.x[r][1] / s.xnorm;
        }
        s.scale = s.scale / s.xnorm;
    }
}

// Right eigenvectors of T back-transformed into Z (columns of Z replaced).
template <class E>
Solve rightVectors(const ColMajor<E>& T, const ColMajor<E>& Z, const VecWork<E>& w)
{
    const int n = T.n;
    const E ulp = Mach<E>::ulp, safmin = Mach<E>::safmin;
    const E smlnum = smallNumber<E>(n), bignum = bigNumber<E>(n);
    E* X = w.xr;
    E* Y = w.xi;
    for (int ki = n; ki >= 1; --ki) {
        const bool pair = ki > 1 && pairBelow(T, ki - 1);
        const E wr = T(ki, ki);
        const E wi = pair ? std::sqrt(std::fabs(T(ki, ki - 1))) * std::sqrt(std::fabs(T(ki - 1, ki))) : E(0);
        const E smin = std::max(ulp * (std::fabs(wr) + std::fabs(wi)), smlnum);
        const int top = pair ? ki - 2 : ki - 1;  // last row of the substitution
        if (!pair) {
            X[ki - 1] = E(1);
            for (int k = 1; k < ki; ++k) X[k - 1] = -T(k, ki);
        } else {
            if (std::fabs(T(ki - 1, ki)) > std::fabs(T(ki, ki - 1))) {
                X[ki - 2] = E(1);
                Y[ki - 1] = wi / T(ki - 1, ki);
            } else {
                X[ki - 2] = -wi / T(ki, ki - 1);
                Y[ki - 1] = E(1);
            }
            X[ki - 1] = E(0);
            Y[ki - 2] = E(0);
            for (int k = 1; k < ki - 1; ++k) {
                X[k - 1] = -X[ki - 2] * T(k, ki - 1);
                Y[k - 1] = -Y[ki - 1] * T(k, ki);
            }
        }
        for (int j = top; j >= 1;) {
            const bool blk = j > 1 && pairBelow(T, j - 1);
            const int j1 = blk ? j - 1 : j;
            Sol<E> s;
            if (!blk) {
                s = pair ? solve1<E, true>(T(j, j), wr, wi, X[j - 1], Y[j - 1], smin, bignum)
                         : solve1<E, false>(T(j, j), wr, E(0), X[j - 1], E(0), smin, bignum);
                guardGrowth(s, w.colSum[j - 1], bignum, 1, pair);
            } else {
                const E b[2][2] = {{X[j - 2], pair ? Y[j - 2] : E(0)}, {X[j - 1], pair ? Y[j - 1] : E(0)}};
                const Solve r = pair ? solve2<E, true>(T, j - 1, false, wr, wi, b, smin, bignum, s)
                                     : solve2<E, false>(T, j - 1, false, wr, E(0), b, smin, bignum, s);
                if (r != Solve::Done) return r;
                guardGrowth(s, std::max(w.colSum[j - 2], w.colSum[j - 1]), bignum, 2, pair);
            }
            if (std::fabs(s.scale - E(1)) > safmin) {
                scaleRange(X, 1, ki, s.scale);
                if (pair) scaleRange(Y, 1, ki, s.scale);
            }
            for (int q = 0; q <= j - j1; ++q) {
                X[j1 + q - 1] = s.x[q][0];
                if (pair) Y[j1 + q - 1] = s.x[q][1];
            }
            for (int q = 0; q <= j - j1; ++q)
                for (int r = 1; r < j1; ++r) X[r - 1] = X[r - 1] - s.x[q][0] * T(r, j1 + q);
            if (pair)
                for (int q = 0; q <= j - j1; ++q)
                    for (int r = 1; r < j1; ++r) Y[r - 1] = Y[r - 1] - s.x[q][1] * T(r, j1 + q);
            j = j1 - 1;
        }
        if (!pair) {
            combineColumns(Z, ki, X[ki - 1], X, 1, ki - 1);
        } else {
            combineColumns(Z, ki - 1, X[ki - 2], X, 1, ki - 2);
            combineColumns(Z, ki, Y[ki - 1], Y, 1, ki - 2);
            E m = E(0);
            for (int r = 1; r <= n; ++r) m = std::max(m, std::fabs(Z(r, ki - 1)) + std::fabs(Z(r, ki)));
            const E f = E(1) / m;
            for (int r = 1; r <= n; ++r) Z(r, ki - 1) = Z(r, ki - 1) * f, Z(r, ki) = Z(r, ki) * f;
            --ki;
        }
    }
    return Solve::Done;
}

template <class E>
inline E dotRange(const ColMajor<E>& T, int col, const E* x, int from, int to)
{
    E s = E(0);
    for (int k = from; k <= to; ++k) s = s + T(k, col) * x[k - 1];
    return s;
}

// Left eigenvectors of T back-transformed into V (a copy of Z).
template <class E>
Solve leftVectors(const ColMajor<E>& T, const ColMajor<E>& V, const VecWork<E>& w)
{
    const int n = T.n;
    const E ulp = Mach<E>::ulp, safmin = Mach<E>::safmin;
    const E smlnum = smallNumber<E>(n), bignum = bigNumber<E>(n);
    E* X = w.xr;
    E* Y = w.xi;
    for (int ki = 1; ki <= n; ++ki) {
        const bool pair = ki < n && pairBelow(T, ki);
        const E wr = T(ki, ki);
        const E wi = pair ? std::sqrt(std::fabs(T(ki, ki + 1))) * std::sqrt(std::fabs(T(ki + 1, ki))) : E(0);
        const E smin = std::max(ulp * (std::fabs(wr) + std::fabs(wi)), smlnum);
        E vmax = E(1), vcrit = bignum;
        const int first = pair ? ki + 2 : ki + 1;  // first row of the substitution
        if (!pair) {
            X[ki - 1] = E(1);
            for (int k = ki + 1; k <= n; ++k) X[k - 1] = -T(ki, k);
        } else {
            if (std::fabs(T(ki, ki + 1)) >= std::fabs(T(ki + 1, ki))) {
                X[ki - 1] = wi / T(ki, ki + 1);
                Y[ki] = E(1);
            } else {
                X[ki - 1] = E(1);
                Y[ki] = -wi / T(ki + 1, ki);
            }
            Y[ki - 1] = E(0);
            X[ki] = E(0);
            for (int k = ki + 2; k <= n; ++k) {
                X[k - 1] = -X[ki - 1] * T(ki, k);
                Y[k - 1] = -Y[ki] * T(ki + 1, k);
            }
        }
        for (int j = first; j <= n;) {
            const bool blk = j < n && pairBelow(T, j);
            const int j2 = blk ? j + 1 : j;
            const E beta = blk ? std::max(w.colSum[j - 1], w.colSum[j]) : w.colSum[j - 1];
            if (beta > vcrit) {
                const E rec = E(1) / vmax;
                scaleRange(X, ki, n, rec);
                if (pair) scaleRange(Y, ki, n, rec);
                vmax = E(1), vcrit = bignum;
            }
            E b[2][2] = {};
            for (int q = 0; q <= j2 - j; ++q) {
                b[q][0] = X[j + q - 1] - dotRange(T, j + q, X, first, j - 1);
                if (pair) b[q][1] = Y[j + q - 1] - dotRange(T, j + q, Y, first, j - 1);
            }
            Sol<E> s;
            if (!blk) {
                s = pair ? solve1<E, true>(T(j, j), wr, -wi, b[0][0], b[0][1], smin, bignum)
                         : solve1<E, false>(T(j, j), wr, E(0), b[0][0], E(0), smin, bignum);
            } else {
                const Solve r = pair ? solve2<E, true>(T, j, true, wr, -wi, b, smin, bignum, s)
                                     : solve2<E, false>(T, j, true, wr, E(0), b, smin, bignum, s);
                if (r != Solve::Done) return r;
            }
            if (std::fabs(s.scale - E(1)) > safmin) {
                scaleRange(X, ki, n, s.scale);
                if (pair) scaleRange(Y, ki, n, s.scale);
            }
            for (int q = 0; q <= j2 - j; ++q) {
                X[j + q - 1] = s.x[q][0];
                vmax = std::max(std::fabs(s.x[q][0]), vmax);
                if (pair) {
                    Y[j + q - 1] = s.x[q][1];
                    vmax = std::max(std::fabs(s.x[q][1]), vmax);
                }
            }
            vcrit = bignum / vmax;
            j = j2 + 1;
        }
        E m = E(0);
        if (!pair) {
            combineColumns(V, ki, X[ki - 1], X, ki + 1, n);
            for (int r = 1; r <= n; ++r) m = std::max(m, std::fabs(V(r, ki)));
            if (m > safmin) {
                const E f = E(1) / m;
                for (int r = 1; r <= n; ++r) V(r, ki) = V(r, ki) * f;
            }
        } else {
            combineColumns(V, ki, X[ki - 1], X, ki + 2, n);
            combineColumns(V, ki + 1, Y[ki], Y, ki + 2, n);
            for (int r = 1; r <= n; ++r) m = std::max(m, std::fabs(V(r, ki)) + std::fabs(V(r, ki + 1)));
            if (m > safmin) {
                const E f = E(1) / m;
                for (int r = 1; r <= n; ++r) V(r, ki) = V(r, ki) * f, V(r, ki + 1) = V(r, ki + 1) * f;
            }
            ++ki;
        }
    }
    return Solve::Done;
}

// ---- stage 7: normalisation ------------------------------------------------

// Unit length for each real column; unit joint length for a pair, rotated so
// that its largest component is real (up to rounding) and, where the real
// part dominates, positive.
template <class E>
void normalise(const ColMajor<E>& V, const E* im)
{
    const int n = V.n;
    const E safmin = Mach<E>::safmin;
    for (int k = 1; k <= n;) {
        if (std::fabs(im[k - 1]) >= safmin && k < n) {
            E* re = V.col(k);
            E* ii = V.col(k + 1);
            E s = E(0);
            for (int r = 0; r < n; ++r) s = s + (re[r] * re[r] + ii[r] * ii[r]);
            const E f = invSqrt(s);
            for (int r = 0; r < n; ++r) re[r] = re[r] * f, ii[r] = ii[r] * f;
            int p = 0;
            E best = re[0] * re[0] + ii[0] * ii[0];
            for (int r = 1; r < n; ++r) {
                const E m = re[r] * re[r] + ii[r] * ii[r];
                if (m > best) best = m, p = r;
            }
            const E rr = std::sqrt(re[p] * re[p] + ii[p] * ii[p]);
            E cs = re[p] / rr, sn = ii[p] / rr;
            if (cs < E(0) && std::fabs(re[p]) > std::fabs(ii[p])) cs = -cs, sn = -sn;
            for (int r = 0; r < n; ++r) {
                const E x = re[r], y = ii[r];
                re[r] = cs * x + sn * y;
                ii[r] = cs * y - sn * x;
            }
            k += 2;
        } else {
            E* c = V.col(k);
            E s = E(0);
            for (int r = 0; r < n; ++r) s = s + c[r] * c[r];
            if (s > safmin) {
                const E f = invSqrt(s);
                for (int r = 0; r < n; ++r) c[r] = c[r] * f;
            }
            k += 1;
        }
    }
}

}  // namespace orl::eig
