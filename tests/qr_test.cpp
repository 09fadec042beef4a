// QR decomposition and back-substitution: R and the stored reflector tails
// bit for bit in every member, shape and stride case, the squared-norm test
// and what stands after it fails, arrays that stop, the route with its
// per-thread scratch (the caller's buffer unused there) and the thread count,
// least-squares solves of random systems, and the argument checks.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "orlm.h"
#include "solvers.h"

namespace {

using namespace solvers::names;

// ---- reference: the steps as documented ---------------------------------------

template <class E>
Outcome refDecomp(int w, int h, const Vec1& src)
{
    const E eps = sizeof(E) == 4 ? E(0x1p-23) : E(0x1p-52);
    std::vector<E> a(src.begin(), src.end()), buf(h);
    auto A = [&](int i, int j) -> E& { return a[i * w + j]; };
    auto out = [&](orlStatus st) { return Outcome{st, {Vec1(a.begin(), a.end())}, false}; };
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
Vec1 refSolve(int w, int h, const Vec1& f, const Vec1& rhs)
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

// ---- members -----------------------------------------------------------------

ORL_SOLVER_LISTS(QRDecomp, QRBackSubst, true)

Vec1 expectQR(const Member& m, int w, int h, const Vec1& a)
{
    return (m.f32 ? refDecomp<float>(w, h, a) : refDecomp<double>(w, h, a)).out[0];
}

Vec1 expectX(const Member& m, const Case& c, int k)
{
    const Vec1& f = c.mats[m.shape == Shape::mava ? k : 0];
    return m.f32 ? refSolve<float>(c.w, c.h, f, c.rhs[k]) : refSolve<double>(c.w, c.h, f, c.rhs[k]);
}

Vec1 random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Vec1 a(n);
    for (double& v : a) v = m.round(u(rng));
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
    for (const Member& m : list)
        for (auto [w, h] : kShapes)
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    Case c{w, h, {}, {}};
                    for (int k = 0; k < (m.array() ? 3 : 1); ++k) c.mats.push_back(random(m, w * h, rng));
                    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " in place" : ""));
                    const Outcome o = m.run(c, st, inPlace);
                    ASSERT_EQ(o.st, orlStatusOk);
                    for (size_t k = 0; k < c.mats.size(); ++k) expectBits(o.out[k], expectQR(m, w, h, c.mats[k]), "");
                    if (HasFailure()) return;
                }
}

// Worked by hand: the column (3, 4) has norm 5, v = (1, 1/2), beta = -1.6,
// R = -5; b = (6, 8) gives Q^T b = (-10, 0) and x = 2.
TEST(QRDecompValues, HandWorkedCase)
{
    for (const Member& m : decomps()) expectBits(m.run({1, 2, {{3, 4}, {3, 4}}, {}}, Strides::Unit, false).out[0], {-5, 0.5}, m.name);
    for (const Member& m : substs()) expectBits(m.run({1, 2, {{-5, 0.5}, {-5, 0.5}}, {{6, 8}, {6, 8}}}, Strides::Unit, false).out[0], {2}, m.name);
}

// The test on the squared norm: strict, absolute, NaN passing; no test on
// the last column of a square matrix. t^2 is eps/2 (32f) or eps/4 (64f).
TEST(QRDecompRules, SquaredNormTest)
{
    struct {
        const char* what;
        int w, h;
        std::function<Vec1(const Member&)> a;
        orlStatus st;
    } const cases[] = {
        {"squared norm below eps fails", 1, 4, [](const Member& m) { return Vec1{m.f32 ? 0x1p-12 : 0x1p-27, 0, 0, 0}; }, orlStatusDivByZero},
        {"squared norm eps passes (strict)", 1, 4, [](const Member& m) { return m.f32 ? Vec1{0x1p-12, 0, 0x1p-12, 0} : Vec1(4, 0x1p-27); }, orlStatusOk},
        {"1e-4 (32f), 1e-9 (64f) in a short column fails", 2, 3,
         [](const Member& m) {
             const double v = m.round(m.f32 ? 1e-4 : 1e-9);
             return Vec1{v, 1, v, 2, v, 3};
         },
         orlStatusDivByZero},
        {"second column zero fails at k = 1", 2, 3, [](const Member&) { return Vec1{1, 0, 2, 0, 2, 0}; }, orlStatusDivByZero},
        {"zero last column of 3x3 passes", 3, 3, [](const Member&) { return Vec1{1, 2, 0, 3, 4, 0, 5, 7, 0}; }, orlStatusOk},
        {"1x1 zero passes", 1, 1, [](const Member&) { return Vec1{0}; }, orlStatusOk},
        {"NaN column passes", 2, 2, [](const Member&) { return Vec1{NAN, 1, 1, 1}; }, orlStatusOk},
        {"zero pivot", 2, 3, [](const Member&) { return Vec1{0, 1, 3, 1, 4, 2}; }, orlStatusOk},
        {"infinite element", 2, 3, [](const Member&) { return Vec1{1, INFINITY, 3, 1, 4, 2}; }, orlStatusOk},
    };
    for (const Member& m : decomps()) {
        for (const auto& c : cases) {
            const Vec1 a = c.a(m);
            const Outcome o = m.run({c.w, c.h, std::vector<Vec1>(2, a), {}}, Strides::Wide, false);
            SCOPED_TRACE(m.name + ": " + c.what);
            EXPECT_EQ(o.st, c.st);
            EXPECT_EQ((m.f32 ? refDecomp<float>(c.w, c.h, a) : refDecomp<double>(c.w, c.h, a)).st, c.st);
            expectBits(o.out[0], expectQR(m, c.w, c.h, a), "");
        }
        // A zero pivot takes s negative: R(0, 0) = +5 for the column (0, 3, 4).
        EXPECT_NEAR(m.run({1, 3, {{0, 3, 4}, {0, 3, 4}}, {}}, Strides::Unit, false).out[0][0], 5.0, 1e-5) << m.name;
    }
}

// Arrays stop at the first failing matrix, and each slice of the parallel
// route for itself; there each thread works in scratch of its own and the
// caller's buffer is not used.
TEST(QRDecompFailure, ArraysThatStop)
{
    std::mt19937 rng(2);
    const Vec1 bad = {1, 0, 2, 0, 2, 0};  // 2x3 failing at k = 1
    for (const Member& m : decomps()) {
        if (!m.array()) continue;
        const int count = 250;  // 2*3*2*250 is above every limit
        Case c{2, 3, {}, {}};
        for (int k = 0; k < count; ++k) c.mats.push_back(k == 3 || k == 4 ? bad : random(m, 6, rng));
        for (int T : {1, 2}) {
            t::Threads th(T);
            const Outcome o = m.run(c, Strides::Unit, false);
            SCOPED_TRACE(m.name + " T=" + std::to_string(T));
            EXPECT_EQ(o.st, orlStatusDivByZero);
            EXPECT_EQ(o.bufferUsed, T == 1);
            expectBits(o.out[2], expectQR(m, 2, 3, c.mats[2]), "item 2");
            expectBits(o.out[3], expectQR(m, 2, 3, bad), "failing item");
            EXPECT_EQ(o.out[4], Vec1(6, kUntouched));
            EXPECT_EQ(o.out[count - 1] != Vec1(6, kUntouched), T == 2);
        }
    }
}

// ---- back-substitution -------------------------------------------------------------

Case randomSystems(const Member& m, int w, int h, int count, std::mt19937& rng)
{
    Case c{w, h, {}, {}};
    for (int f = 0; f < (m.shape == Shape::mava ? count : 1); ++f) {
        Vec1 a = random(m, w * h, rng);
        for (int i = 0; i < w; ++i) a[i * w + i] += a[i * w + i] < 0 ? -1 : 1;
        c.mats.push_back(a);
    }
    for (int k = 0; k < count; ++k) c.rhs.push_back(random(m, h, rng));
    return c;
}

// All values, and dst = rhs where width = height; a zero on the diagonal
// of R gives an infinity and no failure.
TEST(QRBackSubstValues, EveryMemberShapeAndStrideMatches)
{
    std::mt19937 rng(4);
    const auto list = substs();
    ASSERT_EQ(list.size(), 16u);
    for (const Member& m : list) {
        for (auto [w, h] : kShapes)
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (bool inPlace : {false, true}) {
                    if (inPlace && w != h) continue;
                    const Case c = randomSystems(m, w, h, m.shape == Shape::mv ? 1 : 3, rng);
                    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + (st == Strides::Wide ? " wide" : "") + (inPlace ? " dst = rhs" : ""));
                    const Outcome o = m.run(c, st, inPlace);
                    for (size_t k = 0; k < c.rhs.size(); ++k) expectBits(o.out[k], expectX(m, c, int(k)), "");
                    if (HasFailure()) return;
                }
        const Vec1 r = {1, 2, 0, 0, 4, 0, 0, 0, 0};
        EXPECT_TRUE(std::isinf(m.run({3, 3, {r, r}, {{1, 1, 1}, {1, 1, 1}}}, Strides::Unit, false).out[0][2])) << m.name;
    }
}

// ---- route -------------------------------------------------------------------------

// 2x3 items: decomposition 2*w*h*count, mva w*h + (w+h)*count, mava
// (w*h + w + h)*count, against 2800 (standard) or 1800; at the limit and one above.
TEST(QRRoute, LimitsAndThreadCounts)
{
    std::mt19937 rng(5);
    std::vector<Member> list = decomps();
    for (const Member& m : substs()) list.push_back(m);
    for (const Member& m : list) {
        if (!m.array()) continue;
        const int limit = m.lay == L::Std ? 2800 : 1800;
        const int perItem = m.shape == Shape::ma ? 12 : m.shape == Shape::mva ? 5 : 11, fixed = m.shape == Shape::mva ? 6 : 0;
        for (int count : {(limit - fixed) / perItem, (limit - fixed) / perItem + 1}) {
            Case c = randomSystems(m, 2, 3, count, rng);
            if (m.shape == Shape::ma) c.mats.resize(count, c.mats[0]);
            solvers::expectRouteAndThreads(m, c, Strides::Wide, fixed + perItem * count, limit);
        }
    }
}

// ---- decomposition and solve together ----------------------------------------

// Random square and tall systems of sizes 1 to 10 through the single
// members: the least-squares residual is orthogonal to the columns of A.
TEST(QRSolve, RandomSquareAndTallSystemsOfSizesOneToTen)
{
    std::mt19937 rng(6);
    const auto ds = decomps(), ss = substs();
    for (int i : {0, 1}) {  // the m and mv members, 32f and 64f
        const Member &d = ds[i], &s = ss[i];
        for (int h = 1; h <= 10; ++h)
            for (int w : {1, (h + 1) / 2, h}) {
                const Vec1 a = random(d, w * h, rng), b = random(d, h, rng);
                const Outcome f = d.run({w, h, {a}, {}}, Strides::Unit, false);
                ASSERT_EQ(f.st, orlStatusOk);
                const Vec1 x = s.run({w, h, f.out, {b}}, Strides::Unit, false).out[0];
                std::vector<long double> r(h);
                long double scale = 1;
                for (int k = 0; k < h; ++k) {
                    r[k] = b[k];
                    for (int j = 0; j < w; ++j) r[k] -= (long double)a[k * w + j] * x[j], scale = std::max(scale, std::fabs((long double)x[j]));
                }
                // Random matrices of these sizes are seldom ill-conditioned; allow for it generously.
                const long double tol = 1e4L * h * (d.f32 ? 0x1p-23L : 0x1p-52L) * scale;
                for (int j = 0; j < w; ++j) {
                    long double g = 0;
                    for (int k = 0; k < h; ++k) g += (long double)a[k * w + j] * r[k];
                    EXPECT_LE(std::fabs(g), tol) << d.name << " " << w << "x" << h << " column " << j;
                }
            }
    }
}

// ---- argument checks -------------------------------------------------------------

TEST(QRChecks, ClassesInOrderAndNothingWritten)
{
    solvers::Pools p;
    auto& [f, fo, fb, g, go, gb, tf, to, tg, tgo] = p;
    solvers::expectChecks(p, {
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
    });
}

}  // namespace
