// Operand views: what an argument group of an exported member means.
//
// An exported adapter packs each operand's argument group (base pointer or
// table or list, strides, offset) into one Opd value. The entries validate
// Opd values, the drivers slice them, and the kernels turn them into item
// accessors that answer "where is logical element (i, j) of item k".
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "orlm.h"

namespace orl {

enum class Lay { Std, P, L };
enum class Kind { m, t, v, c, ma, ta, va, ca };

constexpr bool isArray(Kind k) { return k == Kind::ma || k == Kind::ta || k == Kind::va || k == Kind::ca; }
constexpr bool isTrans(Kind k) { return k == Kind::t || k == Kind::ta; }
constexpr bool isVector(Kind k) { return k == Kind::v || k == Kind::va; }
constexpr bool isScalar(Kind k) { return k == Kind::c || k == Kind::ca; }
constexpr bool isMatrix(Kind k) { return !isVector(k) && !isScalar(k); }

constexpr const char* kindName(Kind k)
{
    constexpr const char* names[] = {"m", "t", "v", "c", "ma", "ta", "va", "ca"};
    return names[static_cast<int>(k)];
}

// The arguments of one operand group, by kind and layout.
struct Group {
    bool ptr, s0, s1, s2, off;
};

constexpr Group groupOf(Kind k, Lay l)
{
    //                       ptr    s0     s1     s2     offset
    constexpr Group none   {false, false, false, false, false};
    constexpr Group stdM   {true,  false, true,  true,  false};
    constexpr Group stdMA  {true,  true,  true,  true,  false};
    constexpr Group stdV   {true,  false, false, true,  false};
    constexpr Group stdVA  {true,  true,  false, true,  false};
    constexpr Group stdCA  {true,  true,  false, false, false};
    constexpr Group tblOne {true,  false, false, false, true};
    constexpr Group tblArr {true,  true,  false, false, true};
    constexpr Group lstMA  {true,  false, true,  true,  true};
    constexpr Group lstVA  {true,  false, false, true,  true};
    constexpr Group lstCA  {true,  false, false, false, true};
    if (k == Kind::c) return none;
    switch (l) {
    case Lay::Std:
        switch (k) {
        case Kind::m: case Kind::t: return stdM;
        case Kind::ma: case Kind::ta: return stdMA;
        case Kind::v: return stdV;
        case Kind::va: return stdVA;
        default: return stdCA;
        }
    case Lay::P:
        switch (k) {
        case Kind::m: case Kind::t: case Kind::v: return tblOne;
        case Kind::ma: case Kind::ta: case Kind::va: return tblArr;
        default: return stdCA;  // constant arrays keep their standard form
        }
    case Lay::L:
        switch (k) {
        case Kind::m: case Kind::t: return stdM;  // shared operands keep the standard form
        case Kind::v: return stdV;
        case Kind::ma: case Kind::ta: return lstMA;
        case Kind::va: return lstVA;
        default: return lstCA;
        }
    }
    return none;
}

// Byte pointer with the constness of the element type.
template <class T>
using Bytes = std::conditional_t<std::is_const_v<T>, const char, char>;

template <class T>
inline T* at(T* p, std::ptrdiff_t bytes)
{
    return reinterpret_cast<T*>(reinterpret_cast<Bytes<T>*>(p) + bytes);
}

// Does the group hold a table or list of pointers rather than one base pointer?
constexpr bool holdsPointers(Kind k, Lay l)
{
    if (isScalar(k)) return l == Lay::L && k == Kind::ca;
    return l == Lay::P || (l == Lay::L && isArray(k));
}

// One operand as the caller passed it. T is the element type, const for sources.
template <class T, Kind K, Lay L>
struct Opd {
    using Elem = std::remove_const_t<T>;
    using Ptr = std::conditional_t<K == Kind::c, Elem, std::conditional_t<holdsPointers(K, L), T* const*, T*>>;
    static constexpr Kind kind = K;
    static constexpr Lay lay = L;
    static constexpr Group group = groupOf(K, L);
    static constexpr bool array = isArray(K);
    static constexpr bool trans = isTrans(K);

    Ptr p{};
    std::ptrdiff_t s0 = 0, s1 = 0, s2 = 0, off = 0;

    // Every stride2 of the group equals the element size (or it has none).
    bool unit() const { return !group.s2 || s2 == std::ptrdiff_t(sizeof(Elem)); }

    // The same operand seen from item `first` on: what a driver slice gets.
    Opd from(int first) const
    {
        Opd o = *this;
        if constexpr (array) {
            if constexpr (L == Lay::L)
                o.p = p + first;
            else if constexpr (L == Lay::P && K != Kind::ca)
                o.off = off + std::ptrdiff_t(first) * s0;
            else
                o.p = at(p, std::ptrdiff_t(first) * s0);
        }
        return o;
    }
};

// ---- Item accessors: logical element (i, j) of one item -------------------

// Standard and list layouts: base pointer plus stored row and column steps.
// With Unit the column step is the element size, known to the compiler.
template <class T, bool Tr, bool Unit>
struct MatItem {
    T* b;
    std::ptrdiff_t s1, s2;
    T& operator()(int i, int j) const
    {
        const std::ptrdiff_t r = Tr ? j : i, c = Tr ? i : j;
        return *at(b, r * s1 + c * (Unit ? std::ptrdiff_t(sizeof(T)) : s2));
    }
    T* row(int r) const { return at(b, r * s1); }  // stored row r
};

// Element-pointer layout: table in stored row order, `cols` entries a row.
template <class T, bool Tr>
struct MatItemP {
    T* const* tbl;
    std::ptrdiff_t off;
    int cols;
    T& operator()(int i, int j) const
    {
        const int r = Tr ? j : i, c = Tr ? i : j;
        return *at(tbl[r * cols + c], off);
    }
};

template <class T, bool Unit>
struct VecItem {
    T* b;
    std::ptrdiff_t s2;
    T& operator()(int j) const { return *at(b, j * (Unit ? std::ptrdiff_t(sizeof(T)) : s2)); }
    T* data() const { return b; }  // the first element; adjacent ones follow where Unit
};

template <class T>
struct VecItemP {
    T* const* tbl;
    std::ptrdiff_t off;
    T& operator()(int j) const { return *at(tbl[j], off); }
};

// Item k of a matrix operand. `cols` is the stored width (the length of a
// table row in _P); shared operands ignore k.
template <bool Unit, class T, Kind K, Lay L>
inline auto matItem(const Opd<T, K, L>& o, int k, int cols)
{
    constexpr bool tr = isTrans(K);
    if constexpr (L == Lay::P) {
        const std::ptrdiff_t off = isArray(K) ? o.off + std::ptrdiff_t(k) * o.s0 : o.off;
        return MatItemP<T, tr>{o.p, off, cols};
    } else if constexpr (L == Lay::L && isArray(K)) {
        return MatItem<T, tr, Unit>{at(o.p[k], o.off), o.s1, o.s2};
    } else {
        T* b = isArray(K) ? at(o.p, std::ptrdiff_t(k) * o.s0) : o.p;
        return MatItem<T, tr, Unit>{b, o.s1, o.s2};
    }
}

template <bool Unit, class T, Kind K, Lay L>
inline auto vecItem(const Opd<T, K, L>& o, int k)
{
    if constexpr (L == Lay::P) {
        const std::ptrdiff_t off = isArray(K) ? o.off + std::ptrdiff_t(k) * o.s0 : o.off;
        return VecItemP<T>{o.p, off};
    } else if constexpr (L == Lay::L && isArray(K)) {
        return VecItem<T, Unit>{at(o.p[k], o.off), o.s2};
    } else {
        T* b = isArray(K) ? at(o.p, std::ptrdiff_t(k) * o.s0) : o.p;
        return VecItem<T, Unit>{b, o.s2};
    }
}

// Item k of a constant operand: the value itself, or the element at
// p + k*stride0 (standard and `_P`), or at lst[k] + offset (`_L`).
template <class T, Kind K, Lay L>
inline auto constItem(const Opd<T, K, L>& o, int k)
{
    if constexpr (K == Kind::c)
        return o.p;
    else if constexpr (L == Lay::L)
        return *at(o.p[k], o.off);
    else
        return *at(o.p, std::ptrdiff_t(k) * o.s0);
}

// An `_L` array operand's item k as a standard single operand: what the
// `_L` kernels that loop over a single-item kernel pass for each item.
template <class T, Kind K>
inline auto itemAsSingle(const Opd<T, K, Lay::L>& o, int k)
{
    if constexpr (!isArray(K)) {
        return Opd<T, K, Lay::Std>{o.p, o.s0, o.s1, o.s2, 0};
    } else {
        constexpr Kind single = K == Kind::ma ? Kind::m : K == Kind::ta ? Kind::t : K == Kind::va ? Kind::v : Kind::c;
        return Opd<T, single, Lay::Std>{at(o.p[k], o.off), 0, o.s1, o.s2, 0};
    }
}

// Per-item results beside the operands (pivot tables, scalars): `per` entries
// an item; a driver slice starts at first * per.
template <class T>
struct PerItem {
    T* p;
    int per;
    PerItem from(int first) const { return {p + std::ptrdiff_t(first) * per, per}; }
    T* item(int k) const { return p + std::ptrdiff_t(k) * per; }
};

}  // namespace orl
