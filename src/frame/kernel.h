// Kernel variants and the compile-time names that family tables are keyed by.
#pragma once

#include <initializer_list>
#include <string_view>
#include <type_traits>

#include "operand.h"

namespace orl {

// Which kernel of a member runs: the standard layout with every stride2 equal
// to the element size (Unit) or any stride2 (S2), the element-pointer layout
// (P), the item-pointer layout with unit or any stride2 (L, LS2).
enum class Var { Unit, S2, P, L, LS2 };

enum class Ty { F32, F64 };

template <class E>
constexpr Ty tyOf = sizeof(E) == 4 ? Ty::F32 : Ty::F64;

constexpr Var varOf(Lay l, bool unit)
{
    switch (l) {
    case Lay::Std: return unit ? Var::Unit : Var::S2;
    case Lay::L: return unit ? Var::L : Var::LS2;
    case Lay::P: return Var::P;
    }
    return Var::P;
}

// Variants whose element step is the element size, known at compile time.
constexpr bool unitStep(Var v) { return v == Var::Unit || v == Var::L; }

// The variant that an `_L` kernel's per-item call reaches: the standard
// single-item kernel with the same stride case.
constexpr Var singleVar(Var v) { return v == Var::L ? Var::Unit : v == Var::LS2 ? Var::S2 : v; }

// The shape letters of a member, built from its operands' kinds, so that a
// family table can be keyed by the shape as it is written ("mam", "tata").
struct ShapeName {
    char s[12]{};
    int n = 0;
    constexpr std::string_view view() const { return {s, static_cast<std::size_t>(n)}; }
};

template <Kind... K>
constexpr ShapeName shapeName()
{
    ShapeName r;
    for (Kind k : {K...})
        for (const char* p = kindName(k); *p; ++p) r.s[r.n++] = *p;
    return r;
}

template <Kind... K>
inline constexpr ShapeName kShape = shapeName<K...>();

// The single-item kind of an array kind (ma -> m), used by per-item calls.
constexpr Kind singleKind(Kind k)
{
    return k == Kind::ma ? Kind::m : k == Kind::ta ? Kind::t : k == Kind::va ? Kind::v : k == Kind::ca ? Kind::c : k;
}

// Sizes 3..6 as a bit set, for tables of straight-line forms.
struct Sizes {
    unsigned bits = 0;
    constexpr Sizes() = default;
    constexpr Sizes(std::initializer_list<int> l)
    {
        for (int n : l) bits |= 1u << n;
    }
    constexpr bool has(int n) const { return n >= 0 && n < 32 && ((bits >> n) & 1u); }
};

// Does a blank-separated list of shapes ("mam mat tam") name `shape`? The
// kernel tables of the families list their shapes this way.
constexpr bool listed(std::string_view list, std::string_view shape)
{
    while (!list.empty()) {
        const std::size_t sp = list.find(' ');
        if (list.substr(0, sp) == shape) return true;
        if (sp == std::string_view::npos) break;
        list.remove_prefix(sp + 1);
    }
    return false;
}

// The names by which kernel tables list variants and element types.
constexpr std::string_view varName(Var v)
{
    constexpr std::string_view names[] = {"unit", "S2", "P", "L", "LS2"};
    return names[static_cast<int>(v)];
}

constexpr std::string_view tyName(Ty t) { return t == Ty::F32 ? "32f" : "64f"; }

// The sizes 3 to 6 whose path in a kernel table row (`at`, one entry a size)
// is not `none`: the sizes with an unrolled form.
template <class Path>
constexpr Sizes sizesWhere(const Path (&at)[4], Path none)
{
    Sizes z;
    for (int i = 0; i < 4; ++i)
        if (at[i] != none) z.bits |= 1u << (i + 3);
    return z;
}

// The size dispatch of a kernel: `fixed(std::integral_constant<int, N>{})`
// when n is one of the sizes 3..6 that S holds, else `general()`. A caller
// passes 0 for n where the operation is not square.
template <Sizes S, class Fixed, class General>
[[gnu::always_inline]] inline orlStatus bySize(int n, const Fixed& fixed, const General& general)
{
    switch (n) {
    case 3: if constexpr (S.has(3)) return fixed(std::integral_constant<int, 3>{}); break;
    case 4: if constexpr (S.has(4)) return fixed(std::integral_constant<int, 4>{}); break;
    case 5: if constexpr (S.has(5)) return fixed(std::integral_constant<int, 5>{}); break;
    case 6: if constexpr (S.has(6)) return fixed(std::integral_constant<int, 6>{}); break;
    }
    return general();
}

// The logical elements of a shared source, held in local values for a whole
// call by the straight-line forms.
template <class E, int N>
struct Held {
    E v[N][N];
    E operator()(int i, int j) const { return v[i][j]; }
    const E* row(int i) const { return v[i]; }
};

template <int N, class Acc>
inline auto hold(const Acc& x)
{
    Held<std::remove_cvref_t<decltype(x(0, 0))>, N> h;
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) h.v[i][j] = x(i, j);
    return h;
}

// Item k of a matrix source: read where it lies, or, for a shared operand in
// a straight-line form (N > 0), from the copy taken before the loop over items.
template <bool Unit, int N, class O>
inline auto sourceItems(const O& o, int cols)
{
    if constexpr (O::array || N == 0) {
        return [o, cols](int k) { return matItem<Unit>(o, k, cols); };
    } else {
        const auto h = hold<N>(matItem<Unit>(o, 0, cols));
        return [h](int) -> const decltype(h)& { return h; };
    }
}

// ---- vectors and constants --------------------------------------------------

// The elements of a shared vector, held in local values for a whole call by
// the straight-line forms of length N.
template <class E, int N>
struct HeldVec {
    E v[N];
    E operator()(int j) const { return v[j]; }
    const E* data() const { return v; }
};

// Item k of a vector source: read where it lies, or, for a shared vector in a
// straight-line form (N > 0), from the copy taken before the loop over items.
template <bool Unit, int N, class O>
inline auto vecSourceItems(const O& o)
{
    if constexpr (O::array || N == 0) {
        return [o](int k) { return vecItem<Unit>(o, k); };
    } else {
        const auto x = vecItem<Unit>(o, 0);
        HeldVec<typename O::Elem, N> h;
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) h.v[j] = x(j);
        return [h](int) -> const HeldVec<typename O::Elem, N>& { return h; };
    }
}

// Item k of a constant operand: the value itself (`c`), or item k of a
// constant array (`ca`), read once for the item.
template <class O>
inline auto constItems(const O& o)
{
    if constexpr (O::kind == Kind::c) {
        return [v = o.p](int) { return v; };
    } else if constexpr (O::lay == Lay::L) {
        return [o](int k) { return *at(o.p[k], o.off); };
    } else {
        return [o](int k) { return *at(o.p, std::ptrdiff_t(k) * o.s0); };
    }
}

// Item k of any source of the vector families: a vector item with (j), or a
// constant; `elemOf` reads element j of either.
template <bool Unit, int N, class O>
inline auto vectorOrConstItems(const O& o)
{
    if constexpr (isScalar(O::kind))
        return constItems(o);
    else
        return vecSourceItems<Unit, N>(o);
}

template <class X>
inline auto elemOf(const X& x, int j)
{
    if constexpr (std::is_arithmetic_v<X>)
        return x;
    else
        return x(j);
}

}  // namespace orl
