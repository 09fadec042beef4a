// Argument checks of the exported entries.
//
// Every entry tests its arguments in classes, and the order of the classes is
// part of each member's contract:
//   N  every pointer argument is non-NULL            -> orlStatusNullPointer
//   C  count >= 1                                     -> orlStatusCount
//   Z  every size >= 1                                -> orlStatusSize
//   R  the family's relation between sizes holds      -> orlStatusSizeMismatch
//   T  every stride is a positive multiple of E       -> orlStatusStride
//   O  every offset is a non-negative multiple of E   -> orlStatusOffset
// A member's order is a string such as "NCZTO"; the first failing class wins.
// Where a member tests offsets and strides operand by operand, a T or O is
// followed by the operand's position among the checked operands: "O0T0O1T1"
// tests operand 0's offset and strides, then operand 1's.
// The tests only read the arguments, so evaluating them in any order and
// reporting the first failure in the member's order is the same thing.
#pragma once

#include <initializer_list>
#include <string_view>

#include "operand.h"

namespace orl {

template <class T, Kind K, Lay L>
inline bool pointerOk(const Opd<T, K, L>& o)
{
    if constexpr (Opd<T, K, L>::group.ptr)
        return o.p != nullptr;
    else
        return true;
}

// Multiples of the element size are tested on the low bits.
template <class Elem>
inline bool strideOk(std::ptrdiff_t s)
{
    return (s & std::ptrdiff_t(sizeof(Elem) - 1)) == 0 && s >= 1;
}

template <class Elem>
inline bool offsetOk(std::ptrdiff_t o)
{
    return (o & std::ptrdiff_t(sizeof(Elem) - 1)) == 0 && o >= 0;
}

template <class T, Kind K, Lay L>
inline bool stridesOk(const Opd<T, K, L>& o)
{
    using E = typename Opd<T, K, L>::Elem;
    constexpr Group g = Opd<T, K, L>::group;
    return (!g.s0 || strideOk<E>(o.s0)) && (!g.s1 || strideOk<E>(o.s1)) && (!g.s2 || strideOk<E>(o.s2));
}

template <class T, Kind K, Lay L>
inline bool offsetsOk(const Opd<T, K, L>& o)
{
    using E = typename Opd<T, K, L>::Elem;
    return !Opd<T, K, L>::group.off || offsetOk<E>(o.off);
}

// The outcome of each class for one call; `order` decides which failure counts.
struct Checks {
    bool N = true, C = true, Z = true, R = true, T = true, O = true;
    // The classes T and O of each operand, for orders that name operands.
    static constexpr int kOperands = 4;
    bool Ti[kOperands] = {true, true, true, true}, Oi[kOperands] = {true, true, true, true};
};

constexpr orlStatus statusOf(char cls)
{
    switch (cls) {
    case 'N': return orlStatusNullPointer;
    case 'C': return orlStatusCount;
    case 'Z': return orlStatusSize;
    case 'R': return orlStatusSizeMismatch;
    case 'T': return orlStatusStride;
    case 'O': return orlStatusOffset;
    }
    return orlStatusOk;
}

inline orlStatus firstFailure(std::string_view order, const Checks& c)
{
    for (std::size_t x = 0; x < order.size(); ++x) {
        const char cls = order[x];
        bool ok = cls == 'N' ? c.N : cls == 'C' ? c.C : cls == 'Z' ? c.Z : cls == 'R' ? c.R : cls == 'T' ? c.T : c.O;
        if (x + 1 < order.size() && order[x + 1] >= '0' && order[x + 1] <= '9') {
            const int i = order[++x] - '0';
            ok = i >= Checks::kOperands || (cls == 'T' ? c.Ti[i] : c.Oi[i]);
        }
        if (!ok) return statusOf(cls);
    }
    return orlStatusOk;
}

// The general order of the classes; families list their departures as data.
constexpr std::string_view generalOrder(bool array, Lay l, bool relation = false)
{
    if (array) {
        if (relation) return l == Lay::Std ? "NCZRT" : "NCZRTO";
        return l == Lay::Std ? "NCZT" : "NCZTO";
    }
    if (relation) return l == Lay::Std ? "NZRT" : "NZRO";
    return l == Lay::Std ? "NZT" : "NZO";
}

inline bool sizesOk(std::initializer_list<int> sizes)
{
    for (int s : sizes)
        if (s < 1) return false;
    return true;
}

// The checks N, T and O over a set of operands.
template <class... Ops>
inline Checks operandChecks(const Ops&... ops)
{
    Checks c;
    c.N = (pointerOk(ops) && ...);
    c.T = (stridesOk(ops) && ...);
    c.O = (offsetsOk(ops) && ...);
    int i = 0;
    ((i < Checks::kOperands ? (c.Ti[i] = stridesOk(ops), c.Oi[i] = offsetsOk(ops), ++i) : i), ...);
    return c;
}

template <class... Ops>
inline bool allUnit(const Ops&... ops)
{
    return (ops.unit() && ...);
}

}  // namespace orl
