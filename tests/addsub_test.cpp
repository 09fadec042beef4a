// Matrix add and subtract: values and the 64f rounding rule in every member,
// layout and stride case, on both routes; the order of the argument checks;
// the limits; what in-place use shows of the straight-line forms.
#include <limits>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

constexpr K resultKind(K a, K b) { return t::arr(a) || t::arr(b) ? K::ma : K::m; }

// Where a 64f sum is formed in the extended format and rounded once: the
// standard layout's array kernels and every kernel of any stride2, and _P;
// single items of unit stride and the unit-stride _L kernels add in double.
constexpr bool extended64(bool array, L lay, Strides st)
{
    return lay == L::P || st == Strides::Wide || (lay == L::Std && array);
}

// Dyadic values (every sum exact), but element (0, 0) of every item is the
// witness pair that tells a double sum from one rounded from extended.
template <class E>
E value(bool first, bool sub, int k, int i, int j)
{
    if (i == 0 && j == 0) return first ? E(ref::kWitnessA) : sub ? -E(ref::kWitnessB) : E(ref::kWitnessB);
    return E(int(((first ? 131 : 262) + k * 37 + i * 11 + j * 5) % 61) - 30) * E(0.25);
}

template <class E, K ka, K kb, L lay, bool sub, class Fn>
void checkValues(Fn fn, int w, int h, int count, Strides st)
{
    constexpr K kd = resultKind(ka, kb);
    Mat<E, ka, lay> a(w, h, count, st, 1);
    Mat<E, kb, lay> b(w, h, count, st, 2);
    // With three items the result's rows are spaced apart from the sources'.
    Mat<E, kd, lay, true> d(w, h, count, st, 3, count == 3 ? 5 : 2);
    a.fill([](int k, int i, int j) { return value<E>(true, sub, k, i, j); });
    b.fill([](int k, int i, int j) { return value<E>(false, sub, k, i, j); });
    d.fill([](int, int, int) { return std::numeric_limits<E>::quiet_NaN(); });
    const auto args = std::tuple_cat(a.args(), b.args(), d.args());
    orlStatus st2;
    if constexpr (t::arr(kd)) st2 = t::call(fn, args, w, h, count);
    else st2 = t::call(fn, args, w, h);
    ASSERT_EQ(st2, orlStatusOk);
    const bool ext = sizeof(E) == 8 && extended64(t::arr(kd), lay, st);
    for (int k = 0; k < d.count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) {
                const E x = a(t::arr(ka) ? k : 0, i, j), y = b(t::arr(kb) ? k : 0, i, j);
                const auto term = [&](int q) { return q == 0 ? x : sub ? -y : y; };
                const E want = ext ? ref::sumExt<E>(2, term) : ref::sumElem<E>(2, term);
                ASSERT_TRUE(ref::sameBits(d(k, i, j), want)) << "item " << k << " (" << i << "," << j << ")";
            }
}

#define ORL_ONE(stem, shape, ka, kb, E, ty, lay, sfx)                                                   \
    t::registry().push_back({"orlm" #stem "_" #shape "_" #ty #sfx, [](int w, int h, int n, Strides st) {   \
        checkValues<E, K::ka, K::kb, L::lay, #stem[0] == 'S'>(orlm##stem##_##shape##_##ty##sfx, w, h, n, st); \
    }, t::arr(K::ka) || t::arr(K::kb)});
#define ORL_SINGLE(stem, shape, ka, kb)                                                                          \
    ORL_ONE(stem, shape, ka, kb, float, 32f, Std, ) ORL_ONE(stem, shape, ka, kb, float, 32f, P, _P)               \
    ORL_ONE(stem, shape, ka, kb, double, 64f, Std, ) ORL_ONE(stem, shape, ka, kb, double, 64f, P, _P)
#define ORL_ARRAY(stem, shape, ka, kb) \
    ORL_SINGLE(stem, shape, ka, kb) ORL_ONE(stem, shape, ka, kb, float, 32f, L, _L) ORL_ONE(stem, shape, ka, kb, double, 64f, L, _L)

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
    t::checkEveryMember(142, {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {1, 1}, {2, 3}, {4, 3}, {7, 7}});
}

// The same on the parallel route: every item of every slice, in every layout.
TEST(AddSubValues, EveryArrayMemberOnTheDriver)
{
    t::Threads three(3);
    for (const t::MemberCheck& m : t::registry()) {
        if (!m.array) continue;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            probe::reset();
            m.check(4, 4, 1200, st);  // cost at least 16 * 2401, above every limit
            ASSERT_FALSE(HasFatalFailure()) << m.name;
            EXPECT_EQ(probe::regions().count, 1) << m.name;
        }
    }
}

// ---- argument checks -------------------------------------------------------

TEST(AddSubChecks, ClassesInEachMembersOrder)
{
    t::CheckBuffers b;
    // Add mam, Sub mam and Sub mma test strides before sizes in the standard layout.
    struct Case { const char *order, *failing; std::function<orlStatus()> call; };
    const Case cases[] = {
        {"NCTZ", "NC", [&] { return orlmAdd_mam_32f(b.f, 64, 16, 4, b.f, 16, 4, nullptr, 64, 16, 4, 4, 4, 0); }},
        {"NCTZ", "TZ", [&] { return orlmAdd_mam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.fo, 64, 16, 4, 0, 4, 1); }},
        {"NCTZ", "CT", [&] { return orlmAdd_mam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.fo, 64, 16, 4, 4, 4, 0); }},
        {"NCTZ", "T", [&] { return orlmAdd_mam_64f(b.g, 128, 12, 8, b.g, 32, 8, b.go, 128, 32, 8, 2, 2, 1); }},
        {"NCTZ", "TZ", [&] { return orlmSub_mam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.fo, 64, 16, 4, 0, 4, 1); }},
        {"NCTZ", "TZ", [&] { return orlmSub_mma_32f(b.f, 6, 4, b.f, 64, 16, 4, b.fo, 64, 16, 4, 4, 0, 1); }},
        {"NCZT", "TZ", [&] { return orlmAdd_tam_32f(b.f, 64, 6, 4, b.f, 16, 4, b.fo, 64, 16, 4, 0, 4, 1); }},
        {"NCZT", "CZ", [&] { return orlmAdd_tama_32f(b.f, 64, 16, 4, b.f, 64, 16, 4, b.fo, 64, 16, 4, 0, 4, 0); }},
        {"NCZT", "T", [&] { return orlmAdd_mama_32f(b.f, 0, 16, 4, b.f, 64, 16, 4, b.fo, 64, 16, 4, 4, 4, 1); }},
        {"NZT", "T", [&] { return orlmAdd_mm_32f(b.f, 16, 4, b.f, 16, 4, b.fo, 16, 0, 4, 4); }},
        {"NZT", "T", [&] { return orlmSub_mm_64f(b.g, -32, 8, b.g, 32, 8, b.go, 32, 8, 2, 2); }},
        {"NZO", "ZO", [&] { return orlmAdd_mm_32f_P(b.tf, -4, b.tf, 0, b.to, 0, 0, 4); }},
        {"NZO", "NZO", [&] { return orlmAdd_mm_32f_P(b.tf, -4, nullptr, 0, b.to, 0, 0, 4); }},
        {"NZO", "O", [&] { return orlmAdd_tt_64f_P(b.tg, 4, b.tg, 0, b.tgo, 0, 2, 2); }},
        {"NCZTO", "ZT", [&] { return orlmSub_mam_32f_P(b.tf, 0, 6, b.tf, 0, b.to, 0, 64, 0, 4, 1); }},
        {"NCZTO", "O", [&] { return orlmAdd_mam_32f_P(b.tf, -4, 64, b.tf, 0, b.to, 0, 64, 4, 4, 1); }},
        {"NCZTO", "O", [&] { return orlmAdd_mam_32f_P(b.tf, 0, 64, b.tf, 2, b.to, 0, 64, 4, 4, 1); }},
        {"NCZTO", "TO", [&] { return orlmAdd_mama_32f_P(b.tf, 2, 6, b.tf, 0, 64, b.to, 0, 64, 4, 4, 1); }},
        {"NCZTO", "T", [&] { return orlmAdd_mam_32f_L(b.tf, 0, 16, 4, b.f, 16, 6, b.to, 0, 16, 4, 4, 4, 1); }},
        {"NCZTO", "TO", [&] { return orlmAdd_mam_32f_L(b.tf, 2, 16, 4, b.f, 16, 6, b.to, 0, 16, 4, 4, 4, 1); }},
        {"NCZTO", "O", [&] { return orlmSub_tata_32f_L(b.tf, 0, 16, 4, b.tf, -8, 16, 4, b.to, 0, 16, 4, 4, 4, 1); }},
        {"NCZTO", "ZT", [&] { return orlmSub_mam_32f_L(b.tf, 0, 16, 4, b.f, 16, 6, b.to, 0, 16, 4, 4, -1, 1); }},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatus(c.order, c.failing)) << c.order << " failing " << c.failing;
        EXPECT_TRUE(b.untouched()) << c.order << " failing " << c.failing;
    }
    // A stride of 12 passes where the element size is 4, and an offset of 0 everywhere.
    EXPECT_EQ(orlmAdd_mam_32f(b.f, 64, 12, 4, b.f, 12, 4, b.fo, 64, 12, 4, 2, 2, 1), orlStatusOk);
    EXPECT_EQ(orlmAdd_mam_32f_P(b.tf, 0, 64, b.tf, 0, b.to, 0, 64, 4, 4, 1), orlStatusOk);
}

// ---- route -----------------------------------------------------------------

// Does Add_mam_32f (cost W*H*(2n+1), driver when cost >= limit) open a region?
template <L lay, class Fn>
bool mamParallel(Fn fn, int w, int h, int n, Strides st)
{
    Mat<float, K::ma, lay> a(w, h, n, st, 1);
    Mat<float, K::m, lay> b(w, h, 1, st, 2);
    Mat<float, K::ma, lay, true> d(w, h, n, st, 3);
    probe::reset();
    EXPECT_EQ(t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), w, h, n), orlStatusOk);
    return probe::regions().count > 0;
}

// Each limit met exactly (parallel) and missed by one (serial).
TEST(AddSubRoute, LimitsOfEachLayoutAndStrideCase)
{
    t::Threads two(2);
    struct Row {
        L lay;
        Strides st;
        int limit, w, h, n, wBelow, hBelow, nBelow;  // W*H*(2n+1) = limit, and limit - 1
    };
    const Row rows[] = {
        {L::Std, Strides::Unit, 36864, 64, 64, 4, 1, 191, 96}, {L::Std, Strides::Wide, 18432, 32, 64, 4, 1, 7, 1316},
        {L::L, Strides::Unit, 18432, 32, 64, 4, 1, 7, 1316},   {L::L, Strides::Wide, 18432, 32, 64, 4, 1, 7, 1316},
        {L::P, Strides::Unit, 9216, 32, 32, 4, 5, 19, 48},
    };
    for (const Row& r : rows) {
        ASSERT_EQ(r.w * r.h * (2 * r.n + 1), r.limit);
        ASSERT_EQ(r.wBelow * r.hBelow * (2 * r.nBelow + 1), r.limit - 1);
        const auto run = [&](int w, int h, int n) {
            return r.lay == L::Std ? mamParallel<L::Std>(orlmAdd_mam_32f, w, h, n, r.st)
                 : r.lay == L::L   ? mamParallel<L::L>(orlmAdd_mam_32f_L, w, h, n, r.st)
                                   : mamParallel<L::P>(orlmAdd_mam_32f_P, w, h, n, r.st);
        };
        EXPECT_TRUE(run(r.w, r.h, r.n)) << "limit " << r.limit;
        EXPECT_FALSE(run(r.wBelow, r.hBelow, r.nBelow)) << "limit " << r.limit;
    }
}

// 3*W*H*n wraps in 32 bits: 64x64 matrices, 174763 items give a negative cost
// (serial), one item fewer stays just under 2^31 (parallel). The items
// overlap in memory so that the call needs little of it.
TEST(AddSubRoute, WrappedCostTakesTheSerialRoute)
{
    t::Threads two(2);
    std::vector<float> m(174763 + 64 * 64, 0.5f), out(m.size());
    for (int count : {174763, 174762}) {
        probe::reset();
        ASSERT_EQ(orlmAdd_mama_32f(m.data(), 4, 256, 4, m.data(), 4, 256, 4, out.data(), 4, 256, 4, 64, 64, count), orlStatusOk);
        EXPECT_EQ(probe::regions().count > 0, count == 174762) << count;
    }
    EXPECT_EQ(out[0], 1.0f);
}

// ---- what in-place use shows of the straight-line forms ---------------------

// Item 0 of dst lies on the shared operand. A straight-line form has loaded
// the shared matrix before the loop, so item 1 still sees its entry values;
// the general loop, and kernels that call a single-item kernel for each item,
// read it again after item 0 has been written. Item 0 of the array is 1 and
// item 1 is 2 (_L) or 1 + x % 7; the shared matrix is 100.
template <class E, bool sharedFirst = false, class Fn>
bool sharedHeldFor(Fn fn, int n)
{
    const int s1 = n * int(sizeof(E)), s0 = n * s1, e = int(sizeof(E));
    std::vector<E> arr(size_t(2) * n * n), sh(size_t(2) * n * n, E(100));
    for (size_t x = 0; x < arr.size(); ++x) arr[x] = E(x % 7 + 1);
    if constexpr (sharedFirst) fn(sh.data(), s1, e, arr.data(), s0, s1, e, sh.data(), s0, s1, e, n, n, 2);
    else fn(arr.data(), s0, s1, e, sh.data(), s1, e, sh.data(), s0, s1, e, n, n, 2);
    const E a1 = arr[size_t(n) * n], got = sh[size_t(n) * n];  // item 1, element (0, 0)
    const E held = sharedFirst ? E(100) - a1 : a1 + E(100), reread = sharedFirst ? E(99) - a1 : a1 + E(101);
    EXPECT_TRUE(got == held || got == reread);
    return got == held;
}

template <class E, bool sub = false, class Fn>
bool heldL(Fn fn, int n)
{
    const int s1 = n * int(sizeof(E)), e = int(sizeof(E));
    std::vector<E> a0(size_t(n) * n, E(1)), a1(size_t(n) * n, E(2)), sh(size_t(n) * n, E(100)), out(size_t(n) * n);
    const E* la[2] = {a0.data(), a1.data()};
    E* ld[2] = {sh.data(), out.data()};  // item 0 is written over the shared matrix
    fn(la, 0, s1, e, sh.data(), s1, e, ld, 0, s1, e, n, n, 2);
    const E held = sub ? E(2 - 100) : E(2 + 100), reread = sub ? E(2 - (1 - 100)) : E(2 + (1 + 100));
    EXPECT_TRUE(out[0] == held || out[0] == reread) << out[0] << " n=" << n;
    return out[0] == held;
}

TEST(AddSubForms, SharedOperandHeldOnlyInStraightLineForms)
{
    struct Case {
        const char* what;
        bool held, got;
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
