// What the six eigen families share: their order of checks, their work
// measures and limits, the buffer-size queries and the route of an array
// member with one scratch block per call.
//
// Every eigen member takes one square source of order n = widthHeight, a
// work buffer, plain value arrays (n entries an item, whatever the layout)
// and, in the vector families, one or two vector destinations. A family's
// entry checks its arguments with `check`, then hands its kernel to `route`;
// the kernels only do arithmetic.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/dispatch.h"
#include "frame/kernel.h"
#include "frame/operand.h"
#include "frame/validate.h"

namespace orl::eig {

// Named by the stems of the exported members.
enum class Fam {
    EigenValuesSym,
    EigenValuesVectorsSym,
    EigenValues,
    EigenValuesVectorsRight,
    EigenValuesVectorsLeft,
    EigenValuesVectors,
};

// The two buffer-size queries: the bytes of one matrix's work buffer.
enum class Query { EigenValuesGetBufSize, EigenValuesVectorsGetBufSize };

// ---- buffer sizes ----------------------------------------------------------

// widthHeight*(k*widthHeight + 5)*E with k = 1 for the values query and 3
// for the vectors query, formed in 32 bits with no overflow test.
template <class E>
constexpr std::int32_t bufferBytes(Query q, int n)
{
    const int k = q == Query::EigenValuesGetBufSize ? 1 : 3;
    return (Wrap(n) * (Wrap(k) * n + 5) * int(sizeof(E))).value();
}

// The exported queries: the pointer is tested first, then the order.
template <Query q, class E>
orlStatus bufSizeEntry(int widthHeight, std::int32_t* bufSize)
{
    Checks c;
    c.N = bufSize != nullptr;
    c.Z = widthHeight >= 1;
    if (const orlStatus st = firstFailure("NZ", c)) return st;
    *bufSize = bufferBytes<E>(q, widthHeight);
    return orlStatusOk;
}

// ---- the families ----------------------------------------------------------

// Bytes of one thread's scratch on the parallel route: the symmetric
// families take n*n elements, the general ones (the values family included)
// the larger size of the vectors query.
enum class Scratch { Square, VectorsQuery };

// Orders of the checks: the pointers, the order widthHeight, the count, then
// offsets and strides operand by operand (0 the source, 1 and 2 the vector
// destinations in argument order; see firstFailure).
struct Orders {
    std::string_view ma, maP, maL;
};

// Single members: all source strides then each destination's, or in `_P`
// every offset, source first.
constexpr std::string_view kOrderM = "NZT0T1T2", kOrderMP = "NZO0O1O2";

struct FamilyRow {
    Fam fam;
    int k;               // work measure widthHeight*(k*widthHeight + 1)*count
    LimitRow limits;     // driver taken above the limit
    bool strideCase;     // plain and _S2/_LS2 kernels chosen by the stride2 test
    Scratch scratch;
    Orders orders;
};

// clang-format off
//                                      work      limits, 32f then 64f:                                stride   scratch                check orders of the ma members:
//   family                             measure k Unit   Any    L Unit L Any  P                        case                            standard      _P                 _L
constexpr FamilyRow kFamilies[] = {
    {Fam::EigenValuesSym,          1, {{20000, 20000, 40000, 20000, 20000, Test::GT},
                                       {20000, 20000, 20000, 20000, 20000, Test::GT}},  true,  Scratch::Square,       {"NZCT0",     "NZCO0T0",         "NZCO0T0"}},
    {Fam::EigenValuesVectorsSym,   2, both(1700,  1700,  1700,  1700,  1700, Test::GT), true,  Scratch::Square,       {"NZCT0T1",   "NZCO0O1T0T1",     "NZCO0O1T0T1"}},
    {Fam::EigenValues,             1, both(10000, 10000, 10000, 10000, 10000, Test::GT), false, Scratch::VectorsQuery, {"NZCT0",     "NZCO0T0",         "NZCO0T0"}},
    {Fam::EigenValuesVectorsRight, 3, both(7000,  7000,  7000,  7000,  7000, Test::GT), false, Scratch::VectorsQuery, {"NZCT0T1",   "NZCO0T0O1T1",     "NZCO0T0O1T1"}},
    {Fam::EigenValuesVectorsLeft,  3, both(7000,  7000,  7000,  7000,  7000, Test::GT), false, Scratch::VectorsQuery, {"NZCT0T1",   "NZCO0T0O1T1",     "NZCO0T0O1T1"}},
    {Fam::EigenValuesVectors,      3, both(7000,  7000,  7000,  7000,  7000, Test::GT), false, Scratch::VectorsQuery, {"NZCT0T1T2", "NZCO0T0O1O2T1T2", "NZCO0T0O1O2T1T2"}},
};
// clang-format on

constexpr const FamilyRow& rowOf(Fam f)
{
    return kFamilies[static_cast<int>(f)];
}

static_assert(rowOf(Fam::EigenValuesVectors).fam == Fam::EigenValuesVectors, "kFamilies is in the order of Fam");

constexpr std::string_view orderOf(Fam f, bool array, Lay lay)
{
    const Orders& o = rowOf(f).orders;
    if (!array) return lay == Lay::P ? kOrderMP : kOrderM;
    return lay == Lay::Std ? o.ma : lay == Lay::P ? o.maP : o.maL;
}

constexpr std::int32_t workOf(Fam f, int n, int count)
{
    return (Wrap(n) * (Wrap(rowOf(f).k) * n + 1) * count).value();
}

template <class E>
constexpr std::int32_t scratchBytes(Fam f, int n)
{
    if (rowOf(f).scratch == Scratch::Square) return (Wrap(n) * n * int(sizeof(E))).value();
    return bufferBytes<E>(Query::EigenValuesVectorsGetBufSize, n);
}

// ---- checks ----------------------------------------------------------------

// The entry's checks. `plainPointers` is false when the buffer or a value
// array is NULL; `ops` are the source and then the vector destinations in
// argument order. `count` is ignored by single members.
template <Fam F, class S, class... Dst>
orlStatus check(bool plainPointers, int widthHeight, int count, const S& src, const Dst&... dst)
{
    Checks c = operandChecks(src, dst...);
    c.N = c.N && plainPointers;
    c.Z = widthHeight >= 1;
    c.C = !S::array || count >= 1;
    return firstFailure(orderOf(F, S::array, S::lay), c);
}

// ---- route -----------------------------------------------------------------

// Does the call have every stride2 equal to the element size? Only the
// symmetric families have that case; the general ones run one kernel per
// layout, so for them the column Any of the limits is always in force.
template <Fam F, class... Args>
constexpr bool unitCase(const Args&... args)
{
    return rowOf(F).strideCase && (unitOf(args) && ...);
}

template <class A>
inline constexpr bool arrayOperand = requires { requires A::array; };

// Runs `kernel(items, buffer, args...)`: once on the calling thread for a
// single member or a work measure at or under the limit; else through the
// driver, each thread with its own slice of one scratch block (the bytes of
// `scratchBytes`) in the place of the caller's buffer and with its operands
// and value arrays (PerItem with n entries an item) advanced to its first item.
// When the scratch cannot be had (a size that wraps, or a failed allocation)
// the whole call runs serially with the caller's buffer instead.
template <Fam F, class E, class Kernel, class... Args>
orlStatus route(int n, int count, Lay lay, E* buffer, Kernel&& kernel, const Args&... args)
{
    constexpr bool array = (arrayOperand<Args> || ...);
    if (!array) return kernel(1, buffer, args...);
    const bool unit = unitCase<F>(args...);
    if (!parallelRoute(workOf(F, n, count), rowOf(F).limits.template of<E>(), lay, unit)) return kernel(count, buffer, args...);
    const std::int32_t bytes = scratchBytes<E>(F, n);
    if (bytes < 1) return kernel(count, buffer, args...);
    return drive(count, std::size_t(bytes), [&](int first, int items, void* scratch) {
        E* w = scratch ? static_cast<E*>(scratch) : buffer;
        return kernel(items, w, args.from(first)...);
    });
}

}  // namespace orl::eig
