// Multiplication by a constant: every member in every layout gives one
// rounded product per element (with zeros, infinities and NaN), constant
// arrays by stride0 and by list and offset, in place, the checks and their
// order, the route and its limits.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "operands.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Vec;

// Sources with the values that a shortcut would get wrong: signed zeros,
// infinities, NaN, subnormals, and plain random numbers.
template <class E>
E sourceValue(std::mt19937& rng, int k, int i, int j)
{
    constexpr E inf = std::numeric_limits<E>::infinity();
    const E special[] = {E(-0.0), inf, -inf, std::numeric_limits<E>::quiet_NaN(), std::numeric_limits<E>::denorm_min(), E(3)};
    if ((k + i + 2 * j) % 5 == 0) return special[(k + i + j) % 6];
    return std::uniform_real_distribution<E>(E(-4), E(4))(rng);
}

// The constants tried: zero (NaN on infinity), a negative value whose
// products round, and a huge one that overflows.
template <class E>
const E kValues[] = {E(0), E(-0.3), std::numeric_limits<E>::max() / 2};

// mc tc mac tac: dst(i, j) = src(i, j) * value, src read transposed in tc and
// tac (stored with width rows and height columns); rows of lanes and a rest.
template <class E, K sk, L lay, class Fn>
void matrixMember(Fn fn, const char* name)
{
    constexpr bool array = t::arr(sk);
    for (Strides st : {Strides::Unit, Strides::Wide})
        for (auto [W, H] : std::initializer_list<std::pair<int, int>>{{3, 2}, {1, 7}, {9, 4}, {4, 4}, {6, 5}})
            for (E value : kValues<E>) {
                if (lay == L::P && st == Strides::Wide) continue;
                Mat<E, sk, lay> S(W, H, 3, st, 5);
                Mat<E, array ? K::ma : K::m, lay, true> D(W, H, 3, st, 6);
                std::mt19937 rng(W * 10 + H);
                S.fill([&](int k, int i, int j) { return sourceValue<E>(rng, k, i, j); });
                D.fill([](int, int, int) { return E(99); });
                auto head = std::tuple_cat(S.args(), std::make_tuple(value), D.args(), std::make_tuple(W, H));
                if constexpr (array) ASSERT_EQ(std::apply(fn, std::tuple_cat(head, std::make_tuple(3))), orlStatusOk) << name;
                else ASSERT_EQ(std::apply(fn, head), orlStatusOk) << name;
                for (int k = 0; k < D.count; ++k)
                    for (int i = 0; i < H; ++i)
                        for (int j = 0; j < W; ++j)
                            ASSERT_TRUE(t::sameBits(D(k, i, j), E(S(k, i, j) * value))) << name << " " << W << "x" << H << " item " << k << " (" << i << ", " << j << ")";
            }
}

// vc vac vca vaca: dst(k, j) = src(k, j) * constant k; the constants one or
// three elements apart (or through the list in _L).
template <class E, bool srcArray, bool constArray, L lay, class Fn>
void vectorMember(Fn fn, const char* name)
{
    constexpr bool array = srcArray || constArray;
    for (Strides st : {Strides::Unit, Strides::Wide})
        for (int len : {1, 3, 4, 9})
            for (int cstride : {1, 3}) {
                if (lay == L::P && st == Strides::Wide) continue;
                const int count = 5;
                Vec<E, srcArray, lay> S(len, count, st, 5);
                Vec<E, array, lay, true> D(len, count, st, 6);
                t::Consts<E, lay> C(count, cstride * std::ptrdiff_t(sizeof(E)));
                std::mt19937 rng(len);
                for (int k = 0; k < count; ++k) {
                    C(k) = kValues<E>[k % 3] * E(k + 1);
                    for (int j = 0; j < len; ++j) S(srcArray ? k : 0, j) = sourceValue<E>(rng, k, 0, j), D(array ? k : 0, j) = E(99);
                }
                const E value = kValues<E>[len % 3];
                auto cgroup = [&] {
                    if constexpr (constArray) return C.args();
                    else return std::make_tuple(value);
                }();
                auto head = std::tuple_cat(S.args(), cgroup, D.args(), std::make_tuple(len));
                if constexpr (array) ASSERT_EQ(std::apply(fn, std::tuple_cat(head, std::make_tuple(count))), orlStatusOk) << name;
                else ASSERT_EQ(std::apply(fn, head), orlStatusOk) << name;
                for (int k = 0; k < D.count; ++k)
                    for (int j = 0; j < len; ++j)
                        ASSERT_TRUE(t::sameBits(D(k, j), E(S(srcArray ? k : 0, j) * (constArray ? C(k) : value))))
                            << name << " length " << len << " item " << k << " element " << j;
            }
}

TEST(ScaleValues, EveryMemberAndLayout)
{
#define LAYS(run, s, lays, ...) run<float, __VA_ARGS__, L::lays>(orlmMul_##s##_32f##_##lays, #s "_32f_" #lays); \
    run<double, __VA_ARGS__, L::lays>(orlmMul_##s##_64f##_##lays, #s "_64f_" #lays);
#define STD(run, s, ...) run<float, __VA_ARGS__, L::Std>(orlmMul_##s##_32f, #s "_32f"); run<double, __VA_ARGS__, L::Std>(orlmMul_##s##_64f, #s "_64f");
#define ALL(run, s, ...) STD(run, s, __VA_ARGS__) LAYS(run, s, P, __VA_ARGS__)
#define ALLA(run, s, ...) ALL(run, s, __VA_ARGS__) LAYS(run, s, L, __VA_ARGS__)
    ALL(matrixMember, mc, K::m) ALL(matrixMember, tc, K::t) ALLA(matrixMember, mac, K::ma) ALLA(matrixMember, tac, K::ta)
    ALL(vectorMember, vc, false, false) ALLA(vectorMember, vac, true, false)
    ALLA(vectorMember, vca, false, true) ALLA(vectorMember, vaca, true, true)
}

// In place with equal strides: each element is read before it is written.
TEST(ScaleValues, InPlace)
{
    std::vector<double> m(2 * 36), v(3 * 5);
    for (size_t x = 0; x < m.size(); ++x) m[x] = 0.1 * double(x);
    for (size_t x = 0; x < v.size(); ++x) v[x] = 0.3 * double(x);
    const std::vector<double> m0 = m, v0 = v;
    ASSERT_EQ(orlmMul_mac_64f(m.data(), 288, 48, 8, -1.7, m.data(), 288, 48, 8, 6, 6, 2), orlStatusOk);
    ASSERT_EQ(orlmMul_vac_64f(v.data(), 40, 8, 0.7, v.data(), 40, 8, 5, 3), orlStatusOk);
    ASSERT_EQ(orlmMul_mc_64f(m.data(), 48, 8, 2.0, m.data(), 48, 8, 6, 6), orlStatusOk);
    ASSERT_EQ(orlmMul_vc_64f(v.data(), 8, 3.0, v.data(), 8, 5), orlStatusOk);
    for (size_t x = 0; x < m.size(); ++x) EXPECT_TRUE(t::sameBits(m[x], x < 36 ? m0[x] * -1.7 * 2.0 : m0[x] * -1.7)) << x;
    for (size_t x = 0; x < v.size(); ++x) EXPECT_TRUE(t::sameBits(v[x], x < 5 ? v0[x] * 0.7 * 3.0 : v0[x] * 0.7)) << x;
}

// One member per check order, the spoiled argument on the source, the
// constants or the destination; the constant itself is not tested.
TEST(ScaleChecks, OrderAndNothingWritten)
{
    t::checkRows({
        {"mac_32f", "NCZT", [](auto& s) { return orlmMul_mac_32f(s.n(s.f), 48, 12, s.t(4), 1.5f, s.fo, 48, 12, 4, s.z(3), 3, s.c()); }},
        {"tc_64f_P", "NZO", [](auto& s) { return orlmMul_tc_64f_P(s.tg, s.o(8), 0.0, s.n(s.tgo), 0, 3, s.z(3)); }},
        {"vca_32f", "NCZT", [](auto& s) { return orlmMul_vca_32f(s.f, 4, s.n(s.f + 8), s.t(4), s.fo, 16, 4, s.z(3), s.c()); }},
        {"vca_32f_P", "NCZTO", [](auto& s) { return orlmMul_vca_32f_P(s.tf, s.o(4), s.f, s.t(4), s.n(s.to), 0, 16, s.z(3), s.c()); }},
        {"vaca_64f_L", "NCZTO", [](auto& s) { return orlmMul_vaca_64f_L(s.tg, 0, s.t(8), s.n(s.tg), s.o(8), s.tgo, 0, 8, s.z(3), s.c()); }},
        {"vc_64f", "NZT", [](auto& s) { return orlmMul_vc_64f(s.g, s.t(8), 2.0, s.n(s.go), 8, s.z(3)); }},
    }, ref::expectedStatus);
}

// The largest count whose cost stays at the limit is serial, one more is parallel.
template <class Cost, class Call>
void limitEdge(const char* name, Cost cost, long long limit, Call call)
{
    int n = 1;
    while (cost(n + 1) <= limit) ++n;
    EXPECT_FALSE(t::parallel([&] { return call(n); })) << name << " count " << n;
    EXPECT_TRUE(t::parallel([&] { return call(n + 1); })) << name << " count " << n + 1;
}

TEST(ScaleRoute, CostFormulasAndLimits)
{
    std::vector<float> f(60000, 1.0f), fo(60000);
    std::vector<double> g(60000, 1.0), go(60000);
    std::vector<const float*> lf;
    std::vector<float*> lfo;
    std::vector<const double*> lg;
    std::vector<double*> lgo;
    for (int k = 0; k < 7000; ++k) lf.push_back(&f[8 * k]), lfo.push_back(&fo[8 * k]), lg.push_back(&g[8 * k]), lgo.push_back(&go[8 * k]);
    const float* tf[3] = {&f[0], &f[1], &f[2]};
    float* tfo[3] = {&fo[0], &fo[1], &fo[2]};
    // mac, tac: 2*width*height*count, here width 4 and height 1 or 2.
    const auto mac = [](long long n) { return 8 * n; };
    limitEdge("mac_32f_L unit", mac, 35000, [&](int n) { return orlmMul_mac_32f_L(lf.data(), 0, 16, 4, 1.5f, lfo.data(), 0, 16, 4, 4, 1, n); });
    limitEdge("mac_32f_L other", mac, 15000, [&](int n) { return orlmMul_mac_32f_L(lf.data(), 0, 32, 8, 1.5f, lfo.data(), 0, 32, 8, 4, 1, n); });
    limitEdge("mac_64f_L other", mac, 35000, [&](int n) { return orlmMul_mac_64f_L(lg.data(), 0, 64, 16, 1.5, lgo.data(), 0, 64, 16, 4, 1, n); });
    limitEdge("tac_32f", [](long long n) { return 16 * n; }, 35000,
              [&](int n) { return orlmMul_tac_32f(f.data(), 32, 8, 4, 1.5f, fo.data(), 32, 16, 4, 4, 2, n); });
    // vac: 2*length*count; the 32f limit of 6 sends length 3, count 2 (cost 12) to the driver.
    const auto vac = [](long long n) { return 6 * n; };
    limitEdge("vac_32f", vac, 6, [&](int n) { return orlmMul_vac_32f(f.data(), 12, 4, 1.5f, fo.data(), 12, 4, 3, n); });
    limitEdge("vac_64f unit", vac, 36864, [&](int n) { return orlmMul_vac_64f(g.data(), 24, 8, 1.5, go.data(), 24, 8, 3, n); });
    limitEdge("vac_64f other", vac, 18432, [&](int n) { return orlmMul_vac_64f(g.data(), 48, 16, 1.5, go.data(), 48, 16, 3, n); });
    // vca: length*count + length + count; vaca: 2*length*count + count.
    limitEdge("vca_32f other", [](long long n) { return 4 * n + 3; }, 36864,
              [&](int n) { return orlmMul_vca_32f(f.data(), 8, f.data(), 4, fo.data(), 24, 8, 3, n); });
    const auto vaca = [](long long n) { return 7 * n; };
    limitEdge("vaca_64f_L", vaca, 18432, [&](int n) { return orlmMul_vaca_64f_L(lg.data(), 0, 8, lg.data(), 0, lgo.data(), 0, 8, 3, n); });
    limitEdge("vaca_32f_P", vaca, 9216, [&](int n) { return orlmMul_vaca_32f_P(tf, 0, 12, f.data(), 4, tfo, 0, 12, 3, n); });
    // Single shapes have no driver.
    EXPECT_FALSE(t::parallel([&] { return orlmMul_vc_32f(f.data(), 4, 2.0f, fo.data(), 4, 30000); }));
}

// The split over threads changes nothing, also for constants reached by list.
TEST(ScaleRoute, SameBitsForOneToFourThreads)
{
    std::vector<std::vector<unsigned char>> outs;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        const int count = 4001, len = 5;
        Vec<float, true, L::L> S(len, count, Strides::Unit, 3);
        Vec<float, true, L::L, true> D(len, count, Strides::Unit, 4);
        t::Consts<float, L::L> C(count);
        for (int k = 0; k < count; ++k) {
            C(k) = float(k) * 0.37f;
            for (int j = 0; j < len; ++j) S(k, j) = float(j - k) * 0.11f;
        }
        EXPECT_EQ(t::call(orlmMul_vaca_32f_L, std::tuple_cat(S.args(), C.args(), D.args()), len, count), orlStatusOk);
        outs.push_back(D.mem);
        EXPECT_EQ(outs[T - 1], outs[0]) << "threads " << T;
    }
}

}  // namespace
