// General eigenvalues and eigenvectors (EigenValues, EigenValuesVectorsRight,
// -Left and EigenValuesVectors): known spectra in order and sign, the 2x2
// standardisation bit for bit, eigenvalues against LAPACK, residuals of right
// and left vectors with complex pairs, the combined family against the single
// ones, NoConvergence and SmallBlock outputs and the silent stop, arrays that
// stop at the first failing matrix, the layouts and 1 to 4 threads giving the
// same bits, and the order of the argument checks.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <random>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlm.h"
#include "reference.h"

#if defined(ORLM_HAVE_LAPACKE) && __has_include(<lapacke.h>)
#include <lapacke.h>
#define HAVE_ORACLE 1
#endif

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

enum class G { Values, Right, Left, Both };
using Item = std::vector<double>;  // one n-by-n source, row-major
using cd = std::complex<double>;
constexpr double kUntouched = -555.5;

// The member of a stem for an element type, kind and layout.
#define PICK(stem)                                                                                  \
    template <class E, K k, L l>                                                                    \
    constexpr auto pick##stem()                                                                     \
    {                                                                                               \
        constexpr bool f = std::is_same_v<E, float>;                                                \
        if constexpr (f && k == K::m && l == L::Std) return &orlm##stem##_m_32f;                    \
        else if constexpr (f && k == K::m) return &orlm##stem##_m_32f_P;                            \
        else if constexpr (f && l == L::Std) return &orlm##stem##_ma_32f;                           \
        else if constexpr (f && l == L::P) return &orlm##stem##_ma_32f_P;                           \
        else if constexpr (f) return &orlm##stem##_ma_32f_L;                                        \
        else if constexpr (k == K::m && l == L::Std) return &orlm##stem##_m_64f;                    \
        else if constexpr (k == K::m) return &orlm##stem##_m_64f_P;                                 \
        else if constexpr (l == L::Std) return &orlm##stem##_ma_64f;                                \
        else if constexpr (l == L::P) return &orlm##stem##_ma_64f_P;                                \
        else return &orlm##stem##_ma_64f_L;                                                         \
    }
PICK(EigenValues)
PICK(EigenValuesVectorsRight)
PICK(EigenValuesVectorsLeft)
PICK(EigenValuesVectors)
#undef PICK

// What a call left: status, values and the vector destinations (row-major
// n-by-n per item), all read back through the layout.
template <class E>
struct Out {
    orlStatus st;
    std::vector<E> re, im, right, left;
};

template <class E>
int bufferElems(int n)
{
    std::int32_t bytes = 0;
    if (sizeof(E) == 4) orlmEigenValuesVectorsGetBufSize_32f(n, &bytes);
    else orlmEigenValuesVectorsGetBufSize_64f(n, &bytes);
    return bytes / int(sizeof(E));
}

template <G g, class E, K k = K::m, L l = L::Std>
Out<E> solve(const std::vector<Item>& items, int n, Strides st = Strides::Unit)
{
    const int count = int(items.size());
    Mat<E, k, l> s(n, n, count, st, 3);
    Mat<E, k, l, true> r(n, n, count, st, 4), lf(n, n, count, st, 5);
    s.fill([&](int q, int i, int j) { return E(items[q][i * n + j]); });
    r.fill([](int, int, int) { return E(kUntouched); });
    lf.fill([](int, int, int) { return E(kUntouched); });
    Out<E> o{0, std::vector<E>(n * count, E(kUntouched)), std::vector<E>(n * count, E(kUntouched)), {}, {}};
    std::vector<E> buf(bufferElems<E>(n), E(kUntouched));
    const auto plain = [&](auto fn, auto groups) {
        if constexpr (t::arr(k)) return t::call(fn, groups, o.re.data(), o.im.data(), n, count, buf.data());
        else return t::call(fn, groups, o.re.data(), o.im.data(), n, buf.data());
    };
    if constexpr (g == G::Values) o.st = plain(pickEigenValues<E, k, l>(), s.args());
    if constexpr (g == G::Right) o.st = plain(pickEigenValuesVectorsRight<E, k, l>(), std::tuple_cat(s.args(), r.args()));
    if constexpr (g == G::Left) o.st = plain(pickEigenValuesVectorsLeft<E, k, l>(), std::tuple_cat(s.args(), r.args()));
    if constexpr (g == G::Both) o.st = plain(pickEigenValuesVectors<E, k, l>(), std::tuple_cat(s.args(), r.args(), lf.args()));
    for (int q = 0; q < count; ++q)
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) o.right.push_back(r(q, i, j)), o.left.push_back(lf(q, i, j));
    if constexpr (g == G::Left) o.left = o.right;
    return o;
}

std::vector<Item> randomItems(int n, int count, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<Item> v(count, Item(n * n));
    for (auto& it : v)
        for (auto& x : it) x = u(rng);
    return v;
}

template <class E>
bool sameBits(const std::vector<E>& a, const std::vector<E>& b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t x = 0; x < a.size(); ++x)
        if (!t::sameBits(a[x], b[x])) return false;
    return true;
}

template <class E>
constexpr double tol = sizeof(E) == 4 ? 2e-5 : 1e-12;

// ---- eigenvalues: known spectra --------------------------------------------

struct Spectrum {
    const char* what;
    int n;
    Item a;
    std::vector<cd> values;  // in the order returned
    bool exact;
};

const Spectrum kSpectra[] = {
    {"order 1", 1, {5}, {{5, 0}}, true},
    {"zero matrix", 3, Item(9, 0.0), {{0, 0}, {0, 0}, {0, 0}}, true},
    {"rotation by 90 degrees", 2, {0, -1, 1, 0}, {{0, 1}, {0, -1}}, true},
    {"equal diagonal, b and c of one sign: a pair", 2, {1, 2, 3, 1}, {{1, 2.449489742783178}, {1, -2.449489742783178}}, false},
    {"upper triangular: roots exchanged", 2, {2, 1, 0, 3}, {{3, 0}, {2, 0}}, true},
    {"diagonal, unsorted", 2, {2, 0, 0, 5}, {{2, 0}, {5, 0}}, true},
    {"lower triangular: diagonal as it stands", 3, {1, 0, 0, 2, 4, 0, 3, 5, 6}, {{1, 0}, {4, 0}, {6, 0}}, true},
    {"companion of (x-1)(x-2)(x-3)", 3, {0, 0, 6, 1, 0, -11, 0, 1, 6}, {{1, 0}, {2, 0}, {3, 0}}, false},
    {"two rotations and a real value", 5,
     {0, -2, 0, 0, 0,  2, 0, 0, 0, 0,  0, 0, 3, 0, 0,  0, 0, 0, 1, 1,  0, 0, 0, -1, 1},
     {{0, 2}, {0, -2}, {3, 0}, {1, 1}, {1, -1}}, false},
};

template <class E>
void checkSpectra()
{
    for (const Spectrum& s : kSpectra) {
        SCOPED_TRACE(s.what);
        for (G g : {G::Values, G::Right}) {
            const Out<E> o = g == G::Values ? solve<G::Values, E>({s.a}, s.n) : solve<G::Right, E>({s.a}, s.n);
            ASSERT_EQ(o.st, orlStatusOk);
            for (int k = 0; k < s.n; ++k) {
                if (s.exact) {
                    EXPECT_EQ(o.re[k], E(s.values[k].real())) << k;
                    EXPECT_EQ(o.im[k], E(s.values[k].imag())) << k;
                } else {
                    EXPECT_NEAR(o.re[k], s.values[k].real(), tol<E> * 10) << k;
                    EXPECT_NEAR(o.im[k], s.values[k].imag(), tol<E> * 10) << k;
                }
            }
        }
    }
}

TEST(EigenValues, KnownSpectraInOrderAndSign)
{
    checkSpectra<double>();
    checkSpectra<float>();
}

// Order 2 never splits and never reflects: the values are the standardised
// roots of H = the transpose of the source, bit for bit, in every branch.
template <class E>
void checkStandardisation()
{
    const E u = std::numeric_limits<E>::epsilon();
    struct Block {
        const char* what;
        E a, b, c, d;
    } const blocks[] = {
        {"b zero: exchange", 2, 0, 1, 3},
        {"equal diagonal", 1, 2, 3, 1},
        {"real roots", 4, 1, 2, 3},
        {"complex pair after the rotation", 1, -5, 2, 3},
        {"nearly equal real roots", 1 + u, 2 * u, 2 * u, 1},
        {"both off-diagonals negative", 1 + u, -2 * u, -2 * u, 1},
        {"scaled complex pair", 0.1f, -7.25f, 0.3f, -0.2f},
    };
    for (const Block& b : blocks) {
        SCOPED_TRACE(b.what);
        const auto want = ref::standardisedRoots<E>(b.a, b.b, b.c, b.d);
        const Out<E> o = solve<G::Values, E>({{b.a, b.c, b.b, b.d}}, 2);  // source = transpose of H
        ASSERT_EQ(o.st, orlStatusOk);
        for (int k = 0; k < 2; ++k) {
            EXPECT_TRUE(t::sameBits(o.re[k], want[k].real())) << o.re[k] << " " << want[k].real();
            EXPECT_TRUE(t::sameBits(o.im[k], want[k].imag())) << o.im[k] << " " << want[k].imag();
        }
    }
}

TEST(EigenValues, StandardisationOfTwoByTwoBitForBit)
{
    checkStandardisation<double>();
    checkStandardisation<float>();
}

// A 32f matrix scaled by 2^-60: every subdiagonal entry is under the absolute
// ulp, so the values family ends at once on the Hessenberg diagonal (all real),
// while the vector families keep iterating and find the complex pair. (Their
// reflectors square the tiny bulge unscaled, so the pair is not accurate.)
TEST(EigenValues, AbsoluteDeflationEndsTinyMatricesAtOnce)
{
    const int n = 4;
    Item tiny = randomItems(n, 1, 21)[0];  // values 1.52, -0.46 +- 0.87i, 0.17
    for (double& x : tiny) x = std::ldexp(x, -60);
    const Out<float> v = solve<G::Values, float>({tiny}, n), r = solve<G::Right, float>({tiny}, n);
    ASSERT_EQ(v.st, orlStatusOk);
    ASSERT_EQ(r.st, orlStatusOk);
    int pairs = 0;
    for (int k = 0; k < n; ++k) {
        EXPECT_EQ(v.im[k], 0.0f) << k;
        pairs += r.im[k] > 0;
    }
    EXPECT_EQ(pairs, 1);
}

// ---- random matrices: oracle, pairs, residuals ------------------------------

// Complex pairs: positive imaginary part first, the conjugate next to it.
template <class E>
void expectPairs(const std::vector<E>& re, const std::vector<E>& im, int n)
{
    for (int k = 0; k < n; ++k) {
        if (im[k] == 0) continue;
        ASSERT_GT(im[k], 0) << k;
        ASSERT_LT(k + 1, n);
        EXPECT_EQ(re[k + 1], re[k]);
        EXPECT_EQ(im[k + 1], -im[k]);
        ++k;
    }
}

template <class E>
void checkValues(int n, const Item& a)
{
    const Out<E> o = solve<G::Values, E>({a}, n);
    ASSERT_EQ(o.st, orlStatusOk);
    expectPairs(o.re, o.im, n);
    double trace = 0, sum = 0;
    for (int k = 0; k < n; ++k) trace += a[k * n + k], sum += o.re[k];
    EXPECT_NEAR(sum, trace, tol<E> * n);
#ifdef HAVE_ORACLE
    Item w = a, wr(n), wi(n);
    ASSERT_EQ(LAPACKE_dgeev(LAPACK_ROW_MAJOR, 'N', 'N', n, w.data(), n, wr.data(), wi.data(), nullptr, 1, nullptr, 1), 0);
    std::vector<bool> used(n);
    for (int k = 0; k < n; ++k) {
        int best = -1;
        for (int q = 0; q < n; ++q)
            if (!used[q] && (best < 0 || std::abs(cd(wr[q], wi[q]) - cd(o.re[k], o.im[k])) <
                                             std::abs(cd(wr[best], wi[best]) - cd(o.re[k], o.im[k]))))
                best = q;
        used[best] = true;
        EXPECT_LT(std::abs(cd(wr[best], wi[best]) - cd(o.re[k], o.im[k])), tol<E> * 50) << "value " << k;
    }
#endif
}

// Right: the transpose of A times x = lambda x. Left: A times the conjugate of
// y = lambda times it (u^H H = lambda u^H with H the transpose of A). Unit
// (joint) length; in a pair the largest component is real.
template <class E>
void checkVectors(int n, const Item& a, const std::vector<E>& re, const std::vector<E>& im, const std::vector<E>& v, bool left)
{
    const auto at = [&](int r, int c) { return left ? a[r * n + c] : a[c * n + r]; };
    for (int k = 0; k < n; ++k) {
        const bool pair = im[k] != 0;
        const double sgn = left ? -1 : 1;
        const auto vec = [&](int r) { return cd(v[r * n + k], pair ? sgn * v[r * n + k + 1] : 0.0); };
        double len = 0, big = 0;
        int p = 0;
        for (int r = 0; r < n; ++r) {
            len += std::norm(vec(r));
            if (std::norm(vec(r)) > big) big = std::norm(vec(r)), p = r;
        }
        EXPECT_NEAR(len, 1.0, tol<E> * 4) << "column " << k;
        if (pair) EXPECT_NEAR(vec(p).imag(), 0.0, tol<E>) << "column " << k;
        EXPECT_LT(ref::eigenResidual(n, at, cd(re[k], im[k]), vec), tol<E> * 20 * n) << "column " << k << (left ? " left" : " right");
        if (pair) ++k;
    }
}

template <class E>
void checkRandom()
{
    for (int n = 1; n <= 10; ++n) {
        for (const Item& a : randomItems(n, 12, 100 + n)) {
            SCOPED_TRACE(testing::Message() << "n " << n);
            checkValues<E>(n, a);
            const Out<E> both = solve<G::Both, E>({a}, n), r = solve<G::Right, E>({a}, n), l = solve<G::Left, E>({a}, n);
            ASSERT_EQ(both.st, orlStatusOk);
            checkVectors<E>(n, a, both.re, both.im, both.right, false);
            checkVectors<E>(n, a, both.re, both.im, both.left, true);
            expectPairs(both.re, both.im, n);
            // The combined family gives what each single one gives.
            EXPECT_TRUE(sameBits(both.right, r.right) && sameBits(both.left, l.left));
            EXPECT_TRUE(sameBits(both.re, r.re) && sameBits(both.im, l.im));
        }
    }
}

TEST(EigenVectors, RandomMatricesResidualsAndOracle64f) { checkRandom<double>(); }
TEST(EigenVectors, RandomMatricesResidualsAndOracle32f) { checkRandom<float>(); }

TEST(EigenVectors, SmallExamples)
{
    const double h = std::sqrt(0.5);
    struct Row {
        const char* what;
        int n;
        Item a, right, left;  // row-major; NaN where NaN is expected
    } const rows[] = {
        {"order 1", 1, {-3}, {1}, {1}},
        {"upper triangular", 2, {2, 1, 0, 3}, {0, -h, 1, h}, {h, -1, h, 0}},
        {"rotation: a pair", 2, {0, -1, 1, 0}, {h, 0, 0, h}, {h, 0, 0, h}},
        {"rotation the other way: negative real pivot kept", 2, {0, 1, -1, 0}, {-h, 0, 0, h}, {-h, 0, 0, h}},
        {"diagonal: axis vectors", 3, {2, 0, 0, 0, -1, 0, 0, 0, 5}, {1, 0, 0, 0, 1, 0, 0, 0, 1}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
        {"equal diagonal, same signs: zeroed rotation", 2, {1, 2, 3, 1}, Item(4, NAN), Item(4, NAN)},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        const Out<double> o = solve<G::Both, double>({r.a}, r.n);
        const Out<float> f = solve<G::Both, float>({r.a}, r.n);
        ASSERT_EQ(o.st, orlStatusOk);
        ASSERT_EQ(f.st, orlStatusOk);
        for (int x = 0; x < r.n * r.n; ++x) {
            if (std::isnan(r.right[x])) {
                EXPECT_TRUE(std::isnan(o.right[x]) && std::isnan(o.left[x]) && std::isnan(f.right[x])) << x;
                continue;
            }
            EXPECT_NEAR(o.right[x], r.right[x], 1e-15) << x;
            EXPECT_NEAR(o.left[x], r.left[x], 1e-15) << x;
            EXPECT_NEAR(f.right[x], r.right[x], 1e-6) << x;
            EXPECT_NEAR(f.left[x], r.left[x], 1e-6) << x;
        }
    }
}

TEST(EigenVectors, DefectiveEigenvalueGivesFiniteVectors)
{
    const Item jordan = {2, 1, 0, 0, 2, 1, 0, 0, 2};
    const Out<double> o = solve<G::Both, double>({jordan}, 3);
    ASSERT_EQ(o.st, orlStatusOk);
    for (int x = 0; x < 9; ++x) EXPECT_TRUE(std::isfinite(o.right[x]) && std::isfinite(o.left[x]));
    checkVectors<double>(3, jordan, o.re, o.im, o.right, false);
}

// ---- failures --------------------------------------------------------------

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Badly scaled matrices that use up the 30n sweeps; the values family's
// absolute test and the vector families' relative test part ways on the last.
struct Failing {
    const char* what;
    Item a32, a64;
    bool valuesFail, vectorsFail;
};
const Failing kFailing[] = {
    {"both tests", {-2, 2, 2, 1e30, 1, 1, -1, -1, 2}, {-2, 2, 2, 1e200, 1, 1, -1, -1, 2}, true, true},
    {"absolute test only", {1e30, -2, -1, 1, 0, -1, -2, 0, 1}, {1e250, -2, -1, 1, 0, -1, -2, 0, 1}, true, false},
};

// The failing 3x3 block with the value 5 beside it, which deflates first.
Item withFive(const Item& a)
{
    Item b(16, 0.0);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) b[i * 4 + j] = a[i * 3 + j];
    b[15] = 5;
    return b;
}

// After NoConvergence the values of the undeflated block stay as given, the
// deflated one is written, and no vector is.
template <class E>
void expectNoConvergence(const Out<E>& o)
{
    EXPECT_EQ(o.st, orlStatusNoConvergence);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(o.re[k], E(kUntouched)) << k;
    EXPECT_EQ(o.re[3], E(5));
    EXPECT_EQ(o.im[3], E(0));
    for (E x : o.right) EXPECT_EQ(x, E(kUntouched));
}

template <class E>
void checkFailing()
{
    for (const Failing& f : kFailing) {
        SCOPED_TRACE(f.what);
        const Item a = withFive(sizeof(E) == 4 ? f.a32 : f.a64);
        const Out<E> v = solve<G::Values, E>({a}, 4), b = solve<G::Both, E>({a}, 4);
        if (f.valuesFail) expectNoConvergence(v);
        else EXPECT_EQ(v.st, orlStatusOk);
        if (f.vectorsFail) expectNoConvergence(b);
        else EXPECT_EQ(b.st, orlStatusOk);
    }
}

TEST(EigenFailures, NoConvergence)
{
    checkFailing<double>();
    checkFailing<float>();
}

// A NaN diagonal block whose off-diagonals lie under the threshold of the
// complex solve: orlStatusSmallBlock from the side whose substitution meets
// it, with the values complete and no vector written. The right pass runs
// first in the combined family. Below a real eigenvalue the same block ends
// the kernel silently with orlStatusOk.
TEST(EigenFailures, SmallBlockAndSilentStop)
{
    // The other block is a pair 0 +- i with a tiny upper and a huge lower
    // off-diagonal, so that the relative deflation keeps both blocks whole.
    const double e = 1e-20, x = kNaN, t = 1e-30, C = 1e30;
    const Item upper = {x, e, 0, 0, -e, x, 0, 0, 0, 0, 0, C, 0, 0, -t, 0};  // NaN block first in the Schur form
    const Item lower = {0, C, 0, 0, -t, 0, 0, 0, 0, 0, x, e, 0, 0, -e, x};  // NaN block last
    const Item silent = {x, e, 0, -e, x, 0, 0, 0, 1};
    struct Row {
        const char* what;
        const Item& a;
        int n;
        orlStatus right, left, both;
    } const rows[] = {
        {"NaN block first", upper, 4, orlStatusSmallBlock, orlStatusOk, orlStatusSmallBlock},
        {"NaN block last", lower, 4, orlStatusOk, orlStatusSmallBlock, orlStatusSmallBlock},
        {"real 2x2 solve: silent", silent, 3, orlStatusOk, orlStatusOk, orlStatusOk},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        const Out<double> ri = solve<G::Right, double>({r.a}, r.n), le = solve<G::Left, double>({r.a}, r.n),
                          bo = solve<G::Both, double>({r.a}, r.n);
        EXPECT_EQ(ri.st, r.right);
        EXPECT_EQ(le.st, r.left);
        EXPECT_EQ(bo.st, r.both);
        for (const Out<double>* o : {&ri, &le, &bo}) {
            for (int k = 0; k < r.n; ++k) EXPECT_NE(o->im[k], kUntouched);  // values complete
            const bool written = o->right[0] != kUntouched, silentStop = r.n == 3 && o != &le;
            EXPECT_EQ(written, o->st == orlStatusOk && !silentStop) << "vectors written";
        }
    }
}

// NaN and infinite elements end within the iteration budget in a status or
// a result, in every family.
TEST(EigenFailures, NonFiniteElementsEnd)
{
    for (double bad : {kNaN, double(INFINITY), -double(INFINITY), 1e308}) {
        for (int at : {0, 7, 24}) {
            Item a = randomItems(5, 1, 3)[0];
            a[at] = bad;
            for (orlStatus st : {solve<G::Values, double>({a}, 5).st, solve<G::Both, double>({a}, 5).st,
                                 solve<G::Values, float>({a}, 5).st, solve<G::Both, float>({a}, 5).st})
                EXPECT_TRUE(st == orlStatusOk || st == orlStatusNoConvergence || st == orlStatusSmallBlock) << st;
        }
    }
}

// Arrays stop at the first failing matrix: earlier ones complete, later ones
// untouched; the silent stop ends the array too, with orlStatusOk.
TEST(EigenFailures, ArraysStopAtFirstFailure)
{
    const Item good = randomItems(3, 1, 9)[0];
    const Item bad = kFailing[0].a64;
    const Item silent = {kNaN, 1e-20, 0, -1e-20, kNaN, 0, 0, 0, 1};
    const Out<double> one = solve<G::Both, double>({good}, 3);
    for (int failing = 0; failing < 2; ++failing) {
        const Out<double> o = solve<G::Both, double, K::ma>({good, failing ? bad : silent, good}, 3);
        EXPECT_EQ(o.st, failing ? orlStatusNoConvergence : orlStatusOk);
        EXPECT_TRUE(sameBits(std::vector<double>(o.right.begin(), o.right.begin() + 9), one.right));
        EXPECT_TRUE(sameBits(std::vector<double>(o.re.begin(), o.re.begin() + 3), one.re));
        for (int x = 6; x < 9; ++x) EXPECT_EQ(o.re[x], kUntouched);
        for (int x = 9; x < 27; ++x) EXPECT_EQ(o.right[x], kUntouched);
    }
    const Out<double> v = solve<G::Values, double, K::ma>({good, bad, good}, 3);
    EXPECT_EQ(v.st, orlStatusNoConvergence);
    for (int x = 6; x < 9; ++x) EXPECT_EQ(v.re[x], kUntouched);
}

// ---- layouts and threads ---------------------------------------------------

template <G g, class E>
void checkLayouts()
{
    const int n = 5;
    const auto items = randomItems(n, 4, 77);
    std::vector<Out<E>> outs = {solve<g, E, K::ma, L::Std>(items, n), solve<g, E, K::ma, L::Std>(items, n, Strides::Wide),
                                solve<g, E, K::ma, L::P>(items, n), solve<g, E, K::ma, L::L>(items, n),
                                solve<g, E, K::ma, L::L>(items, n, Strides::Wide)};
    for (int q = 0; q < 4; ++q) {
        for (const Out<E> one : {solve<g, E, K::m, L::Std>({items[q]}, n, Strides::Wide), solve<g, E, K::m, L::P>({items[q]}, n)}) {
            ASSERT_EQ(one.st, orlStatusOk);
            const auto part = [&](const std::vector<E>& v, int per) { return std::vector<E>(v.begin() + q * per, v.begin() + (q + 1) * per); };
            for (const Out<E>& o : outs) {
                ASSERT_EQ(o.st, orlStatusOk);
                EXPECT_TRUE(sameBits(part(o.re, n), one.re) && sameBits(part(o.im, n), one.im)) << "item " << q;
                EXPECT_TRUE(sameBits(part(o.right, n * n), one.right) && sameBits(part(o.left, n * n), one.left)) << "item " << q;
            }
        }
    }
}

TEST(EigenLayouts, SameNumbersInEveryLayout)
{
    checkLayouts<G::Values, double>();
    checkLayouts<G::Both, double>();
    checkLayouts<G::Right, float>();
    checkLayouts<G::Left, float>();
}

// Work n*(n+1)*count above 10000 (values) and n*(3n+1)*count above 7000
// (vectors) takes the driver; every thread count gives the same bits.
TEST(EigenLayouts, SameBitsForOneToFourThreads)
{
    const int n = 4, count = 600;
    const auto items = randomItems(n, count, 5);
    Out<double> base, baseV;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        probe::reset();
        const Out<double> o = solve<G::Both, double, K::ma, L::P>(items, n);
        const Out<double> v = solve<G::Values, double, K::ma, L::L>(items, n);
        ASSERT_EQ(o.st, orlStatusOk);
        ASSERT_EQ(v.st, orlStatusOk);
        EXPECT_EQ(probe::regions().count, T > 1 ? 2 : 0) << T;
        if (T == 1) {
            base = o, baseV = v;
            continue;
        }
        EXPECT_TRUE(sameBits(o.re, base.re) && sameBits(o.im, base.im) && sameBits(v.re, baseV.re)) << T;
        EXPECT_TRUE(sameBits(o.right, base.right) && sameBits(o.left, base.left)) << T;
    }
}

// ---- checks ----------------------------------------------------------------

// Pointers, then the order, then the count, then offsets and strides operand
// by operand; nothing is written on a failure.
TEST(EigenChecks, OrderOfChecksAndNothingWritten)
{
    double src[16] = {}, dst[16], dst2[16], re[4], im[4], buf[4 * 17];
    const double* tbl[16];
    double* dtbl[16];
    for (int x = 0; x < 16; ++x) tbl[x] = src + x, dtbl[x] = dst + x;
    std::fill(dst, dst + 16, kUntouched);
    std::fill(re, re + 4, kUntouched);
    EXPECT_EQ(orlmEigenValues_m_64f(src, 32, 8, re, im, 4, nullptr), orlStatusNullPointer);
    EXPECT_EQ(orlmEigenValues_ma_64f(src, 128, 32, 8, re, im, 0, 0, buf), orlStatusSize);
    EXPECT_EQ(orlmEigenValues_ma_64f(src, 128, 32, 12, re, im, 4, 0, buf), orlStatusCount);
    EXPECT_EQ(orlmEigenValuesVectorsRight_m_64f(src, 32, 8, dst, 32, 12, re, im, 4, buf), orlStatusStride);
    EXPECT_EQ(orlmEigenValuesVectorsLeft_m_64f_P(tbl, -8, dtbl, 0, re, im, 4, buf), orlStatusOffset);
    // Right and Left _ma_P: srcOffset, srcStride0, dstOffset, dstStride0.
    EXPECT_EQ(orlmEigenValuesVectorsRight_ma_64f_P(tbl, 0, 4, dtbl, -8, 128, re, im, 4, 1, buf), orlStatusStride);
    EXPECT_EQ(orlmEigenValuesVectorsRight_ma_64f_P(tbl, 0, 128, dtbl, -8, 4, re, im, 4, 1, buf), orlStatusOffset);
    // Both _ma_P: srcOffset, srcStride0, rightOffset, leftOffset, then the stride0 pair.
    EXPECT_EQ(orlmEigenValuesVectors_ma_64f_P(tbl, 0, 128, dtbl, 0, 4, dtbl, 4, 128, re, im, 4, 1, buf), orlStatusOffset);
    EXPECT_EQ(orlmEigenValuesVectors_ma_64f(src, 128, 32, 8, dst, 128, 32, 8, dst2, 128, 32, 4, re, im, 4, 1, buf),
              orlStatusStride);
    EXPECT_EQ(orlmEigenValues_ma_32f(reinterpret_cast<float*>(src), 64, 16, 6, reinterpret_cast<float*>(re),
                                     reinterpret_cast<float*>(im), 4, 1, reinterpret_cast<float*>(buf)),
              orlStatusStride);
    for (int x = 0; x < 16; ++x) EXPECT_EQ(dst[x], kUntouched);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(re[x], kUntouched);
}

}  // namespace
