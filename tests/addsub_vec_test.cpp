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

template <class E, L lay, Second sk>
struct SecondOpd;
template <class E, L lay>
struct SecondOpd<E, lay, Second::V> : t::Vec<E, false, lay> {
    SecondOpd(int n, int c, Strides st) : t::Vec<E, false, lay>(n, c, st, 2) {}
    E get(int, int j) { return (*this)(0, j); }
    void set(int k, int j, E v) { (*this)(k, j) = v; }
};
template <class E, L lay>
struct SecondOpd<E, lay, Second::VA> : t::Vec<E, true, lay> {
    SecondOpd(int n, int c, Strides st) : t::Vec<E, true, lay>(n, c, st, 2) {}
    E get(int k, int j) { return (*this)(k, j); }
    void set(int k, int j, E v) { (*this)(k, j) = v; }
};
template <class E, L lay>
struct SecondOpd<E, lay, Second::C> {
    E v = 0;
    int count = 1;
    SecondOpd(int, int, Strides) {}
    E get(int, int) { return v; }
    void set(int, int, E x) { v = x; }
    auto args() { return std::make_tuple(v); }
};
template <class E, L lay>
struct SecondOpd<E, lay, Second::CA> : t::Consts<E, lay> {
    SecondOpd(int, int c, Strides) : t::Consts<E, lay>(c) {}
    E get(int k, int) { return (*this)(k); }
    void set(int k, int, E v) { (*this)(k) = v; }
};

constexpr bool arrayOf(Second s) { return s == Second::VA || s == Second::CA; }

// Runs a member on fresh operands and checks every element of every item.
template <class E, bool arrA, Second sk, L lay, Sense sense, class Fn>
void check(Fn fn, Fill fill, int n, int count, Strides st)
{
    constexpr bool arr = arrA || arrayOf(sk);
    t::Vec<E, arrA, lay> a(n, count, st, 1);
    SecondOpd<E, lay, sk> b(n, count, st);
    t::Vec<E, arr, lay, true> d(n, count, st, 3);
    const int items = arr ? count : 1;
    for (int k = 0; k < items; ++k)
        for (int j = 0; j < n; ++j) {
            if (arrA || k == 0) a(k, j) = fill == Fill::Exact ? value<E>(1, k, j) : witness<E>(true, sense);
            if (arrayOf(sk) || k == 0) b.set(k, j, fill == Fill::Exact ? value<E>(2, k, j) : witness<E>(false, sense));
            d(k, j) = std::numeric_limits<E>::quiet_NaN();
        }
    orlStatus got;
    if constexpr (arr)
        got = t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), n, count);
    else
        got = t::call(fn, std::tuple_cat(a.args(), b.args(), d.args()), n);
    ASSERT_EQ(got, orlStatusOk);
    // 64f sums of the _S2, _P and _LS2 kernels are formed in extended precision.
    const bool ext = sizeof(E) == 8 && (lay == L::P || st == Strides::Wide);
    for (int k = 0; k < items; ++k)
        for (int j = 0; j < n; ++j) {
            const E expect = expected(sense, a(arrA ? k : 0, j), b.get(k, j), ext);
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

// The shape, not the argument list, tells the sense.
TEST(AddSubVecValues, ConstantFirstShapesSubtractTheVector)
{
    const float src[4] = {1, 2, 3, 4}, values[2] = {10, 20};
    float d[8] = {};
    ASSERT_EQ(orlmSub_cv_32f(src, 4, 10.f, d, 4, 4), orlStatusOk);
    EXPECT_EQ(d[0], 9.f);
    EXPECT_EQ(d[3], 6.f);
    ASSERT_EQ(orlmSub_vc_32f(src, 4, 10.f, d, 4, 4), orlStatusOk);
    EXPECT_EQ(d[0], -9.f);
    ASSERT_EQ(orlmSub_cav_32f(src, 4, values, 4, d, 16, 4, 4, 2), orlStatusOk);
    EXPECT_EQ(d[1], 8.f);
    EXPECT_EQ(d[7], 16.f);
    const double g[4] = {1, 2, 3, 4}, gv[2] = {10, 20};
    double gd[4] = {};
    ASSERT_EQ(orlmSub_cava_64f(g, 16, 8, gv, 8, gd, 16, 8, 2, 2), orlStatusOk);
    EXPECT_EQ(gd[1], 8.0);
    EXPECT_EQ(gd[2], 17.0);
}

// ---- argument checks -------------------------------------------------------

struct Bufs {
    float f[64] = {};
    double g[64] = {};
    float out[64];
    double outg[64];
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
        {"vav _P: stride before count", [&] { return orlmSub_vav_32f_P(b.tf, 0, 0, b.tf, 0, b.to, 0, 64, 4, 0); }, orlStatusStride},
        {"vav _L: offset before count", [&] { return orlmAdd_vav_32f_L(b.tf, 2, 4, b.f, 4, b.to, 0, 4, 4, 0); }, orlStatusOffset},
        {"vav _L: shared stride before count", [&] { return orlmSub_vav_64f_L(b.tg, 0, 8, b.g, 0, b.tog, 0, 8, 4, 0); }, orlStatusStride},
        // like members keep the general order
        {"vva: count before strides", [&] { return orlmSub_vva_32f(b.f, 6, b.f, 64, 4, b.out, 64, 4, 4, 0); }, orlStatusCount},
        {"vava _L: count before offset", [&] { return orlmAdd_vava_32f_L(b.tf, 2, 4, b.tf, 0, 4, b.to, 0, 4, 4, 0); }, orlStatusCount},
        {"vc: size before stride", [&] { return orlmAdd_vc_32f(b.f, 6, 1.f, b.out, 4, 0); }, orlStatusSize},
        {"vc _P: no stride class", [&] { return orlmSub_cv_64f_P(b.tg, 4, 1.0, b.tog, 0, 4); }, orlStatusOffset},
        {"NULL constant array first", [&] { return orlmAdd_vaca_32f(b.f, 64, 4, nullptr, 4, b.out, 64, 4, 0, 0); }, orlStatusNullPointer},
        // constant arrays: stride0 tested in the standard and _P layouts, 0 refused
        {"valuesStride0 of 0", [&] { return orlmAdd_vaca_32f(b.f, 64, 4, b.f, 0, b.out, 64, 4, 4, 1); }, orlStatusStride},
        {"valuesStride0 of 0 _P", [&] { return orlmSub_cav_64f_P(b.tg, 0, b.g, 0, b.tog, 0, 64, 4, 1); }, orlStatusStride},
        {"valuesStride0 of 6", [&] { return orlmSub_cava_32f(b.f, 64, 4, b.f, 6, b.out, 64, 4, 4, 1); }, orlStatusStride},
        {"_L valuesOffset of 2", [&] { return orlmAdd_vca_32f_L(b.f, 4, b.tf, 2, b.to, 0, 4, 4, 1); }, orlStatusOffset},
        {"64f offset of 4", [&] { return orlmSub_cva_64f_P(b.tg, 4, 64, 1.0, b.tog, 0, 64, 4, 1); }, orlStatusOffset},
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

// Runs a vector member with overlapping items (little memory for large
// counts) and reports whether a parallel region opened.
template <class E, class F>
bool parallel(F call)
{
    probe::reset();
    EXPECT_EQ(call(), orlStatusOk);
    return probe::regions().count > 0;
}

TEST(AddSubVecRoute, CostsAndLimits)
{
    Threads two(2);
    std::vector<float> f(40000, 1.f), fo(f.size());
    std::vector<double> g(40000, 1.0), go(g.size());
    std::vector<const float*> lf(2000, f.data());
    std::vector<float*> lfo(2000, fo.data());
    std::vector<const double*> lg(2000, g.data());
    std::vector<double*> lgo(2000, go.data());
    const float* tf[64];
    float* tfo[64];
    const double* tg[64];
    double* tgo[64];
    for (int i = 0; i < 64; ++i) tf[i] = f.data() + i, tfo[i] = fo.data() + i, tg[i] = g.data() + i, tgo[i] = go.data() + i;

    struct Case {
        const char* what;
        std::function<orlStatus()> call;
        bool parallel;
    };
    const Case cases[] = {
        // (2n+1)*L: 625*32 = 20000 stays, 627*32 passes (>)
        {"vav 32f cost 20000", [&] { return orlmAdd_vav_32f(f.data(), 4, 4, f.data(), 4, fo.data(), 4, 4, 32, 312); }, false},
        {"vav 32f cost 20064", [&] { return orlmAdd_vav_32f(f.data(), 4, 4, f.data(), 4, fo.data(), 4, 4, 32, 313); }, true},
        // _L 32f has 40000
        {"vav 32f _L cost 20064", [&] { return orlmAdd_vav_32f_L(lf.data(), 0, 4, f.data(), 4, lfo.data(), 0, 4, 32, 313); }, false},
        {"vav 32f _L cost 40032", [&] { return orlmAdd_vav_32f_L(lf.data(), 0, 4, f.data(), 4, lfo.data(), 0, 4, 32, 625); }, true},
        {"vav 64f _L cost 20064", [&] { return orlmSub_vav_64f_L(lg.data(), 0, 8, g.data(), 8, lgo.data(), 0, 8, 32, 313); }, true},
        // cva counts 2n+1 whatever the length
        {"cva 32f n 9999 long", [&] { return orlmSub_cva_32f(f.data(), 4, 4, 1.f, fo.data(), 4, 4, 1000, 9999); }, false},
        {"cva 32f n 10000 short", [&] { return orlmSub_cva_32f(f.data(), 4, 4, 1.f, fo.data(), 4, 4, 1, 10000); }, true},
        // L*n + L + n: 3*4999 + 3 + 4999 = 20000
        {"vca 32f cost 20000", [&] { return orlmAdd_vca_32f(f.data(), 4, f.data(), 4, fo.data(), 4, 4, 2, 6666); }, false},
        {"cav 64f cost 20003", [&] { return orlmSub_cav_64f(g.data(), 8, g.data(), 8, go.data(), 8, 8, 3, 5000); }, true},
        // (2L+1)*n and 3*L*n
        {"vaca 64f cost 20000", [&] { return orlmAdd_vaca_64f(g.data(), 8, 8, g.data(), 8, go.data(), 8, 8, 2, 4000); }, false},
        {"cava 32f cost 20005", [&] { return orlmSub_cava_32f(f.data(), 4, 4, f.data(), 4, fo.data(), 4, 4, 2, 4001); }, true},
        {"vava 32f cost 19998", [&] { return orlmAdd_vava_32f(f.data(), 4, 4, f.data(), 4, 4, fo.data(), 4, 4, 2, 3333); }, false},
        {"vava 32f cost 20004", [&] { return orlmSub_vava_32f(f.data(), 4, 4, f.data(), 4, 4, fo.data(), 4, 4, 2, 3334); }, true},
        // Sub vva 64f _P stays serial above its limit; its 32f twin does not
        {"vva 64f _P", [&] { return orlmSub_vva_64f_P(tg, 0, tg, 0, 8, tgo, 0, 8, 4, 30000); }, false},
        {"vva 32f _P", [&] { return orlmSub_vva_32f_P(tf, 0, tf, 0, 4, tfo, 0, 4, 4, 30000); }, true},
        // single vectors have no driver
        {"vv 32f long", [&] { return orlmAdd_vv_32f(f.data(), 4, f.data(), 4, fo.data(), 4, 40000); }, false},
    };
    for (const Case& c : cases) EXPECT_EQ(parallel<float>(c.call), c.parallel) << c.what;
}

// The same large arrays give the same bits with 1 to 4 threads.
TEST(AddSubVecRoute, SameBitsForOneToFourThreads)
{
    const int n = 4001, len = 7;
    t::Vec<double, true, L::L> a(len, n, Strides::Wide, 1);
    t::Vec<double, true, L::L, true> d(len, n, Strides::Wide, 3);
    t::Consts<double, L::L> c(n);
    t::Vec<float, true, L::Std> fa(len, n, Strides::Unit, 4), fb(len, n, Strides::Unit, 5);
    t::Vec<float, true, L::Std, true> fd(len, n, Strides::Unit, 6);
    for (int k = 0; k < n; ++k) {
        c(k) = std::ldexp(1.0, -53 - k % 13);
        for (int j = 0; j < len; ++j) a(k, j) = 1.0 + k * 0x1p-40, fa(k, j) = float(k) / 3.f, fb(k, j) = float(j) / 7.f;
    }
    std::vector<double> first;
    std::vector<float> firstF;
    for (int threads = 1; threads <= 4; ++threads) {
        Threads th(threads);
        probe::reset();
        ASSERT_EQ(t::call(orlmSub_cava_64f_L, std::tuple_cat(a.args(), c.args(), d.args()), len, n), orlStatusOk);
        ASSERT_EQ(t::call(orlmAdd_vava_32f, std::tuple_cat(fa.args(), fb.args(), fd.args()), len, n), orlStatusOk);
        EXPECT_EQ(probe::regions().count, threads > 1 ? 2 : 0);
        std::vector<double> got;
        std::vector<float> gotF;
        for (int k = 0; k < n; ++k)
            for (int j = 0; j < len; ++j) got.push_back(d(k, j)), gotF.push_back(fd(k, j));
        if (threads == 1) {
            first = got, firstF = gotF;
        } else {
            EXPECT_EQ(std::memcmp(first.data(), got.data(), got.size() * sizeof(double)), 0) << threads;
            EXPECT_EQ(std::memcmp(firstF.data(), gotF.data(), gotF.size() * sizeof(float)), 0) << threads;
        }
    }
}

// ---- straight-line forms ----------------------------------------------------

// Item 0 of dst is the shared vector itself. A straight-line form has held
// the shared vector since before the loop, so item 1 still sees its entry
// values; the general loop and the per-item calls read it again.
template <class E, class Fn>
bool heldVav(Fn fn, int n, int s2)
{
    std::vector<E> arr(size_t(2) * n * 2, E(1)), sh(size_t(2) * n * 2, E(100));
    for (int j = 0; j < n; ++j) arr[size_t(n * s2 / int(sizeof(E))) + j * s2 / int(sizeof(E))] = E(2);
    const int s0 = n * s2;
    fn(arr.data(), s0, s2, sh.data(), s2, sh.data(), s0, s2, n, 2);
    const E got = sh[size_t(s0) / sizeof(E)];
    EXPECT_TRUE(got == E(102) || got == E(103)) << got;
    return got == E(102);
}

TEST(AddSubVecForms, SharedVectorHeldOnlyInStraightLineForms)
{
    struct Case {
        const char* what;
        bool held;
        bool got;
    };
    const Case cases[] = {
        {"Add vav 32f length 4", true, heldVav<float>(orlmAdd_vav_32f, 4, 4)},
        {"Add vav 32f length 6 any stride", true, heldVav<float>(orlmAdd_vav_32f, 6, 8)},
        {"Add vav 64f length 7 (general loop)", false, heldVav<double>(orlmAdd_vav_64f, 7, 8)},
        {"Add vav 64f length 3", true, heldVav<double>(orlmAdd_vav_64f, 3, 8)},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.held) << c.what;
}

}  // namespace
