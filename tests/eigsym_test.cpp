// Symmetric eigensolver: the order of the checks in every layout, the closed
// forms of orders 1 and 2 bit for bit, sorted values with orthonormal
// vectors and small residuals from order 3 on, the kernels' departures, the
// failure outputs, arrays stopping at the first failing matrix on both
// routes, identical bits over thread counts and layouts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

#if __has_include(<lapacke.h>) && defined(__x86_64__)
#include <lapacke.h>
#define HAVE_LAPACKE 1
#endif

using t::K;
using t::L;
using t::Mat;
using t::Strides;

namespace {

using Dense = std::vector<double>;  // one n-by-n matrix, row-major

constexpr double kUntouched = -777.25;  // outputs before a call; exact in both types

// ---- one member, its operands and its call --------------------------------

#define ORLM_PICK(stem, shape, suffix)               \
    if constexpr (sizeof(E) == 4)                    \
        return &orlm##stem##_##shape##_32f##suffix;  \
    else                                             \
        return &orlm##stem##_##shape##_64f##suffix;

template <class E, K k, L l, bool V>
constexpr auto member()
{
    if constexpr (!V && k == K::m && l == L::Std) { ORLM_PICK(EigenValuesSym, m, ) }
    else if constexpr (!V && k == K::m) { ORLM_PICK(EigenValuesSym, m, _P) }
    else if constexpr (!V && l == L::Std) { ORLM_PICK(EigenValuesSym, ma, ) }
    else if constexpr (!V && l == L::P) { ORLM_PICK(EigenValuesSym, ma, _P) }
    else if constexpr (!V) { ORLM_PICK(EigenValuesSym, ma, _L) }
    else if constexpr (k == K::m && l == L::Std) { ORLM_PICK(EigenValuesVectorsSym, m, ) }
    else if constexpr (k == K::m) { ORLM_PICK(EigenValuesVectorsSym, m, _P) }
    else if constexpr (l == L::Std) { ORLM_PICK(EigenValuesVectorsSym, ma, ) }
    else if constexpr (l == L::P) { ORLM_PICK(EigenValuesVectorsSym, ma, _P) }
    else { ORLM_PICK(EigenValuesVectorsSym, ma, _L) }
}

// Arguments that a check case spoils; kKeep leaves one as the operand has it.
constexpr std::ptrdiff_t kKeep = 1 << 30;
struct Spoil {
    bool nullSrc = false, nullBuf = false, nullVals = false, nullVec = false;
    int n = 0, count = 0;  // 0 keeps the case's own
    std::ptrdiff_t srcS0 = kKeep, srcS1 = kKeep, srcS2 = kKeep, srcOff = kKeep;
    std::ptrdiff_t vecS0 = kKeep, vecS1 = kKeep, vecS2 = kKeep, vecOff = kKeep;
};

inline void set(std::ptrdiff_t& field, std::ptrdiff_t v)
{
    if (v != kKeep) field = v;
}

// The operands of one call of member (E, k, l, V): `count` matrices of order
// n filled from `items`, the buffer, the value output and the vectors, all
// outputs set to kUntouched first.
template <class E, K k, L l, bool V>
struct Call {
    int n, count;
    Mat<E, k, l> src;
    Mat<E, k, l, true> vec;
    std::vector<E> buf, vals;

    Call(int order, const std::vector<Dense>& items, Strides st = Strides::Unit)
        : n(order), count(int(items.size())), src(n, n, count, st, 3), vec(n, n, count, st, 4),
          buf(size_t(n * n), E(kUntouched)), vals(size_t(n * count), E(kUntouched))
    {
        src.fill([&](int kk, int i, int j) { return E(items[kk][i * n + j]); });
        vec.fill([](int, int, int) { return E(kUntouched); });
    }

    orlStatus operator()(const Spoil& sp = {})
    {
        const auto keptSrc = std::make_tuple(src.s0, src.s1, src.s2, src.off);
        const auto keptVec = std::make_tuple(vec.s0, vec.s1, vec.s2, vec.off);
        set(src.s0, sp.srcS0), set(src.s1, sp.srcS1), set(src.s2, sp.srcS2), set(src.off, sp.srcOff);
        set(vec.s0, sp.vecS0), set(vec.s1, sp.vecS1), set(vec.s2, sp.vecS2), set(vec.off, sp.vecOff);
        auto s = src.args();
        auto v = vec.args();
        if (sp.nullSrc) std::get<0>(s) = nullptr;
        if (sp.nullVec) std::get<0>(v) = nullptr;
        E* b = sp.nullBuf ? nullptr : buf.data();
        E* w = sp.nullVals ? nullptr : vals.data();
        const int nn = sp.n ? sp.n : n, cc = sp.count ? sp.count : count;
        const auto mid = [&] {
            if constexpr (V) return std::tuple_cat(std::make_tuple(b), v, std::make_tuple(w));
            else return std::make_tuple(b, w);
        }();
        const auto sizes = [&] {
            if constexpr (t::arr(k)) return std::make_tuple(nn, cc);
            else return std::make_tuple(nn);
        }();
        const orlStatus st = std::apply(member<E, k, l, V>(), std::tuple_cat(s, mid, sizes));
        std::tie(src.s0, src.s1, src.s2, src.off) = keptSrc;  // read the outputs where they are
        std::tie(vec.s0, vec.s1, vec.s2, vec.off) = keptVec;
        return st;
    }

    double value(int kk, int i) { return double(vals[size_t(kk * n + i)]); }
    double vector(int kk, int r, int c) { return double(vec(kk, r, c)); }
    bool untouched(int kk)
    {
        for (int i = 0; i < n; ++i)
            if (value(kk, i) != kUntouched || (V && vector(kk, i, 0) != kUntouched)) return false;
        return true;
    }
};

// Whether the outputs (values and vectors) and the buffer still hold kUntouched.
struct Untouched {
    bool outputs = true, buffer = true;
};

// A member chosen at run time: the same cases through every member.
struct Member {
    std::string name;
    bool f32, array, vectors;
    L lay;
    // Runs the member on `items` with optional spoiling; gives the outputs back.
    std::function<orlStatus(int n, const std::vector<Dense>&, const Spoil&, Dense& vals, std::vector<Dense>& vecs,
                            struct Untouched& untouched)>
        run;
};

template <class E, K k, L l, bool V>
Member makeMember(const char* name)
{
    Member m{name, sizeof(E) == 4, t::arr(k), V, l, {}};
    m.run = [](int n, const std::vector<Dense>& items, const Spoil& sp, Dense& vals, std::vector<Dense>& vecs,
               Untouched& untouched) {
        Call<E, k, l, V> c(n, items);
        const orlStatus st = c(sp);
        vals.assign(c.vals.begin(), c.vals.end());
        vecs.assign(items.size(), Dense(size_t(n * n)));
        untouched = {};
        for (int kk = 0; kk < c.count; ++kk) {
            untouched.outputs = untouched.outputs && c.untouched(kk);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) vecs[kk][i * n + j] = V ? c.vector(kk, i, j) : 0.0;
        }
        for (E x : c.buf) untouched.buffer = untouched.buffer && double(x) == kUntouched;
        return st;
    };
    return m;
}

const std::vector<Member>& members()
{
    static const std::vector<Member> all = {
        makeMember<float, K::m, L::Std, false>("ValuesSym_m_32f"),
        makeMember<float, K::m, L::P, false>("ValuesSym_m_32f_P"),
        makeMember<float, K::ma, L::Std, false>("ValuesSym_ma_32f"),
        makeMember<float, K::ma, L::P, false>("ValuesSym_ma_32f_P"),
        makeMember<float, K::ma, L::L, false>("ValuesSym_ma_32f_L"),
        makeMember<double, K::m, L::Std, false>("ValuesSym_m_64f"),
        makeMember<double, K::m, L::P, false>("ValuesSym_m_64f_P"),
        makeMember<double, K::ma, L::Std, false>("ValuesSym_ma_64f"),
        makeMember<double, K::ma, L::P, false>("ValuesSym_ma_64f_P"),
        makeMember<double, K::ma, L::L, false>("ValuesSym_ma_64f_L"),
        makeMember<float, K::m, L::Std, true>("ValuesVectorsSym_m_32f"),
        makeMember<float, K::m, L::P, true>("ValuesVectorsSym_m_32f_P"),
        makeMember<float, K::ma, L::Std, true>("ValuesVectorsSym_ma_32f"),
        makeMember<float, K::ma, L::P, true>("ValuesVectorsSym_ma_32f_P"),
        makeMember<float, K::ma, L::L, true>("ValuesVectorsSym_ma_32f_L"),
        makeMember<double, K::m, L::Std, true>("ValuesVectorsSym_m_64f"),
        makeMember<double, K::m, L::P, true>("ValuesVectorsSym_m_64f_P"),
        makeMember<double, K::ma, L::Std, true>("ValuesVectorsSym_ma_64f"),
        makeMember<double, K::ma, L::P, true>("ValuesVectorsSym_ma_64f_P"),
        makeMember<double, K::ma, L::L, true>("ValuesVectorsSym_ma_64f_L"),
    };
    return all;
}

Dense randomSymmetric(int n, std::mt19937& rng, double scale = 1.0)
{
    std::uniform_real_distribution<double> u(-1, 1);
    Dense a(size_t(n * n));
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) a[i * n + j] = a[j * n + i] = std::ldexp(std::round(u(rng) * 4096), -12) * scale;
    return a;
}

Dense diag(std::initializer_list<double> d)
{
    const int n = int(d.size());
    Dense a(size_t(n * n), 0.0);
    int i = 0;
    for (double x : d) a[i * n + i] = x, ++i;
    return a;
}

// ---- checks ----------------------------------------------------------------

// Stride and offset values that fail: not a multiple of the element size,
// zero, negative. `half` is E/2, which fails in both types.
TEST(EigSym, ChecksInTheirOrderAndNothingWritten)
{
    struct Row {
        const char* what;
        std::function<bool(const Member&)> applies;
        std::function<Spoil(std::ptrdiff_t E)> spoil;
        orlStatus st;
    };
    const auto any = [](const Member&) { return true; };
    const auto std_ = [](const Member& m) { return m.lay == L::Std; };
    const auto arrays = [](const Member& m) { return m.array; };
    const auto vectorsP = [](const Member& m) { return m.vectors && m.array && m.lay == L::P; };
    const Row rows[] = {
        {"NULL src before order 0 and count 0", any, [](auto) { Spoil s; s.nullSrc = true, s.n = -1, s.count = -1; return s; }, orlStatusNullPointer},
        {"NULL buffer", any, [](auto) { Spoil s; s.nullBuf = true; return s; }, orlStatusNullPointer},
        {"NULL values", any, [](auto) { Spoil s; s.nullVals = true; return s; }, orlStatusNullPointer},
        {"NULL vectors", [](const Member& m) { return m.vectors; }, [](auto) { Spoil s; s.nullVec = true; return s; }, orlStatusNullPointer},
        {"order 0 before count 0 and bad strides", any,
         [](auto E) { Spoil s; s.n = -1, s.count = -1, s.srcS0 = s.srcS1 = s.srcS2 = E / 2, s.srcOff = -E; return s; }, orlStatusSize},
        {"count 0 before bad strides and offsets", arrays,
         [](auto E) { Spoil s; s.count = -1, s.srcS0 = s.srcS1 = s.srcS2 = s.vecS2 = 0, s.srcOff = s.vecOff = E / 2; return s; }, orlStatusCount},
        {"source stride2 of 1.5 elements", std_, [](auto E) { Spoil s; s.srcS2 = E + E / 2; return s; }, orlStatusStride},
        {"destination stride1 of 0", [](const Member& m) { return m.vectors && m.lay == L::Std; }, [](auto) { Spoil s; s.vecS1 = 0; return s; }, orlStatusStride},
        {"source stride0 of 0", [](const Member& m) { return m.array && m.lay != L::L; }, [](auto) { Spoil s; s.srcS0 = 0; return s; }, orlStatusStride},
        {"source offset -4", [](const Member& m) { return m.lay != L::Std; }, [](auto) { Spoil s; s.srcOff = -4; return s; }, orlStatusOffset},
        {"destination offset E/2", [](const Member& m) { return m.vectors && m.lay != L::Std; }, [](auto E) { Spoil s; s.vecOff = E / 2; return s; }, orlStatusOffset},
        {"_P arrays: source offset before source stride0", [](const Member& m) { return m.array && m.lay == L::P; },
         [](auto) { Spoil s; s.srcS0 = 0, s.srcOff = -4; return s; }, orlStatusOffset},
        {"_P vector arrays: destination offset before source stride0", vectorsP, [](auto) { Spoil s; s.srcS0 = -8, s.vecOff = 2; return s; }, orlStatusOffset},
        {"_L: source offset before source strides", [](const Member& m) { return m.lay == L::L; },
         [](auto) { Spoil s; s.srcS1 = 0, s.srcOff = -8; return s; }, orlStatusOffset},
        {"_L vectors: destination offset before source stride2", [](const Member& m) { return m.vectors && m.lay == L::L; },
         [](auto E) { Spoil s; s.srcS2 = E / 2, s.vecOff = -E; return s; }, orlStatusOffset},
        {"single _P: no strides to test", [](const Member& m) { return !m.array && m.lay == L::P; },
         [](auto) { Spoil s; s.srcS0 = s.srcS1 = s.srcS2 = s.vecS2 = 0; return s; }, orlStatusOk},
        {"offset 0 passes", [](const Member& m) { return m.lay != L::Std; }, [](auto) { Spoil s; s.srcOff = 0, s.vecOff = 0; return s; }, orlStatusOk},
    };
    std::mt19937 rng(11);
    const std::vector<Dense> items = {randomSymmetric(3, rng), randomSymmetric(3, rng)};
    for (const Member& m : members())
        for (const Row& r : rows) {
            if (!r.applies(m)) continue;
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const std::vector<Dense> use(items.begin(), items.begin() + (m.array ? 2 : 1));
            EXPECT_EQ(m.run(3, use, r.spoil(m.f32 ? 4 : 8), vals, vecs, untouched), r.st) << m.name << ": " << r.what;
            if (r.st != orlStatusOk) EXPECT_TRUE(untouched.outputs && untouched.buffer) << m.name << ": " << r.what;
        }
}

// ---- closed forms ----------------------------------------------------------

// Orders 1 and 2 bit for bit against the closed forms in each kernel's
// precision. Rows of the cases worth naming, then random matrices.
TEST(EigSym, OrdersOneAndTwoBitForBit)
{
    const std::vector<Dense> named = {
        {2, 0, 0, 1},    // values (2, 1); m vectors (-1, -0), (0, -1)
        {-2, 0, 0, -1},  // s < -eps: (-2, -1), ascending on purpose; m and ma vector signs differ
        {1, 1, 5, 3},    // the 5 is not read: [[1, 1], [1, 3]]
        {1, 2, 2, -1},   // trace within eps: +-sqrt(5)
        {1, 1, 1, 1},    // D = 0: singular, nothing written
        {1, 0, 0, 0x1p-30},  // D = 2^-30: singular where the test uses 2^-23 only
        {3, 0x1p-30, 0x1p-30, 3},  // 2b within eps, c = 0 in the array form
    };
    std::vector<Dense> cases = named;
    std::mt19937 rng(5);
    for (int x = 0; x < 40; ++x) cases.push_back(randomSymmetric(2, rng));

    for (const Member& m : members())
        for (const Dense& a : cases) {
            // Each kernel's precision and test bound, as the family states them.
            const double eps = m.f32 ? 0x1p-23 : 0x1p-52;
            const double test = m.f32 && m.array && !m.vectors ? 0x1p-52 : eps;
            ref::SymOrder2<double> r;
            if (!m.f32 || (m.array && m.vectors))
                r = ref::symOrder2<double, false>(a[0], a[1], a[3], eps, test, m.array);
            else {
                const auto f = ref::symOrder2<float, true>(float(a[0]), float(a[1]), float(a[3]), float(eps), float(test), m.array);
                r = {f.singular, f.l0, f.l1, {{f.q[0][0], f.q[0][1]}, {f.q[1][0], f.q[1][1]}}};
            }
            const auto round = [&](double x) { return m.f32 ? double(float(x)) : x; };
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            const orlStatus st = m.run(2, {a}, {}, vals, vecs, untouched);
            const std::string what = m.name + " on " + std::to_string(a[0]) + " " + std::to_string(a[1]) + " " + std::to_string(a[3]);
            ASSERT_EQ(st, r.singular ? orlStatusSingular : orlStatusOk) << what;
            if (r.singular) {
                EXPECT_TRUE(untouched.outputs) << what;
                continue;
            }
            EXPECT_TRUE(ref::sameBits(vals[0], round(r.l0)) && ref::sameBits(vals[1], round(r.l1))) << what << ": " << vals[0] << " " << vals[1];
            if (m.vectors)
                for (int i = 0; i < 4; ++i) EXPECT_TRUE(ref::sameBits(vecs[0][i], round(r.q[i / 2][i % 2]))) << what << " element " << i;
        }
}

TEST(EigSym, OrderOneTakesTheElementAndAUnitVector)
{
    for (const Member& m : members())
        for (double x : {0.0, -2.5}) {
            Dense vals;
            std::vector<Dense> vecs;
            Untouched untouched;
            EXPECT_EQ(m.run(1, {{x}}, {}, vals, vecs, untouched), orlStatusOk) << m.name;
            EXPECT_EQ(vals[0], x) << m.name;
            if (m.vectors) EXPECT_EQ(vecs[0][0], 1.0) << m.name;
        }
}

}  // namespace
