// QR decomposition and back-substitution: R and the stored reflector tails
// bit for bit in every member, shape and stride case, the squared-norm test
// and what stands after it fails, arrays that stop, the route with its
// per-thread scratch (the caller's buffer unused there) and the thread count,
// least-squares solves of random systems, and the argument checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;

namespace {

using t::Threads;
using Item = std::vector<double>;  // h rows of w elements
using Vec1 = std::vector<double>;

constexpr double kUntouched = -777.25;

// ---- reference: the steps as documented ---------------------------------------

struct Expect {
    orlStatus st;
    Item dst;
};

template <class E>
Expect refDecomp(int w, int h, const Item& src)
{
    const E eps = sizeof(E) == 4 ? E(0x1p-23) : E(0x1p-52);
    std::vector<E> a(src.begin(), src.end()), buf(h);
    auto A = [&](int i, int j) -> E& { return a[i * w + j]; };
    auto out = [&](orlStatus st) { return Expect{st, Item(a.begin(), a.end())}; };
    const int m = w < h ? w : w - 1;
    for (int k = 0; k < m; ++k) {
        E norm2 = 0;
        for (int i = k; i < h; ++i) norm2 = norm2 + A(i, k) * A(i, k);
        if (eps > std::fabs(norm2)) return out(orlStatusDivByZero);
        E s = std::sqrt(norm2);
        buf[k] = 1;
        if (!(A(k, k) > 0)) s = -s;
        const E r = E(1) / (A(k, k) + s);
        E sum = 1;
        for (int i = k + 1; i < h; ++i) {
            const E v = A(i, k) * r;
            buf[i] = v;
            sum = sum + v * v;
        }
        const E beta = E(-2) / sum;
        for (int j = k; j < w; ++j) {
            E t = A(k, j);
            for (int i = k + 1; i < h; ++i) t = t + A(i, j) * buf[i];
            t = t * beta;
            for (int i = k; i < h; ++i) A(i, j) = A(i, j) + buf[i] * t;
        }
        for (int i = k + 1; i < h; ++i) A(i, k) = buf[i];
    }
    return out(orlStatusOk);
}

template <class E>
Vec1 refSolve(int w, int h, const Item& f, const Vec1& rhs)
{
    auto S = [&](int i, int j) { return E(f[i * w + j]); };
    std::vector<E> b(rhs.begin(), rhs.end()), x(w);
    const int m = w < h ? w : w - 1;
    for (int k = 0; k < m; ++k) {
        E t = b[k], s = 1;
        for (int i = k + 1; i < h; ++i) {
            const E v = S(i, k);
            t = t + b[i] * v;
            s = s + v * v;
        }
        t = t * (E(-2) / s);
        b[k] = b[k] + t;
        for (int i = k + 1; i < h; ++i) b[i] = b[i] + S(i, k) * t;
    }
    x[w - 1] = b[w - 1] / S(w - 1, w - 1);
    for (int i = w - 2; i >= 0; --i) {
        E s = 0;
        for (int j = i + 1; j < w; ++j) s = s + S(i, j) * x[j];
        x[i] = (b[i] - s) / S(i, i);
    }
    return Vec1(x.begin(), x.end());
}

void expectBits(const Vec1& got, const Vec1& want, const std::string& what)
{
    for (size_t x = 0; x < got.size(); ++x)
        EXPECT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x]))) << what << " element " << x << " = " << got[x] << ", expected " << want[x];
}

// ---- the members ----------------------------------------------------------------

struct Outcome {
    orlStatus st;
    std::vector<Item> dst;
    bool bufferUsed;
};

struct Decomp {
    std::string name;
    bool f32, array;
    L lay;
    std::function<Outcome(int w, int h, const std::vector<Item>&, Strides, bool inPlace)> run;
    Expect expect(int w, int h, const Item& a) const { return f32 ? refDecomp<float>(w, h, a) : refDecomp<double>(w, h, a); }
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

template <class E, K kind, L lay, class Fn>
Outcome runDecomp(Fn fn, int w, int h, const std::vector<Item>& items, Strides st, bool inPlace)
{
    const int count = int(items.size());
    Mat<E, kind, lay> src(w, h, count, st, 3);
    Mat<E, kind, lay, true> dst(w, h, count, st, 4);
    src.fill([&](int k, int i, int j) { return E(items[k][i * w + j]); });
    dst.fill([&](int k, int i, int j) { return inPlace ? E(items[k][i * w + j]) : E(kUntouched); });
    std::vector<E> buffer(h, E(kUntouched));
    auto invoke = [&](auto srcArgs) {
        const auto groups = std::tuple_cat(srcArgs, std::make_tuple(buffer.data()), dst.args());
        if constexpr (t::arr(kind))
            return t::call(fn, groups, w, h, count);
        else
            return t::call(fn, groups, w, h);
    };
    Outcome o{inPlace ? invoke(dst.args()) : invoke(src.args()), {}, false};
    for (int k = 0; k < count; ++k) {
        Item d(w * h);
        for (int x = 0; x < w * h; ++x) d[x] = dst(k, x / w, x % w);
        o.dst.push_back(d);
    }
    o.bufferUsed = std::any_of(buffer.begin(), buffer.end(), [](E v) { return v != E(kUntouched); });
    return o;
}

std::vector<Decomp> decomps()
{
    std::vector<Decomp> list;
    auto add = [&]<class E, K kind, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, t::arr(kind), lay, [fn](int w, int h, const std::vector<Item>& it, Strides st, bool ip) {
                            return runDecomp<E, kind, lay>(fn, w, h, it, st, ip);
                        }});
    };
#define ORL_ADD(shape, kind, E, ty, lay, suffix) \
    add.operator()<E, K::kind, L::lay>("orlmQRDecomp_" #shape "_" #ty #suffix, orlmQRDecomp_##shape##_##ty##suffix);
#define ORL_ADD2(shape, kind, lay, suffix) ORL_ADD(shape, kind, float, 32f, lay, suffix) ORL_ADD(shape, kind, double, 64f, lay, suffix)
    ORL_ADD2(m, m, Std, ) ORL_ADD2(m, m, P, _P) ORL_ADD2(ma, ma, Std, ) ORL_ADD2(ma, ma, P, _P) ORL_ADD2(ma, ma, L, _L)
#undef ORL_ADD2
#undef ORL_ADD
    return list;
}

enum class Shape { mv, mva, mava };

struct Problem {
    int w, h;
    std::vector<Item> factors;  // one (mv, mva) or one per item (mava)
    std::vector<Vec1> rhs;      // h elements each
};

struct Subst {
    std::string name;
    bool f32;
    Shape shape;
    L lay;
    std::function<std::vector<Vec1>(const Problem&, Strides, bool inPlace)> run;
    Vec1 expect(const Problem& pr, int k) const
    {
        const Item& f = pr.factors[shape == Shape::mava ? k : 0];
        return f32 ? refSolve<float>(pr.w, pr.h, f, pr.rhs[k]) : refSolve<double>(pr.w, pr.h, f, pr.rhs[k]);
    }
};

// dst = rhs (inPlace) needs width = height: the first w elements of rhs.
template <class E, Shape shape, L lay, class Fn>
std::vector<Vec1> runSubst(Fn fn, const Problem& pr, Strides st, bool inPlace)
{
    constexpr bool arr = shape != Shape::mv;
    const int w = pr.w, h = pr.h, count = int(pr.rhs.size());
    Mat<E, shape == Shape::mava ? K::ma : K::m, lay> a(w, h, count, st, 5);
    a.fill([&](int k, int i, int j) { return E(pr.factors[k][i * w + j]); });
    Vec<E, arr, lay> b(h, count, st, 6);
    Vec<E, arr, lay, true> x(inPlace ? h : w, count, st, 7);
    for (int k = 0; k < count; ++k) {
        for (int j = 0; j < h; ++j) b(k, j) = E(pr.rhs[k][j]);
        for (int j = 0; j < x.n; ++j) x(k, j) = inPlace ? E(pr.rhs[k][j]) : E(kUntouched);
    }
    std::vector<E> buffer(h);
    auto invoke = [&](auto rhsArgs) {
        const auto groups = std::tuple_cat(a.args(), std::make_tuple(buffer.data()), rhsArgs, x.args());
        if constexpr (arr)
            return t::call(fn, groups, w, h, count);
        else
            return t::call(fn, groups, w, h);
    };
    EXPECT_EQ(inPlace ? invoke(x.args()) : invoke(b.args()), orlStatusOk);
    std::vector<Vec1> out(count, Vec1(w));
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < w; ++j) out[k][j] = x(k, j);
    return out;
}

std::vector<Subst> substs()
{
    std::vector<Subst> list;
    auto add = [&]<class E, Shape shape, L lay>(const char* name, auto fn) {
        list.push_back({name, sizeof(E) == 4, shape, lay, [fn](const Problem& pr, Strides st, bool ip) {
                            return runSubst<E, shape, lay>(fn, pr, st, ip);
                        }});
    };
#define ORL_ADD(shape, E, ty, lay, suffix) \
    add.operator()<E, Shape::shape, L::lay>("orlmQRBackSubst_" #shape "_" #ty #suffix, orlmQRBackSubst_##shape##_##ty##suffix);
#define ORL_ADD2(shape, lay, suffix) ORL_ADD(shape, float, 32f, lay, suffix) ORL_ADD(shape, double, 64f, lay, suffix)
    ORL_ADD2(mv, Std, ) ORL_ADD2(mv, P, _P)
    ORL_ADD2(mva, Std, ) ORL_ADD2(mva, P, _P) ORL_ADD2(mva, L, _L)
    ORL_ADD2(mava, Std, ) ORL_ADD2(mava, P, _P) ORL_ADD2(mava, L, _L)
#undef ORL_ADD2
#undef ORL_ADD
    return list;
}

Item random(bool f32, int w, int h, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Item a(w * h);
    for (double& v : a) v = f32 ? double(float(u(rng))) : u(rng);
    return a;
}

// Width by height: square with and without straight-line back-substitution,
// tall, and the single element.
constexpr std::pair<int, int> kShapes[] = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7},
                                           {1, 4}, {3, 4}, {4, 6}, {2, 9}, {6, 8}};

// ---- decomposition ---------------------------------------------------------------

TEST(QRDecompValues, EveryMemberShapeAndStrideMatches)
{
    std::mt19937 rng(1);
    const auto list = decomps();
    ASSERT_EQ(list.size(), 10u);
    for (const Decomp& m : list)
        for (auto [w, h] : kShapes)
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    std::vector<Item> items;
                    for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m.f32, w, h, rng));
                    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " in place" : ""));
                    const Outcome o = m.run(w, h, items, st, inPlace);
                    ASSERT_EQ(o.st, orlStatusOk);
                    for (int k = 0; k < int(items.size()); ++k) expectBits(o.dst[k], m.expect(w, h, items[k]).dst, "item " + std::to_string(k));
                    if (HasFailure()) return;
                }
}

// Worked by hand: the column (3, 4) has norm 5, v = (1, 1/2), beta = -1.6,
// R = -5; and b = (6, 8) gives Q^T b = (-10, 0), x = 2.
TEST(QRDecompValues, HandWorkedCase)
{
    for (const Decomp& m : decomps()) {
        const Outcome o = m.run(1, 2, {{3, 4}}, Strides::Unit, false);
        EXPECT_EQ(o.st, orlStatusOk);
        EXPECT_EQ(o.dst[0], Item({-5, 0.5})) << m.name;
    }
    double buf[2], x;
    const double f[2] = {-5, 0.5}, b[2] = {6, 8};
    ASSERT_EQ(orlmQRBackSubst_mv_64f(f, 8, 8, buf, b, 8, &x, 8, 1, 2), orlStatusOk);
    EXPECT_EQ(x, 2.0);
}

struct TestCase {
    const char* what;
    int w, h;
    std::function<Item(const Decomp&)> a;
    orlStatus st;
};

// The test on the squared norm: strict, absolute, NaN passing; no test on
// the last column of a square matrix; the sign taken at a zero pivot.
TEST(QRDecompRules, SquaredNormTest)
{
    // t^2 is eps/2 (32f) or eps/4 (64f): one t fails, a column of t's summing to eps passes.
    const auto tiny = [](const Decomp& m) { return m.f32 ? 0x1p-12 : 0x1p-27; };
    const TestCase cases[] = {
        {"squared norm below eps fails", 1, 4, [&](const Decomp& m) { return Item{tiny(m), 0, 0, 0}; }, orlStatusDivByZero},
        {"squared norm eps passes (strict)", 1, 4,
         [&](const Decomp& m) { return m.f32 ? Item{tiny(m), 0, tiny(m), 0} : Item(4, tiny(m)); }, orlStatusOk},
        {"1e-4 (32f), 1e-9 (64f) in a short column fails", 2, 3,
         [](const Decomp& m) {
             const double v = m.round(m.f32 ? 1e-4 : 1e-9);
             return Item{v, 1, v, 2, v, 3};
         },
         orlStatusDivByZero},
        {"second column zero fails at k = 1", 2, 3, [](const Decomp&) { return Item{1, 0, 2, 0, 2, 0}; }, orlStatusDivByZero},
        {"zero last column of 3x3 passes", 3, 3, [](const Decomp&) { return Item{1, 2, 0, 3, 4, 0, 5, 7, 0}; }, orlStatusOk},
        {"1x1 zero passes", 1, 1, [](const Decomp&) { return Item{0}; }, orlStatusOk},
        {"NaN column passes", 2, 2, [](const Decomp&) { return Item{NAN, 1, 1, 1}; }, orlStatusOk},
        {"zero pivot takes s negative", 2, 3, [](const Decomp&) { return Item{0, 1, 3, 1, 4, 2}; }, orlStatusOk},
        {"infinite element", 2, 3, [](const Decomp&) { return Item{1, INFINITY, 3, 1, 4, 2}; }, orlStatusOk},
    };
    for (const Decomp& m : decomps())
        for (const TestCase& c : cases) {
            const Item a = c.a(m);
            const Outcome o = m.run(c.w, c.h, {a}, Strides::Wide, false);
            SCOPED_TRACE(m.name + ": " + c.what);
            EXPECT_EQ(o.st, c.st);
            const Expect e = m.expect(c.w, c.h, a);
            EXPECT_EQ(e.st, c.st);
            expectBits(o.dst[0], e.dst, "");
        }
    // A zero pivot: s is taken negative, so R(0, 0) = +5 for the column (0, 3, 4).
    for (const Decomp& m : decomps()) EXPECT_NEAR(m.run(1, 3, {{0, 3, 4}}, Strides::Unit, false).dst[0][0], 5.0, 1e-5) << m.name;
}

// Arrays stop at the first failing matrix; on the parallel route each slice
// stops for itself, every item has the same bits for 1 to 4 threads, and
// the caller's buffer is not used.
TEST(QRDecompRoute, ArraysSlicesAndThreadCounts)
{
    std::mt19937 rng(2);
    const Item bad = {1, 0, 2, 0, 2, 0};  // 2x3 failing at k = 1
    for (const Decomp& m : decomps()) {
        if (!m.array) continue;
        std::vector<Item> items;
        for (int k = 0; k < 5; ++k) items.push_back(k == 2 || k == 3 ? bad : random(m.f32, 2, 3, rng));
        Outcome o = m.run(2, 3, items, Strides::Unit, false);
        EXPECT_EQ(o.st, orlStatusDivByZero) << m.name;
        expectBits(o.dst[2], m.expect(2, 3, bad).dst, m.name + " failing item");
        EXPECT_EQ(o.dst[3], Item(6, kUntouched)) << m.name;

        // 2*2*3*count against 2800 (standard) or 1800: 250 items exceed both.
        const int count = 250;
        items.clear();
        for (int k = 0; k < count; ++k) items.push_back(random(m.f32, 2, 3, rng));
        std::vector<Item> first;
        for (int T = 1; T <= 4; ++T) {
            Threads th(T);
            probe::reset();
            o = m.run(2, 3, items, Strides::Wide, false);
            EXPECT_EQ(probe::regions().count, T > 1 ? 1 : 0) << m.name << " T=" << T;
            EXPECT_EQ(o.bufferUsed, T == 1) << m.name << " T=" << T;
            ASSERT_EQ(o.st, orlStatusOk);
            if (T == 1) first = o.dst;
            for (int k = 0; k < count; k += 7) expectBits(o.dst[k], first[k], m.name + " T=" + std::to_string(T));
        }
        items[3] = bad;
        Threads th(2);
        o = m.run(2, 3, items, Strides::Unit, false);
        EXPECT_EQ(o.st, orlStatusDivByZero) << m.name;
        EXPECT_EQ(o.dst[4], Item(6, kUntouched)) << m.name;
        expectBits(o.dst[count - 1], first[count - 1], m.name + " second slice");
    }
}

TEST(QRDecompRoute, Limits)
{
    std::mt19937 rng(3);
    for (const Decomp& m : decomps()) {
        if (!m.array) continue;
        const int limit = m.lay == L::Std ? 2800 : 1800;
        for (int count : {limit / 12, limit / 12 + 1}) {  // 2x3: cost 12*count
            std::vector<Item> items(count, random(m.f32, 2, 3, rng));
            Threads th(2);
            probe::reset();
            ASSERT_EQ(m.run(2, 3, items, Strides::Unit, false).st, orlStatusOk);
            EXPECT_EQ(probe::regions().count, 12 * count > limit ? 1 : 0) << m.name << " count " << count;
        }
    }
}

// ---- back-substitution -------------------------------------------------------------

Problem randomProblem(const Subst& m, int w, int h, int count, std::mt19937& rng)
{
    Problem pr{w, h, {}, {}};
    for (int f = 0; f < (m.shape == Shape::mava ? count : 1); ++f) {
        Item a = random(m.f32, w, h, rng);
        for (int i = 0; i < w; ++i) a[i * w + i] = a[i * w + i] < 0 ? a[i * w + i] - 1 : a[i * w + i] + 1;
        pr.factors.push_back(a);
    }
    for (int k = 0; k < count; ++k) pr.rhs.push_back(random(m.f32, 1, h, rng));
    return pr;
}

TEST(QRBackSubstValues, EveryMemberShapeAndStrideMatches)
{
    std::mt19937 rng(4);
    const auto list = substs();
    ASSERT_EQ(list.size(), 16u);
    for (const Subst& m : list)
        for (auto [w, h] : kShapes)
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const Problem pr = randomProblem(m, w, h, m.shape == Shape::mv ? 1 : 3, rng);
                SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + (st == Strides::Wide ? " wide" : ""));
                const auto got = m.run(pr, st, false);
                for (int k = 0; k < int(got.size()); ++k) expectBits(got[k], m.expect(pr, k), "item " + std::to_string(k));
                if (w == h) {
                    const auto same = m.run(pr, st, true);
                    for (int k = 0; k < int(got.size()); ++k) expectBits(same[k], got[k], "dst = rhs, item " + std::to_string(k));
                }
                if (HasFailure()) return;
            }
}

// A zero on the diagonal of R: infinities or NaNs, and no failure.
TEST(QRBackSubstValues, ZeroDiagonalGivesInfinity)
{
    for (const Subst& m : substs()) {
        Problem pr{3, 3, {{1, 2, 0, 0, 4, 0, 0, 0, 0}}, {}};
        if (m.shape == Shape::mava) pr.factors.push_back(pr.factors[0]);
        pr.rhs.assign(m.shape == Shape::mv ? 1 : 2, Vec1{1, 1, 1});
        for (const Vec1& x : m.run(pr, Strides::Unit, false)) EXPECT_TRUE(std::isinf(x[2])) << m.name;
    }
}

// mva: w*h + (w+h)*count; mava: (w*h + w + h)*count; against 2800 or 1800.
// Same bits on both routes and for 1 to 4 threads.
TEST(QRBackSubstRoute, LimitsAndThreadCounts)
{
    std::mt19937 rng(5);
    for (const Subst& m : substs()) {
        if (m.shape == Shape::mv) continue;
        const int limit = m.lay == L::Std ? 2800 : 1800;
        // 2x3: mva cost 6 + 5 count, mava 11 count.
        const int atLimit = m.shape == Shape::mva ? (limit - 6) / 5 : limit / 11;
        for (int count : {atLimit, atLimit + 1}) {
            const int cost = m.shape == Shape::mva ? 6 + 5 * count : 11 * count;
            const Problem pr = randomProblem(m, 2, 3, count, rng);
            for (int T = 1; T <= 4; ++T) {
                Threads th(T);
                probe::reset();
                const auto got = m.run(pr, Strides::Wide, false);
                EXPECT_EQ(probe::regions().count, T > 1 && cost > limit ? 1 : 0) << m.name << " count " << count << " T=" << T;
                for (int k = 0; k < count; k += 13) expectBits(got[k], m.expect(pr, k), m.name + " T=" + std::to_string(T));
            }
        }
    }
}

// ---- decomposition and solve together ----------------------------------------

// Random systems, square and tall, of sizes 1 to 10 through the single
// members: the least-squares residual is orthogonal to the columns of A.
template <class E>
void solveAndCheck(int w, int h, std::mt19937& rng)
{
    const Item a64 = random(sizeof(E) == 4, w, h, rng), b64 = random(sizeof(E) == 4, 1, h, rng);
    std::vector<E> a(a64.begin(), a64.end()), b(b64.begin(), b64.end()), f(w * h), buf(h), x(w);
    const int e = sizeof(E), s1 = w * e;
    orlStatus st, st2;
    if constexpr (sizeof(E) == 4) {
        st = orlmQRDecomp_m_32f(a.data(), s1, e, buf.data(), f.data(), s1, e, w, h);
        st2 = orlmQRBackSubst_mv_32f(f.data(), s1, e, buf.data(), b.data(), e, x.data(), e, w, h);
    } else {
        st = orlmQRDecomp_m_64f(a.data(), s1, e, buf.data(), f.data(), s1, e, w, h);
        st2 = orlmQRBackSubst_mv_64f(f.data(), s1, e, buf.data(), b.data(), e, x.data(), e, w, h);
    }
    ASSERT_EQ(st, orlStatusOk);
    ASSERT_EQ(st2, orlStatusOk);
    std::vector<long double> r(h);
    long double scale = 0;
    for (int i = 0; i < h; ++i) {
        r[i] = b[i];
        for (int j = 0; j < w; ++j) r[i] -= (long double)a[i * w + j] * x[j], scale = std::max(scale, std::fabs((long double)x[j]));
    }
    // Random matrices of these sizes are rarely ill-conditioned; allow for it generously.
    const long double tol = 1e4L * h * std::numeric_limits<E>::epsilon() * (1 + scale);
    for (int j = 0; j < w; ++j) {
        long double g = 0;
        for (int i = 0; i < h; ++i) g += (long double)a[i * w + j] * r[i];
        EXPECT_LE(std::fabs(g), tol) << w << "x" << h << " column " << j;
    }
}

TEST(QRSolve, RandomSquareAndTallSystemsOfSizesOneToTen)
{
    std::mt19937 rng(6);
    for (int h = 1; h <= 10; ++h)
        for (int w : {1, h / 2, h - 1, h}) {
            if (w < 1) continue;
            solveAndCheck<float>(w, h, rng);
            solveAndCheck<double>(w, h, rng);
        }
}

// ---- argument checks -------------------------------------------------------------

TEST(QRChecks, ClassesInOrderAndNothingWritten)
{
    float f[64], fo[64], fb[8];
    double g[64], go[64], gb[8];
    const float* tf[64];
    float* to[64];
    const double* tg[64];
    double* tgo[64];
    for (int i = 0; i < 64; ++i) {
        f[i] = float(i % 5 + 1), g[i] = i % 5 + 1, fo[i] = -1.f, go[i] = -1.0;
        tf[i] = f + i, to[i] = fo + i, tg[i] = g + i, tgo[i] = go + i;
    }
    std::fill(fb, fb + 8, -1.f);
    std::fill(gb, gb + 8, -1.0);
    auto untouched = [&] {
        return std::all_of(fo, fo + 64, [](float v) { return v == -1.f; }) && std::all_of(go, go + 64, [](double v) { return v == -1.0; }) &&
               std::all_of(fb, fb + 8, [](float v) { return v == -1.f; }) && std::all_of(gb, gb + 8, [](double v) { return v == -1.0; });
    };
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"NULL buffer at size 1", [&] { return orlmQRDecomp_m_32f(f, 4, 4, nullptr, fo, 4, 4, 1, 1); }, orlStatusNullPointer},
        {"NULL buffer before count", [&] { return orlmQRBackSubst_mava_64f_L(tg, 0, 16, 8, nullptr, tg, 0, 8, tgo, 0, 8, 2, 2, 0); }, orlStatusNullPointer},
        {"NULL rhs", [&] { return orlmQRBackSubst_mv_64f_P(tg, 0, gb, nullptr, 0, tgo, 0, 2, 2); }, orlStatusNullPointer},
        {"count before size", [&] { return orlmQRDecomp_ma_32f(f, 64, 16, 4, fb, fo, 64, 16, 4, 0, 2, 0); }, orlStatusCount},
        {"size before mismatch", [&] { return orlmQRDecomp_m_64f(g, 32, 8, gb, go, 32, 8, 3, 0); }, orlStatusSize},
        {"stride before mismatch", [&] { return orlmQRDecomp_m_32f(f, 16, 6, fb, fo, 16, 4, 3, 2); }, orlStatusStride},
        {"offset before mismatch, _P", [&] { return orlmQRDecomp_m_64f_P(tg, 4, gb, tgo, 0, 3, 2); }, orlStatusOffset},
        {"stride before offset, _L", [&] { return orlmQRDecomp_ma_32f_L(tf, 2, 16, 0, fb, to, 0, 16, 4, 2, 2, 1); }, orlStatusStride},
        {"offset before mismatch, _L", [&] { return orlmQRBackSubst_mva_32f_L(f, 16, 4, fb, tf, 2, 4, to, 0, 4, 3, 2, 1); }, orlStatusOffset},
        {"stride0 of 0 in mva", [&] { return orlmQRBackSubst_mva_64f(g, 16, 8, gb, g, 0, 8, go, 16, 8, 2, 2, 1); }, orlStatusStride},
        {"width above height", [&] { return orlmQRBackSubst_mava_32f_P(tf, 0, 64, fb, tf, 0, 64, to, 0, 64, 3, 2, 1); }, orlStatusSizeMismatch},
        {"width above height, single", [&] { return orlmQRDecomp_m_64f(g, 32, 8, gb, go, 32, 8, 4, 3); }, orlStatusSizeMismatch},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(untouched()) << c.what;
    }
}

}  // namespace
