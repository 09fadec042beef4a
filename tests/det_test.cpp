// Determinant: each kernel's expansion or elimination bit for bit in every
// member and layout, the sign after exchanges, small pivots on the single and
// the array route, thread counts, and the argument checks.
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

using Item = std::vector<double>;

struct Member {
    std::string name;
    bool f32, array;
    L lay;
    std::function<std::vector<double>(int n, const std::vector<Item>&, Strides)> run;
};

template <class E>
double expected(const Item& src, int n, bool extendedForms, bool array)
{
    const ref::Sq<E> a(src.begin(), src.end());
    if (n >= 3 && n <= 6) return extendedForms ? ref::detExtended(a, n) : ref::minorLastRow(a, n, ref::range(n), ref::range(n));
    ref::Sq<E> w = a;
    std::vector<int> P = ref::range(n);
    const E tol = ref::orderTol<E>(n);
    E d = 1, sign = 1;
    if (ref::eliminate(w, n, P, n - 1, tol, true, d, sign) < n - 1) {
        if (!array) return 0.0;
        sign = 0;
    }
    const E x = w[P[n - 1] * n + n - 1];
    return tol >= std::fabs(x) ? E(0) : d * (x * sign);
}

template <class E, K kind, L lay, class Fn>
Member member(const char* name, Fn fn)
{
    auto run = [fn](int n, const std::vector<Item>& items, Strides st) {
        const int count = int(items.size());
        Mat<E, kind, lay> src(n, n, count, st, 3);
        src.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); });
        std::vector<E> buffer(n * (n + 1) + 1), out(count + 1, E(-5));
        orlStatus st2;
        if constexpr (t::arr(kind))
            st2 = t::call(fn, src.args(), n, buffer.data(), out.data(), count);
        else
            st2 = t::call(fn, src.args(), n, buffer.data(), out.data());
        EXPECT_EQ(st2, orlStatusOk);
        EXPECT_EQ(out[count], E(-5)) << "written past the results";
        return std::vector<double>(out.begin(), out.end() - 1);
    };
    return {name, sizeof(E) == 4, t::arr(kind), lay, run};
}

std::vector<Member> members()
{
    return {member<float, K::m, L::Std>("orlmDet_m_32f", orlmDet_m_32f), member<float, K::m, L::P>("orlmDet_m_32f_P", orlmDet_m_32f_P),
            member<double, K::m, L::Std>("orlmDet_m_64f", orlmDet_m_64f), member<double, K::m, L::P>("orlmDet_m_64f_P", orlmDet_m_64f_P),
            member<float, K::ma, L::Std>("orlmDet_ma_32f", orlmDet_ma_32f), member<float, K::ma, L::P>("orlmDet_ma_32f_P", orlmDet_ma_32f_P),
            member<float, K::ma, L::L>("orlmDet_ma_32f_L", orlmDet_ma_32f_L), member<double, K::ma, L::Std>("orlmDet_ma_64f", orlmDet_ma_64f),
            member<double, K::ma, L::P>("orlmDet_ma_64f_P", orlmDet_ma_64f_P), member<double, K::ma, L::L>("orlmDet_ma_64f_L", orlmDet_ma_64f_L)};
}

// What a member must give for item `a`: the extended forms only in the single
// plain kernel (unit element stride).
double expect(const Member& m, const Item& a, int n, Strides st)
{
    const bool ext = !m.array && m.lay == L::Std && st == Strides::Unit;
    return m.f32 ? expected<float>(a, n, ext, m.array) : expected<double>(a, n, ext, m.array);
}

Item random(const Member& m, int n, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    Item a(n * n);
    for (double& v : a) v = m.f32 ? double(float(u(rng))) : u(rng);
    return a;
}

// A permutation matrix of order n: row i holds its 1 in column p[i].
Item permutation(const std::vector<int>& p)
{
    const int n = int(p.size());
    Item a(n * n, 0.0);
    for (int i = 0; i < n; ++i) a[i * n + p[i]] = 1.0;
    return a;
}

TEST(DetValues, EveryMemberOrderAndStrideMatchesItsKernel)
{
    std::mt19937 rng(3);
    for (const Member& m : members())
        for (int n : {1, 2, 3, 4, 5, 6, 7, 9})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                std::vector<Item> items;
                for (int k = 0; k < (m.array ? 3 : 1); ++k) items.push_back(random(m, n, rng));
                const auto out = m.run(n, items, st);
                for (int k = 0; k < int(items.size()); ++k)
                    EXPECT_TRUE(ref::sameBits(out[k], expect(m, items[k], n, st)))
                        << m.name << " n=" << n << " item " << k << ": " << out[k] << " vs " << expect(m, items[k], n, st);
            }
}

struct Case {
    const char* what;
    Item a;
    double single, array;  // expected results of the single and the array kernels
};

TEST(DetRules, SignsTolerancesAndSmallPivots)
{
    const double t1f = std::ldexp(1.0, -125), t1d = std::ldexp(1.0, -1021);
    for (const Member& m : members()) {
        const double t1 = m.f32 ? t1f : t1d;
        const double big = m.f32 ? double(std::nextafter(float(t1), 1.f)) : std::nextafter(t1, 1.0);
        const std::vector<Case> cases = {
            {"order 7, three exchanges", permutation({1, 0, 3, 2, 5, 4, 6}), -1, -1},
            {"order 7, a cycle of 7 (six exchanges)", permutation({1, 2, 3, 4, 5, 6, 0}), 1, 1},
            {"order 2 exchanged", permutation({1, 0}), -1, -1},
            {"order 1 at the tolerance", {t1}, 0, 0},
            {"order 1 above the tolerance", {-big}, -big, -big},
            {"order 2, tiny pivots pass, product underflows", {1e-30, 0, 0, 1e-30}, m.f32 ? 0 : 1e-30 * 1e-30, m.f32 ? 0 : 1e-30 * 1e-30},
            // Column 1 is zero below the first pivot -2: the single kernels end
            // with +0.0, the array kernels give -2 * (1 * 0) = -0.0.
            {"order 7, second pivot zero", [] { Item a = permutation({0, 1, 2, 3, 4, 5, 6}); a[0] = -2, a[1 * 7 + 1] = 0; return a; }(), 0.0, -0.0},
            {"order 7, second pivot zero, last element infinite",
             [] { Item a = permutation({0, 1, 2, 3, 4, 5, 6}); a[0] = -2, a[1 * 7 + 1] = 0, a[48] = INFINITY; return a; }(), 0.0, NAN},
        };
        for (const Case& c : cases) {
            const int n = int(std::lround(std::sqrt(double(c.a.size()))));
            const double got = m.run(n, {c.a}, Strides::Unit)[0], want = m.array ? c.array : c.single;
            EXPECT_TRUE(std::isnan(want) ? std::isnan(got) : ref::sameBits(got, want)) << m.name << ": " << c.what << " gave " << got;
        }
    }
}

// Large arrays on every route and thread count give the same bits, and every
// item gets a result (nothing stops an array).
TEST(DetRoute, ThreadsOneToFourGiveTheSameBits)
{
    std::mt19937 rng(5);
    for (const Member& m : members()) {
        if (!m.array) continue;
        for (auto [n, count] : {std::pair{4, 5001}, std::pair{7, 3000}}) {
            std::vector<Item> items;
            for (int k = 0; k < count; ++k) items.push_back(random(m, n, rng));
            items[7] = Item(n * n, 0.0);
            for (int T : {1, 2, 3, 4}) {
                t::Threads th(T);
                probe::reset();
                const auto out = m.run(n, items, Strides::Unit);
                EXPECT_EQ(probe::regions().count, T > 1 && n * count > (m.f32 && m.lay == L::L ? 40000 : 20000) ? 1 : 0) << m.name << " T=" << T;
                for (int k = 0; k < count; k += 1 + k % 97)
                    ASSERT_TRUE(ref::sameBits(out[k], expect(m, items[k], n, Strides::Unit))) << m.name << " n=" << n << " T=" << T << " item " << k;
            }
        }
    }
}

TEST(DetChecks, ClassesInOrderAndNothingWritten)
{
    float f[64], buf[64], out[4] = {-1, -1, -1, -1};
    double g[64], gbuf[64], gout[4] = {-1, -1, -1, -1};
    const float* tf[64];
    const double* tg[64];
    for (int i = 0; i < 64; ++i) f[i] = float(i % 5), g[i] = i % 5, tf[i] = f + i, tg[i] = g + i;
    const std::pair<orlStatus, std::function<orlStatus()>> cases[] = {
        {orlStatusNullPointer, [&] { return orlmDet_m_32f(f, 12, 4, 3, nullptr, out); }},
        {orlStatusNullPointer, [&] { return orlmDet_ma_64f(g, 72, 24, 8, 3, gbuf, nullptr, 0); }},
        {orlStatusCount, [&] { return orlmDet_ma_32f_L(tf, -4, 12, 4, 0, buf, out, 0); }},
        {orlStatusSize, [&] { return orlmDet_m_32f_P(tf, 2, 0, buf, out); }},
        {orlStatusStride, [&] { return orlmDet_ma_32f(f, 0, 12, 4, 3, buf, out, 1); }},
        {orlStatusStride, [&] { return orlmDet_ma_64f_P(tg, 4, -8, 3, gbuf, gout, 1); }},
        {orlStatusOffset, [&] { return orlmDet_ma_32f_L(tf, 2, 12, 4, 3, buf, out, 1); }},
    };
    for (const auto& [want, call] : cases) {
        EXPECT_EQ(call(), want);
        EXPECT_TRUE(out[0] == -1 && gout[0] == -1);
    }
}

}  // namespace
