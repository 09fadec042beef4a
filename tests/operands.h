// Test operands: matrices, vectors and arrays of them in each of the three
// layouts, addressed here independently of the library, and their argument groups.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "omp_probe.h"
#include "orlcore.h"
#include "orlm.h"
#include "reference.h"

namespace t {

enum class K { m, t, ma, ta };   // operand kinds of the matrix families
enum class L { Std, P, L };      // layouts

constexpr bool arr(K k) { return k == K::ma || k == K::ta; }
constexpr bool tr(K k) { return k == K::t || k == K::ta; }

enum class Strides { Unit, Wide };  // how the standard and _L strides are chosen

// One matrix operand of width W, height H (logical, as the member sees it)
// and `count` items; sources and results differ only in constness.
template <class Elem, K kind, L lay, bool result = false>
struct Mat {
    using E = Elem;
    using P = std::conditional_t<result, E*, const E*>;
    int W, H, count, rows, cols;
    std::ptrdiff_t s0 = 0, s1 = 0, s2 = 0, off = 0;
    std::vector<unsigned char> mem;       // where the elements live
    std::vector<E*> ptrs;                 // the _P table or the _L list

    Mat(int width, int height, int n, Strides st = Strides::Unit, unsigned seed = 1, int rowPad = 2)
        : W(width), H(height), count(arr(kind) ? n : 1)
    {
        rows = tr(kind) ? W : H, cols = tr(kind) ? H : W;  // stored shape
        const std::ptrdiff_t e = sizeof(E);
        std::mt19937 rng(seed);
        if (lay == L::P) {
            // Elements of one item scattered in a pool; items one stride0 apart.
            const int n1 = rows * cols;
            std::vector<int> perm(n1);
            std::iota(perm.begin(), perm.end(), 0);
            std::shuffle(perm.begin(), perm.end(), rng);
            off = 2 * e;
            s0 = (n1 + 3) * e;
            mem.assign(size_t(s0 * count + off + 8 * e), 0);
            for (int x = 0; x < n1; ++x) ptrs.push_back(reinterpret_cast<E*>(mem.data() + perm[x] * e));
        } else {
            s2 = st == Strides::Unit ? e : 3 * e;
            s1 = cols * s2 + rowPad * e;
            s0 = rows * s1 + e;
            off = lay == L::L && arr(kind) ? 4 * e : 0;
            mem.assign(size_t(s0 * count + off + 8 * e), 0);
            if (lay == L::L && arr(kind)) {
                // Items in shuffled order in memory, reached through the list.
                std::vector<int> order(count);
                std::iota(order.begin(), order.end(), 0);
                std::shuffle(order.begin(), order.end(), rng);
                for (int k = 0; k < count; ++k) ptrs.push_back(reinterpret_cast<E*>(mem.data() + order[k] * s0));
            }
        }
    }

    // Address of stored element (r, c) of item k, by the layouts' formulas.
    E* stored(int k, int r, int c)
    {
        unsigned char* b;
        if (lay == L::P)
            b = reinterpret_cast<unsigned char*>(ptrs[r * cols + c]) + off + (arr(kind) ? k * s0 : 0);
        else if (lay == L::L && arr(kind))
            b = reinterpret_cast<unsigned char*>(ptrs[k]) + off + r * s1 + c * s2;
        else
            b = mem.data() + (arr(kind) ? k * s0 : 0) + r * s1 + c * s2;
        return reinterpret_cast<E*>(b);
    }
    // Logical element (i, j) of item k.
    E& operator()(int k, int i, int j) { return tr(kind) ? *stored(k, j, i) : *stored(k, i, j); }

    template <class F>
    void fill(F f)
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < H; ++i)
                for (int j = 0; j < W; ++j) (*this)(k, i, j) = f(k, i, j);
    }

    auto args()  // the argument group of the operand in its layout
    {
        const int i0 = int(s0), i1 = int(s1), i2 = int(s2), io = int(off);
        if constexpr (lay == L::P) {
            P const* tbl = ptrs.data();
            if constexpr (arr(kind)) return std::make_tuple(tbl, io, i0);
            else return std::make_tuple(tbl, io);
        } else if constexpr (lay == L::L && arr(kind)) {
            P const* lst = ptrs.data();
            return std::make_tuple(lst, io, i1, i2);
        } else {
            P p = reinterpret_cast<P>(mem.data());
            if constexpr (arr(kind)) return std::make_tuple(p, i0, i1, i2);
            else return std::make_tuple(p, i1, i2);
        }
    }
};

// One vector operand of `length` elements and `items` items (1 unless
// `array`). In an _L member a shared vector keeps the standard form.
template <class E, bool array, L lay, bool result = false>
struct Vec {
    using P = std::conditional_t<result, E*, const E*>;
    int n, count;
    std::ptrdiff_t s0 = 0, s2 = 0, off = 0;
    static constexpr bool listed = lay == L::L && array;
    std::vector<unsigned char> mem;
    std::vector<E*> ptrs;  // _P table or _L list

    Vec(int length, int items, Strides st, unsigned seed) : n(length), count(array ? items : 1)
    {
        const std::ptrdiff_t e = sizeof(E);
        std::mt19937 rng(seed);
        std::vector<int> order(std::max(n, count));
        std::iota(order.begin(), order.end(), 0);
        if (lay == L::P) {
            std::shuffle(order.begin(), order.begin() + n, rng);
            off = 2 * e;
            s0 = (n + 3) * e;
            mem.assign(size_t(s0 * count + off + e), 0);
            for (int j = 0; j < n; ++j) ptrs.push_back(reinterpret_cast<E*>(mem.data() + order[j] * e));
        } else {
            s2 = st == Strides::Unit ? e : 2 * e;
            s0 = n * s2 + e;
            off = listed ? 4 * e : 0;
            mem.assign(size_t(s0 * count + off + e), 0);
            if (listed) {
                std::shuffle(order.begin(), order.begin() + count, rng);
                for (int k = 0; k < count; ++k) ptrs.push_back(reinterpret_cast<E*>(mem.data() + order[k] * s0));
            }
        }
    }
    Vec(int length, int, int items, Strides st, unsigned seed, int = 0) : Vec(length, items, st, seed) {}  // as a Mat of one row
    // Element j of item k; a vector is one row (i is ignored), a shared one one item.
    E& operator()(int k, int j)
    {
        unsigned char* b = lay == L::P ? reinterpret_cast<unsigned char*>(ptrs[j]) + off + (array ? k * s0 : 0)
                           : listed    ? reinterpret_cast<unsigned char*>(ptrs[k]) + off + j * s2
                                       : mem.data() + (array ? k * s0 : 0) + j * s2;
        return *reinterpret_cast<E*>(b);
    }
    E& operator()(int k, int, int j) { return (*this)(k, j); }
    auto args()
    {
        const int i0 = int(s0), i2 = int(s2), io = int(off);
        if constexpr (lay == L::P) {
            P const* tbl = ptrs.data();
            if constexpr (array) return std::make_tuple(tbl, io, i0);
            else return std::make_tuple(tbl, io);
        } else if constexpr (listed) {
            P const* lst = ptrs.data();
            return std::make_tuple(lst, io, i2);
        } else {
            P p = reinterpret_cast<P>(mem.data());
            if constexpr (array) return std::make_tuple(p, i0, i2);
            else return std::make_tuple(p, i2);
        }
    }
};

// An array of `items` constants: base and stride0 (standard, _P), or a list of pointers and an offset (_L).
template <class E, L lay>
struct Consts {
    std::ptrdiff_t s0 = 0, off = 0;
    int count;
    std::vector<unsigned char> mem;
    std::vector<const E*> ptrs;  // _L list

    explicit Consts(int items, std::ptrdiff_t stride0 = 2 * sizeof(E)) : s0(stride0), count(items)
    {
        const std::ptrdiff_t e = sizeof(E);
        if (lay == L::L) {
            off = e;
            mem.assign(size_t((2 * count + 2) * e), 0);
            for (int k = 0; k < count; ++k) ptrs.push_back(reinterpret_cast<const E*>(mem.data() + (count - 1 - k) * 2 * e));
        } else {
            mem.assign(size_t((s0 > 0 ? s0 * count : 0) + 2 * e), 0);
        }
    }
    E& operator()(int k) { return *reinterpret_cast<E*>(lay == L::L ? (unsigned char*)(ptrs[k]) + off : mem.data() + k * s0); }
    E& operator()(int k, int) { return (*this)(k); }  // as a vector of one value
    auto args()
    {
        if constexpr (lay == L::L) return std::make_tuple(ptrs.data(), int(off));
        else return std::make_tuple(reinterpret_cast<const E*>(mem.data()), int(s0));
    }
};

// ---- every member of a family over sizes, stride cases and counts --------

// A member under test: its name and a check of one size, stride case and
// count (a vector's length is w). A test program registers its members once.
struct MemberCheck {
    std::string name;
    std::function<void(int w, int h, int count, Strides st)> check;
    bool array = false;  // has a count (some suites run these alone)
};

inline std::vector<MemberCheck>& registry()
{
    static std::vector<MemberCheck> list;
    return list;
}

// Runs every registered member at every size, with unit and wide strides,
// on one and three items; stops at the first fatal failure.
inline void checkEveryMember(std::size_t members, std::initializer_list<std::pair<int, int>> sizes)
{
    EXPECT_EQ(registry().size(), members);
    for (const MemberCheck& m : registry())
        for (auto [w, h] : sizes)
            for (Strides st : {Strides::Unit, Strides::Wide})
                for (int count : {1, 3}) {
                    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h) + " count " +
                                 std::to_string(count) + (st == Strides::Wide ? " wide" : " unit"));
                    m.check(w, h, count, st);
                    if (::testing::Test::HasFatalFailure()) return;
                }
}

template <class O>
auto* elem(O& o, int k, int i, int j) { return &o(k, i, j); }  // address of logical element (i, j) of item k

// Fills the logical elements of an operand with `pattern(address, number)`,
// numbering them in item, row and column order.
template <class O, class F>
void fillEach(O& o, int count, int rows, int cols, F pattern)
{
    for (int k = 0, x = 0; k < count; ++k)
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < cols; ++j) pattern(&o(k, i, j), x++);
}

// Memory for route tests, where only the path is looked at: items overlap
// (stride0 of one element). Bases `S`, `D`; lists `lst`/`dlst` of `items`
// pointers to them (_L); tables `tbl`/`dtbl` of element pointers (_P).
template <class E>
struct Pool {
    std::vector<E> src, dst;
    std::vector<const E*> lst, tbl;
    std::vector<E*> dlst, dtbl;
    const E* S;
    E* D;
    Pool(size_t elems, int items, int length) : src(elems, E(1)), dst(elems), lst(items, src.data()), dlst(items, dst.data())
    {
        S = src.data(), D = dst.data();
        for (int j = 0; j < length; ++j) tbl.push_back(S + j), dtbl.push_back(D + j);
    }
};

// Buffers for calls whose arguments are checked: sources, results that a
// failing call must leave untouched, tables of element pointers into both,
// and a perm table (entries 0 and 1 alternating, a valid perm of order 2).
struct CheckBuffers {
    float f[64], fo[64];
    double g[64], go[64];
    const float* tf[64];
    float* to[64];
    const double* tg[64];
    double* tgo[64];
    std::int32_t perm[64];
    CheckBuffers()
    {
        for (int i = 0; i < 64; ++i) {
            f[i] = float(i % 5 + 1), g[i] = i % 5 + 1, fo[i] = -1.f, go[i] = -1.0, perm[i] = i & 1;
            tf[i] = f + i, to[i] = fo + i, tg[i] = g + i, tgo[i] = go + i;
        }
    }
    bool untouched() const
    {
        for (int i = 0; i < 64; ++i)
            if (fo[i] != -1.f || go[i] != -1.0 || perm[i] != (i & 1)) return false;
        return true;
    }
};

// Runs a member that takes a square source, one more pointer `mid`, a square
// result, the order and (arrays) the count on `items` (n*n values each, row
// by row), with the result as the source when `inPlace`; gives the status
// and the results, `untouched` where nothing was written.
template <class E, K kind, L lay, class Fn, class Mid>
std::pair<orlStatus, std::vector<std::vector<double>>> runSquare(Fn fn, int n, const std::vector<std::vector<double>>& items, Strides st,
                                                                 bool inPlace, Mid mid, double untouched)
{
    const int count = int(items.size());
    Mat<E, kind, lay> src(n, n, count, st, 5);
    Mat<E, kind, lay, true> dst(n, n, count, st, 6);
    src.fill([&](int k, int i, int j) { return E(items[k][i * n + j]); });
    dst.fill([&](int k, int i, int j) { return E(inPlace ? items[k][i * n + j] : untouched); });
    const auto invoke = [&](auto srcArgs) {
        const auto groups = std::tuple_cat(srcArgs, std::make_tuple(mid), dst.args());
        if constexpr (arr(kind)) return std::apply(fn, std::tuple_cat(groups, std::make_tuple(n, count)));
        else return std::apply(fn, std::tuple_cat(groups, std::make_tuple(n)));
    };
    std::pair<orlStatus, std::vector<std::vector<double>>> o{inPlace ? invoke(dst.args()) : invoke(src.args()), {}};
    o.second.assign(count, std::vector<double>(n * n));
    for (int k = 0; k < count; ++k)
        for (int x = 0; x < n * n; ++x) o.second[k][x] = dst(k, x / n, x % n);
    return o;
}

// Argument checks: each call returns `expect` and leaves the buffers untouched.
struct CheckCase {
    const char* what;
    std::function<orlStatus()> call;
    orlStatus expect;
};

inline void expectChecks(const CheckBuffers& p, std::initializer_list<CheckCase> cases)
{
    for (const CheckCase& c : cases) {
        EXPECT_EQ(c.call(), c.expect) << c.what;
        EXPECT_TRUE(p.untouched()) << c.what;
    }
}

// Sets the core library's thread count for one scope.
struct Threads {
    int saved = threads_omp_of_n_orl;
    explicit Threads(int n) { threads_omp_of_n_orl = n; }
    ~Threads() { threads_omp_of_n_orl = saved; }
};

// Does the call open a parallel region with two threads?
template <class F>
bool parallel(F call)
{
    Threads two(2);
    probe::reset();
    EXPECT_EQ(call(), orlStatusOk);
    return probe::regions().count > 0;
}

// The classes a check test makes fail in one call: N a null pointer, C a
// count of 0, Z a size of 0, R a size one too many for its relation, T a
// stride that is no multiple of the element size, O an offset of minus one
// element (`e` its size).
struct Spoil {
    std::string bad;
    bool has(char c) const { return bad.find(c) != std::string::npos; }
    template <class P> P n(P p) const { return has('N') ? nullptr : p; }
    int c(int v = 2) const { return has('C') ? 0 : v; }
    int z(int v) const { return has('Z') ? 0 : v; }
    int r(int v) const { return has('R') ? v + 1 : v; }
    int t(int v) const { return has('T') ? v + 2 : v; }
    int o(int e) const { return has('O') ? -e : 0; }
};

// Calls `check` with nothing spoiled, then with every pair of the classes of
// a member's check order spoiled together.
template <class F>
void eachSpoil(std::string_view order, F check)
{
    check(Spoil{});
    for (char a : order)
        for (char b : order) check(Spoil{std::string{a, b}});
}

// One row of a check test: a member, its check order, and its call on the
// buffers with the spoiled arguments.
struct Spoiled : Spoil, CheckBuffers {};
struct CheckRow {
    const char *name, *order;
    std::function<orlStatus(Spoiled&)> call;
};

// Every row under eachSpoil: the status `expected(order, spoiled)` and, on
// failure, nothing written.
template <class Expected>
void checkRows(std::initializer_list<CheckRow> rows, Expected expected)
{
    for (const CheckRow& r : rows)
        eachSpoil(r.order, [&](const Spoil& s) {
            Spoiled c;
            c.bad = s.bad;
            const orlStatus want = expected(r.order, s.bad);
            EXPECT_EQ(r.call(c), want) << r.name << " spoiled " << s.bad;
            if (want != orlStatusOk) EXPECT_TRUE(c.untouched()) << r.name << " spoiled " << s.bad;
        });
}

// Calls a member with the argument groups of its operands and plain arguments.
template <class Fn, class... Groups, class... Plain>
orlStatus call(Fn fn, std::tuple<Groups...> groups, Plain... plain)
{
    return std::apply(fn, std::tuple_cat(groups, std::make_tuple(plain...)));
}

using ref::sameBits;  // bit pattern equality

}  // namespace t
