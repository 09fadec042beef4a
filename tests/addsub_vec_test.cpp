// Add and subtract of vectors and constants: values in every member, layout
// and stride case, the sense of the constant-first shapes, where a 64f sum is
// rounded, the argument checks with the vav order and the members that leave
// a test out, the costs and limits of the route, and what in-place use shows
// of the straight-line forms.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

using t::L;
using t::Strides;
using t::Threads;

namespace {

enum class Second { V, VA, C, CA };  // the second argument group
enum class Sense { Add, Sub, From };  // x + y, x - y, y - x (constant first)
enum class Fill { Exact, Witness };

// Dyadic values: every sum is exact, so every rounding gives these bits.
template <class E>
E value(unsigned seed, int k, int j)
{
    return E(int((seed * 131 + k * 37 + j * 5) % 61) - 30) * E(0.25);
}

// The 64f witness: 1 + (2^-53 + 2^-65) is 1 + 2^-52 in double and 1.0
// through the extended format (see ref::kWitnessA).
template <class E>
E witness(bool first, Sense s)
{
    if (s == Sense::From) return first ? E(-ref::kWitnessB) : E(ref::kWitnessA);
    if (first) return E(ref::kWitnessA);
    return s == Sense::Sub ? E(-ref::kWitnessB) : E(ref::kWitnessB);
}

template <class E>
E expected(Sense s, E x, E y, bool ext)
{
    if (s == Sense::Sub) y = -y;
    if (s == Sense::From) x = -x;
    return ext ? ref::addExt(x, y) : E(x + y);
}

// One constant, with the interface of t::Consts.
template <class E>
struct Const {
    E v = 0;
    int count = 1;
    E& operator()(int) { return v; }
    auto args() { return std::make_tuple(v); }
};

template <class E, L lay, Second sk>
auto second(int n, int count, Strides st)
{
    if constexpr (sk == Second::V || sk == Second::VA)
        return t::Vec<E, sk == Second::VA, lay>(n, count, st, 2);
    else if constexpr (sk == Second::C)
        return Const<E>{};
    else
        return t::Consts<E, lay>(count);
}

// Element j of item k of any operand; a shared one has a single item.
template <class O>
auto& elem(O& o, int k, int j)
{
    k = std::min(k, o.count - 1);
    if constexpr (requires { o(k, j); })
        return o(k, j);
    else
        return o(k);
}

// Runs a member on fresh operands and checks every element of every item.
template <class E, bool arrA, Second sk, L lay, Sense sense, class Fn>
void check(Fn fn, Fill fill, int n, int count, Strides st)
{
    constexpr bool arr = arrA || sk == Second::VA || sk == Second::CA;
    t::Vec<E, arrA, lay> a(n, count, st, 1);
    auto b = second<E, lay, sk>(n, count, st);
    t::Vec<E, arr, lay, true> d(n, count, st, 3);
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j) {
            elem(a, k, j) = fill == Fill::Exact ? value<E>(1, k, j) : witness<E>(true, sense);
            elem(b, k, j) = fill == Fill::Exact ? value<E>(2, k, j) : witness<E>(false, sense);
            d(k, j) = std::numeric_limits<E>::quiet_NaN();
        }
    if constexpr (arr)
        ASSERT_EQ(t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), n, count), orlStatusOk);
    else
        ASSERT_EQ(t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), n), orlStatusOk);
    // 64f sums of the _S2, _P and _LS2 kernels are formed in extended precision.
    const bool ext = sizeof(E) == 8 && (lay == L::P || st == Strides::Wide);
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < n; ++j) {
            const E expect = expected(sense, elem(a, k, j), elem(b, k, j), ext);
            ASSERT_TRUE(t::sameBits(d(k, j), expect)) << "item " << k << " element " << j << ": " << d(k, j) << " vs " << expect;
        }
}

struct Member {
    std::string name;
    bool f64;
    std::function<void(Fill, int, int, Strides)> check;
};

std::vector<Member>& members()
{
    static std::vector<Member> list;
    return list;
}

template <class E, bool arrA, Second sk, L lay, Sense sense, class Fn>
void add(std::string name, Fn fn)
{
    members().push_back({name, sizeof(E) == 8, [fn](Fill f, int n, int c, Strides st) { check<E, arrA, sk, lay, sense>(fn, f, n, c, st); }});
}

#define ORL_VSINGLE(stem, shape, sense, arrA, sk)                                                        \
    add<float, arrA, Second::sk, L::Std, Sense::sense>("orlm" #stem "_" #shape "_32f", orlm##stem##_##shape##_32f);   \
    add<float, arrA, Second::sk, L::P, Sense::sense>("orlm" #stem "_" #shape "_32f_P", orlm##stem##_##shape##_32f_P); \
    add<double, arrA, Second::sk, L::Std, Sense::sense>("orlm" #stem "_" #shape "_64f", orlm##stem##_##shape##_64f);  \
    add<double, arrA, Second::sk, L::P, Sense::sense>("orlm" #stem "_" #shape "_64f_P", orlm##stem##_##shape##_64f_P);
#define ORL_VARRAY(stem, shape, sense, arrA, sk)                                                         \
    ORL_VSINGLE(stem, shape, sense, arrA, sk)                                                            \
    add<float, arrA, Second::sk, L::L, Sense::sense>("orlm" #stem "_" #shape "_32f_L", orlm##stem##_##shape##_32f_L); \
    add<double, arrA, Second::sk, L::L, Sense::sense>("orlm" #stem "_" #shape "_64f_L", orlm##stem##_##shape##_64f_L);

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

// Lengths with straight-line forms, the general loop on both sides of the
// runs of packed elements (11 floats, 9 doubles), and results whose items
// start at different alignments.
TEST(AddSubVecValues, EveryMemberLengthStrideAndCount)
{
    ASSERT_TRUE(registered);
    EXPECT_EQ(members().size(), 104u);
    for (const Member& m : members())
        for (int n : {1, 3, 4, 5, 6, 7, 9, 10, 11, 23})
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (int count : {1, 3}) {
                    SCOPED_TRACE(m.name + " length " + std::to_string(n) + " count " + std::to_string(count) +
                                 (st == Strides::Wide ? " wide" : " unit"));
                    m.check(Fill::Exact, n, count, st);
                    if (HasFatalFailure()) return;
                }
}

// The witness tells the kernels that round a 64f sum once from the extended
// format (_S2, _P, _LS2) from those that add in double (unit stride, _L),
// in every 64f member, for straight-line, general and run lengths.
TEST(AddSubVecPrecision, SixtyFourBitSumsRoundedWhereTheKernelSays)
{
    ASSERT_NE(ref::kWitnessA + ref::kWitnessB, ref::addExt(ref::kWitnessA, ref::kWitnessB));
    for (const Member& m : members()) {
        if (!m.f64) continue;
        for (int n : {4, 7, 12})
            for (Strides st : {Strides::Unit, Strides::Wide}) {
                SCOPED_TRACE(m.name + " length " + std::to_string(n) + (st == Strides::Wide ? " wide" : " unit"));
                m.check(Fill::Witness, n, 2, st);
                if (HasFatalFailure()) return;
            }
    }
}

// ---- argument checks -------------------------------------------------------

struct Bufs {
    float f[64] = {}, out[64];
    double g[64] = {}, outg[64];
    const float* tf[16];
    float* to[16];
    const double* tg[16];
    double* tog[16];
    Bufs()
    {
        for (int i = 0; i < 64; ++i) out[i] = -1.f, outg[i] = -1.0;
        for (int i = 0; i < 16; ++i) tf[i] = f + i, to[i] = out + i, tg[i] = g + i, tog[i] = outg + i;
    }
    bool untouched() const
    {
        for (int i = 0; i < 64; ++i)
            if (out[i] != -1.f || outg[i] != -1.0) return false;
        return true;
    }
};

TEST(AddSubVecChecks, ClassesInEachMembersOrder)
{
    Bufs b;
    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        orlStatus expect;
    };
    const Case cases[] = {
        // vav tests the count last: after the strides, and in _P before, in _L after the offsets
        {"vav: stride before count", [&] { return orlmAdd_vav_32f(b.f, 64, 6, b.f, 4, b.out, 64, 4, 4, 0); }, orlStatusStride},
        {"vav: count last", [&] { return orlmAdd_vav_32f(b.f, 64, 4, b.f, 4, b.out, 64, 4, 4, 0); }, orlStatusCount},
        {"vav: size before stride", [&] { return orlmSub_vav_64f(b.g, 64, 6, b.g, 8, b.outg, 64, 8, 0, 0); }, orlStatusSize},
        {"vav _P: count before offset", [&] { return orlmAdd_vav_32f_P(b.tf, 2, 64, b.tf, 0, b.to, 0, 64, 4, 0); }, orlStatusCount},
        {"vav _L: offset before count", [&] { return orlmAdd_vav_32f_L(b.tf, 2, 4, b.f, 4, b.to, 0, 4, 4, 0); }, orlStatusOffset},
        {"vav _L: shared stride before count", [&] { return orlmSub_vav_64f_L(b.tg, 0, 8, b.g, 0, b.tog, 0, 8, 4, 0); }, orlStatusStride},
        // like members keep the general order
        {"vva: count before strides", [&] { return orlmSub_vva_32f(b.f, 6, b.f, 64, 4, b.out, 64, 4, 4, 0); }, orlStatusCount},
        {"vava _L: count before offset", [&] { return orlmAdd_vava_32f_L(b.tf, 2, 4, b.tf, 0, 4, b.to, 0, 4, 4, 0); }, orlStatusCount},
        {"vc _P: no stride class", [&] { return orlmSub_cv_64f_P(b.tg, 4, 1.0, b.tog, 0, 4); }, orlStatusOffset},
        {"NULL constant array first", [&] { return orlmAdd_vaca_32f(b.f, 64, 4, nullptr, 4, b.out, 64, 4, 0, 0); }, orlStatusNullPointer},
        // constant arrays: stride0 tested in the standard and _P layouts, 0 refused
        {"valuesStride0 of 0", [&] { return orlmAdd_vaca_32f(b.f, 64, 4, b.f, 0, b.out, 64, 4, 4, 1); }, orlStatusStride},
        {"valuesStride0 of 0 _P", [&] { return orlmSub_cav_64f_P(b.tg, 0, b.g, 0, b.tog, 0, 64, 4, 1); }, orlStatusStride},
        {"_L valuesOffset of 2", [&] { return orlmAdd_vca_32f_L(b.f, 4, b.tf, 2, b.to, 0, 4, 4, 1); }, orlStatusOffset},
        // the members that leave a test out have their like members' tests
        {"Add vaca 64f _P tests srcStride0", [&] { return orlmAdd_vaca_64f_P(b.tg, 0, 0, b.g, 8, b.tog, 0, 64, 4, 1); }, orlStatusStride},
        {"Add vca 32f _P tests offsets", [&] { return orlmAdd_vca_32f_P(b.tf, -4, b.f, 4, b.to, 0, 64, 4, 1); }, orlStatusOffset},
        {"Sub cav 64f _P tests offsets", [&] { return orlmSub_cav_64f_P(b.tg, -8, b.g, 8, b.tog, 0, 64, 4, 1); }, orlStatusOffset},
        {"Sub cav 32f _P still tests strides", [&] { return orlmSub_cav_32f_P(b.tf, -4, b.f, 0, b.to, 0, 64, 4, 1); }, orlStatusStride},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(b.untouched()) << c.what;
    }
}

// The three members that leave a test out run with what it would refuse: a
// srcStride0 of 0 (every item reads item 0) and negative offsets (the table
// entries point one element past the elements).
TEST(AddSubVecChecks, MembersThatLeaveATestOut)
{
    float src[4] = {1, 2, 3, 4}, values[2] = {10, 20}, out[8] = {};
    const float* tsrc[4] = {src, src + 1, src + 2, src + 3};
    float* tout[4] = {out, out + 1, out + 2, out + 3};
    ASSERT_EQ(orlmAdd_vaca_32f_P(tsrc, 0, 0, values, 4, tout, 0, 16, 4, 2), orlStatusOk);
    EXPECT_EQ(out[0], 11.f);
    EXPECT_EQ(out[7], 24.f);

    const float* shifted[4] = {src + 1, src + 2, src + 3, src + 4};
    ASSERT_EQ(orlmSub_cav_32f_P(shifted, -4, values, 4, tout, 0, 16, 4, 2), orlStatusOk);
    EXPECT_EQ(out[0], 9.f);
    EXPECT_EQ(out[7], 16.f);

    double g[5] = {1, 2, 3, 4, 0}, gv[2] = {10, 20}, gout[9] = {};
    const double* tg[4] = {g + 1, g + 2, g + 3, g + 4};
    double* tgout[4] = {gout + 1, gout + 2, gout + 3, gout + 4};
    ASSERT_EQ(orlmAdd_vca_64f_P(tg, -8, gv, 8, tgout, -8, 32, 4, 2), orlStatusOk);
    EXPECT_EQ(gout[0], 11.0);
    EXPECT_EQ(gout[7], 24.0);
}

// ---- route -----------------------------------------------------------------

// Items overlap in memory (stride0 of one element), so that large counts
// need little of it; only the route is looked at.
TEST(AddSubVecRoute, CostsAndLimits)
{
    Threads two(2);
    t::Pool<float> f(40000, 1000, 4);
    t::Pool<double> g(40000, 1000, 4);
    const float* F = f.S;
    float* FO = f.D;
    const double* G = g.S;
    double* GO = g.D;
    const std::pair<std::function<orlStatus()>, bool> cases[] = {
        // (2n+1)*L: 625*32 = 20000 stays (>), 627*32 passes; _L 32f has 40000, _L 64f 20000
        {[&] { return orlmAdd_vav_32f(F, 4, 4, F, 4, FO, 4, 4, 32, 312); }, false},
        {[&] { return orlmAdd_vav_32f(F, 4, 4, F, 4, FO, 4, 4, 32, 313); }, true},
        {[&] { return orlmAdd_vav_32f_L(f.lst.data(), 0, 4, F, 4, f.dlst.data(), 0, 4, 32, 313); }, false},
        {[&] { return orlmAdd_vav_32f_L(f.lst.data(), 0, 4, F, 4, f.dlst.data(), 0, 4, 32, 625); }, true},
        {[&] { return orlmSub_vav_64f_L(g.lst.data(), 0, 8, G, 8, g.dlst.data(), 0, 8, 32, 313); }, true},
        // cva counts 2n+1 whatever the length
        {[&] { return orlmSub_cva_32f(F, 4, 4, 1.f, FO, 4, 4, 1000, 9999); }, false},
        {[&] { return orlmSub_cva_32f(F, 4, 4, 1.f, FO, 4, 4, 1, 10000); }, true},
        // L*n + L + n, (2L+1)*n, 3*L*n at 20000 and just above
        {[&] { return orlmAdd_vca_32f(F, 4, F, 4, FO, 4, 4, 2, 6666); }, false},
        {[&] { return orlmSub_cav_64f(G, 8, G, 8, GO, 8, 8, 3, 5000); }, true},
        {[&] { return orlmAdd_vaca_64f(G, 8, 8, G, 8, GO, 8, 8, 2, 4000); }, false},
        {[&] { return orlmSub_cava_32f(F, 4, 4, F, 4, FO, 4, 4, 2, 4001); }, true},
        {[&] { return orlmSub_vava_32f(F, 4, 4, F, 4, 4, FO, 4, 4, 2, 3334); }, true},
        // Sub vva 64f _P stays serial above its limit; its 32f twin does not; vv has no driver
        {[&] { return orlmSub_vva_64f_P(g.tbl.data(), 0, g.tbl.data(), 0, 8, g.dtbl.data(), 0, 8, 4, 30000); }, false},
        {[&] { return orlmSub_vva_32f_P(f.tbl.data(), 0, f.tbl.data(), 0, 4, f.dtbl.data(), 0, 4, 4, 30000); }, true},
        {[&] { return orlmAdd_vv_32f(F, 4, F, 4, FO, 4, 40000); }, false},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        probe::reset();
        EXPECT_EQ(cases[i].first(), orlStatusOk) << "case " << i;
        EXPECT_EQ(probe::regions().count > 0, cases[i].second) << "case " << i;
    }
}

// The same large arrays give the same bits with 1 to 4 threads.
TEST(AddSubVecRoute, SameBitsForOneToFourThreads)
{
    const int n = 4001, len = 7;
    t::Vec<double, true, L::L> a(len, n, Strides::Wide, 1);
    t::Consts<double, L::L> c(n);
    for (int k = 0; k < n; ++k) {
        c(k) = std::ldexp(1.0, -53 - k % 13);
        for (int j = 0; j < len; ++j) a(k, j) = 1.0 + k * 0x1p-40;
    }
    std::vector<double> first;
    for (int threads = 1; threads <= 4; ++threads) {
        Threads th(threads);
        t::Vec<double, true, L::L, true> d(len, n, Strides::Wide, 3);
        probe::reset();
        ASSERT_EQ(t::call(orlmSub_cava_64f_L, std::tuple_cat(a.args(), c.args(), d.args()), len, n), orlStatusOk);
        EXPECT_EQ(probe::regions().count, threads > 1 ? 1 : 0);
        std::vector<double> got;
        for (int k = 0; k < n; ++k)
            for (int j = 0; j < len; ++j) got.push_back(d(k, j));
        if (threads == 1) first = got;
        EXPECT_EQ(std::memcmp(first.data(), got.data(), got.size() * sizeof(double)), 0) << threads;
    }
}

// ---- straight-line forms ----------------------------------------------------

// Item 0 of dst is the shared vector itself. A straight-line form has held
// the shared vector since before the loop, so item 1 sees its entry values
// (1 + 100); the general loop reads it again (1 + 101).
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
