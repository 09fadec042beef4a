// Determinant: each kernel's expansion or elimination bit for bit in every
// member, layout and stride case, the sign after exchanges, small pivots in
// the single and the array kernels, both routes, and the argument checks.
#include <gtest/gtest.h>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Strides;

namespace {

using Item = std::vector<double>;

struct Member {
    std::string name;
    bool f32, array;
    L lay;
    std::function<std::vector<double>(int n, const std::vector<Item>&, Strides)> run;
};

template <class E, K kind, L lay, class Fn>
Member member(const char* name, Fn fn)
{
    return {name, sizeof(E) == 4, t::arr(kind), lay, [fn](int n, const std::vector<Item>& items, Strides st) {
                const int count = int(items.size());
                t::Mat<E, kind, lay> src(n, n, count, st, 3);
                src.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); });
                std::vector<E> buffer(n * (n + 1)), out(count + 1, E(-5));
                if constexpr (t::arr(kind)) EXPECT_EQ(t::call(fn, src.args(), n, buffer.data(), out.data(), count), orlStatusOk);
                else EXPECT_EQ(t::call(fn, src.args(), n, buffer.data(), out.data()), orlStatusOk);
                EXPECT_EQ(out[count], E(-5)) << "written past the results";
                return std::vector<double>(out.begin(), out.end() - 1);
            }};
}

std::vector<Member> members()
{
#define M(E, kind, lay, fn) member<E, K::kind, L::lay>(#fn, fn)
    return {M(float, m, Std, orlmDet_m_32f),   M(float, m, P, orlmDet_m_32f_P),   M(double, m, Std, orlmDet_m_64f),
            M(double, m, P, orlmDet_m_64f_P),  M(float, ma, Std, orlmDet_ma_32f), M(float, ma, P, orlmDet_ma_32f_P),
            M(float, ma, L, orlmDet_ma_32f_L), M(double, ma, Std, orlmDet_ma_64f), M(double, ma, P, orlmDet_ma_64f_P),
            M(double, ma, L, orlmDet_ma_64f_L)};
#undef M
}

// Every member, order and stride case (extended forms only in the single plain kernel); large
// arrays on 3 threads, the driver taken above a cost of n*count = 20000 (40000: 32f _L unit).
TEST(DetValues, EveryMemberOrderStrideAndRoute)
{
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    for (const Member& m : members())
        for (auto [n, count] : {std::pair{1, 3}, {2, 3}, {3, 3}, {4, 3}, {5, 3}, {6, 3}, {7, 3}, {9, 3}, {4, 5000}, {4, 5001}, {7, 3000}})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                if (count > 3 && (!m.array || st == Strides::Wide)) continue;
                std::vector<Item> items(m.array ? count : 1, Item(n * n));
                for (Item& a : items)
                    for (double& v : a) v = m.f32 ? double(float(u(rng))) : u(rng);
                const bool ext = !m.array && m.lay == L::Std && st == Strides::Unit;
                t::Threads th(3);
                probe::reset();
                const auto out = m.run(n, items, st);
                EXPECT_EQ(probe::regions().count, n * count > (m.f32 && m.lay == L::L ? 40000 : 20000) ? 1 : 0) << m.name << " n=" << n;
                for (int k = 0; k < int(items.size()); k += 1 + k % 97 / 8) {  // every item of a small array
                    const double want = m.f32 ? ref::determinant<float>(items[k], n, ext, m.array) : ref::determinant<double>(items[k], n, ext, m.array);
                    ASSERT_TRUE(ref::sameBits(out[k], want)) << m.name << " n=" << n << " item " << k << ": " << out[k] << " vs " << want;
                }
            }
}

TEST(DetRules, SignsTolerancesAndSmallPivots)
{
    const auto permutation = [](std::vector<size_t> p) {  // row i holds its 1 in column p[i]
        Item a(p.size() * p.size(), 0.0);
        for (size_t i = 0; i < p.size(); ++i) a[i * p.size() + p[i]] = 1.0;
        return a;
    };
    for (const Member& m : members()) {
        const double t1 = m.f32 ? ref::orderTol<float>(1) : ref::orderTol<double>(1);
        const double big = m.f32 ? double(std::nextafter(float(t1), 1.f)) : std::nextafter(t1, 1.0), tiny = m.f32 ? 0 : 1e-30 * 1e-30;
        Item zero = permutation({0, 1, 2, 3, 4, 5, 6}), inf;  // the second pivot zero below the first, -2
        zero[0] = -2, zero[8] = 0, inf = zero, inf[48] = INFINITY;
        const std::tuple<const char*, Item, double, double> cases[] = {  // the expected single and array results
            {"order 7, a cycle of 7 (six exchanges)", permutation({1, 2, 3, 4, 5, 6, 0}), 1, 1},
            {"order 2 exchanged", permutation({1, 0}), -1, -1},
            {"order 1 at the tolerance", {t1}, 0, 0},
            {"order 1 above the tolerance", {-big}, -big, -big},
            {"order 2, tiny pivots pass, product underflows", {1e-30, 0, 0, 1e-30}, tiny, tiny},
            {"order 7, second pivot zero: +0.0, or -2 * (1 * 0)", zero, 0.0, -0.0},
            {"order 7, second pivot zero, last element infinite", inf, 0.0, NAN},
        };
        for (const auto& [what, a, single, array] : cases) {
            const double got = m.run(int(std::lround(std::sqrt(double(a.size())))), {a}, Strides::Unit)[0], want = m.array ? array : single;
            EXPECT_TRUE(std::isnan(want) ? std::isnan(got) : ref::sameBits(got, want)) << m.name << ": " << what << " gave " << got;
        }
    }
}

TEST(DetChecks, ClassesInOrderAndNothingWritten)
{
    t::CheckBuffers b;  // the scratch (b.fo + 32, b.go + 32) lies in the results: a failing call writes nothing there either
    const std::tuple<const char*, const char*, std::function<orlStatus()>> cases[] = {
        {"NZT", "N", [&] { return orlmDet_m_32f(b.f, 12, 4, 3, nullptr, b.fo); }},
        {"NCZT", "NC", [&] { return orlmDet_ma_64f(b.g, 72, 24, 8, 3, b.go + 32, nullptr, 0); }},
        {"NCZTO", "CZO", [&] { return orlmDet_ma_32f_L(b.tf, -4, 12, 4, 0, b.fo + 32, b.fo, 0); }},
        {"NZO", "ZO", [&] { return orlmDet_m_32f_P(b.tf, 2, 0, b.fo + 32, b.fo); }},
        {"NCZT", "T", [&] { return orlmDet_ma_32f(b.f, 0, 12, 4, 3, b.fo + 32, b.fo, 1); }},
        {"NCZTO", "TO", [&] { return orlmDet_ma_64f_P(b.tg, 4, -8, 3, b.go + 32, b.go, 1); }},
        {"NCZTO", "O", [&] { return orlmDet_ma_32f_L(b.tf, 2, 12, 4, 3, b.fo + 32, b.fo, 1); }},
    };
    for (const auto& [order, failing, call] : cases) {
        EXPECT_EQ(call(), ref::expectedStatus(order, failing)) << order << " failing " << failing;
        EXPECT_TRUE(b.untouched()) << order << " failing " << failing;
    }
}

}  // namespace
