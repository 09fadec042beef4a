// Multiplication by a constant: every member in every layout gives one
// rounded product per element (with zeros, infinities and NaN), constant
// arrays by stride0 and by list and offset, in place, the checks and their
// order, the route and its limits.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

namespace {

using t::K;
using t::L;
using t::Mat;
using t::Strides;
using t::Threads;
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

// The constants tried: zero (which gives NaN on infinity), a negative value
// whose products round, and a huge one that overflows.
template <class E>
const E kValues[] = {E(0), E(-0.3), std::numeric_limits<E>::max() / 2};

// ---- matrices: mc tc mac tac ----------------------------------------------------

// dst(i, j) = src(i, j) * value for i below height, j below width, src read
// transposed in tc and tac (stored with width rows and height columns).
template <class E, K sk, L lay, class Fn>
void matrixMember(Fn fn, const char* name)
{
    constexpr bool array = t::arr(sk);
    constexpr K dk = array ? K::ma : K::m;
    struct Sz {
        int W, H;
    };
    for (Strides st : {Strides::Unit, Strides::Wide})
        for (Sz z : {Sz{3, 3}, Sz{4, 4}, Sz{5, 5}, Sz{6, 6}, Sz{3, 2}, Sz{1, 7}, Sz{9, 4}})
            for (E value : kValues<E>) {
                if (lay == L::P && st == Strides::Wide) continue;
                const int count = 3;
                Mat<E, sk, lay> S(z.W, z.H, count, st, 5);
                Mat<E, dk, lay, true> D(z.W, z.H, count, st, 6);
                std::mt19937 rng(z.W * 10 + z.H);
                S.fill([&](int k, int i, int j) { return sourceValue<E>(rng, k, i, j); });
                D.fill([](int, int, int) { return E(99); });
                auto head = std::tuple_cat(S.args(), std::make_tuple(value), D.args(), std::make_tuple(z.W, z.H));
                orlStatus st2;
                if constexpr (array) st2 = std::apply(fn, std::tuple_cat(head, std::make_tuple(count)));
                else st2 = std::apply(fn, head);
                ASSERT_EQ(st2, orlStatusOk) << name;
                int bad = 0;
                for (int k = 0; k < D.count; ++k)
                    for (int i = 0; i < z.H; ++i)
                        for (int j = 0; j < z.W; ++j)
                            if (!t::sameBits(D(k, i, j), E(S(k, i, j) * value)) && bad++ < 3)
                                ADD_FAILURE() << name << " " << z.W << "x" << z.H << " item " << k << " (" << i << ", " << j << ")";
            }
}

// ---- vectors: vc vac vca vaca ----------------------------------------------------

// dst(k, j) = src(k, j) * constant k; constants `stride` bytes apart (or
// through the list in _L).
template <class E, bool srcArray, bool constArray, L lay, class Fn>
void vectorMember(Fn fn, const char* name)
{
    constexpr bool array = srcArray || constArray;
    for (Strides st : {Strides::Unit, Strides::Wide})
        for (int len : {1, 3, 4, 5, 6, 9})
            for (int cstride : {1, 3}) {
                if (lay == L::P && st == Strides::Wide) continue;
                const int count = 5;
                Vec<E, srcArray, lay> S(len, count, st, 5);
                Vec<E, array, lay, true> D(len, count, st, 6);
                t::Consts<E, lay> C(count, cstride * std::ptrdiff_t(sizeof(E)));
                std::mt19937 rng(len);
                for (int k = 0; k < S.count; ++k)
                    for (int j = 0; j < len; ++j) S(k, j) = sourceValue<E>(rng, k, 0, j);
                for (int k = 0; k < D.count; ++k)
                    for (int j = 0; j < len; ++j) D(k, j) = E(99);
                for (int k = 0; k < count; ++k) C(k) = kValues<E>[k % 3] * E(k + 1);
                const E value = kValues<E>[len % 3];
                auto cgroup = [&] {
                    if constexpr (constArray) return C.args();
                    else return std::make_tuple(value);
                }();
                auto head = std::tuple_cat(S.args(), cgroup, D.args(), std::make_tuple(len));
                orlStatus st2;
                if constexpr (array) st2 = std::apply(fn, std::tuple_cat(head, std::make_tuple(count)));
                else st2 = std::apply(fn, head);
                ASSERT_EQ(st2, orlStatusOk) << name;
                int bad = 0;
                for (int k = 0; k < D.count; ++k)
                    for (int j = 0; j < len; ++j) {
                        const E want = E(S(srcArray ? k : 0, j) * (constArray ? C(k) : value));
                        if (!t::sameBits(D(k, j), want) && bad++ < 3)
                            ADD_FAILURE() << name << " length " << len << " item " << k << " element " << j;
                    }
            }
}

TEST(ScaleValues, EveryMemberAndLayout)
{
#define MAT(s, k)                                                  \
    matrixMember<float, K::k, L::Std>(orlmMul_##s##_32f, #s "_32f"); \
    matrixMember<double, K::k, L::Std>(orlmMul_##s##_64f, #s "_64f"); \
    matrixMember<float, K::k, L::P>(orlmMul_##s##_32f_P, #s "_32f_P"); \
    matrixMember<double, K::k, L::P>(orlmMul_##s##_64f_P, #s "_64f_P");
#define MATA(s, k)                                                   \
    MAT(s, k)                                                        \
    matrixMember<float, K::k, L::L>(orlmMul_##s##_32f_L, #s "_32f_L"); \
    matrixMember<double, K::k, L::L>(orlmMul_##s##_64f_L, #s "_64f_L");
    MAT(mc, m)
    MAT(tc, t)
    MATA(mac, ma)
    MATA(tac, ta)
#define VEC(s, sa, ca)                                                         \
    vectorMember<float, sa, ca, L::Std>(orlmMul_##s##_32f, #s "_32f");         \
    vectorMember<double, sa, ca, L::Std>(orlmMul_##s##_64f, #s "_64f");        \
    vectorMember<float, sa, ca, L::P>(orlmMul_##s##_32f_P, #s "_32f_P");       \
    vectorMember<double, sa, ca, L::P>(orlmMul_##s##_64f_P, #s "_64f_P");
#define VECA(s, sa, ca)                                                    \
    VEC(s, sa, ca)                                                         \
    vectorMember<float, sa, ca, L::L>(orlmMul_##s##_32f_L, #s "_32f_L");   \
    vectorMember<double, sa, ca, L::L>(orlmMul_##s##_64f_L, #s "_64f_L");
    VEC(vc, false, false)
    VECA(vac, true, false)
    VECA(vca, false, true)
    VECA(vaca, true, true)
#undef MAT
#undef MATA
#undef VEC
#undef VECA
}

// A 3-wide result of 2 rows from a stored 3 x 2 matrix, written out.
TEST(ScaleValues, TransposeReadsWidthRows)
{
    const float s[6] = {1, 2, 3, 4, 5, 6};  // stored 3 rows of 2
    float d[6] = {};
    ASSERT_EQ(orlmMul_tc_32f(s, 8, 4, 2.0f, d, 12, 4, 3, 2), orlStatusOk);
    const float want[6] = {2, 6, 10, 4, 8, 12};
    for (int x = 0; x < 6; ++x) EXPECT_EQ(d[x], want[x]) << x;
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

// ---- checks ------------------------------------------------------------------------

// Arguments to spoil: `which` says which pointer is null (1 src, 2 values,
// 3 dst); `stride` 1 is half an element too many, 2 zero, 3 negative, on
// the constants' stride0 when `onValues`.
struct Spoil {
    int which = 0, count = 2, size = 3, stride = 0, offset = 0;
    bool onValues = false;
};

const Spoil kSpoils[] = {
    {.which = 2, .count = 0}, {.which = 3, .size = 0}, {.count = 0, .size = 0, .stride = 1},
    {.size = 0, .stride = 2}, {.stride = 1, .offset = 1}, {.stride = 2, .onValues = true},
    {.stride = 3, .onValues = true}, {.offset = 1, .onValues = true}, {.offset = 1}, {},
};

template <class E>
int strideOf(const Spoil& s, int good, bool values)
{
    if (s.onValues != values || s.stride == 0) return good;
    return s.stride == 1 ? good + int(sizeof(E)) / 2 : s.stride == 2 ? 0 : -good;
}
template <class E>
int offsetOf(const Spoil& s, bool values)
{
    return s.offset && s.onValues == values ? -int(sizeof(E)) : 0;
}

// Which spoils a member's arguments carry: a stride or offset of the source
// or destination, and of the constants.
struct Has {
    bool values, srcT, srcO, valT, valO;
};

template <class E, class Call>
void checkMember(const char* name, std::string_view order, Has h, Call call)
{
    for (const Spoil& s : kSpoils) {
        std::vector<E> src(64, E(1)), vals(8, E(2)), dst(64, E(-5));
        std::vector<const E*> ts, lv;
        std::vector<E*> td;
        for (int x = 0; x < 9; ++x) ts.push_back(&src[x]), td.push_back(&dst[x]);
        for (int x = 0; x < 2; ++x) lv.push_back(&vals[x]);
        std::string failing;
        if (s.which == 1 || (s.which == 2 && h.values) || s.which == 3) failing += 'N';
        if (s.count < 1) failing += 'C';
        if (s.size < 1) failing += 'Z';
        if (s.stride && (s.onValues ? h.valT : h.srcT)) failing += 'T';
        if (s.offset && (s.onValues ? h.valO : h.srcO)) failing += 'O';
        const orlStatus want = ref::expectedStatus(order, failing);
        E* d = s.which == 3 ? nullptr : dst.data();
        EXPECT_EQ(call(s, s.which == 1 ? nullptr : src.data(), s.which == 2 ? nullptr : vals.data(), d, ts, lv, td), want)
            << name << " which " << s.which << " count " << s.count << " size " << s.size << " stride " << s.stride
            << " offset " << s.offset << " on values " << s.onValues;
        if (want != orlStatusOk)
            EXPECT_TRUE(std::all_of(dst.begin(), dst.end(), [](E v) { return v == E(-5); })) << name;
    }
}

TEST(ScaleChecks, OrderAndNothingWritten)
{
    using F = float;
    using D = double;
    checkMember<F>("mac_32f", "NCZT", {false, true, false, false, false}, [](const Spoil& s, const F* src, const F*, F* dst, auto&, auto&, auto&) {
        return orlmMul_mac_32f(src, 48, 12, strideOf<F>(s, 4, false), 1.5f, dst, 48, 12, 4, s.size, 3, s.count);
    });
    checkMember<D>("tc_64f_P", "NZO", {false, false, true, false, false}, [](const Spoil& s, const D*, const D*, D*, auto& ts, auto&, auto& td) {
        if (s.which == 1) ts.clear();
        return orlmMul_tc_64f_P(ts.empty() ? nullptr : ts.data(), offsetOf<D>(s, false), 0.0, s.which == 3 ? nullptr : td.data(), 0, 3,
                                s.size);
    });
    checkMember<F>("vca_32f", "NCZT", {true, true, false, true, false}, [](const Spoil& s, const F* src, const F* vals, F* dst, auto&, auto&, auto&) {
        return orlmMul_vca_32f(src, strideOf<F>(s, 4, false), vals, strideOf<F>(s, 4, true), dst, 16, 4, s.size, s.count);
    });
    checkMember<F>("vca_32f_P", "NCZTO", {true, false, true, true, false}, [](const Spoil& s, const F*, const F* vals, F*, auto& ts, auto&, auto& td) {
        return orlmMul_vca_32f_P(s.which == 1 ? nullptr : ts.data(), offsetOf<F>(s, false), vals, strideOf<F>(s, 4, true),
                                 s.which == 3 ? nullptr : td.data(), 0, 16, s.size, s.count);
    });
    checkMember<D>("vaca_64f_L", "NCZTO", {true, true, true, false, true}, [](const Spoil& s, const D* src, const D*, D* dst, auto&, auto& lv, auto&) {
        const D* ls[2] = {src, src + 8};
        D* ld[2] = {dst, dst + 8};
        return orlmMul_vaca_64f_L(src ? ls : nullptr, 0, strideOf<D>(s, 8, false), s.which == 2 ? nullptr : lv.data(),
                                  offsetOf<D>(s, true), dst ? ld : nullptr, offsetOf<D>(s, false), 8, s.size, s.count);
    });
    checkMember<D>("vc_64f", "NZT", {false, true, false, false, false}, [](const Spoil& s, const D* src, const D*, D* dst, auto&, auto&, auto&) {
        return orlmMul_vc_64f(src, strideOf<D>(s, 8, false), 2.0, dst, 8, s.size);
    });
}

// ---- route -------------------------------------------------------------------------

// Does the call open a parallel region? Contiguous items; `wide` doubles every stride2.
template <class E, class Call>
bool parallel(Call call, int items, int len, bool wide)
{
    const int e = sizeof(E), s2 = wide ? 2 * e : e;
    std::vector<E> src(std::size_t(items) * len * (wide ? 2 : 1) + 8, E(1)), dst(src.size()), vals(items + 1, E(2));
    std::vector<const E*> ls(items), lv(items);
    std::vector<E*> ld(items);
    for (int k = 0; k < items; ++k) {
        ls[k] = src.data() + std::size_t(k) * len * s2 / e;
        ld[k] = dst.data() + std::size_t(k) * len * s2 / e;
        lv[k] = vals.data() + k;
    }
    probe::reset();
    EXPECT_EQ(call(src.data(), dst.data(), vals.data(), ls.data(), ld.data(), lv.data(), len * s2, s2, items), orlStatusOk);
    return probe::regions().count > 0;
}

// The largest count whose cost stays at the limit is serial, one more is parallel.
template <class E, class Call, class Cost>
void limitEdge(const char* name, Call call, Cost cost, int len, bool wide, long long limit)
{
    int n = 1;
    while (cost(n + 1) <= limit) ++n;
    EXPECT_FALSE(parallel<E>(call, n, len, wide)) << name << " count " << n;
    EXPECT_TRUE(parallel<E>(call, n + 1, len, wide)) << name << " count " << n + 1;
}

TEST(ScaleRoute, CostFormulasAndLimits)
{
    Threads two(2);
    // mac, tac: 2*width*height*count; width 4, height 2 (a row is one "len").
    const auto mac = [](long long n) { return 2 * 4 * 2 * n; };
    const auto macL32 = [](const float* s, float* d, const float*, const float* const* ls, float* const* ld, const float* const*, int,
                           int s2, int n) {
        (void)s, (void)d;
        return orlmMul_mac_32f_L(ls, 0, 4 * s2, s2, 1.5f, ld, 0, 4 * s2, s2, 4, 1, n);
    };
    const auto mac1 = [](long long n) { return 2 * 4 * 1 * n; };
    limitEdge<float>("mac_32f_L unit", macL32, mac1, 4, false, 35000);
    limitEdge<float>("mac_32f_L other", macL32, mac1, 4, true, 15000);
    limitEdge<double>("mac_64f_L other",
                      [](const double*, double*, const double*, const double* const* ls, double* const* ld, const double* const*, int,
                         int s2, int n) { return orlmMul_mac_64f_L(ls, 0, 4 * s2, s2, 1.5, ld, 0, 4 * s2, s2, 4, 1, n); },
                      mac1, 4, true, 35000);
    limitEdge<float>("tac_32f",
                     [](const float* s, float* d, const float*, const float* const*, float* const*, const float* const*, int,
                        int s2, int n) { return orlmMul_tac_32f(s, 8 * s2, 2 * s2, s2, 1.5f, d, 8 * s2, 4 * s2, s2, 4, 2, n); },
                     mac, 8, false, 35000);
    // vac: 2*length*count; the 32f limit of 6 sends length 3, count 2 (cost 12) to the driver.
    const auto vac = [](long long n) { return 2 * 3 * n; };
    limitEdge<float>("vac_32f",
                     [](const float* s, float* d, const float*, const float* const*, float* const*, const float* const*, int s0,
                        int s2, int n) { return orlmMul_vac_32f(s, s0, s2, 1.5f, d, s0, s2, 3, n); },
                     vac, 3, false, 6);
    limitEdge<double>("vac_64f unit",
                      [](const double* s, double* d, const double*, const double* const*, double* const*, const double* const*,
                         int s0, int s2, int n) { return orlmMul_vac_64f(s, s0, s2, 1.5, d, s0, s2, 3, n); },
                      vac, 3, false, 36864);
    limitEdge<double>("vac_64f other",
                      [](const double* s, double* d, const double*, const double* const*, double* const*, const double* const*,
                         int s0, int s2, int n) { return orlmMul_vac_64f(s, s0, s2, 1.5, d, s0, s2, 3, n); },
                      vac, 3, true, 18432);
    // vca: length*count + length + count; vaca: 2*length*count + count.
    const auto vca = [](long long n) { return 3 * n + 3 + n; };
    const auto vaca = [](long long n) { return 2 * 3 * n + n; };
    limitEdge<float>("vca_32f other",
                     [](const float* s, float* d, const float* v, const float* const*, float* const*, const float* const*, int s0,
                        int s2, int n) { return orlmMul_vca_32f(s, s2, v, 4, d, s0, s2, 3, n); },
                     vca, 3, true, 36864);
    limitEdge<double>("vaca_64f_L",
                      [](const double*, double*, const double*, const double* const* ls, double* const* ld, const double* const* lv,
                         int, int s2, int n) { return orlmMul_vaca_64f_L(ls, 0, s2, lv, 0, ld, 0, s2, 3, n); },
                      vaca, 3, false, 18432);
    limitEdge<float>("vaca_32f_P", [](const float* s, float* d, const float* v, const float* const*, float* const*, const float* const*,
                                      int s0, int, int n) {
        // A _P table for each operand of 3 entries, the items one stride0 apart.
        const float* ts[3] = {s, s + 1, s + 2};
        float* td[3] = {d, d + 1, d + 2};
        return orlmMul_vaca_32f_P(ts, 0, s0, v, 4, td, 0, s0, 3, n);
    },
                     vaca, 3, false, 9216);
    // Single shapes have no driver.
    std::vector<float> big(3000, 1.0f);
    probe::reset();
    EXPECT_EQ(orlmMul_vc_32f(big.data(), 4, 2.0f, big.data(), 4, 3000), orlStatusOk);
    EXPECT_EQ(probe::regions().count, 0);
}

// The split over threads changes nothing, also for constants reached by
// stride0 (standard, _P) and by list (_L).
TEST(ScaleRoute, SameBitsForOneToFourThreads)
{
    const auto run = [](auto tag, auto fn, auto lay) {
        using E = decltype(tag);
        constexpr L l = decltype(lay)::value;
        std::vector<std::vector<unsigned char>> outs;
        for (int T = 1; T <= 4; ++T) {
            Threads th(T);
            const int count = 4001, len = 5;
            Vec<E, true, l> S(len, count, Strides::Unit, 3);
            Vec<E, true, l, true> D(len, count, Strides::Unit, 4);
            t::Consts<E, l> C(count, 3 * sizeof(E));
            for (int k = 0; k < count; ++k) {
                C(k) = E(k) * E(0.37);
                for (int j = 0; j < len; ++j) S(k, j) = E(j - k) * E(0.11);
            }
            EXPECT_EQ(std::apply(fn, std::tuple_cat(S.args(), C.args(), D.args(), std::make_tuple(len, count))), orlStatusOk);
            for (int k = 0; k < count; k += 997) EXPECT_TRUE(t::sameBits(D(k, 2), E(S(k, 2) * C(k)))) << k;
            outs.push_back(D.mem);
        }
        for (int T = 1; T < 4; ++T) EXPECT_EQ(outs[T], outs[0]) << "threads " << T + 1;
    };
    run(0.0f, orlmMul_vaca_32f, std::integral_constant<L, L::Std>{});
    run(0.0, orlmMul_vaca_64f_P, std::integral_constant<L, L::P>{});
    run(0.0f, orlmMul_vaca_32f_L, std::integral_constant<L, L::L>{});
}

}  // namespace
