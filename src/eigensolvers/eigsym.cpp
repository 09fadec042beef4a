// Symmetric eigensolver: all eigenvalues, and for the vector family all
// eigenvectors, of a real square matrix taken as symmetric.
//
// Orders 1 and 2 have closed forms. From order 3 on, the source is copied
// into the caller's buffer W and reduced there to tridiagonal form by
// Householder reflections on the whole square; the implicit QL/QR iteration
// with a Wilkinson-type shift then runs on the diagonal d and sub-diagonal e
// in place in W, from whichever end of the diagonal is larger. The values
// are sorted largest first, unless their product is negligible.
//
// Work space: W is the caller's buffer (n*n elements), the Householder
// vector lives in the value output, and the eigenvectors Q accumulate in the
// vector destination itself. Kernels differ only in a few constants, in the
// order-2 vector formula, the rotation form and in where values are rounded;
// those differences are the rows of kDepartures and kPrecision.
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "eigensolvers/eigenframe.h"
#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"

namespace orl::eigsym {

using eig::Fam;

// ---- tables ----------------------------------------------------------------

// Where the scalar quantities of a kernel are rounded.
enum class Prec {
    Single,               // single precision throughout
    SingleRootsInDouble,  // single, but sqrt(g*g + 1) and sqrt(u*u + 1) in double
    Double,               // the matrix W, v and Q in the element type; sums, norm,
                          // beta, shift, rotation values and the product P in double
};

enum class Shape { m, ma, any };

struct PrecisionRow {
    Fam fam;
    Shape shape;
    Prec f32;  // 64f kernels are double throughout
};
constexpr PrecisionRow kPrecision[] = {
    {Fam::EigenValuesSym, Shape::any, Prec::Single},
    {Fam::EigenValuesVectorsSym, Shape::m, Prec::SingleRootsInDouble},
    {Fam::EigenValuesVectorsSym, Shape::ma, Prec::Double},
};

// What a kernel does otherwise than the common steps.
enum class Dep {
    Order2TestAt2m52,          // the order-2 test of D uses 2^-52 for eps
    AlphaTestAt2m52,           // the reduction tests alpha against 2^-52
    SingularTestAt2m23,        // the singularity test uses 2^-23
    TopDownShiftSignAtZero,    // the top-down shift takes g > 0, not g > eps
    RotationThroughReciprocal, // w = 1/r scales the vectors' rotation
    SkipSmallSum,              // the reduction skips a column whose sum is not above eps
    Order2ArrayVectors,        // the order-2 vectors of the ma members
};

struct DepRow {
    Fam fam;
    Shape shape;
    int ty;    // 32 or 64, 0 both
    int vars;  // bit set of Var, 0 every kernel
    Dep dep;
};

constexpr int only(Var v) { return 1 << static_cast<int>(v); }

constexpr DepRow kDepartures[] = {
    {Fam::EigenValuesSym,        Shape::ma, 32, 0,             Dep::Order2TestAt2m52},
    {Fam::EigenValuesVectorsSym, Shape::ma, 32, only(Var::L),  Dep::AlphaTestAt2m52},
    {Fam::EigenValuesVectorsSym, Shape::ma, 64, 0,             Dep::SingularTestAt2m23},
    {Fam::EigenValuesVectorsSym, Shape::m,  32, only(Var::S2), Dep::TopDownShiftSignAtZero},
    {Fam::EigenValuesVectorsSym, Shape::ma, 0,  0,             Dep::RotationThroughReciprocal},
    {Fam::EigenValuesVectorsSym, Shape::ma, 0,  0,             Dep::SkipSmallSum},
    {Fam::EigenValuesVectorsSym, Shape::ma, 0,  0,             Dep::Order2ArrayVectors},
};

// Parallel loops over rows of W: eight elements an iteration in eight
// partial sums, used from this length on.
constexpr int kLanesFrom32 = 11, kLanesFrom64 = 9;

// The constants and forms of one kernel, gathered from the tables.
struct Rule {
    bool vectors;
    Prec prec;
    double eps, order2Eps, alphaEps, singularEps;
    bool topDownShiftSignAtZero, rotationThroughReciprocal, skipSmallSum, order2ArrayVectors;
    int lanesFrom;
};

constexpr bool applies(const DepRow& d, Fam f, bool array, int ty, Var v)
{
    return d.fam == f && (d.shape == Shape::any || (d.shape == Shape::ma) == array) && (d.ty == 0 || d.ty == ty) &&
           (d.vars == 0 || (d.vars & only(v)));
}

constexpr Rule ruleOf(Fam f, bool array, int ty, Var v)
{
    const double eps = ty == 32 ? 0x1p-23 : 0x1p-52;
    Rule r{f == Fam::EigenValuesVectorsSym, Prec::Double, eps, eps, eps, eps, false, false, false, false,
           ty == 32 ? kLanesFrom32 : kLanesFrom64};
    if (ty == 32)
        for (const PrecisionRow& p : kPrecision)
            if (p.fam == f && (p.shape == Shape::any || (p.shape == Shape::ma) == array)) r.prec = p.f32;
    for (const DepRow& d : kDepartures) {
        if (!applies(d, f, array, ty, v)) continue;
        switch (d.dep) {
        case Dep::Order2TestAt2m52: r.order2Eps = 0x1p-52; break;
        case Dep::AlphaTestAt2m52: r.alphaEps = 0x1p-52; break;
        case Dep::SingularTestAt2m23: r.singularEps = 0x1p-23; break;
        case Dep::TopDownShiftSignAtZero: r.topDownShiftSignAtZero = true; break;
        case Dep::RotationThroughReciprocal: r.rotationThroughReciprocal = true; break;
        case Dep::SkipSmallSum: r.skipSmallSum = true; break;
        case Dep::Order2ArrayVectors: r.order2ArrayVectors = true; break;
        }
    }
    return r;
}

template <Fam F, bool array, class E, Var V>
inline constexpr Rule kRule = ruleOf(F, array, sizeof(E) == 4 ? 32 : 64, V);

// The type of the scalar quantities of a kernel.
template <const Rule& R, class E>
using Scalar = std::conditional_t<R.prec == Prec::Double, double, E>;

constexpr int kSweepLimit = 30;

// ---- helpers ---------------------------------------------------------------

// sqrt(g*g + 1), in double where the kernel says so.
template <const Rule& R, class A>
inline A rootOfSquarePlusOne(A g)
{
    if constexpr (R.prec == Prec::SingleRootsInDouble)
        return A(std::sqrt(double(g) * double(g) + 1.0));
    else
        return std::sqrt(g * g + A(1));
}

// A sub-diagonal entry counts as negligible when 0.5*|e| is not above eps,
// tested exactly in double; a NaN is not above and so counts as negligible.
template <const Rule& R, class E>
inline bool negligible(E e)
{
    return !(0.5 * std::fabs(double(e)) > R.eps);
}

// Sum of row[j]*v[j], j = 0..len-1, in the kernel's precision A. From the
// kernel's length on, eight partial sums take an element each in turn and
// are added pairwise, then the tail follows in order.
template <const Rule& R, class A, class E>
inline A rowDot(const E* row, const E* v, int len)
{
    int j = 0;
    A s = A(0);
    if (len >= R.lanesFrom) {
        A p[8] = {};
        for (; j + 8 <= len; j += 8)
            for (int l = 0; l < 8; ++l) p[l] = p[l] + A(row[j + l]) * A(v[j + l]);
        s = ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
    }
    for (; j < len; ++j) s = s + A(row[j]) * A(v[j]);
    return s;
}

// ---- the stages from order 3 on -------------------------------------------

// One matrix: W (n*n, row-major in the buffer), the Householder vector v
// in the value output, and the eigenvector accessor Q of the vector family
// (an unused int in the value family).
template <const Rule& R, class E, class Q>
struct Solver {
    using A = Scalar<R, E>;
    E* w;
    E* v;  // the value output: the Householder vector, then the eigenvalues
    Q q;
    int n;
    A product = A(1);  // P, the running product of the eigenvalues

    E& W(int i, int j) const { return w[i * n + j]; }
    E& d(int i) const { return w[i * n + i]; }
    E& e(int i) const { return w[i * n + i - 1]; }

    template <class S>
    void copyIn(const S& src)
    {
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) W(i, j) = src(i, j);
        if constexpr (R.vectors)
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) q(i, j) = E(i == j ? 1 : 0);
    }

    // Builds the reflection that clears column k-1 below row k: v[k..n-1],
    // and beta = 2/h. False when the column is left as it is.
    bool householderVector(int k, A& beta)
    {
        A sum = A(0);
        for (int i = k; i < n; ++i) sum = sum + A(W(i, k - 1)) * A(W(i, k - 1));
        const A norm = std::sqrt(sum);
        for (int i = k + 1; i < n; ++i) v[i] = W(i, k - 1);
        const A alpha = W(k, k - 1);
        if constexpr (R.vectors) {
            if (R.skipSmallSum && !(sum > A(R.eps))) return false;
            if (A(R.eps) >= std::fabs(norm - alpha)) return false;
        }
        A h;
        if (alpha > A(R.alphaEps)) {
            v[k] = E(alpha + norm);
            h = (sum + norm * alpha) * A(2);
        } else if (A(R.alphaEps) >= std::fabs(alpha)) {
            v[k] = E(norm);
            h = sum + sum;
        } else {
            v[k] = E(alpha - norm);
            h = (sum - norm * alpha) * A(2);
        }
        if (!(h > A(R.eps))) return false;
        beta = A(2) / h;
        return true;
    }

    // W := (I - beta v v') W on columns k-1..n-1 and rows k..n-1.
    void reflectLeft(int k, A beta)
    {
        for (int j = k - 1; j < n; ++j) {
            A sum = A(0);
            for (int i = k; i < n; ++i) sum = sum + A(W(i, j)) * A(v[i]);
            const A x = beta * sum;
            for (int i = k; i < n; ++i) W(i, j) = E(A(W(i, j)) - x * A(v[i]));
        }
    }

    // W := W (I - beta v v') on rows k-1..n-1 and columns k..n-1.
    void reflectRight(int k, A beta)
    {
        for (int i = k - 1; i < n; ++i) {
            E* row = &W(i, 0);
            const A x = beta * rowDot<R, A>(row + k, v + k, n - k);
            for (int j = k; j < n; ++j) row[j] = E(A(row[j]) - x * A(v[j]));
        }
    }

    // The first reflection is Q itself: I - beta v v' below and right of (0, 0).
    void writeFirstReflection(A beta)
    {
        q(0, 0) = E(1);
        for (int j = 1; j < n; ++j) q(0, j) = E(0);
        for (int i = 1; i < n; ++i) {
            q(i, 0) = E(0);
            q(i, i) = E(A(1) - beta * A(v[i]) * A(v[i]));
            for (int j = i + 1; j < n; ++j) q(i, j) = q(j, i) = E(-beta * A(v[i]) * A(v[j]));
        }
    }

    // Q := Q (I - beta v v') on columns k..n-1 of rows 1..n-1.
    void accumulateReflection(int k, A beta)
    {
        for (int i = 1; i < n; ++i) {
            A sum = A(0);
            for (int j = k; j < n; ++j) sum = sum + A(v[j]) * A(q(i, j));
            const A x = beta * sum;
            for (int j = k; j < n; ++j) q(i, j) = E(A(q(i, j)) - x * A(v[j]));
        }
    }

    void reduceToTridiagonal()
    {
        for (int k = 1; k <= n - 2; ++k) {
            A beta;
            if (!householderVector(k, beta)) continue;
            reflectLeft(k, beta);
            reflectRight(k, beta);
            if constexpr (R.vectors) {
                if (k == 1)
                    writeFirstReflection(beta);
                else
                    accumulateReflection(k, beta);
            }
        }
    }

    // The shift of the block whose end entries are d[l] (with its
    // neighbour dn and the entry el between them) and d[m].
    A shiftedStart(A dl, A dn, A el, A dm, bool signAtZero) const
    {
        const A g = (dn - dl) / (A(2) * el);
        const A r = rootOfSquarePlusOne<R>(g);
        const A y = (signAtZero ? g > A(0) : g > A(R.eps)) ? g + r : g - r;
        return dm - dl + el / y;
    }

    // Rotation of columns i and i+1 of Q. `down` is the bottom-up sweep's
    // sense. The array kernels scale by w = 1/r and rotate with x and f.
    void rotateVectors(int i, A s, A c, A x, A f, A w, bool down)
    {
        for (int r = 0; r < n; ++r) {
            const A a = q(r, i), b = q(r, i + 1);
            if constexpr (R.rotationThroughReciprocal) {
                const A aw = a * w, bw = b * w;
                q(r, i) = E(down ? x * aw + f * bw : x * aw - f * bw);
                q(r, i + 1) = E(down ? x * bw - f * aw : x * bw + f * aw);
            } else {
                q(r, i) = E(down ? c * a + s * b : c * a - s * b);
                q(r, i + 1) = E(down ? c * b - s * a : s * a + c * b);
            }
        }
    }

    // One plane rotation of the sweep: from f and x, the new s, c and r.
    // False when r is not above eps (the sweep then ends early).
    bool rotation(int i, A f, A x, A r, A& s, A& c, bool down)
    {
        if (!(std::fabs(r) > A(R.eps))) return false;
        A w = A(0);
        if constexpr (R.rotationThroughReciprocal) {
            w = A(1) / r;
            s = f * w;
            c = x * w;
        } else {
            s = f / r;
            c = x / r;
        }
        if constexpr (R.vectors) rotateVectors(i, s, c, x, f, w, down);
        return true;
    }

    orlStatus sweepBottomUp(bool storeAtSplits)
    {
        for (int l = n - 1; l >= 0; --l) {
            for (int iter = 0;;) {
                int m = l;
                while (m > 0) {
                    if (negligible<R>(e(m))) {
                        if (storeAtSplits) {
                            v[m] = d(m);
                            product = product * A(d(m));
                        }
                        break;
                    }
                    --m;
                }
                if (m == l) break;
                if (iter == kSweepLimit) return orlStatusNoConvergence;
                ++iter;

                A x = shiftedStart(d(l), d(l - 1), e(l), d(m), false);
                A s = 1, c = 1, p = 0, z = 0;
                bool early = false;
                for (int i = m; i <= l - 1; ++i) {
                    const A f = s * A(e(i + 1)), b = c * A(e(i + 1));
                    const A r = std::sqrt(f * f + x * x);
                    if (i != m) e(i) = E(r);
                    if (!rotation(i, f, x, r, s, c, true)) {
                        d(i) = E(A(d(i)) - p);
                        e(m + 1) = E(0);
                        early = true;
                        break;
                    }
                    const A u = A(d(i)) - p;
                    z = (A(d(i + 1)) - u) * s + A(2) * c * b;
                    p = z * s;
                    d(i) = E(u + p);
                    x = z * c - b;
                }
                if (!early && std::fabs(z) > A(R.eps)) {
                    e(l) = E(x);
                    d(l) = E(A(d(l)) - p);
                }
            }
        }
        return orlStatusOk;
    }

    orlStatus sweepTopDown()
    {
        for (int l = 0; l < n; ++l) {
            for (int iter = 0;;) {
                int m = l;
                while (m < n - 1 && !negligible<R>(e(m + 1))) ++m;
                if (m == l) break;
                if (iter == kSweepLimit) return orlStatusNoConvergence;
                ++iter;

                A x = shiftedStart(d(l), d(l + 1), e(l + 1), d(m), R.topDownShiftSignAtZero);
                A s = 1, c = 1, p = 0, z = 0;
                int i = m - 1;
                for (; i >= l; --i) {
                    const A f = s * A(e(i + 1)), b = c * A(e(i + 1));
                    const A r = std::sqrt(f * f + x * x);
                    if (i != m - 1) e(i + 2) = E(r);
                    if (!rotation(i, f, x, r, s, c, false)) {
                        d(i + 1) = E(A(d(i + 1)) - p);
                        e(m) = E(0);
                        break;
                    }
                    const A u = A(d(i + 1)) - p;
                    z = (A(d(i)) - u) * s + A(2) * c * b;
                    p = z * s;
                    d(i + 1) = E(u + p);
                    x = z * c - b;
                }
                // After a full sweep (i = l-1) the end entries take the
                // last rotation when |z| is above eps, and also, from
                // l = 0, when it is not.
                const bool full = i < l;
                if ((full && std::fabs(z) > A(R.eps)) || i < 0) {
                    d(l) = E(A(d(l)) - p);
                    e(l + 1) = E(x);
                }
            }
        }
        return orlStatusOk;
    }

    orlStatus iterate(bool& bottomUp)
    {
        bottomUp = !(std::fabs(d(n - 1)) > std::fabs(d(0)));
        return bottomUp ? sweepBottomUp(!R.vectors) : sweepTopDown();
    }

    // The eigenvalues into the value output, and their product P. The value
    // family's bottom-up sweep has stored all but the first at its splits.
    void collect(bool bottomUp)
    {
        if (!R.vectors && bottomUp) {
            v[0] = d(0);
            product = product * A(d(0));
            return;
        }
        for (int i = 0; i < n; ++i) {
            v[i] = d(i);
            product = product * A(d(i));
        }
    }

    bool singular() const { return A(R.singularEps) >= std::fabs(product); }

    // Selection sort, largest first; the first of equal values stays.
    void sortDescending()
    {
        for (int i = 0; i < n - 1; ++i) {
            int best = i;
            for (int j = i + 1; j < n; ++j)
                if (v[j] > v[best]) best = j;
            if (best == i) continue;
            const E t = v[i];
            v[i] = v[best];
            v[best] = t;
            if constexpr (R.vectors)
                for (int r = 0; r < n; ++r) {
                    const E a = q(r, i);
                    q(r, i) = q(r, best);
                    q(r, best) = a;
                }
        }
    }

    template <class S>
    orlStatus solve(const S& src)
    {
        copyIn(src);
        reduceToTridiagonal();
        bool bottomUp;
        if (const orlStatus st = iterate(bottomUp)) return st;
        collect(bottomUp);
        if (singular()) return orlStatusSingular;
        sortDescending();
        return orlStatusOk;
    }
};

// ---- closed forms ----------------------------------------------------------

template <const Rule& R, class E, class S, class Q>
orlStatus orderOne(const S& src, E* values, const Q& q)
{
    values[0] = src(0, 0);
    if constexpr (R.vectors) q(0, 0) = E(1);
    return orlStatusOk;
}

// The rotation (cs, sn) of the order-2 vectors from c and 2b; `cTest` is
// the bound that |c| must exceed for the first form.
template <const Rule& R, class A>
void orderTwoRotation(A c, A b2, A cTest, A& cs, A& sn)
{
    if (std::fabs(c) > cTest) {
        const A u = -b2 / c;
        cs = A(1) / rootOfSquarePlusOne<R>(u);
        sn = u * cs;
    } else if (A(R.eps) >= std::fabs(b2)) {
        sn = 1;
        cs = 0;
    } else {
        const A u = -c / b2;
        sn = A(1) / rootOfSquarePlusOne<R>(u);
        cs = u * sn;
    }
}

template <const Rule& R, class E, class S, class Q>
orlStatus orderTwo(const S& src, E* w, E* values, const Q& q)
{
    using A = Scalar<R, E>;
    w[0] = src(0, 0), w[1] = src(0, 1), w[2] = src(1, 0), w[3] = src(1, 1);
    const A a = w[0], b = w[1], dd = w[3];

    const A D = a * dd - b * b;
    if (A(R.order2Eps) >= std::fabs(D)) return orlStatusSingular;
    const A t = a - dd, s = a + dd, b2 = A(2) * b;
    const A r = std::sqrt(t * t + b2 * b2);
    A lambda0, lambda1;
    int g;
    if (s > A(R.eps)) {
        lambda0 = (s + r) * A(0.5);
        lambda1 = (a * dd - b * b) / lambda0;
        g = +1;
    } else if (s >= A(-R.eps)) {
        lambda0 = A(0.5) * r;
        lambda1 = A(-0.5) * r;
        g = +1;
    } else {
        lambda0 = A(0.5) * (s - r);
        lambda1 = (a * dd - b * b) / lambda0;
        g = -1;
    }
    values[0] = E(lambda0);
    values[1] = E(lambda1);
    if constexpr (R.vectors) {
        A cs, sn;
        if constexpr (R.order2ArrayVectors) {
            orderTwoRotation<R>(t + r, b2, A(0), cs, sn);
            const A p = g == +1 ? -cs : sn, qq = g == +1 ? sn : cs;
            q(0, 0) = E(p), q(1, 0) = E(qq), q(0, 1) = E(-qq), q(1, 1) = E(p);
        } else {
            const int h = t >= A(-R.eps) ? +1 : -1;
            orderTwoRotation<R>(h == +1 ? t + r : t - r, b2, std::fabs(b2), cs, sn);
            if (g != h)
                q(0, 0) = E(sn), q(1, 0) = E(cs), q(0, 1) = E(-cs), q(1, 1) = E(sn);
            else
                q(0, 0) = E(-cs), q(1, 0) = E(sn), q(0, 1) = E(-sn), q(1, 1) = E(-cs);
        }
    }
    return orlStatusOk;
}

// ---- kernel ----------------------------------------------------------------

// One matrix of any order; `q` is the eigenvector accessor or an unused int.
template <const Rule& R, class E, class S, class Q>
orlStatus oneMatrix(const S& src, E* w, E* values, const Q& q, int n)
{
    if (n == 1) return orderOne<R, E>(src, values, q);
    if (n == 2) return orderTwo<R, E>(src, w, values, q);
    return Solver<R, E, Q>{w, values, q, n}.solve(src);
}

// The loop over matrices; it leaves at the first matrix that fails.
template <Fam F, Var V, class E, class S, class... D>
orlStatus kernel(int count, E* w, PerItem<E> values, const S& src, const D&... dst, int n)
{
    constexpr const Rule& R = kRule<F, S::array, E, V>;
    constexpr bool unit = unitStep(V);
    for (int k = 0; k < count; ++k) {
        const auto s = matItem<unit>(src, k, n);
        orlStatus st;
        if constexpr (sizeof...(D) == 0)
            st = oneMatrix<R, E>(s, w, values.item(k), 0, n);
        else
            st = oneMatrix<R, E>(s, w, values.item(k), matItem<unit>(dst, k, n)..., n);
        if (st != orlStatusOk) return st;
    }
    return orlStatusOk;
}

// The kernel that the stride2 test selects (again, in each driver slice).
template <Fam F, class E, class S, class... D>
orlStatus select(int count, E* w, PerItem<E> values, const S& src, const D&... dst, int n)
{
    if (allUnit(src, dst...)) return kernel<F, varOf(S::lay, true), E, S, D...>(count, w, values, src, dst..., n);
    return kernel<F, varOf(S::lay, false), E, S, D...>(count, w, values, src, dst..., n);
}

template <Fam F, class S, class... D>
orlStatus solve(const S& src, typename S::Elem* buffer, typename S::Elem* values, int n, int count, const D&... dst)
{
    using E = typename S::Elem;
    if (const orlStatus st = eig::check<F>(buffer && values, n, count, src, dst...)) return st;
    return eig::route<F>(
        n, count, S::lay, buffer,
        [n](int items, E* w, PerItem<E> vals, const S& s, const D&... ds) { return select<F, E, S, D...>(items, w, vals, s, ds..., n); },
        PerItem<E>{values, n}, src, dst...);
}

// ---- entries ---------------------------------------------------------------

template <Fam F, class S>
orlStatus entry(const S& src, typename S::Elem* buffer, typename S::Elem* dstValues, int widthHeight, int count = 1)
{
    return solve<F>(src, buffer, dstValues, widthHeight, count);
}

template <Fam F, class S, class D>
orlStatus entry(const S& src, typename S::Elem* buffer, const D& dstVectors, typename S::Elem* dstValues, int widthHeight,
                int count = 1)
{
    return solve<F>(src, buffer, dstValues, widthHeight, count, dstVectors);
}

}  // namespace orl::eigsym

#include "eigsym.inc"
