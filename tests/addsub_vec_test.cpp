// Add and subtract of vectors and constants: values and the 64f rounding in every member, layout and
// stride case; the check orders and the members that leave a test out; the route; the forms in place.
#include <cmath>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

using t::L;
using t::Strides;
using t::Threads;

namespace {

enum class Second { V, VA, C, CA };   // the second argument group
enum class Sense { Add, Sub, From };  // x + y, x - y, y - x (constant first)

// Dyadic values (every sum exact), but element 0 of every item is the witness
// pair: 1 + (2^-53 + 2^-65) is 1 + 2^-52 in double, 1.0 through extended.
template <class E>
E value(bool first, Sense s, int k, int j)
{
    if (j > 0) return E(int(((first ? 131 : 262) + k * 37 + j * 5) % 61) - 30) * E(0.25);
    if (s == Sense::From) return first ? E(-ref::kWitnessB) : E(ref::kWitnessA);
    return first ? E(ref::kWitnessA) : s == Sense::Sub ? E(-ref::kWitnessB) : E(ref::kWitnessB);
}

// One constant, addressed as a shared vector.
template <class E>
struct Const {
    E v = 0;
    E& operator()(int, int) { return v; }
    auto args() { return std::make_tuple(v); }
};

template <class E, L lay, Second sk>
auto second(int n, int count, Strides st)
{
    if constexpr (sk == Second::V || sk == Second::VA) return t::Vec<E, sk == Second::VA, lay>(n, count, st, 2);
    else if constexpr (sk == Second::C) return Const<E>{};
    else return t::Consts<E, lay>(count);
}

// Runs a member on fresh operands and checks every element of every item.
template <class E, bool arrA, Second sk, L lay, Sense sense, class Fn>
void check(Fn fn, int n, int count, Strides st)
{
    constexpr bool arr = arrA || sk == Second::VA || sk == Second::CA;
    t::Vec<E, arrA, lay> a(n, count, st, 1);
    auto b = second<E, lay, sk>(n, count, st);
    t::Vec<E, arr, lay, true> d(n, count, st, 3);
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j)
            a(k, j) = value<E>(true, sense, k, j), b(k, j) = value<E>(false, sense, k, j), d(k, j) = NAN;
    const auto args = std::tuple_cat(a.args(), b.args(), d.args());
    if constexpr (arr) ASSERT_EQ(t::call(fn, args, n, count), orlStatusOk);
    else ASSERT_EQ(t::call(fn, args, n), orlStatusOk);
    // 64f sums of the _S2, _P and _LS2 kernels are formed in extended precision.
    const bool ext = sizeof(E) == 8 && (lay == L::P || st == Strides::Wide);
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j) {
            const E x = sense == Sense::From ? -a(k, j) : a(k, j), y = sense == Sense::Sub ? -b(k, j) : b(k, j);
            ASSERT_TRUE(t::sameBits(d(k, j), ext ? ref::addExt(x, y) : E(x + y))) << "item " << k << " element " << j;
        }
}

#define ORL_ONE(stem, sh, se, arrA, sk, E, ty, lay, sfx)                                                   \
    t::registry().push_back({"orlm" #stem "_" #sh "_" #ty #sfx, [](int n, int, int c, Strides st) {                  \
        check<E, arrA, Second::sk, L::lay, Sense::se>(orlm##stem##_##sh##_##ty##sfx, n, c, st); }});
#define ORL_VSINGLE(stem, sh, se, arrA, sk)                                                                          \
    ORL_ONE(stem, sh, se, arrA, sk, float, 32f, Std, ) ORL_ONE(stem, sh, se, arrA, sk, float, 32f, P, _P)             \
    ORL_ONE(stem, sh, se, arrA, sk, double, 64f, Std, ) ORL_ONE(stem, sh, se, arrA, sk, double, 64f, P, _P)
#define ORL_VARRAY(stem, sh, se, arrA, sk) \
    ORL_VSINGLE(stem, sh, se, arrA, sk) ORL_ONE(stem, sh, se, arrA, sk, float, 32f, L, _L) ORL_ONE(stem, sh, se, arrA, sk, double, 64f, L, _L)

const bool registered = [] {
    ORL_VSINGLE(Add, vv, Add, false, V) ORL_VARRAY(Add, vav, Add, true, V) ORL_VARRAY(Add, vava, Add, true, VA)
    ORL_VSINGLE(Add, vc, Add, false, C) ORL_VARRAY(Add, vac, Add, true, C) ORL_VARRAY(Add, vca, Add, false, CA)
    ORL_VARRAY(Add, vaca, Add, true, CA)
    ORL_VSINGLE(Sub, vv, Sub, false, V) ORL_VARRAY(Sub, vav, Sub, true, V) ORL_VARRAY(Sub, vva, Sub, false, VA)
    ORL_VARRAY(Sub, vava, Sub, true, VA) ORL_VSINGLE(Sub, vc, Sub, false, C) ORL_VARRAY(Sub, vac, Sub, true, C)
    ORL_VARRAY(Sub, vca, Sub, false, CA) ORL_VARRAY(Sub, vaca, Sub, true, CA)
    ORL_VSINGLE(Sub, cv, From, false, C) ORL_VARRAY(Sub, cva, From, true, C) ORL_VARRAY(Sub, cav, From, false, CA)
    ORL_VARRAY(Sub, cava, From, true, CA)
    return true;
}();

// Lengths with straight-line forms, the general loop on both sides of the runs of
// packed elements (11 floats, 9 doubles), and items at different alignments.
TEST(AddSubVecValues, EveryMemberLengthStrideAndCount)
{
    ASSERT_TRUE(registered);
    t::checkEveryMember(104, {{1, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {9, 1}, {10, 1}, {11, 1}, {23, 1}});
}

// ---- argument checks -------------------------------------------------------

TEST(AddSubVecChecks, ClassesInEachMembersOrder)
{
    t::CheckBuffers b;
    const std::pair<std::function<orlStatus()>, orlStatus> cases[] = {
        // vav tests the count last: after the strides, and in _P before, in _L after the offsets
        {[&] { return orlmAdd_vav_32f(b.f, 64, 6, b.f, 4, b.fo, 64, 4, 4, 0); }, orlStatusStride},
        {[&] { return orlmSub_vav_64f(b.g, 64, 6, b.g, 8, b.go, 64, 8, 0, 0); }, orlStatusSize},
        {[&] { return orlmAdd_vav_32f_P(b.tf, 2, 64, b.tf, 0, b.to, 0, 64, 4, 0); }, orlStatusCount},
        {[&] { return orlmAdd_vav_32f_L(b.tf, 2, 4, b.f, 4, b.to, 0, 4, 4, 0); }, orlStatusOffset},
        {[&] { return orlmSub_vav_64f_L(b.tg, 0, 8, b.g, 0, b.tgo, 0, 8, 4, 0); }, orlStatusStride},
        // like members keep the general order; _P constants have no stride class
        {[&] { return orlmSub_vva_32f(b.f, 6, b.f, 64, 4, b.fo, 64, 4, 4, 0); }, orlStatusCount},
        {[&] { return orlmAdd_vava_32f_L(b.tf, 2, 4, b.tf, 0, 4, b.to, 0, 4, 4, 0); }, orlStatusCount},
        {[&] { return orlmSub_cv_64f_P(b.tg, 4, 1.0, b.tgo, 0, 4); }, orlStatusOffset},
        {[&] { return orlmAdd_vaca_32f(b.f, 64, 4, nullptr, 4, b.fo, 64, 4, 0, 0); }, orlStatusNullPointer},
        // constant arrays: stride0 tested in the standard and _P layouts, 0 refused
        {[&] { return orlmAdd_vaca_32f(b.f, 64, 4, b.f, 0, b.fo, 64, 4, 4, 1); }, orlStatusStride},
        {[&] { return orlmSub_cav_64f_P(b.tg, 0, b.g, 0, b.tgo, 0, 64, 4, 1); }, orlStatusStride},
        {[&] { return orlmAdd_vca_32f_L(b.f, 4, b.tf, 2, b.to, 0, 4, 4, 1); }, orlStatusOffset},
        // the members that leave a test out have their like members' tests
        {[&] { return orlmAdd_vaca_64f_P(b.tg, 0, 0, b.g, 8, b.tgo, 0, 64, 4, 1); }, orlStatusStride},
        {[&] { return orlmAdd_vca_32f_P(b.tf, -4, b.f, 4, b.to, 0, 64, 4, 1); }, orlStatusOffset},
        {[&] { return orlmSub_cav_64f_P(b.tg, -8, b.g, 8, b.tgo, 0, 64, 4, 1); }, orlStatusOffset},
        {[&] { return orlmSub_cav_32f_P(b.tf, -4, b.f, 0, b.to, 0, 64, 4, 1); }, orlStatusStride},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(cases[i].first(), cases[i].second) << "case " << i;
        EXPECT_TRUE(b.untouched()) << "case " << i;
    }
}

// The three members that leave a test out run with what it would refuse: a
// srcStride0 of 0 (every item reads item 0) and negative offsets (the table
// entries point one element past the elements).
TEST(AddSubVecChecks, MembersThatLeaveATestOut)
{
    float src[5] = {1, 2, 3, 4}, values[2] = {10, 20}, out[8] = {};
    const float *tsrc[4] = {src, src + 1, src + 2, src + 3}, *shifted[4] = {src + 1, src + 2, src + 3, src + 4};
    float* tout[4] = {out, out + 1, out + 2, out + 3};
    ASSERT_EQ(orlmAdd_vaca_32f_P(tsrc, 0, 0, values, 4, tout, 0, 16, 4, 2), orlStatusOk);
    EXPECT_TRUE(out[0] == 11.f && out[7] == 24.f);
    ASSERT_EQ(orlmSub_cav_32f_P(shifted, -4, values, 4, tout, 0, 16, 4, 2), orlStatusOk);
    EXPECT_TRUE(out[0] == 9.f && out[7] == 16.f);
    double g[5] = {1, 2, 3, 4, 0}, gv[2] = {10, 20}, gout[9] = {};
    const double* tg[4] = {g + 1, g + 2, g + 3, g + 4};
    double* tgout[4] = {gout + 1, gout + 2, gout + 3, gout + 4};
    ASSERT_EQ(orlmAdd_vca_64f_P(tg, -8, gv, 8, tgout, -8, 32, 4, 2), orlStatusOk);
    EXPECT_TRUE(gout[0] == 11.0 && gout[7] == 24.0);
}

TEST(AddSubVecRoute, CostsAndLimits)
{
    Threads two(2);
    t::Pool<float> f(40000, 1000, 4);
    t::Pool<double> g(40000, 1000, 4);
    const std::pair<std::function<orlStatus()>, bool> cases[] = {
        // (2n+1)*L: 625*32 = 20000 stays (>), 627*32 passes; _L 32f has 40000, _L 64f 20000
        {[&] { return orlmAdd_vav_32f(f.S, 4, 4, f.S, 4, f.D, 4, 4, 32, 312); }, false},
        {[&] { return orlmAdd_vav_32f(f.S, 4, 4, f.S, 4, f.D, 4, 4, 32, 313); }, true},
        {[&] { return orlmAdd_vav_32f_L(f.lst.data(), 0, 4, f.S, 4, f.dlst.data(), 0, 4, 32, 313); }, false},
        {[&] { return orlmAdd_vav_32f_L(f.lst.data(), 0, 4, f.S, 4, f.dlst.data(), 0, 4, 32, 625); }, true},
        {[&] { return orlmSub_vav_64f_L(g.lst.data(), 0, 8, g.S, 8, g.dlst.data(), 0, 8, 32, 313); }, true},
        // cva counts 2n+1 whatever the length; L*n + L + n, (2L+1)*n, 3*L*n at 20000 and just above
        {[&] { return orlmSub_cva_32f(f.S, 4, 4, 1.f, f.D, 4, 4, 1000, 9999); }, false},
        {[&] { return orlmSub_cva_32f(f.S, 4, 4, 1.f, f.D, 4, 4, 1, 10000); }, true},
        {[&] { return orlmAdd_vca_32f(f.S, 4, f.S, 4, f.D, 4, 4, 2, 6666); }, false},
        {[&] { return orlmSub_cav_64f(g.S, 8, g.S, 8, g.D, 8, 8, 3, 5000); }, true},
        {[&] { return orlmAdd_vaca_64f(g.S, 8, 8, g.S, 8, g.D, 8, 8, 2, 4000); }, false},
        {[&] { return orlmSub_cava_32f(f.S, 4, 4, f.S, 4, f.D, 4, 4, 2, 4001); }, true},
        {[&] { return orlmSub_vava_32f(f.S, 4, 4, f.S, 4, 4, f.D, 4, 4, 2, 3334); }, true},
        // Sub vva 64f _P stays serial above its limit; its 32f twin does not
        {[&] { return orlmSub_vva_64f_P(g.tbl.data(), 0, g.tbl.data(), 0, 8, g.dtbl.data(), 0, 8, 4, 30000); }, false},
        {[&] { return orlmSub_vva_32f_P(f.tbl.data(), 0, f.tbl.data(), 0, 4, f.dtbl.data(), 0, 4, 4, 30000); }, true},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        probe::reset();
        EXPECT_EQ(cases[i].first(), orlStatusOk) << "case " << i;
        EXPECT_EQ(probe::regions().count > 0, cases[i].second) << "case " << i;
    }
}

// On the driver every item is computed by the same kernel as on the calling thread.
TEST(AddSubVecRoute, ArrayOnTheDriver)
{
    Threads three(3);
    probe::reset();
    check<double, false, Second::CA, L::L, Sense::From>(orlmSub_cav_64f_L, 7, 4001, Strides::Wide);
    check<float, true, Second::V, L::Std, Sense::Add>(orlmAdd_vav_32f, 23, 4001, Strides::Unit);
    EXPECT_EQ(probe::regions().count, 2);
}

// Item 0 of dst is the shared vector itself. A straight-line form holds the shared vector
// from before the loop, so item 1 sees its entry values (1 + 100); the general loop reads it again (1 + 101).
template <class E, class Fn>
E secondItem(Fn fn, int n, int s2)
{
    std::vector<E> arr(size_t(4) * n, E(1)), sh(size_t(4) * n, E(100));
    fn(arr.data(), n * s2, s2, sh.data(), s2, sh.data(), n * s2, s2, n, 2);
    return sh[size_t(n) * s2 / sizeof(E)];
}

TEST(AddSubVecForms, SharedVectorHeldOnlyInStraightLineForms)
{
    EXPECT_EQ(secondItem<float>(orlmAdd_vav_32f, 4, 4), 101.f);
    EXPECT_EQ(secondItem<float>(orlmAdd_vav_32f, 6, 8), 101.f);
    EXPECT_EQ(secondItem<double>(orlmAdd_vav_64f, 3, 8), 101.0);
    EXPECT_EQ(secondItem<double>(orlmAdd_vav_64f, 7, 8), 102.0);
    EXPECT_EQ(secondItem<float>(orlmSub_vav_32f, 12, 4), 100.f);  // 1 - (1 - 100), read again
}

}  // namespace
