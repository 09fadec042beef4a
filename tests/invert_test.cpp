// Matrix inverse: each method bit for bit where its table row applies (the
// adjugate with its four tests and two reciprocals, the block methods of
// 32f at orders 5 and 6 with their ties), the elimination path of orders 2
// and 7 up by property and on exact cases, order 1 in the entry, outputs
// after failure, arrays on both routes, thread counts, in-place use and the
// argument checks.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

constexpr double kUntouched = -777.25;
using Item = std::vector<double>;

// ---- reference: the closed forms -------------------------------------------

enum class Sense { TolAbove, TolAtLeast, NotAtLeast, NotAbove };

template <class E>
bool singular(Sense s, E v, E tol)
{
    const E m = std::fabs(v);
    return s == Sense::TolAbove ? tol > m : s == Sense::TolAtLeast ? tol >= m : s == Sense::NotAtLeast ? !(m >= tol) : !(m > tol);
}

// The adjugate: D along the last row, each element a cofactor times 1/D.
template <class E>
bool adjugate(const ref::Sq<E>& a, int n, Sense s, bool estimate, E tol, ref::Sq<E>& inv)
{
    const E D = ref::minorLastRow(a, n, ref::range(n), ref::range(n));
    if (singular(s, D, tol)) return false;
    E q = E(1) / D;
    if constexpr (sizeof(E) == 4)
        if (estimate) q = ref::recipNewton(D);
    inv.assign(n * n, 0);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const E c = ref::minorLastRow(a, n, ref::range(n, i), ref::range(n, j)) * q;
            inv[j * n + i] = (i + j) % 2 ? -c : c;
        }
    return true;
}

// The block method: pivot of row 0 (columns 3, 2, 1, 0 with ties to the
// earlier, then 4 and 5 only when strictly greater; `force` overrides), its
// Schur complement inverted by the adjugate at order 4 or by this method.
bool block(ref::Sq<float> a, int n, float tol, ref::Sq<float>& inv, int force = -1)
{
    const int scan[] = {3, 2, 1, 0, 4, 5};
    int pc = scan[0];
    for (int x = 1; x < n; ++x)
        if (std::fabs(a[scan[x]]) > std::fabs(a[pc])) pc = scan[x];
    if (force >= 0) pc = force;
    if (!(std::fabs(a[pc]) >= tol)) return false;
    for (int i = 0; i < n; ++i) std::swap(a[i * n], a[i * n + pc]);
    const int m = n - 1;
    const float p = ref::recipNewton(a[0]);
    ref::Sq<float> S(m * m), Si;
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < m; ++j) S[i * m + j] = a[(i + 1) * n + j + 1] - (a[(i + 1) * n] * p) * a[j + 1];
    if (!(m == 4 ? adjugate(S, 4, Sense::NotAtLeast, true, tol, Si) : block(S, m, tol, Si))) return false;
    auto dot = [m](auto x, auto y) { float s = x(0) * y(0); for (int k = 1; k < m; ++k) s = s + x(k) * y(k); return s; };
    inv.assign(n * n, 0);
    std::vector<float> w(m);
    for (int j = 0; j < m; ++j) w[j] = dot([&](int k) { return a[k + 1]; }, [&](int k) { return Si[k * m + j]; });
    const float x = dot([&](int k) { return w[k]; }, [&](int k) { return a[(k + 1) * n]; });
    inv[0] = p + (p * x) * p;
    for (int i = 0; i < m; ++i) {
        inv[i + 1] = -(w[i] * p);
        inv[(i + 1) * n] = -(dot([&](int k) { return Si[i * m + k]; }, [&](int k) { return a[(k + 1) * n]; }) * p);
        for (int j = 0; j < m; ++j) inv[(i + 1) * n + j + 1] = Si[i * m + j];
    }
    for (int j = 0; j < n; ++j) std::swap(inv[j], inv[pc * n + j]);
    return true;
}

// ---- every member through one interface ------------------------------------

struct Outcome {
    orlStatus st;
    std::vector<Item> dst;
};

struct Member {
    std::string name;
    bool f32, array;
    L lay;
    std::function<Outcome(int n, const std::vector<Item>&, Strides, bool inPlace)> run;
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

template <class E, K kind, L lay, class Fn>
Member member(const char* name, Fn fn)
{
    auto run = [fn](int n, const std::vector<Item>& items, Strides st, bool inPlace) {
        const int count = int(items.size());
        Mat<E, kind, lay> src(n, n, count, st, 5);
        Mat<E, kind, lay, true> dst(n, n, count, st, 6);
        auto load = [&](auto& m) { m.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); }); };
        load(src);
        if (inPlace) load(dst);
        else dst.fill([](int, int, int) { return E(kUntouched); });
        std::vector<E> buffer(n * (n + 1));
        auto invoke = [&](auto srcArgs) {
            const auto groups = std::tuple_cat(srcArgs, std::make_tuple(buffer.data()), dst.args());
            if constexpr (t::arr(kind)) return t::call(fn, groups, n, count);
            else return t::call(fn, groups, n);
        };
        Outcome o{inPlace ? invoke(dst.args()) : invoke(src.args()), {}};
        for (int k = 0; k < count; ++k) {
            Item d(n * n);
            for (int x = 0; x < n * n; ++x) d[x] = dst(k, x / n, x % n);
            o.dst.push_back(d);
        }
        return o;
    };
    return {name, sizeof(E) == 4, t::arr(kind), lay, run};
}

std::vector<Member> members()
{
    return {member<float, K::m, L::Std>("orlmInvert_m_32f", orlmInvert_m_32f), member<float, K::m, L::P>("orlmInvert_m_32f_P", orlmInvert_m_32f_P),
            member<double, K::m, L::Std>("orlmInvert_m_64f", orlmInvert_m_64f), member<double, K::m, L::P>("orlmInvert_m_64f_P", orlmInvert_m_64f_P),
            member<float, K::ma, L::Std>("orlmInvert_ma_32f", orlmInvert_ma_32f), member<float, K::ma, L::P>("orlmInvert_ma_32f_P", orlmInvert_ma_32f_P),
            member<float, K::ma, L::L>("orlmInvert_ma_32f_L", orlmInvert_ma_32f_L), member<double, K::ma, L::Std>("orlmInvert_ma_64f", orlmInvert_ma_64f),
            member<double, K::ma, L::P>("orlmInvert_ma_64f_P", orlmInvert_ma_64f_P), member<double, K::ma, L::L>("orlmInvert_ma_64f_L", orlmInvert_ma_64f_L)};
}

// The method rows: which test, reciprocal and tolerance a member runs at an
// order of 3 to 6 (block: the 32f plain block method).
struct Row {
    Sense sense;
    bool estimate, block;
    int units;
};

Row rowOf(const Member& m, int n, Strides st)
{
    const int rule = 2 * n * n * n;
    if (m.lay != L::P && st == Strides::Unit) {  // the plain kernels
        if (m.f32) return {n <= 4 ? Sense::TolAbove : Sense::NotAtLeast, true, n >= 5, rule};
        const int units[] = {108, 256, 250, 432};
        return {n == 3 ? Sense::TolAbove : Sense::NotAtLeast, false, false, units[n - 3]};
    }
    return {m.array ? Sense::TolAbove : Sense::NotAtLeast, false, false, rule};
}

// Expected status and inverse of one closed-form item.
template <class E>
std::pair<bool, Item> closedForm(const Member& m, const Item& src, int n, Strides st)
{
    const Row r = rowOf(m, n, st);
    const ref::Sq<E> a(src.begin(), src.end());
    ref::Sq<E> inv;
    bool ok;
    if constexpr (sizeof(E) == 4)
        ok = r.block ? block(a, n, ref::tolerance<float>(r.units), inv) : adjugate(a, n, r.sense, r.estimate, ref::tolerance<E>(r.units), inv);
    else
        ok = adjugate(a, n, r.sense, r.estimate, ref::tolerance<E>(r.units), inv);
    return {ok, Item(inv.begin(), inv.end())};
}

std::pair<bool, Item> closedForm(const Member& m, const Item& a, int n, Strides st)
{
    return m.f32 ? closedForm<float>(m, a, n, st) : closedForm<double>(m, a, n, st);
}

void expectBits(const Item& got, const Item& want, const std::string& what)
{
    for (size_t x = 0; x < want.size(); ++x)
        ASSERT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x])))
            << what << " element " << x << ": " << got[x] << " vs " << want[x];
}

// Random matrices with a heavy diagonal: well conditioned at every order.
Item random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Item a(n * n);
    for (int x = 0; x < n * n; ++x) a[x] = m.round(u(rng) + (x % (n + 1) == 0 ? 2.0 * n : 0.0));
    return a;
}

Item diag(std::vector<double> d)
{
    const int n = int(d.size());
    Item a(n * n, 0.0);
    for (int i = 0; i < n; ++i) a[i * n + i] = d[i];
    return a;
}

// A * inv = I to a few units of the type's precision.
void expectInverse(const Member& m, const Item& a, const Item& inv, int n, const std::string& what)
{
    const double eps = m.f32 ? 1e-5 : 1e-13;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            double s = 0;
            for (int k = 0; k < n; ++k) s += a[i * n + k] * inv[k * n + j];
            ASSERT_NEAR(s, i == j ? 1.0 : 0.0, eps * n) << what << " (" << i << "," << j << ")";
        }
}

// ---- values ----------------------------------------------------------------

TEST(InvertValues, EveryMemberOrderAndStride)
{
    std::mt19937 rng(1);
    for (const Member& m : members())
        for (int n : {2, 3, 4, 5, 6, 7, 8})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m, n, rng));
                const Outcome o = m.run(n, items, st, false);
                const std::string what = m.name + " n=" + std::to_string(n) + (st == Strides::Wide ? " wide" : "");
                ASSERT_EQ(o.st, orlStatusOk) << what;
                for (int k = 0; k < int(items.size()); ++k) {
                    expectInverse(m, items[k], o.dst[k], n, what);
                    if (n >= 3 && n <= 6) expectBits(o.dst[k], closedForm(m, items[k], n, st).second, what);
                }
                // The closed forms read everything first: dst may be src.
                if (n >= 3 && n <= 6) expectBits(m.run(n, items, st, true).dst[0], closedForm(m, items[0], n, st).second, what + " in place");
            }
}

// Tolerances and senses per method: D just at and below the tolerance, and
// NaN. diag(1, .., 1, d) has determinant d, and d is also what the block
// methods test last. Orders 2 and 7 (elimination) test the pivots with
// |p| >= T(n) and the determinant with T(n) >= |D|.
TEST(InvertRules, TolerancesJustAboveAndBelowAndNaN)
{
    for (const Member& m : members())
        for (int n : {2, 3, 4, 5, 6, 7})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                const bool closed = n >= 3 && n <= 6;
                const Row r = closed ? rowOf(m, n, st) : Row{Sense::TolAtLeast, false, false, 2 * n * n * n};
                const double tol = m.f32 ? double(ref::tolerance<float>(r.units)) : ref::tolerance<double>(r.units);
                const double below = m.f32 ? double(std::nextafter(float(tol), 0.f)) : std::nextafter(tol, 0.0);
                const double above = m.f32 ? double(std::nextafter(float(tol), 1.f)) : std::nextafter(tol, 1.0);
                for (double d : {tol, below, above, double(NAN)}) {
                    std::vector<double> dv(n, 1.0);
                    dv[n - 1] = d;
                    const Outcome o = m.run(n, {diag(dv)}, st, false);
                    const bool fails = m.f32 ? singular(r.sense, float(d), float(tol)) : singular(r.sense, d, tol);
                    EXPECT_EQ(o.st, fails ? orlStatusSingular : orlStatusOk) << m.name << " n=" << n << " d=" << d << (st == Strides::Wide ? " wide" : "");
                    // Near the tolerance the Newton step of the estimate overflows.
                    if (!fails && closed) expectBits(o.dst[0], closedForm(m, diag(dv), n, st).second, m.name + " value");
                    if (!fails && !closed && !std::isnan(d)) EXPECT_EQ(o.dst[0][n * n - 1], m.round(1.0 / m.round(d))) << m.name << " n=" << n;
                }
            }
}

struct Exact {
    const char* what;
    int n;
    Item a;
    orlStatus st;
    std::function<Item(const Member&)> dst;  // expected dst (kUntouched where nothing is written)
};

TEST(InvertRules, ExactCasesOfTheEliminationAndOrderOne)
{
    const Item untouched4(4, kUntouched);
    const std::vector<Exact> cases = {
        // A zero cofactor gives +-T(2)/6, not 0.
        {"diag(2, 3)", 2, diag({2, 3}), orlStatusOk, [](const Member& m) {
             const double q = m.round(1.0 / 6.0), off = m.round(-m.round(m.f32 ? ref::orderTol<float>(2) : ref::orderTol<double>(2)) * q);
             return Item{m.round(3 * q), off, off, m.round(2 * q)};
         }},
        {"{1, 2; 2, 4}: determinant 0", 2, {1, 2, 2, 4}, orlStatusSingular, [&](const Member&) { return untouched4; }},
        {"{0, 0; 0, 1}: first pivot 0", 2, {0, 0, 0, 1}, orlStatusSingular, [&](const Member&) { return untouched4; }},
        {"{1, 0; 0, NaN}: a NaN determinant passes", 2, {1, 0, 0, NAN}, orlStatusOk, [](const Member&) { return Item(4, NAN); }},
    };
    for (const Member& m : members())
        for (const Exact& c : cases) {
            const Outcome o = m.run(c.n, {c.a}, Strides::Unit, false);
            EXPECT_EQ(o.st, c.st) << m.name << ": " << c.what;
            expectBits(o.dst[0], c.dst(m), m.name + ": " + c.what);
        }
    // Order 1: the single forms need |x| > T(1), the arrays fail on T(1) >= |x|.
    for (const Member& m : members()) {
        const double t1 = m.f32 ? std::ldexp(1.0, -125) : std::ldexp(1.0, -1021);
        EXPECT_EQ(m.run(1, {{t1}}, Strides::Unit, false).st, orlStatusSingular) << m.name;
        EXPECT_EQ(m.run(1, {{NAN}}, Strides::Unit, false).st, m.array ? orlStatusOk : orlStatusSingular) << m.name;
        const Outcome o = m.run(1, {{-4}}, Strides::Wide, false);
        EXPECT_EQ(o.st, orlStatusOk);
        EXPECT_EQ(o.dst[0][0], -0.25) << m.name;
    }
}

// 64f, order 3: a determinant of 80 units of 2^-1022 fails the plain kernel
// (108 units) and passes _S2 and _P (54 units).
TEST(InvertRules, Order3Determinant80UnitsIn64f)
{
    const double d = 80 * std::ldexp(1.0, -1022);
    for (const Member& m : members()) {
        if (m.f32) continue;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const bool plain = m.lay != L::P && st == Strides::Unit;
            EXPECT_EQ(m.run(3, {diag({1, d, 1})}, st, false).st, plain ? orlStatusSingular : orlStatusOk) << m.name;
        }
    }
}

// Order 5, 32f plain: a tie in row 0 between columns 1 and 3 takes 3, one
// between 0 and 4 takes 0. The other choice gives other bits.
TEST(InvertRules, BlockMethodRowZeroTies)
{
    std::mt19937 rng(21);
    const Member m = members()[0];
    for (auto [tie, win, lose] : {std::tuple{std::pair{1, 3}, 3, 1}, std::tuple{std::pair{0, 4}, 0, 4}}) {
        int distinct = 0;
        for (int x = 0; x < 20; ++x) {
            Item a = random(m, 5, rng);
            for (int j = 0; j < 5; ++j) a[j] = m.round(a[j] / 8);
            a[tie.first] = 3, a[tie.second] = -3;
            const ref::Sq<float> af(a.begin(), a.end());
            ref::Sq<float> want, other;
            ASSERT_TRUE(block(af, 5, ref::orderTol<float>(5), want, win));
            ASSERT_TRUE(block(af, 5, ref::orderTol<float>(5), other, lose));
            distinct += want != other;
            expectBits(m.run(5, {a}, Strides::Unit, false).dst[0], Item(want.begin(), want.end()), "tie");
        }
        EXPECT_GT(distinct, 0);
    }
}

// ---- failure outputs and arrays --------------------------------------------

// Rows of dst that a failing call writes: rows 0 (order 5) or 0 and 1
// (order 6) in the 32f plain block methods, none elsewhere.
int rowsWritten(const Member& m, int n, Strides st)
{
    return (n == 5 || n == 6) && rowOf(m, n, st).block ? n - 4 : 0;
}

TEST(InvertFailure, OutputsAndArraysStopingAtTheFirstFailure)
{
    std::mt19937 rng(4);
    for (const Member& m : members())
        for (int n : {2, 3, 5, 6, 7})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 5 : 1); ++k) items.push_back(random(m, n, rng));
                const int bad = m.array ? 2 : 0;
                for (int j = 0; j < n; ++j) items[bad][(n - 1) * n + j] = 0;  // last row zero
                if (m.array) items[3] = items[bad];
                const Outcome o = m.run(n, items, st, false);
                const std::string what = m.name + " n=" + std::to_string(n);
                EXPECT_EQ(o.st, orlStatusSingular) << what;
                for (int k = 0; k < bad; ++k) expectInverse(m, items[k], o.dst[k], n, what);
                for (int x = 0; x < n * n; ++x)
                    EXPECT_EQ(o.dst[bad][x], x / n < rowsWritten(m, n, st) ? items[bad][x] : kUntouched) << what << " element " << x;
                for (int k = bad + 1; k < int(items.size()); ++k) EXPECT_EQ(o.dst[k], Item(n * n, kUntouched)) << what;
            }
}

// 1 to 4 threads give the same bits, with each thread's scratch for the
// elimination; on the parallel route each slice stops for itself.
TEST(InvertRoute, ThreadCountsAndSlices)
{
    std::mt19937 rng(8);
    for (const Member& m : members()) {
        if (!m.array) continue;
        for (auto [n, count] : {std::pair{4, 2501}, std::pair{2, 10001}}) {
            std::vector<Item> items;
            for (int k = 0; k < count; ++k) items.push_back(random(m, n, rng));
            const bool parallel = 2 * n * count > (m.f32 && m.lay == L::L ? 40000 : 20000);
            std::vector<Item> one;
            for (int T : {1, 2, 3, 4}) {
                t::Threads th(T);
                probe::reset();
                const Outcome o = m.run(n, items, Strides::Unit, false);
                EXPECT_EQ(probe::regions().count, parallel && T > 1 ? 1 : 0) << m.name << " T=" << T;
                if (T == 1) one = o.dst;
                for (int k = 0; k < count; k += 1 + k % 53) expectBits(o.dst[k], one[k], m.name + " T=" + std::to_string(T));
            }
            t::Threads th(2);
            items[5] = Item(n * n, 0.0);
            const Outcome o = m.run(n, items, Strides::Unit, false);
            EXPECT_EQ(o.st, orlStatusSingular);
            EXPECT_EQ(o.dst[6][0], kUntouched);
            EXPECT_EQ(o.dst[count - 1][0] != kUntouched, parallel) << m.name << ": last slice";
        }
    }
}

TEST(InvertChecks, ClassesInOrderAndNothingWritten)
{
    float f[64], buf[64], out[64];
    double g[64], gbuf[64], gout[64];
    const float* tf[64];
    float* to[64];
    const double* tg[64];
    double* tgo[64];
    for (int i = 0; i < 64; ++i) f[i] = float(i % 5), g[i] = i % 5, out[i] = -1, gout[i] = -1, tf[i] = f + i, tg[i] = g + i, to[i] = out + i, tgo[i] = gout + i;
    const std::pair<orlStatus, std::function<orlStatus()>> cases[] = {
        {orlStatusNullPointer, [&] { return orlmInvert_m_32f(f, 12, 4, nullptr, out, 12, 4, 1); }},
        {orlStatusNullPointer, [&] { return orlmInvert_ma_64f(g, 72, 24, 8, gbuf, nullptr, 72, 24, 8, 3, 0); }},
        {orlStatusCount, [&] { return orlmInvert_ma_32f_L(tf, -4, 12, 4, buf, to, 0, 12, 4, 0, 0); }},
        {orlStatusSize, [&] { return orlmInvert_m_32f_P(tf, 2, buf, to, 0, 0); }},
        {orlStatusStride, [&] { return orlmInvert_m_64f(g, 24, 8, gbuf, gout, 12, 8, 3); }},
        {orlStatusStride, [&] { return orlmInvert_ma_64f_P(tg, 4, -8, gbuf, tgo, 0, 72, 3, 1); }},
        {orlStatusOffset, [&] { return orlmInvert_ma_32f_L(tf, 2, 12, 4, buf, to, 0, 12, 4, 3, 1); }},
    };
    for (const auto& [want, call] : cases) {
        EXPECT_EQ(call(), want);
        for (int i = 0; i < 64; ++i) ASSERT_TRUE(out[i] == -1 && gout[i] == -1);
    }
}

}  // namespace
