// Solver members on plain row-major items through every layout: decompositions
// (src, [buffer,] dst, sizes[, count]) and back-substitutions (src, [buffer,]
// rhs, dst, sizes[, count]); values bit for bit, route and thread count.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "omp_probe.h"
#include "operands.h"
#include "reference.h"

namespace solvers {

using Vec1 = std::vector<double>;
constexpr double kUntouched = -777.25;  // outputs before the call; exact in both types

enum class Shape { m, ma, mv, mva, mava };

// One call's data: w-by-h matrices (one, or one per item in ma and mava) and
// the right-hand sides of a back-substitution.
struct Case {
    int w, h;
    std::vector<Vec1> mats, rhs;
};

struct Outcome {
    orlStatus st;
    std::vector<Vec1> out;  // dst of each item: w*h elements, or w
    bool bufferUsed;
};

struct Member {
    std::string name;
    bool f32;
    Shape shape;
    t::L lay;
    std::function<Outcome(const Case&, t::Strides, bool inPlace)> run;
    bool array() const { return shape != Shape::m && shape != Shape::mv; }
    bool subst() const { return shape != Shape::m && shape != Shape::ma; }
    double round(double v) const { return f32 ? double(float(v)) : v; }
};

// An argument that only some members take.
template <bool present, class T>
auto optional(T v)
{
    if constexpr (present) return std::make_tuple(v);
    else return std::tuple<>();
}

// `buffered`: a buffer of h elements and the sizes width, height; otherwise the
// size widthHeight. inPlace passes dst as src or as rhs (dst of h elements).
template <class E, Shape S, t::L lay, bool buffered, class Fn>
Outcome runMember(Fn fn, const Case& c, t::Strides st, bool inPlace)
{
    constexpr bool subst = S == Shape::mv || S == Shape::mva || S == Shape::mava;
    constexpr bool arr = S != Shape::m && S != Shape::mv;
    constexpr t::K mk = S == Shape::ma || S == Shape::mava ? t::K::ma : t::K::m;
    const int count = arr ? int(subst ? c.rhs.size() : c.mats.size()) : 1;
    t::Mat<E, mk, lay> a(c.w, c.h, count, st, 3);
    a.fill([&](int k, int i, int j) { return E(c.mats[k][i * c.w + j]); });
    std::vector<E> buffer(c.h, E(kUntouched));
    const auto buf = optional<buffered>(buffer.data());
    const auto last = std::tuple_cat(std::make_tuple(c.w), optional<buffered>(c.h), optional<arr>(count));
    Outcome r{orlStatusOk, {}, false};
    if constexpr (!subst) {
        t::Mat<E, mk, lay, true> d(c.w, c.h, count, st, 4);
        d.fill([&](int k, int i, int j) { return inPlace ? E(c.mats[k][i * c.w + j]) : E(kUntouched); });
        r.st = std::apply(fn, std::tuple_cat(inPlace ? d.args() : a.args(), buf, d.args(), last));
        for (int k = 0; k < count; ++k) {
            r.out.emplace_back(c.w * c.h);
            for (int x = 0; x < c.w * c.h; ++x) r.out[k][x] = d(k, x / c.w, x % c.w);
        }
    } else {
        t::Vec<E, arr, lay> b(c.h, count, st, 5);
        t::Vec<E, arr, lay, true> x(inPlace ? c.h : c.w, count, st, 6);
        for (int k = 0; k < count; ++k) {
            for (int j = 0; j < c.h; ++j) b(k, j) = E(c.rhs[k][j]);
            for (int j = 0; j < x.n; ++j) x(k, j) = inPlace ? E(c.rhs[k][j]) : E(kUntouched);
        }
        r.st = std::apply(fn, std::tuple_cat(a.args(), buf, inPlace ? x.args() : b.args(), x.args(), last));
        for (int k = 0; k < count; ++k) {
            r.out.emplace_back(c.w);
            for (int j = 0; j < c.w; ++j) r.out[k][j] = x(k, j);
        }
    }
    r.bufferUsed = std::any_of(buffer.begin(), buffer.end(), [](E v) { return v != E(kUntouched); });
    return r;
}

template <class E, Shape S, t::L lay, bool buffered, class Fn>
Member member(const char* name, Fn fn)
{
    return {name, sizeof(E) == 4, S, lay,
            [fn](const Case& c, t::Strides st, bool ip) { return runMember<E, S, lay, buffered>(fn, c, st, ip); }};
}

// Every member of a stem (m, ma or mv, mva, mava), both types, all layouts.
#define ORL_SOLVER_MEMBER(list, stem, shape, E, ty, lay, suffix, buffered)                                      \
    list.push_back(solvers::member<E, solvers::Shape::shape, t::L::lay, buffered>("orlm" #stem "_" #shape "_" #ty #suffix, \
                                                                                 orlm##stem##_##shape##_##ty##suffix));
#define ORL_SOLVER_SHAPE(list, stem, shape, lay, suffix, buffered)              \
    ORL_SOLVER_MEMBER(list, stem, shape, float, 32f, lay, suffix, buffered) \
    ORL_SOLVER_MEMBER(list, stem, shape, double, 64f, lay, suffix, buffered)
#define ORL_DECOMP_MEMBERS(list, stem, buffered)                                                       \
    ORL_SOLVER_SHAPE(list, stem, m, Std, , buffered) ORL_SOLVER_SHAPE(list, stem, m, P, _P, buffered) \
    ORL_SOLVER_SHAPE(list, stem, ma, Std, , buffered) ORL_SOLVER_SHAPE(list, stem, ma, P, _P, buffered) \
    ORL_SOLVER_SHAPE(list, stem, ma, L, _L, buffered)
#define ORL_SUBST_MEMBERS(list, stem, buffered)                                                                \
    ORL_SOLVER_SHAPE(list, stem, mv, Std, , buffered) ORL_SOLVER_SHAPE(list, stem, mv, P, _P, buffered)       \
    ORL_SOLVER_SHAPE(list, stem, mva, Std, , buffered) ORL_SOLVER_SHAPE(list, stem, mva, P, _P, buffered)     \
    ORL_SOLVER_SHAPE(list, stem, mva, L, _L, buffered) ORL_SOLVER_SHAPE(list, stem, mava, Std, , buffered)    \
    ORL_SOLVER_SHAPE(list, stem, mava, P, _P, buffered) ORL_SOLVER_SHAPE(list, stem, mava, L, _L, buffered)

// decomps(), substs() and both as members().
#define ORL_SOLVER_LISTS(decompStem, substStem, buffered)   \
    std::vector<solvers::Member> decomps()                  \
    {                                                       \
        std::vector<solvers::Member> list;                  \
        ORL_DECOMP_MEMBERS(list, decompStem, buffered)      \
        return list;                                        \
    }                                                       \
    std::vector<solvers::Member> substs()                   \
    {                                                       \
        std::vector<solvers::Member> list;                  \
        ORL_SUBST_MEMBERS(list, substStem, buffered)        \
        return list;                                        \
    }                                                       \
    std::vector<solvers::Member> members()                  \
    {                                                       \
        std::vector<solvers::Member> list = decomps();      \
        for (const solvers::Member& m : substs()) list.push_back(m); \
        return list;                                        \
    }

// Bit equality, element by element; NaNs of any sign or payload count as equal.
inline void expectBits(const Vec1& got, const Vec1& want, const std::string& what)
{
    ASSERT_EQ(got.size(), want.size()) << what;
    for (size_t x = 0; x < got.size(); ++x)
        EXPECT_TRUE(ref::sameBits(got[x], want[x]) || (std::isnan(got[x]) && std::isnan(want[x])))
            << what << " element " << x << " = " << got[x] << ", expected " << want[x];
}

// Every member w by h, both stride cases, dst as src or as rhs (back-substitution:
// w = h), on `make(m, w, h, count)` against `expect(m, case, strides, inPlace)`.
template <class Make, class Expect>
void expectEveryMember(const std::vector<Member>& list, std::initializer_list<std::pair<int, int>> shapes, Make make, Expect expect)
{
    for (const Member& m : list)
        for (auto [w, h] : shapes)
            for (t::Strides st : {t::Strides::Unit, t::Strides::Wide})
                for (bool inPlace : {false, true}) {
                    if (inPlace && w != h && m.subst()) continue;
                    const Case c = make(m, w, h, m.array() ? 3 : 1);
                    const Outcome r = m.run(c, st, inPlace);
                    const std::vector<Vec1> want = expect(m, c, st, inPlace);
                    const std::string what = m.name + " " + std::to_string(w) + "x" + std::to_string(h) + (st == t::Strides::Wide ? " wide" : "") + (inPlace ? " in place" : "");
                    ASSERT_EQ(r.st, orlStatusOk) << what;
                    for (size_t k = 0; k < want.size(); ++k) expectBits(r.out[k], want[k], what);
                    if (::testing::Test::HasFailure()) return;
                }
}

// With 1 to 4 threads: a parallel region opens exactly when T > 1 and the
// cost is above the limit, and every thread count gives the bits of one thread.
inline void expectRouteAndThreads(const Member& m, const Case& c, t::Strides st, int cost, int limit)
{
    std::vector<Vec1> one;
    for (int T = 1; T <= 4; ++T) {
        t::Threads th(T);
        probe::reset();
        const Outcome r = m.run(c, st, false);
        const std::string what = m.name + " cost " + std::to_string(cost) + " T=" + std::to_string(T);
        EXPECT_EQ(r.st, orlStatusOk) << what;
        EXPECT_EQ(probe::regions().count, T > 1 && cost > limit ? 1 : 0) << what;
        if (T == 1) one = r.out;
        for (size_t k = 0; k < one.size(); k += 5) expectBits(r.out[k], one[k], what);
    }
}

}  // namespace solvers

