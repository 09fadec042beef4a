// Matrix add and subtract: values in every member and layout, the order of
// the argument checks, the route and the driver, the 64f rounding rule, and
// what in-place use shows of the straight-line forms.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

using t::Threads;

constexpr K resultKind(K a, K b) { return t::arr(a) || t::arr(b) ? K::ma : K::m; }

template <bool sub, class E>
E reference(E a, E b)
{
    return sub ? a - b : a + b;
}

// ---- every member: values for every size, stride case and count -----------

struct Member {
    std::string name;
    std::function<void(int w, int h, int count, Strides st)> check;
};

// Dyadic values: every sum is exact, so every rounding rule gives these bits.
template <class E>
E value(unsigned seed, int k, int i, int j)
{
    return E(int((seed * 131 + k * 37 + i * 11 + j * 5) % 61) - 30) * E(0.25);
}

template <class E, K ka, K kb, L lay, bool sub, class Fn>
void checkValues(Fn fn, int w, int h, int count, Strides st)
{
    constexpr K kd = resultKind(ka, kb);
    Mat<E, ka, lay> a(w, h, count, st, 1);
    Mat<E, kb, lay> b(w, h, count, st, 2);
    // With three items the result's rows are spaced apart from the sources'.
    Mat<E, kd, lay, true> d(w, h, count, st, 3, count == 3 ? 5 : 2);
    a.fill([](int k, int i, int j) { return value<E>(1, k, i, j); });
    b.fill([](int k, int i, int j) { return value<E>(2, k, i, j); });
    d.fill([](int, int, int) { return std::numeric_limits<E>::quiet_NaN(); });
    orlStatus st2;
    if constexpr (t::arr(kd))
        st2 = t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), w, h, count);
    else
        st2 = t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), w, h);
    ASSERT_EQ(st2, orlStatusOk);
    for (int k = 0; k < d.count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) {
                const E expect = reference<sub>(a(t::arr(ka) ? k : 0, i, j), b(t::arr(kb) ? k : 0, i, j));
                ASSERT_TRUE(t::sameBits(d(k, i, j), expect)) << "item " << k << " (" << i << "," << j << ")";
            }
}

std::vector<Member>& members()
{
    static std::vector<Member> list;
    return list;
}

template <class E, K ka, K kb, L lay, bool sub, class Fn>
void add(const char* name, Fn fn)
{
    members().push_back({name, [fn](int w, int h, int n, Strides st) { checkValues<E, ka, kb, lay, sub>(fn, w, h, n, st); }});
}

#define ORL_SINGLE(stem, shape, ka, kb)                                                        \
    add<float, K::ka, K::kb, L::Std, #stem[0] == 'S'>("orlm" #stem "_" #shape "_32f", orlm##stem##_##shape##_32f);     \
    add<float, K::ka, K::kb, L::P, #stem[0] == 'S'>("orlm" #stem "_" #shape "_32f_P", orlm##stem##_##shape##_32f_P);   \
    add<double, K::ka, K::kb, L::Std, #stem[0] == 'S'>("orlm" #stem "_" #shape "_64f", orlm##stem##_##shape##_64f);    \
    add<double, K::ka, K::kb, L::P, #stem[0] == 'S'>("orlm" #stem "_" #shape "_64f_P", orlm##stem##_##shape##_64f_P);
#define ORL_ARRAY(stem, shape, ka, kb)                                                         \
    ORL_SINGLE(stem, shape, ka, kb)                                                            \
    add<float, K::ka, K::kb, L::L, #stem[0] == 'S'>("orlm" #stem "_" #shape "_32f_L", orlm##stem##_##shape##_32f_L);   \
    add<double, K::ka, K::kb, L::L, #stem[0] == 'S'>("orlm" #stem "_" #shape "_64f_L", orlm##stem##_##shape##_64f_L);

const bool registered = [] {
    ORL_SINGLE(Add, mm, m, m) ORL_SINGLE(Add, tm, t, m) ORL_SINGLE(Add, tt, t, t)
    ORL_ARRAY(Add, mam, ma, m) ORL_ARRAY(Add, tam, ta, m) ORL_ARRAY(Add, mat, ma, t) ORL_ARRAY(Add, tat, ta, t)
    ORL_ARRAY(Add, mama, ma, ma) ORL_ARRAY(Add, tama, ta, ma) ORL_ARRAY(Add, tata, ta, ta)
    ORL_SINGLE(Sub, mm, m, m) ORL_SINGLE(Sub, tm, t, m) ORL_SINGLE(Sub, mt, m, t) ORL_SINGLE(Sub, tt, t, t)
    ORL_ARRAY(Sub, mam, ma, m) ORL_ARRAY(Sub, tam, ta, m) ORL_ARRAY(Sub, mat, ma, t) ORL_ARRAY(Sub, tat, ta, t)
    ORL_ARRAY(Sub, mma, m, ma) ORL_ARRAY(Sub, tma, t, ma) ORL_ARRAY(Sub, mta, m, ta) ORL_ARRAY(Sub, tta, t, ta)
    ORL_ARRAY(Sub, mama, ma, ma) ORL_ARRAY(Sub, tama, ta, ma) ORL_ARRAY(Sub, mata, ma, ta) ORL_ARRAY(Sub, tata, ta, ta)
    return true;
}();

TEST(AddSubValues, EveryMemberSizeStrideAndCount)
{
    ASSERT_TRUE(registered);
    EXPECT_EQ(members().size(), 142u);
    const int sizes[][2] = {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {1, 1}, {2, 3}, {4, 3}, {7, 7}};
    for (const Member& m : members())
        for (auto [w, h] : sizes)
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (int count : {1, 3}) {
                    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + " count " +
                                 std::to_string(count) + (st == Strides::Wide ? " wide" : " unit"));
                    m.check(w, h, count, st);
                    if (HasFatalFailure()) return;
                }
}

// A transposed first source of width 2, height 3 is stored as 2 rows of 3.
TEST(AddSubValues, TransposedSourceReadWithSwappedStrides)
{
    const float s1[6] = {1, 2, 3, 4, 5, 6};          // 2 rows of 3
    const float s2[6] = {10, 20, 30, 40, 50, 60};    // 3 rows of 2
    float d[6] = {};
    ASSERT_EQ(orlmAdd_tm_32f(s1, 12, 4, s2, 8, 4, d, 8, 4, 2, 3), orlStatusOk);
    const float expect[6] = {1 + 10, 4 + 20, 2 + 30, 5 + 40, 3 + 50, 6 + 60};
    for (int x = 0; x < 6; ++x) EXPECT_EQ(d[x], expect[x]) << x;
    // The sense of subtraction is first minus second also where the array stands second.
    float e[6] = {};
    ASSERT_EQ(orlmSub_tma_32f(s1, 12, 4, s2, 24, 8, 4, e, 24, 8, 4, 2, 3, 1), orlStatusOk);
    for (int x = 0; x < 6; ++x) EXPECT_EQ(e[x], expect[x] - 2 * s2[x]) << x;
}

// ---- argument checks -------------------------------------------------------

struct Buffers {
    float f[64];
    double g[64];
    float out[64];
    double outg[64];
    Buffers()
    {
        for (int i = 0; i < 64; ++i) f[i] = float(i), g[i] = i, out[i] = -1.f, outg[i] = -1.0;
    }
    bool untouched() const
    {
        for (int i = 0; i < 64; ++i)
            if (out[i] != -1.f || outg[i] != -1.0) return false;
        return true;
    }
};

TEST(AddSubChecks, ClassesInEachMembersOrder)
{
    Buffers b;
    const float* tf[16];
    float* to[16];
    for (int i = 0; i < 16; ++i) tf[i] = b.f + i, to[i] = b.out + i;

    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        {"NULL before count", [&] { return orlmAdd_mam_32f(b.f, 64, 16, 4, b.f, 16, 4, nullptr, 64, 16, 4, 4, 4, 0); }, orlStatusNullPointer},
        {"mam: strides before sizes", [&] { return orlmAdd_mam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.out, 64, 16, 4, 0, 4, 1); }, orlStatusStride},
        {"tam: sizes before strides", [&] { return orlmAdd_tam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.out, 64, 16, 4, 0, 4, 1); }, orlStatusSize},
        {"Sub mma: strides before sizes", [&] { return orlmSub_mma_32f(b.f, 6, 4, b.f, 64, 16, 4, b.out, 64, 16, 4, 4, 0, 1); }, orlStatusStride},
        {"Sub mam _P: sizes before strides", [&] { return orlmSub_mam_32f_P(tf, 0, 6, tf, 0, to, 0, 64, 0, 4, 1); }, orlStatusSize},
        {"count before sizes", [&] { return orlmAdd_tama_32f(b.f, 64, 16, 4, b.f, 64, 16, 4, b.out, 64, 16, 4, 0, 4, 0); }, orlStatusCount},
        {"mam: count before strides", [&] { return orlmAdd_mam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.out, 64, 16, 4, 4, 4, 0); }, orlStatusCount},
        {"64f stride of 12", [&] { return orlmAdd_mam_64f(b.g, 128, 12, 8, b.g, 32, 8, b.outg, 128, 32, 8, 2, 2, 1); }, orlStatusStride},
        {"stride0 of 0 with count 1", [&] { return orlmAdd_mama_32f(b.f, 0, 16, 4, b.f, 64, 16, 4, b.out, 64, 16, 4, 4, 4, 1); }, orlStatusStride},
        {"stride2 of 0", [&] { return orlmAdd_mm_32f(b.f, 16, 4, b.f, 16, 4, b.out, 16, 0, 4, 4); }, orlStatusStride},
        {"negative stride", [&] { return orlmSub_mm_64f(b.g, -32, 8, b.g, 32, 8, b.outg, 32, 8, 2, 2); }, orlStatusStride},
        {"_P single: no stride class, size before offset", [&] { return orlmAdd_mm_32f_P(tf, -4, tf, 0, to, 0, 0, 4); }, orlStatusSize},
        {"_P single: NULL first", [&] { return orlmAdd_mm_32f_P(tf, -4, nullptr, 0, to, 0, 0, 4); }, orlStatusNullPointer},
        {"_P offset of -4", [&] { return orlmAdd_mam_32f_P(tf, -4, 64, tf, 0, to, 0, 64, 4, 4, 1); }, orlStatusOffset},
        {"_P offset of 2", [&] { return orlmAdd_mam_32f_P(tf, 0, 64, tf, 2, to, 0, 64, 4, 4, 1); }, orlStatusOffset},
        {"_P 64f offset of 4", [&] { return orlmAdd_tt_64f_P(reinterpret_cast<const double* const*>(tf), 4, reinterpret_cast<const double* const*>(tf), 0, reinterpret_cast<double* const*>(to), 0, 2, 2); }, orlStatusOffset},
        {"_P stride before offset", [&] { return orlmAdd_mama_32f_P(tf, 2, 6, tf, 0, 64, to, 0, 64, 4, 4, 1); }, orlStatusStride},
        {"_L shared operand's stride is tested", [&] { return orlmAdd_mam_32f_L(tf, 0, 16, 4, b.f, 16, 6, to, 0, 16, 4, 4, 4, 1); }, orlStatusStride},
        {"_L stride before offset", [&] { return orlmAdd_mam_32f_L(tf, 2, 16, 4, b.f, 16, 6, to, 0, 16, 4, 4, 4, 1); }, orlStatusStride},
        {"_L offset of -8", [&] { return orlmSub_tata_32f_L(tf, 0, 16, 4, tf, -8, 16, 4, to, 0, 16, 4, 4, 4, 1); }, orlStatusOffset},
        {"_L sizes before strides", [&] { return orlmSub_mam_32f_L(tf, 0, 16, 4, b.f, 16, 6, to, 0, 16, 4, 4, -1, 1); }, orlStatusSize},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(b.untouched()) << c.what;
    }
    // A stride of 12 passes where the element size is 4, and an offset of 0 everywhere.
    EXPECT_EQ(orlmAdd_mam_32f(b.f, 64, 12, 4, b.f, 12, 4, b.out, 64, 12, 4, 2, 2, 1), orlStatusOk);
    EXPECT_EQ(orlmAdd_mam_32f_P(tf, 0, 64, tf, 0, to, 0, 64, 4, 4, 1), orlStatusOk);
}

// ---- route and driver ------------------------------------------------------

// Runs Add_mam_32f (W*H*(2n+1), >=) and reports whether a parallel region opened.
bool mamParallel(int w, int h, int count, int stride2)
{
    std::vector<float> src(size_t(w) * h * count * 2 + 16, 1.f), out(src.size());
    const int s1 = w * stride2, s0 = s1 * h;
    probe::reset();
    EXPECT_EQ(orlmAdd_mam_32f(src.data(), s0, s1, stride2, src.data(), s1, stride2, out.data(), s0, s1, stride2, w, h, count),
              orlStatusOk);
    return probe::regions().count > 0;
}

TEST(AddSubRoute, LimitsAndTheirTests)
{
    Threads two(2);
    // 4x4, count 1151: cost 16 * 2303 = 36848, under the unit-stride limit 36864.
    EXPECT_FALSE(mamParallel(4, 4, 1151, 4));
    // The same call with stride2 8 passes the limit of 18432 for any stride.
    EXPECT_TRUE(mamParallel(4, 4, 1151, 8));
    // 64x64, count 4: cost 4096 * 9 = 36864 exactly, and the test is >=.
    EXPECT_TRUE(mamParallel(64, 64, 4, 4));
    EXPECT_EQ(probe::regions().threads, 2u);
    // A cost above the limit with fewer items than threads stays serial.
    {
        Threads four(4);
        EXPECT_FALSE(mamParallel(64, 64, 3, 4));
    }
    // One thread: the driver runs the kernel itself.
    {
        Threads one(1);
        EXPECT_FALSE(mamParallel(64, 64, 100, 4));
    }
}

// 3*W*H*n wraps in 32 bits: 64x64 matrices, 174763 items give a negative cost
// (serial), one item fewer stays just under 2^31 (parallel). The items
// overlap in memory so that the call needs little of it.
TEST(AddSubRoute, WrappedCostTakesTheSerialRoute)
{
    Threads two(2);
    std::vector<float> m(174763 + 64 * 64, 0.5f), out(m.size());
    for (int count : {174763, 174762}) {
        probe::reset();
        ASSERT_EQ(orlmAdd_mama_32f(m.data(), 4, 256, 4, m.data(), 4, 256, 4, out.data(), 4, 256, 4, 64, 64, count), orlStatusOk);
        EXPECT_EQ(probe::regions().count > 0, count == 174762) << count;
    }
    EXPECT_EQ(out[0], 1.0f);
}

// The same large arrays give the same bits with 1 to 4 threads, in every layout.
template <class E, K ka, K kb, L lay, class Fn>
void sameForAllThreadCounts(const char* name, Fn fn, int n, Strides st)
{
    SCOPED_TRACE(name);
    constexpr K kd = resultKind(ka, kb);
    Mat<E, ka, lay> a(4, 4, n, st, 1);
    Mat<E, kb, lay> b(4, 4, n, st, 2);
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> u(-1e3, 1e3);
    a.fill([&](int, int, int) { return E(u(rng)); });
    b.fill([&](int, int, int) { return E(u(rng)); });
    std::vector<E> first;
    for (int threads = 1; threads <= 4; ++threads) {
        Threads th(threads);
        Mat<E, kd, lay, true> d(4, 4, n, st, 3);
        probe::reset();
        ASSERT_EQ(t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), 4, 4, n), orlStatusOk);
        EXPECT_EQ(probe::regions().count, threads > 1 ? 1 : 0);
        std::vector<E> got;
        for (int k = 0; k < n; ++k)
            for (int i = 0; i < 4; ++i)
                for (int j = 0; j < 4; ++j) got.push_back(d(k, i, j));
        if (threads == 1)
            first = got;
        else
            ASSERT_EQ(std::memcmp(first.data(), got.data(), got.size() * sizeof(E)), 0) << threads << " threads";
    }
}

TEST(AddSubRoute, SameBitsForOneToFourThreads)
{
    const int n = 5003;
    sameForAllThreadCounts<float, K::ma, K::ma, L::Std>("Add_mama_32f", orlmAdd_mama_32f, n, Strides::Unit);
    sameForAllThreadCounts<double, K::ma, K::m, L::Std>("Add_mam_64f", orlmAdd_mam_64f, n, Strides::Unit);
    sameForAllThreadCounts<float, K::t, K::ma, L::Std>("Sub_tma_32f wide", orlmSub_tma_32f, n, Strides::Wide);
    sameForAllThreadCounts<double, K::ta, K::ta, L::P>("Sub_tata_64f_P", orlmSub_tata_64f_P, n, Strides::Unit);
    sameForAllThreadCounts<float, K::ma, K::t, L::L>("Sub_mat_32f_L", orlmSub_mat_32f_L, n, Strides::Unit);
    sameForAllThreadCounts<double, K::ma, K::ma, L::L>("Add_mama_64f_L wide", orlmAdd_mama_64f_L, n, Strides::Wide);
}

// ---- the 64f rounding rule -------------------------------------------------

// 1 + (2^-53 + 2^-65): in double the exact sum rounds up to 1 + 2^-52. Through
// the extended format it first becomes 1 + 2^-53, a tie that then rounds to
// even, 1.0. So the result tells which kernels sum in extended precision.
TEST(AddSubPrecision, SixtyFourBitSumsRoundedWhereTheKernelSays)
{
    const double one = 1.0, tiny = std::ldexp(1.0, -53) + std::ldexp(1.0, -65);
    const double viaDouble = one + tiny, viaExtended = double((long double)one + (long double)tiny);
    ASSERT_NE(viaDouble, viaExtended);
    ASSERT_EQ(viaExtended, 1.0);

    struct Case {
        const char* kernel;
        std::function<double(const double* a, const double* b, int s2)> run;  // returns dst(0, 0)
        bool extended;
    };
    auto mm = [](auto fn) {
        return [fn](const double* a, const double* b, int s2) {
            double d[72] = {};
            fn(a, 3 * s2, s2, b, 3 * s2, s2, d, 3 * s2, s2, 3, 3);
            return d[0];
        };
    };
    auto mam = [](auto fn) {
        return [fn](const double* a, const double* b, int s2) {
            double d[72] = {};
            fn(a, 9 * s2, 3 * s2, s2, b, 3 * s2, s2, d, 9 * s2, 3 * s2, s2, 3, 3, 1);
            return d[0];
        };
    };
    auto mamP = [](auto fn) {
        return [fn](const double* a, const double* b, int) {
            double d[9] = {};
            const double *ta[9], *tb[9];
            double* td[9];
            for (int i = 0; i < 9; ++i) ta[i] = a + i, tb[i] = b + i, td[i] = d + i;
            fn(ta, 0, 72, tb, 0, td, 0, 72, 3, 3, 1);
            return d[0];
        };
    };
    auto mamL = [](auto fn) {
        return [fn](const double* a, const double* b, int s2) {
            double d[72] = {};
            const double* la[1] = {a};
            double* ld[1] = {d};
            fn(la, 0, 3 * s2, s2, b, 3 * s2, s2, ld, 0, 3 * s2, s2, 3, 3, 1);
            return d[0];
        };
    };
    const Case cases[] = {
        {"single item, unit stride", mm(orlmAdd_mm_64f), false},
        {"single item, any stride", mm(orlmAdd_mm_64f), true},
        {"array, unit stride", mam(orlmAdd_mam_64f), true},
        {"array, any stride", mam(orlmAdd_tam_64f), true},
        {"element pointers", mamP(orlmAdd_mam_64f_P), true},
        {"item list calling the single unit kernel", mamL(orlmAdd_mam_64f_L), false},
        {"item list with its own forms", mamL(orlmAdd_tam_64f_L), false},
        {"item list, any stride", mamL(orlmAdd_mam_64f_L), true},
    };
    double a[72], b[72];
    for (int i = 0; i < 72; ++i) a[i] = one, b[i] = tiny;
    for (const Case& c : cases) {
        const bool wide = std::string(c.kernel).find("any stride") != std::string::npos;
        EXPECT_EQ(c.run(a, b, wide ? 16 : 8), c.extended ? viaExtended : viaDouble) << c.kernel;
    }
    // The subtraction follows the same rule.
    double d[9] = {}, nb[9];
    for (double& x : nb) x = -tiny;
    ASSERT_EQ(orlmSub_mam_64f(a, 72, 24, 8, nb, 24, 8, d, 72, 24, 8, 3, 3, 1), orlStatusOk);
    EXPECT_EQ(d[0], viaExtended);
    ASSERT_EQ(orlmSub_mm_64f(a, 24, 8, nb, 24, 8, d, 24, 8, 3, 3), orlStatusOk);
    EXPECT_EQ(d[0], viaDouble);
}

// ---- what in-place use shows of the straight-line forms ---------------------

// The first item of dst lies on the shared operand. A straight-line form has
// loaded the shared matrix before the loop, so item 1 still sees its entry
// values; the general loop, and kernels that call a single-item kernel per
// item, read it again after item 0 has been written.
template <class E, bool sharedFirst = false, class Fn>
bool sharedHeldFor(Fn fn, int n)
{
    const int s1 = n * int(sizeof(E)), s0 = n * s1;
    std::vector<E> arr(size_t(2) * n * n), sh(size_t(2) * n * n);
    for (size_t x = 0; x < arr.size(); ++x) arr[x] = E(x % 7 + 1), sh[x] = E(100);
    E* dst = sh.data();  // item 0 of dst is the shared matrix itself
    const E* a = arr.data();
    if constexpr (sharedFirst)
        fn(sh.data(), s1, int(sizeof(E)), a, s0, s1, int(sizeof(E)), dst, s0, s1, int(sizeof(E)), n, n, 2);
    else
        fn(a, s0, s1, int(sizeof(E)), sh.data(), s1, int(sizeof(E)), dst, s0, s1, int(sizeof(E)), n, n, 2);
    // Item 1, element (0, 0). Item 0 has left shared(0, 0) = 100 + 1 (Add) or
    // 100 - 1 (Sub with the shared matrix first).
    const E a1 = arr[size_t(n) * n];
    const E held = sharedFirst ? E(100) - a1 : a1 + E(100);
    const E reread = sharedFirst ? E(99) - a1 : a1 + E(101);
    EXPECT_TRUE(dst[size_t(n) * n] == held || dst[size_t(n) * n] == reread);
    return dst[size_t(n) * n] == held;
}

template <class E, bool sub = false, class Fn>
bool heldL(Fn fn, int n)
{
    const int s1 = n * int(sizeof(E));
    std::vector<E> a0(size_t(n) * n, E(1)), a1(size_t(n) * n, E(2)), sh(size_t(n) * n, E(100));
    const E* la[2] = {a0.data(), a1.data()};
    std::vector<E> out(size_t(n) * n);
    E* ld[2] = {sh.data(), out.data()};  // item 0 is written over the shared matrix
    fn(la, 0, s1, int(sizeof(E)), sh.data(), s1, int(sizeof(E)), ld, 0, s1, int(sizeof(E)), n, n, 2);
    // Item 0 has left shared = 1 + 100 (or 1 - 100); item 1 reads 100 if held.
    const E held = sub ? E(2 - 100) : E(2 + 100), reread = sub ? E(2 - (1 - 100)) : E(2 + (1 + 100));
    EXPECT_TRUE(out[0] == held || out[0] == reread) << out[0] << " n=" << n;
    return out[0] == held;
}

TEST(AddSubForms, SharedOperandHeldOnlyInStraightLineForms)
{
    struct Case {
        const char* what;
        bool held;
        bool got;
    };
    const Case cases[] = {
        {"Add mam 32f 4x4", true, sharedHeldFor<float>(orlmAdd_mam_32f, 4)},
        {"Add mam 32f 6x6", true, sharedHeldFor<float>(orlmAdd_mam_32f, 6)},
        {"Add mam 32f 7x7 (general loop)", false, sharedHeldFor<float>(orlmAdd_mam_32f, 7)},
        {"Add mat 32f 3x3 (no form for 3)", false, sharedHeldFor<float>(orlmAdd_mat_32f, 3)},
        {"Add mat 32f 4x4", true, sharedHeldFor<float>(orlmAdd_mat_32f, 4)},
        {"Add mat 64f 4x4", true, sharedHeldFor<double>(orlmAdd_mat_64f, 4)},
        {"Sub mma 64f 5x5", true, sharedHeldFor<double, true>(orlmSub_mma_64f, 5)},
        {"Sub tta 32f 3x3", true, sharedHeldFor<float, true>(orlmSub_tta_32f, 3)},
        {"Add mam 64f _L (per item)", false, heldL<double>(orlmAdd_mam_64f_L, 4)},
        {"Add mam 32f _L", true, heldL<float>(orlmAdd_mam_32f_L, 4)},
        {"Add mat 64f _L (general loop only)", false, heldL<double>(orlmAdd_mat_64f_L, 4)},
        {"Add mat 32f _L 3x3 (no form for 3)", false, heldL<float>(orlmAdd_mat_32f_L, 3)},
        {"Add mat 32f _L 5x5", true, heldL<float>(orlmAdd_mat_32f_L, 5)},
        {"Sub mat 32f _L (per item)", false, heldL<float, true>(orlmSub_mat_32f_L, 4)},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.held) << c.what;
}

}  // namespace
