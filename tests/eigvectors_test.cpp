// General eigenvalues and eigenvectors: known results, 2x2 standardisation bit
// for bit, LAPACK and residuals, failure outputs, arrays, layouts, checks.
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
using t::Strides;

namespace {

enum class G { Values, Right, Left, Both };
using Item = std::vector<double>;  // one n-by-n source, row-major
using cd = std::complex<double>;
constexpr double kUntouched = -555.5, kNaN = std::numeric_limits<double>::quiet_NaN();

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

template <G g, class E, K k = K::m, L l = L::Std>
Out<E> solve(const std::vector<Item>& items, int n, Strides st = Strides::Unit)
{
    const int count = int(items.size());
    t::Mat<E, k, l> s(n, n, count, st, 3);
    t::Mat<E, k, l, true> r(n, n, count, st, 4), lf(n, n, count, st, 5);
    s.fill([&](int q, int i, int j) { return E(items[q][i * n + j]); });
    r.fill([](int, int, int) { return E(kUntouched); });
    lf.fill([](int, int, int) { return E(kUntouched); });
    Out<E> o{0, std::vector<E>(n * count, E(kUntouched)), std::vector<E>(n * count, E(kUntouched)), {}, {}};
    std::int32_t bytes = 0;
    (sizeof(E) == 4 ? orlmEigenValuesVectorsGetBufSize_32f : orlmEigenValuesVectorsGetBufSize_64f)(n, &bytes);
    std::vector<E> buf(bytes / sizeof(E), E(kUntouched));
    const auto call = [&](auto fn, auto groups) {
        if constexpr (t::arr(k)) return t::call(fn, groups, o.re.data(), o.im.data(), n, count, buf.data());
        else return t::call(fn, groups, o.re.data(), o.im.data(), n, buf.data());
    };
    if constexpr (g == G::Values) o.st = call(pickEigenValues<E, k, l>(), s.args());
    if constexpr (g == G::Right) o.st = call(pickEigenValuesVectorsRight<E, k, l>(), std::tuple_cat(s.args(), r.args()));
    if constexpr (g == G::Left) o.st = call(pickEigenValuesVectorsLeft<E, k, l>(), std::tuple_cat(s.args(), r.args()));
    if constexpr (g == G::Both) o.st = call(pickEigenValuesVectors<E, k, l>(), std::tuple_cat(s.args(), r.args(), lf.args()));
    for (int q = 0; q < count; ++q)
        for (int i = 0; i < n * n; ++i) o.right.push_back(r(q, i / n, i % n)), o.left.push_back(lf(q, i / n, i % n));
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
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](E x, E y) { return t::sameBits(x, y); });
}

template <class E>
constexpr double tol = sizeof(E) == 4 ? 2e-5 : 1e-12;

// Tests that run in both types.
template <class E>
struct Eigen : testing::Test {};
using BothTypes = testing::Types<double, float>;
TYPED_TEST_SUITE(Eigen, BothTypes);


// Values in the order returned (exact or near) and the combined family's vectors.
const double h = std::sqrt(0.5);
const struct Known {
    const char* what;
    int n;
    Item a;
    std::vector<cd> values;
    bool exact;
    Item right, left;
} kKnown[] = {
    {"order 1", 1, {5}, {{5, 0}}, true, {1}, {1}},
    {"zero matrix", 3, Item(9, 0.0), {{0, 0}, {0, 0}, {0, 0}}, true, {}, {}},
    {"rotation by 90 degrees: a pair", 2, {0, -1, 1, 0}, {{0, 1}, {0, -1}}, true, {h, 0, 0, h}, {h, 0, 0, h}},
    {"rotation the other way: negative real pivot kept", 2, {0, 1, -1, 0}, {{0, 1}, {0, -1}}, true, {-h, 0, 0, h}, {-h, 0, 0, h}},
    {"equal diagonal, b and c of one sign: a pair, zeroed rotation", 2, {1, 2, 3, 1}, {{1, 2.449489742783178}, {1, -2.449489742783178}}, false, Item(4, kNaN), Item(4, kNaN)},
    {"upper triangular: roots exchanged", 2, {2, 1, 0, 3}, {{3, 0}, {2, 0}}, true, {0, -h, 1, h}, {h, -1, h, 0}},
    {"diagonal, unsorted", 2, {2, 0, 0, 5}, {{2, 0}, {5, 0}}, true, {}, {}},
    {"diagonal: axis vectors", 3, {2, 0, 0, 0, -1, 0, 0, 0, 5}, {{2, 0}, {-1, 0}, {5, 0}}, true, {1, 0, 0, 0, 1, 0, 0, 0, 1}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    {"lower triangular: diagonal as it stands", 3, {1, 0, 0, 2, 4, 0, 3, 5, 6}, {{1, 0}, {4, 0}, {6, 0}}, true, {}, {}},
    {"companion of (x-1)(x-2)(x-3)", 3, {0, 0, 6, 1, 0, -11, 0, 1, 6}, {{1, 0}, {2, 0}, {3, 0}}, false, {}, {}},
    {"two rotations and a real value", 5, {0, -2, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, -1, 1},
     {{0, 2}, {0, -2}, {3, 0}, {1, 1}, {1, -1}}, false, {}, {}},
};

TYPED_TEST(Eigen, KnownValuesAndVectors)
{
    using E = TypeParam;
    for (const Known& s : kKnown) {
        SCOPED_TRACE(s.what);
        const Out<E> v = solve<G::Values, E>({s.a}, s.n), o = solve<G::Both, E>({s.a}, s.n);
        ASSERT_TRUE(v.st == orlStatusOk && o.st == orlStatusOk);
        for (const Out<E>* x : {&v, &o})
            for (int k = 0; k < s.n; ++k) {
                if (s.exact) EXPECT_TRUE(x->re[k] == E(s.values[k].real()) && x->im[k] == E(s.values[k].imag())) << k;
                else EXPECT_LT(std::abs(cd(x->re[k], x->im[k]) - s.values[k]), tol<E> * 10) << k;
            }
        for (size_t x = 0; x < s.right.size(); ++x) {
            if (std::isnan(s.right[x])) EXPECT_TRUE(std::isnan(o.right[x]) && std::isnan(o.left[x])) << x;
            else EXPECT_TRUE(std::fabs(o.right[x] - s.right[x]) < tol<E> && std::fabs(o.left[x] - s.left[x]) < tol<E>) << x;
        }
    }
    // A defective eigenvalue still gives finite vectors.
    const Item jordan = {2, 1, 0, 0, 2, 1, 0, 0, 2};
    const Out<E> o = solve<G::Both, E>({jordan}, 3);
    ASSERT_EQ(o.st, orlStatusOk);
    for (int x = 0; x < 9; ++x) EXPECT_TRUE(std::isfinite(o.right[x]) && std::isfinite(o.left[x]));
}

// Order 2 never splits and never reflects: the values are the standardised
// roots of H = the transpose of the source, bit for bit, in every branch.
TYPED_TEST(Eigen, StandardisationOfTwoByTwoBitForBit)
{
    using E = TypeParam;
    const E u = std::numeric_limits<E>::epsilon();
    const struct { const char* what; E a, b, c, d; } blocks[] = {
        {"b zero: exchange", 2, 0, 1, 3},
        {"equal diagonal", 1, 2, 3, 1},
        {"real roots", 4, 1, 2, 3},
        {"complex pair after the rotation", 1, -5, 2, 3},
        {"nearly equal real roots", 1 + u, 2 * u, 2 * u, 1},
        {"both off-diagonals negative", 1 + u, -2 * u, -2 * u, 1},
        {"scaled complex pair", 0.1f, -7.25f, 0.3f, -0.2f},
    };
    for (const auto& b : blocks) {
        const auto want = ref::standardisedRoots<E>(b.a, b.b, b.c, b.d);
        const Out<E> o = solve<G::Values, E>({{b.a, b.c, b.b, b.d}}, 2);  // source = transpose of H
        ASSERT_EQ(o.st, orlStatusOk) << b.what;
        for (int k = 0; k < 2; ++k)
            EXPECT_TRUE(t::sameBits(o.re[k], want[k].real()) && t::sameBits(o.im[k], want[k].imag())) << b.what << ": " << o.re[k] << " " << o.im[k];
    }
}

// Complex pairs: positive imaginary part first, the conjugate next to it.
template <class E>
void expectPairs(const Out<E>& o, int n)
{
    for (int k = 0; k < n; ++k) {
        if (o.im[k] == 0) continue;
        ASSERT_TRUE(o.im[k] > 0 && k + 1 < n) << k;
        EXPECT_TRUE(o.re[k + 1] == o.re[k] && o.im[k + 1] == -o.im[k]) << k;
        ++k;
    }
}

// Right: the transpose of A times x = lambda x. Left: A times the conjugate of
// y = lambda times it (u^H H = lambda u^H with H the transpose of A). Unit
// (joint) length; in a pair the largest component is real.
template <class E>
void checkVectors(int n, const Item& a, const Out<E>& o, const std::vector<E>& v, bool left)
{
    const auto at = [&](int r, int c) { return left ? a[r * n + c] : a[c * n + r]; };
    for (int k = 0; k < n; ++k) {
        const bool pair = o.im[k] != 0;
        const auto vec = [&](int r) { return cd(v[r * n + k], pair ? (left ? -1 : 1) * v[r * n + k + 1] : 0.0); };
        double len = 0, big = 0;
        int p = 0;
        for (int r = 0; r < n; ++r) {
            len += std::norm(vec(r));
            if (std::norm(vec(r)) > big) big = std::norm(vec(r)), p = r;
        }
        EXPECT_NEAR(len, 1.0, tol<E> * 4) << "column " << k;
        if (pair) EXPECT_NEAR(vec(p).imag(), 0.0, tol<E>) << "column " << k;
        EXPECT_LT(ref::eigenResidual(n, at, cd(o.re[k], o.im[k]), vec), tol<E> * 20 * n) << "column " << k << (left ? " left" : " right");
        k += pair;
    }
}

TYPED_TEST(Eigen, RandomMatricesResidualsAndOracle)
{
    using E = TypeParam;
    for (int n = 1; n <= 10; ++n)
        for (const Item& a : randomItems(n, 8, 100 + n)) {
            SCOPED_TRACE(testing::Message() << "n " << n);
            const Out<E> v = solve<G::Values, E>({a}, n), both = solve<G::Both, E>({a}, n), r = solve<G::Right, E>({a}, n), l = solve<G::Left, E>({a}, n);
            ASSERT_TRUE(v.st == orlStatusOk && both.st == orlStatusOk);
            expectPairs(v, n);
            expectPairs(both, n);
            double trace = 0, sum = 0;
            for (int k = 0; k < n; ++k) trace += a[k * n + k], sum += v.re[k];
            EXPECT_NEAR(sum, trace, tol<E> * n);
            checkVectors<E>(n, a, both, both.right, false);
            checkVectors<E>(n, a, both, both.left, true);
            // The combined family gives what each single one gives.
            EXPECT_TRUE(sameBits(both.right, r.right) && sameBits(both.left, l.left) && sameBits(both.re, r.re) && sameBits(both.im, l.im));
#ifdef HAVE_ORACLE
            Item w = a, wr(n), wi(n);
            ASSERT_EQ(LAPACKE_dgeev(LAPACK_ROW_MAJOR, 'N', 'N', n, w.data(), n, wr.data(), wi.data(), nullptr, 1, nullptr, 1), 0);
            std::vector<bool> used(n);
            for (int k = 0; k < n; ++k) {  // the nearest unused value of the oracle
                int best = -1;
                for (int q = 0; q < n; ++q)
                    if (!used[q] && (best < 0 || std::abs(cd(wr[q], wi[q]) - cd(v.re[k], v.im[k])) < std::abs(cd(wr[best], wi[best]) - cd(v.re[k], v.im[k])))) best = q;
                used[best] = true;
                EXPECT_LT(std::abs(cd(wr[best], wi[best]) - cd(v.re[k], v.im[k])), tol<E> * 50) << "value " << k;
            }
#endif
        }
}


// A failing 3x3 block with the value 5 beside it, which deflates first.
Item withFive(const Item& a)
{
    Item b(16, 0.0);
    for (int x = 0; x < 9; ++x) b[x / 3 * 4 + x % 3] = a[x];
    b[15] = 5;
    return b;
}

// NoConvergence (badly scaled, the absolute and relative tests part ways on the
// last): the undeflated block's values stay, the deflated one is written, no
// vector. A NaN block under the complex solve's threshold: SmallBlock from the
// side whose substitution meets it (right first), values complete, no vector;
// beside a real value it stops silently with Ok. The other block, 0 +- i with a
// tiny and a huge off-diagonal, keeps both whole under the relative test.
const double e = 1e-20, x = kNaN, t = 1e-30, C = 1e30;
const Item kBoth64 = {-2, 2, 2, 1e200, 1, 1, -1, -1, 2}, kSilent = {x, e, 0, -e, x, 0, 0, 0, 1};
const struct Failing {
    const char* what;
    int n;
    Item a64, a32;  // a32 empty: 64f only
    orlStatus st[4];  // by G; -1 not looked at
    bool written[3];  // vectors written: right, left, both
} kFailing[] = {
    {"both tests", 4, withFive(kBoth64), withFive({-2, 2, 2, 1e30, 1, 1, -1, -1, 2}),
     {orlStatusNoConvergence, orlStatusNoConvergence, orlStatusNoConvergence, orlStatusNoConvergence}, {false, false, false}},
    {"absolute test only", 4, withFive({1e250, -2, -1, 1, 0, -1, -2, 0, 1}), withFive({1e30, -2, -1, 1, 0, -1, -2, 0, 1}),
     {orlStatusNoConvergence, orlStatusOk, orlStatusOk, orlStatusOk}, {true, true, true}},
    {"NaN block first", 4, {x, e, 0, 0, -e, x, 0, 0, 0, 0, 0, C, 0, 0, -t, 0}, {}, {orlStatus(-1), orlStatusSmallBlock, orlStatusOk, orlStatusSmallBlock}, {false, true, false}},
    {"NaN block last", 4, {0, C, 0, 0, -t, 0, 0, 0, 0, 0, x, e, 0, 0, -e, x}, {}, {orlStatus(-1), orlStatusOk, orlStatusSmallBlock, orlStatusSmallBlock}, {true, false, false}},
    {"real 2x2 solve: silent", 3, kSilent, {}, {orlStatus(-1), orlStatusOk, orlStatusOk, orlStatusOk}, {false, true, false}},
};

TYPED_TEST(Eigen, NoConvergenceSmallBlockAndSilentStop)
{
    using E = TypeParam;
    for (const Failing& f : kFailing) {
        if (sizeof(E) == 4 && f.a32.empty()) continue;
        SCOPED_TRACE(f.what);
        const Item& a = sizeof(E) == 4 ? f.a32 : f.a64;
        const Out<E> outs[4] = {solve<G::Values, E>({a}, f.n), solve<G::Right, E>({a}, f.n), solve<G::Left, E>({a}, f.n), solve<G::Both, E>({a}, f.n)};
        for (int g = 0; g < 4; ++g) {
            const Out<E>& o = outs[g];
            if (f.st[g] != orlStatus(-1)) EXPECT_EQ(o.st, f.st[g]) << g;
            if (o.st == orlStatusNoConvergence)
                EXPECT_TRUE(o.re[0] == E(kUntouched) && o.re[1] == E(kUntouched) && o.re[2] == E(kUntouched) && o.re[3] == E(5) && o.im[3] == E(0)) << g;
            else if (g > 0)
                EXPECT_EQ(std::count(o.im.begin(), o.im.end(), E(kUntouched)), 0) << g;  // values complete
            if (g > 0) EXPECT_EQ(o.right[0] != E(kUntouched), f.written[g - 1]) << g;
        }
    }
}

// NaN and infinite elements end within the iteration budget in a status or a result.
TEST(EigenFailures, NonFiniteElementsEnd)
{
    for (double bad : {kNaN, double(INFINITY), -double(INFINITY), 1e308})
        for (int at : {0, 7, 24}) {
            Item a = randomItems(5, 1, 3)[0];
            a[at] = bad;
            for (orlStatus st : {solve<G::Values, double>({a}, 5).st, solve<G::Both, double>({a}, 5).st, solve<G::Values, float>({a}, 5).st, solve<G::Both, float>({a}, 5).st})
                EXPECT_TRUE(st == orlStatusOk || st == orlStatusNoConvergence || st == orlStatusSmallBlock) << st;
        }
}

// Arrays stop at the first failing matrix: earlier ones complete, later ones
// untouched; the silent stop ends the array too, with orlStatusOk.
TEST(EigenFailures, ArraysStopAtFirstFailure)
{
    const Item good = randomItems(3, 1, 9)[0];
    const Out<double> one = solve<G::Both, double>({good}, 3);
    for (bool silent : {false, true}) {
        const std::vector<Item> items = {good, silent ? kSilent : kBoth64, good};
        const Out<double> o = solve<G::Both, double, K::ma>(items, 3), v = solve<G::Values, double, K::ma>(items, 3);
        EXPECT_TRUE(o.st == (silent ? orlStatusOk : orlStatusNoConvergence) && (silent || v.st == orlStatusNoConvergence));
        EXPECT_TRUE(sameBits(std::vector<double>(o.right.begin(), o.right.begin() + 9), one.right) && sameBits(std::vector<double>(o.re.begin(), o.re.begin() + 3), one.re));
        for (int x = 6; x < 9; ++x) EXPECT_TRUE(o.re[x] == kUntouched && (silent || v.re[x] == kUntouched));
        for (int x = 9; x < 27; ++x) EXPECT_EQ(o.right[x], kUntouched);
    }
}


// Every layout and stride, on the parallel route (work n(n+1)count above 10000
// for the values, n(3n+1)count above 7000 for the vectors), gives each item the
// bits of a single member.
template <G g, class E>
void checkLayouts()
{
    const int n = 4, count = 600;
    const auto items = randomItems(n, count, 77);
    t::Threads th(2);
    probe::reset();
    const Out<E> outs[] = {solve<g, E, K::ma, L::Std>(items, n), solve<g, E, K::ma, L::Std>(items, n, Strides::Wide), solve<g, E, K::ma, L::P>(items, n),
                           solve<g, E, K::ma, L::L>(items, n), solve<g, E, K::ma, L::L>(items, n, Strides::Wide)};
    EXPECT_EQ(probe::regions().count, 5);
    for (int q = 0; q < count; q += 37)
        for (const Out<E>& one : {solve<g, E, K::m, L::Std>({items[q]}, n, Strides::Wide), solve<g, E, K::m, L::P>({items[q]}, n)}) {
            ASSERT_EQ(one.st, orlStatusOk);
            const auto part = [&](const std::vector<E>& v, int per) { return std::vector<E>(v.begin() + q * per, v.begin() + (q + 1) * per); };
            for (const Out<E>& o : outs)
                EXPECT_TRUE(o.st == orlStatusOk && sameBits(part(o.re, n), one.re) && sameBits(part(o.im, n), one.im) &&
                            sameBits(part(o.right, n * n), one.right) && sameBits(part(o.left, n * n), one.left)) << "item " << q;
        }
}

TEST(EigenLayouts, SameBitsInEveryLayoutAndOnTheParallelRoute)
{
    checkLayouts<G::Values, double>();
    checkLayouts<G::Both, double>();
    checkLayouts<G::Right, float>();
    checkLayouts<G::Left, float>();
}

// Pointers, order, count, then offsets and strides operand by operand.
TEST(EigenChecks, OrderOfChecksAndNothingWritten)
{
    t::CheckBuffers p;
    auto& [f, fo, g, go, tf, to, tg, tgo, perm] = p;
    double *gb = go + 16, *re = go + 48, *im = go + 52;  // buffer and values must stay untouched too
    t::expectChecks(p, {
        {"NULL buffer", [&] { return orlmEigenValues_m_64f(g, 32, 8, re, im, 4, nullptr); }, orlStatusNullPointer},
        {"order before count", [&] { return orlmEigenValues_ma_64f(g, 128, 32, 8, re, im, 0, 0, gb); }, orlStatusSize},
        {"count before stride", [&] { return orlmEigenValues_ma_64f(g, 128, 32, 12, re, im, 4, 0, gb); }, orlStatusCount},
        {"destination stride", [&] { return orlmEigenValuesVectorsRight_m_64f(g, 32, 8, go, 32, 12, re, im, 4, gb); }, orlStatusStride},
        {"_P offset", [&] { return orlmEigenValuesVectorsLeft_m_64f_P(tg, -8, tgo, 0, re, im, 4, gb); }, orlStatusOffset},
        // Right and Left _ma_P: srcOffset, srcStride0, dstOffset, dstStride0.
        {"source stride0 before destination offset", [&] { return orlmEigenValuesVectorsRight_ma_64f_P(tg, 0, 4, tgo, -8, 128, re, im, 4, 1, gb); }, orlStatusStride},
        {"destination offset before stride0", [&] { return orlmEigenValuesVectorsRight_ma_64f_P(tg, 0, 128, tgo, -8, 4, re, im, 4, 1, gb); }, orlStatusOffset},
        // Both _ma_P: srcOffset, srcStride0, rightOffset, leftOffset, then the stride0 pair.
        {"left offset before right stride0", [&] { return orlmEigenValuesVectors_ma_64f_P(tg, 0, 128, tgo, 0, 4, tgo, 4, 128, re, im, 4, 1, gb); }, orlStatusOffset},
        {"left stride2", [&] { return orlmEigenValuesVectors_ma_64f(g, 128, 32, 8, go, 128, 32, 8, go, 128, 32, 4, re, im, 4, 1, gb); }, orlStatusStride},
        {"32f stride2 of 1.5 elements", [&] { return orlmEigenValues_ma_32f(f, 64, 16, 6, fo, fo + 4, 4, 1, fo + 8); }, orlStatusStride},
    });
}

}  // namespace
