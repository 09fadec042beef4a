// Dot and cross products: every member on exact data in every layout, the
// order of additions of each kernel told apart bit for bit, the long-vector
// lane and pair sums with their peel, the extended cross product, the check
// orders, the limits and the threads.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "orlm.h"
#include "reference.h"

namespace {

using t::L;
using t::Strides;
using t::Vec;

template <class E>
E wild(std::mt19937& g)
{
    return ref::wild<E>(g, 24);
}

// ---- dot product: one runner for every member -----------------------------------

template <class E>
struct DotData {
    int n, count;
    Strides st;
    std::vector<E> x, y;  // count*n values of each source (item k at k*n)
};

template <class E, bool a1, bool a2, L lay, class Fn>
std::vector<E> runDot(Fn fn, const DotData<E>& d)
{
    Vec<E, a1, lay> x(d.n, d.count, d.st, 1);
    Vec<E, a2, lay> y(d.n, d.count, d.st, 2);
    for (int k = 0; k < x.count; ++k)
        for (int j = 0; j < d.n; ++j) x(k, j) = d.x[k * d.n + j];
    for (int k = 0; k < y.count; ++k)
        for (int j = 0; j < d.n; ++j) y(k, j) = d.y[k * d.n + j];
    const int items = a1 || a2 ? d.count : 1;
    std::vector<E> out(items + 1, E(-7));
    orlStatus st;
    if constexpr (a1 || a2)
        st = t::call(fn, std::tuple_cat(x.args(), y.args()), out.data(), d.n, d.count);
    else
        st = t::call(fn, std::tuple_cat(x.args(), y.args()), out.data(), d.n);
    EXPECT_EQ(st, orlStatusOk);
    EXPECT_EQ(out[items], E(-7)) << "written past the results";
    out.pop_back();
    return out;
}

template <class E>
using DotFn = std::function<std::vector<E>(const DotData<E>&)>;

template <class E>
std::map<std::string, DotFn<E>>& dots()
{
    static std::map<std::string, DotFn<E>> m;
    return m;
}

#define DOT1(shape, a1, a2, ty, E, lay, sfx) \
    dots<E>()[#shape "_" #ty sfx] = [](const DotData<E>& d) { return runDot<E, a1, a2, L::lay>(orlmDotProduct_##shape##_##ty, d); };
#define DOTS(shape, a1, a2, ty, E)                                                                                 \
    dots<E>()[#shape "_" #ty] = [](const DotData<E>& d) { return runDot<E, a1, a2, L::Std>(orlmDotProduct_##shape##_##ty, d); }; \
    dots<E>()[#shape "_" #ty "_P"] = [](const DotData<E>& d) { return runDot<E, a1, a2, L::P>(orlmDotProduct_##shape##_##ty##_P, d); };
#define DOTA(shape, a1, a2, ty, E) \
    DOTS(shape, a1, a2, ty, E)     \
    dots<E>()[#shape "_" #ty "_L"] = [](const DotData<E>& d) { return runDot<E, a1, a2, L::L>(orlmDotProduct_##shape##_##ty##_L, d); };

const bool dotsRegistered = [] {
    DOTS(vv, false, false, 32f, float) DOTA(vav, true, false, 32f, float) DOTA(vava, true, true, 32f, float)
    DOTS(vv, false, false, 64f, double) DOTA(vav, true, false, 64f, double) DOTA(vava, true, true, 64f, double)
    return true;
}();

// The expected result of one item: "x" extended ascending, "c" a chain from
// +0.0, else the order of additions in element precision.
template <class E>
E expectDot(const char* kind, const E* x, const E* y, int n)
{
    std::vector<E> p(n);
    for (int j = 0; j < n; ++j) p[j] = E(x[j] * y[j]);
    if (kind[0] == 'x') return ref::dotExt<E>(n, [&](int j) { return x[j]; }, [&](int j) { return y[j]; });
    if (kind[0] == 'c') return ref::chainFromZero(n, p.data());
    return ref::sumInOrder(kind, p.data());
}

TEST(DotProduct, EveryMemberEveryLayoutOnExactData)
{
    ASSERT_TRUE(dotsRegistered);
    ASSERT_EQ(dots<float>().size() + dots<double>().size(), 16u);
    auto each = [](auto& table, auto zero) {
        using E = decltype(zero);
        for (auto& [name, run] : table)
            for (int n : {1, 2, 3, 4, 5, 6, 7, 12, 19})
                for (Strides st : {Strides::Unit, Strides::Wide}) {
                    DotData<E> d{n, 3, st, {}, {}};
                    for (int i = 0; i < 3 * n; ++i) d.x.push_back(E(i % 7 - 3)), d.y.push_back(E((i * 5) % 11 - 5));
                    const std::vector<E> got = run(d);
                    for (std::size_t k = 0; k < got.size(); ++k) {
                        E want = 0;
                        const int kx = name.rfind("vv", 0) == 0 ? 0 : int(k), ky = name.find("vava") == 0 ? int(k) : 0;
                        for (int j = 0; j < n; ++j) want += d.x[kx * n + j] * d.y[ky * n + j];
                        ASSERT_EQ(got[k], want) << name << " n " << n << " item " << k;
                    }
                }
    };
    each(dots<float>(), 0.0f);
    each(dots<double>(), 0.0);
}

// One row per kernel and length whose order is settled; "unit" and "wide"
// are the stride2 cases of the standard and _L members.
struct OrderCase {
    const char* member;
    Strides st;
    int n;
    const char* kind;
};

constexpr const char* kAsc[] = {"", "", "", "(p0+p1)+p2", "((p0+p1)+p2)+p3", "(((p0+p1)+p2)+p3)+p4",
                                "((((p0+p1)+p2)+p3)+p4)+p5"};
constexpr const char* k64[] = {"", "", "", "(p0+p1)+p2", "(p0+p2)+(p1+p3)", "((p0+p2)+(p1+p3))+p4",
                               "(p0+(p2+p4))+(p1+(p3+p5))"};

std::vector<OrderCase> orderCases()
{
    std::vector<OrderCase> v;
    for (int n = 3; n <= 6; ++n) {
        for (const char* m : {"vv_32f", "vava_32f", "vava_32f_L"}) v.push_back({m, Strides::Unit, n, kAsc[n]});
        for (const char* m : {"vav_32f", "vav_32f_L"}) v.push_back({m, Strides::Unit, n, n == 4 ? "(p0+p1)+(p2+p3)" : kAsc[n]});
        for (const char* m : {"vv_64f", "vav_64f", "vava_64f", "vav_64f_L", "vava_64f_L"}) v.push_back({m, Strides::Unit, n, k64[n]});
        for (const char* m : {"vv_32f", "vava_32f", "vv_64f", "vava_64f_L"}) v.push_back({m, Strides::Wide, n, "x"});
        for (const char* m : {"vv_32f_P", "vava_64f_P", "vav_32f_P", "vav_64f_P"}) v.push_back({m, Strides::Unit, n, "x"});
        for (const char* m : {"vav_32f", "vav_64f_L"}) v.push_back({m, Strides::Wide, n, n == 3 ? kAsc[3] : "x"});
    }
    for (const char* m : {"vav_32f", "vav_64f_P", "vava_32f_L", "vava_64f", "vv_32f_P"}) v.push_back({m, Strides::Wide, 7, "c"});
    return v;
}

template <class E>
void checkOrder(const OrderCase& c)
{
    // Draw data until the required order differs from every other candidate
    // in at least one item, so that the row tells the orders apart.
    std::mt19937 g(c.n * 7919 + int(c.st));
    // Candidates: the extended sum and the orders of the tables at this
    // length (a chain from +0.0 and one from p0 differ only in a zero's sign).
    std::vector<std::string> others = {"x"};
    if (c.n <= 6) others.insert(others.end(), {kAsc[c.n], k64[c.n]});
    if (c.n == 4) others.push_back("(p0+p1)+(p2+p3)");
    for (int attempt = 0; attempt < 200; ++attempt) {
        DotData<E> d{c.n, 2, c.st, {}, {}};
        for (int i = 0; i < 2 * c.n; ++i) d.x.push_back(wild<E>(g)), d.y.push_back(wild<E>(g));
        const std::string m = c.member;
        const bool ax = m.rfind("vav", 0) == 0, ay = m.rfind("vava", 0) == 0;
        bool distinct = true;
        for (const std::string& o : others) {
            if (o == c.kind) continue;
            bool differs = false;
            for (int k = 0; k < 2; ++k)
                differs |= !ref::sameBits(expectDot<E>(o.c_str(), &d.x[(ax ? k : 0) * c.n], &d.y[(ay ? k : 0) * c.n], c.n),
                                          expectDot<E>(c.kind, &d.x[(ax ? k : 0) * c.n], &d.y[(ay ? k : 0) * c.n], c.n));
            distinct &= differs;
        }
        if (!distinct) continue;
        const std::vector<E> got = dots<E>().at(m)(d);
        for (std::size_t k = 0; k < got.size(); ++k)
            ASSERT_TRUE(ref::sameBits(got[k], expectDot<E>(c.kind, &d.x[(ax ? k : 0) * c.n], &d.y[(ay ? k : 0) * c.n], c.n)))
                << m << (c.st == Strides::Wide ? " wide" : " unit") << " n " << c.n << " item " << k << ": want " << c.kind;
        return;
    }
    FAIL() << "no data tells the orders apart for " << c.member;
}

TEST(DotProduct, OrderOfAdditionsPerKernelAndLength)
{
    for (const OrderCase& c : orderCases()) {
        if (std::string(c.member).find("32f") != std::string::npos) checkOrder<float>(c);
        else checkOrder<double>(c);
        if (HasFatalFailure()) return;
    }
}

// Long vectors at every 16-byte phase: the lane sum (32f) and pair sum (64f)
// of the unit-stride vv and vava kernels, their peels and limits, and the
// aligned form of vava.
template <class E>
void checkLong(int phase, int n)
{
    alignas(64) E buf[2][80];
    std::mt19937 g(phase * 131 + n);
    for (auto& row : buf)
        for (E& v : row) v = wild<E>(g);
    const E* x = buf[0] + phase;
    const E* y = buf[1] + phase;
    std::vector<E> p(n);
    for (int j = 0; j < n; ++j) p[j] = E(x[j] * y[j]);
    const auto addr = reinterpret_cast<std::uintptr_t>(y);
    E vv = 0, vava[1] = {0};
    if constexpr (sizeof(E) == 4) {
        ASSERT_EQ(orlmDotProduct_vv_32f(x, 4, y, 4, &vv, n), orlStatusOk);
        ASSERT_EQ(orlmDotProduct_vava_32f(x, 80 * 4, 4, y, 80 * 4, 4, vava, n, 1), orlStatusOk);
        EXPECT_TRUE(ref::sameBits(vv, ref::laneSum(p.data(), n, addr, 11, false))) << "vv phase " << phase << " n " << n;
        EXPECT_TRUE(ref::sameBits(vava[0], ref::laneSum(p.data(), n, addr, 11, phase == 0 ? true : false)))
            << "vava phase " << phase << " n " << n;
    } else {
        ASSERT_EQ(orlmDotProduct_vv_64f(x, 8, y, 8, &vv, n), orlStatusOk);
        ASSERT_EQ(orlmDotProduct_vava_64f(x, 80 * 8, 8, y, 80 * 8, 8, vava, n, 1), orlStatusOk);
        EXPECT_TRUE(ref::sameBits(vv, ref::pairSum(p.data(), n, addr, 9, false))) << "vv phase " << phase << " n " << n;
        EXPECT_TRUE(ref::sameBits(vava[0], ref::pairSum(p.data(), n, addr, 9, phase % 2 == 0 && phase * 8 % 16 == 0)))
            << "vava phase " << phase << " n " << n;
    }
}

TEST(DotProduct, LaneAndPairSumsOfLongVectors)
{
    for (int phase = 0; phase < 4; ++phase)
        for (int n : {7, 8, 9, 10, 11, 12, 19, 27, 64}) {
            checkLong<float>(phase, n);
            checkLong<double>(phase, n);
        }
    // The settled cases: length 10 is a chain, 11 at an aligned address is a
    // lane sum of 8 and then a chain of 3; the two differ on this data.
    alignas(16) float x[11], y[11];
    for (int j = 0; j < 11; ++j) x[j] = 1.0f + float(j) * 0x1p-20f, y[j] = j % 2 ? 0x1p20f : 1.0f;
    float lane = 0;
    ASSERT_EQ(orlmDotProduct_vv_32f(x, 4, y, 4, &lane, 11), orlStatusOk);
    float p[11];
    for (int j = 0; j < 11; ++j) p[j] = x[j] * y[j];
    EXPECT_TRUE(ref::sameBits(lane, ref::laneSum(p, 11, reinterpret_cast<std::uintptr_t>(y), 11, false)));
}

// ---- cross product ---------------------------------------------------------------

template <class E, bool a1, bool a2, L lay, class Fn>
std::vector<E> runCross(Fn fn, const std::vector<E>& xs, const std::vector<E>& ys, int count, Strides st)
{
    constexpr bool arr = a1 || a2;
    Vec<E, a1, lay> x(3, count, st, 1);
    Vec<E, a2, lay> y(3, count, st, 2);
    Vec<E, arr, lay, true> d(3, count, st, 3);
    for (int k = 0; k < x.count; ++k)
        for (int j = 0; j < 3; ++j) x(k, j) = xs[3 * k + j];
    for (int k = 0; k < y.count; ++k)
        for (int j = 0; j < 3; ++j) y(k, j) = ys[3 * k + j];
    orlStatus st2;
    if constexpr (arr) st2 = t::call(fn, std::tuple_cat(x.args(), y.args(), d.args()), count);
    else st2 = t::call(fn, std::tuple_cat(x.args(), y.args(), d.args()));
    EXPECT_EQ(st2, orlStatusOk);
    std::vector<E> out;
    for (int k = 0; k < d.count; ++k)
        for (int j = 0; j < 3; ++j) out.push_back(d(k, j));
    return out;
}

template <class E>
using CrossFn = std::function<std::vector<E>(const std::vector<E>&, const std::vector<E>&, int, Strides)>;

template <class E>
std::map<std::string, std::pair<std::string, CrossFn<E>>>& crosses()
{
    static std::map<std::string, std::pair<std::string, CrossFn<E>>> m;
    return m;
}

#define CROSS1(shape, a1, a2, ty, E, lay, sfx, fnsfx) \
    crosses<E>()[#shape "_" #ty sfx] = {#shape, [](const std::vector<E>& x, const std::vector<E>& y, int n, Strides st) { \
        return runCross<E, a1, a2, L::lay>(orlmCrossProduct_##shape##_##ty##fnsfx, x, y, n, st); }};
#define CROSSES(shape, a1, a2, ty, E) CROSS1(shape, a1, a2, ty, E, Std, "", ) CROSS1(shape, a1, a2, ty, E, P, "_P", _P)
#define CROSSA(shape, a1, a2, ty, E) CROSSES(shape, a1, a2, ty, E) CROSS1(shape, a1, a2, ty, E, L, "_L", _L)

const bool crossesRegistered = [] {
    CROSSES(vv, false, false, 32f, float) CROSSA(vav, true, false, 32f, float) CROSSA(vva, false, true, 32f, float)
    CROSSA(vava, true, true, 32f, float) CROSSES(vv, false, false, 64f, double) CROSSA(vav, true, false, 64f, double)
    CROSSA(vva, false, true, 64f, double) CROSSA(vava, true, true, 64f, double)
    return true;
}();

// Unit-stride standard and _L kernels: each product rounded, then the
// difference; the others: products and difference in the extended format,
// rounded once.
template <class E>
std::vector<E> expectCross(const E* a, const E* b, bool extended)
{
    auto one = [&](int i, int j) {
        return extended ? E(ref::Ext(a[i]) * ref::Ext(b[j]) - ref::Ext(a[j]) * ref::Ext(b[i])) : E(E(a[i] * b[j]) - E(a[j] * b[i]));
    };
    return {one(1, 2), one(2, 0), one(0, 1)};
}

template <class E>
void checkCrosses()
{
    std::mt19937 g(5);
    for (auto& [name, entry] : crosses<E>()) {
        const std::string& shape = entry.first;
        for (Strides st : {Strides::Unit, Strides::Wide}) {
            const int count = shape == "vv" ? 1 : 9;
            std::vector<E> xs(3 * count), ys(3 * count);
            for (E& v : xs) v = wild<E>(g);
            for (E& v : ys) v = wild<E>(g);
            const bool extended = st == Strides::Wide || name.find("_P") != std::string::npos;
            const std::vector<E> got = entry.second(xs, ys, count, st);
            for (int k = 0; k < count; ++k) {
                const int kx = shape == "vva" || shape == "vv" ? 0 : k, ky = shape == "vav" || shape == "vv" ? 0 : k;
                const std::vector<E> want = expectCross(&xs[3 * kx], &ys[3 * ky], extended);
                for (int j = 0; j < 3; ++j)
                    ASSERT_TRUE(ref::sameBits(got[3 * k + j], want[j])) << name << " item " << k << " component " << j;
            }
        }
    }
}

TEST(CrossProduct, EveryMemberElementOrExtended)
{
    ASSERT_TRUE(crossesRegistered);
    ASSERT_EQ(crosses<float>().size() + crosses<double>().size(), 22u);
    checkCrosses<float>();
    checkCrosses<double>();
    // Nearly parallel products that round alike cancel to an exact zero in
    // element precision only: (1+2^-12)^2 - (1+2^-11) is 2^-24.
    const float a[6] = {0, 0, 1.0f + 0x1p-12f, 0, 1.0f + 0x1p-11f, 0}, b[6] = {1, 0, 1, 0, 1.0f + 0x1p-12f, 0};
    float d[6];
    ASSERT_EQ(orlmCrossProduct_vv_32f(a, 8, b, 8, d, 8), orlStatusOk);
    EXPECT_EQ(d[0], 0x1p-24f);
    const float au[3] = {a[0], a[2], a[4]}, bu[3] = {b[0], b[2], b[4]};
    ASSERT_EQ(orlmCrossProduct_vv_32f(au, 4, bu, 4, d, 4), orlStatusOk);
    EXPECT_EQ(d[0], 0.0f);
}

TEST(CrossProduct, DstOverSrc1ReadsFirstOnlyInUnitStride)
{
    // Unit stride: all six components read before any store.
    float v[3] = {1, 2, 3};
    const float w[3] = {4, 5, 6};
    ASSERT_EQ(orlmCrossProduct_vv_32f(v, 4, w, 4, v, 4), orlStatusOk);
    EXPECT_EQ(v[0], -3.0f);
    EXPECT_EQ(v[1], 6.0f);
    EXPECT_EQ(v[2], -3.0f);
    // Stride2 of 8: each component is stored before the sources are read
    // again for the next: D0 = 2*6 - 3*5 = -3 replaces a0, D1 = 3*4 - (-3)*6
    // = 30 replaces a1, D2 = (-3)*5 - 30*4 = -135.
    float u[6] = {1, 0, 2, 0, 3, 0}, z[6] = {4, 0, 5, 0, 6, 0};
    ASSERT_EQ(orlmCrossProduct_vv_32f(u, 8, z, 8, u, 8), orlStatusOk);
    EXPECT_EQ(u[0], -3.0f);
    EXPECT_EQ(u[2], 30.0f);
    EXPECT_EQ(u[4], -135.0f);
}

// ---- checks, limits, threads ---------------------------------------------------------

// A call whose classes in `bad` are made to fail: N a null pointer, C count
// 0, Z length 0, T a stride of 3 bytes, O an offset of -4.
struct Spoil {
    std::string bad;
    bool has(char c) const { return bad.find(c) != std::string::npos; }
};

TEST(DotCross, CheckOrdersWithNothingWritten)
{
    struct Row {
        const char* name;
        const char* order;
        std::function<orlStatus(const Spoil&, float*)> call;
    };
    alignas(16) static float x[64], y[64];
    static const float* lx[8] = {x, x, x, x, x, x, x, x};
    static float* ld[8];
    const Row rows[] = {
        {"DotProduct_vava_32f", "NCZT", [](const Spoil& s, float* d) {
             return orlmDotProduct_vava_32f(s.has('N') ? nullptr : x, 16, 4, y, 16, s.has('T') ? 3 : 4, d, s.has('Z') ? 0 : 3, s.has('C') ? 0 : 2); }},
        {"DotProduct_vav_32f_L", "NCZTO", [](const Spoil& s, float* d) {
             return orlmDotProduct_vav_32f_L(lx, s.has('O') ? -4 : 0, 4, y, s.has('T') ? 3 : 4, s.has('N') ? nullptr : d, s.has('Z') ? 0 : 3, s.has('C') ? 0 : 2); }},
        {"DotProduct_vv_32f_P", "NZO", [](const Spoil& s, float* d) {
             return orlmDotProduct_vv_32f_P(s.has('N') ? nullptr : lx, 0, lx, s.has('O') ? 2 : 0, d, s.has('Z') ? 0 : 3); }},
        {"CrossProduct_vav_32f", "NTC", [](const Spoil& s, float* d) {
             return orlmCrossProduct_vav_32f(x, 12, 4, s.has('N') ? nullptr : y, 4, d, 12, s.has('T') ? 3 : 4, s.has('C') ? 0 : 2); }},
        {"CrossProduct_vav_32f_L", "NTOC", [](const Spoil& s, float* d) {
             for (float*& p : ld) p = d;
             return orlmCrossProduct_vav_32f_L(lx, 0, 4, y, s.has('T') ? 0 : 4, s.has('N') ? nullptr : ld, s.has('O') ? -4 : 0, 4, s.has('C') ? 0 : 2); }},
        {"CrossProduct_vava_32f_P", "NCTO", [](const Spoil& s, float* d) {
             float* const td[3] = {d, d + 1, d + 2};
             return orlmCrossProduct_vava_32f_P(s.has('N') ? nullptr : lx, 0, 12, lx, 0, s.has('T') ? -12 : 12, td, s.has('O') ? 6 : 0, 12, s.has('C') ? 0 : 2); }},
        {"CrossProduct_vv_32f", "NT", [](const Spoil& s, float* d) {
             return orlmCrossProduct_vv_32f(x, 4, y, s.has('T') ? 6 : 4, s.has('N') ? nullptr : d, 4); }},
    };
    for (const Row& r : rows) {
        const std::string order = r.order;
        for (char a : order)
            for (char b : order) {
                std::vector<float> d(32, -1.0f);
                const Spoil s{std::string(1, a) + b};
                EXPECT_EQ(r.call(s, d.data()), ref::expectedStatus(order, s.bad)) << r.name << " spoiled " << s.bad;
                for (float v : d) ASSERT_EQ(v, -1.0f) << r.name << " wrote on failure";
            }
        std::vector<float> d(32, -1.0f);
        EXPECT_EQ(r.call(Spoil{}, d.data()), orlStatusOk) << r.name;
    }
}

// Does a call open a parallel region with two threads?
template <class F>
bool parallel(F call)
{
    t::Threads two(2);
    probe::reset();
    EXPECT_EQ(call(), orlStatusOk);
    return probe::regions().count > 0;
}

TEST(DotCross, LimitsAndThreads)
{
    std::vector<float> a(3 * 20000 + 8, 1.0f), d(3 * 20000 + 8);
    std::vector<double> b(3 * 20000 + 8, 1.0), e(3 * 20000 + 8);
    // Cross product: 3*count above 20000 (40000 in the 32f _L members),
    // whatever the stride2; 2*count + 1 with a single vector.
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vava_32f(a.data(), 12, 4, a.data(), 12, 4, d.data(), 12, 4, 6666); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vava_32f(a.data(), 12, 4, a.data(), 12, 4, d.data(), 12, 4, 6667); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vava_64f(b.data(), 24, 16, b.data(), 24, 8, e.data(), 24, 8, 6667); }));
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vav_32f(a.data(), 12, 4, a.data(), 4, d.data(), 12, 4, 9999); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vav_32f(a.data(), 12, 4, a.data(), 4, d.data(), 12, 4, 10000); }));
    std::vector<const float*> la(20000);
    std::vector<float*> ld(20000);
    for (int k = 0; k < 20000; ++k) la[k] = a.data() + 3 * k, ld[k] = d.data() + 3 * k;
    EXPECT_FALSE(parallel([&] { return orlmCrossProduct_vava_32f_L(la.data(), 0, 4, la.data(), 0, 4, ld.data(), 0, 4, 13333); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vava_32f_L(la.data(), 0, 4, la.data(), 0, 4, ld.data(), 0, 4, 13334); }));
    EXPECT_TRUE(parallel([&] { return orlmCrossProduct_vva_32f_L(a.data(), 4, la.data(), 0, 4, ld.data(), 0, 4, 20000); }));
    // Dot product: 2*length*count above 40000 (unit stride2), 20000 (other
    // stride2); the _P limit is 20000 in 32f and 40000 in 64f.
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 4, a.data(), 16, 4, d.data(), 4, 5000); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 4, a.data(), 16, 4, d.data(), 4, 5001); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f(a.data(), 16, 8, a.data(), 16, 4, d.data(), 2, 5001); }));
    const float* tf[4] = {a.data(), a.data() + 1, a.data() + 2, a.data() + 3};
    const double* tb[4] = {b.data(), b.data() + 1, b.data() + 2, b.data() + 3};
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vava_32f_P(tf, 0, 16, tf, 0, 16, d.data(), 4, 2501); }));
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vava_64f_P(tb, 0, 32, tb, 0, 32, e.data(), 4, 5000); }));
    // vav: length*count + length.
    EXPECT_FALSE(parallel([&] { return orlmDotProduct_vav_64f(b.data(), 32, 8, b.data(), 8, e.data(), 4, 9999); }));
    EXPECT_TRUE(parallel([&] { return orlmDotProduct_vav_64f(b.data(), 32, 8, b.data(), 8, e.data(), 4, 10000); }));

    // Identical bits for 1 to 4 threads, on both families.
    std::mt19937 g(3);
    std::vector<float> x(6 * 12001), y(6 * 12001);
    for (float& v : x) v = wild<float>(g);
    for (float& v : y) v = wild<float>(g);
    std::vector<float> first;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        std::vector<float> out(12001 + 3 * 12001);
        ASSERT_EQ(orlmDotProduct_vava_32f(x.data(), 24, 4, y.data(), 24, 4, out.data(), 6, 12001), orlStatusOk);
        ASSERT_EQ(orlmCrossProduct_vava_32f(x.data(), 24, 8, y.data(), 24, 4, out.data() + 12001, 12, 4, 12001), orlStatusOk);
        if (T == 1) first = out;
        else ASSERT_EQ(std::memcmp(out.data(), first.data(), out.size() * 4), 0) << T << " threads";
    }
}

}  // namespace
