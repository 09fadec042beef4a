// Route and parallel driver of the array members.
//
// After validation an array member computes a cost from its sizes in 32-bit
// signed arithmetic that wraps, compares it with the limit of its layout and
// stride case, and either runs its kernel on the calling thread or hands the
// whole call to `drive`, which splits `count` into contiguous runs over the
// threads that the core library allows.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <utility>

#include <omp.h>

#include "operand.h"
#include "orlcore.h"

namespace orl {

// ---- cost in wrapping 32-bit arithmetic -----------------------------------

// A 32-bit signed value with the wrapping products of the cost formulas:
// computed in unsigned arithmetic, read back as signed two's complement.
struct Wrap {
    std::uint32_t v;
    constexpr Wrap(int x) : v(static_cast<std::uint32_t>(x)) {}
    constexpr Wrap(std::uint32_t x, int) : v(x) {}
    friend constexpr Wrap operator*(Wrap a, Wrap b) { return {a.v * b.v, 0}; }
    friend constexpr Wrap operator+(Wrap a, Wrap b) { return {a.v + b.v, 0}; }
    constexpr std::int32_t value() const
    {
        return v <= 0x7fffffffu ? std::int32_t(v) : -std::int32_t(~v) - 1;
    }
};

// ---- limits ---------------------------------------------------------------

enum class Test { GE, GT };

// One member's limits, per stride case and layout, for one element type.
struct Limits {
    std::int32_t unit, any, lUnit, lAny, p;
    Test test;
};

// One row of a family's limit table: the 32f limits and the 64f ones.
struct LimitRow {
    Limits f32, f64;
    template <class E>
    constexpr const Limits& of() const { return sizeof(E) == 4 ? f32 : f64; }
};

// Same limits for both element types.
constexpr LimitRow both(std::int32_t unit, std::int32_t any, std::int32_t lUnit, std::int32_t lAny, std::int32_t p, Test t)
{
    return {{unit, any, lUnit, lAny, p, t}, {unit, any, lUnit, lAny, p, t}};
}

constexpr std::int32_t limitFor(const Limits& l, Lay lay, bool unit)
{
    switch (lay) {
    case Lay::Std: return unit ? l.unit : l.any;
    case Lay::L: return unit ? l.lUnit : l.lAny;
    case Lay::P: return l.p;
    }
    return l.p;
}

// True when the call takes the parallel driver.
constexpr bool parallelRoute(std::int32_t cost, const Limits& l, Lay lay, bool unit)
{
    const std::int32_t lim = limitFor(l, lay, unit);
    return l.test == Test::GE ? cost >= lim : cost > lim;
}

// ---- the driver -----------------------------------------------------------

// Contiguous run of items of thread i out of T: the first `rest` threads
// take one item more.
struct Slice {
    int first, items;
};

constexpr Slice sliceOf(int i, int T, int count)
{
    const int chunk = count / T, rest = count % T;
    return {i * chunk + (i < rest ? i : rest), chunk + (i < rest ? 1 : 0)};
}

// Status merge: the first failure to arrive wins, later ones change nothing.
inline void merge(orlStatus& into, orlStatus st)
{
    if (into == orlStatusOk) into = st;
}

// Scratch for the families that need it: one block a call, `perThread`
// bytes for each thread, 64-byte aligned slices.
inline std::size_t scratchStride(std::size_t perThread)
{
    return (perThread + 63) & ~std::size_t(63);
}

// Runs `work(first, items, scratch)` over `count` items. `scratch` is null
// where the caller's own buffer is to be used: on the serial fallback, and
// when the scratch block cannot be had (then the whole call runs serially
// with the caller's buffer rather than failing).
//
// If the OpenMP runtime forms a smaller team than asked for, the slices of
// the absent thread numbers are run afterwards on the calling thread, so that
// every item is always processed.
template <class Work>
orlStatus drive(int count, std::size_t scratchPerThread, Work&& work)
{
    const int T = threads_omp_of_n_orl;
    if (T <= 1 || count < T) return work(0, count, static_cast<void*>(nullptr));

    char* scratch = nullptr;
    const std::size_t stride = scratchStride(scratchPerThread);
    if (scratchPerThread) {
        scratch = static_cast<char*>(std::aligned_alloc(64, stride * std::size_t(T)));
        if (!scratch) return work(0, count, static_cast<void*>(nullptr));
    }

    orlStatus status = orlStatusOk;
    int team = T;
#pragma omp parallel num_threads(T)
    {
        const int i = omp_get_thread_num();
        if (i == 0) team = omp_get_num_threads();
        const Slice s = sliceOf(i, T, count);
        const orlStatus st = work(s.first, s.items, scratch ? static_cast<void*>(scratch + stride * std::size_t(i)) : nullptr);
#pragma omp critical
        merge(status, st);
    }
    for (int i = team; i < T; ++i) {
        const Slice s = sliceOf(i, T, count);
        merge(status, work(s.first, s.items, scratch ? static_cast<void*>(scratch + stride * std::size_t(i)) : nullptr));
    }
    std::free(scratch);
    return status;
}

// Stride case of one argument of a route: operands know theirs; per-item
// outputs have none.
template <class O>
inline bool unitOf(const O& o)
{
    if constexpr (requires { o.unit(); })
        return o.unit();
    else
        return true;
}

// The route of the families whose drivers give each thread scratch of its
// own in place of the caller's buffer: `kernel(count, scratch, args...)`,
// with `scratch` null where the caller's buffer is to be used (the serial
// route, the driver's serial fallback).
template <class Kernel, class... Args>
orlStatus routeScratch(std::int32_t cost, const Limits& lim, Lay lay, int count, std::size_t scratchPerThread,
                       Kernel&& kernel, const Args&... args)
{
    const bool unit = (unitOf(args) && ...);
    if (!parallelRoute(cost, lim, lay, unit)) return kernel(count, static_cast<void*>(nullptr), args...);
    return drive(count, scratchPerThread,
                 [&](int first, int items, void* scratch) { return kernel(items, scratch, args.from(first)...); });
}

// The common shape of an array entry's route: `kernel(count, args...)` on all
// items when the cost stays under the limit, else the driver with each
// thread's arguments advanced to its slice. `args` are operands and per-item
// outputs (anything with `from(first)`); shared ones stay as they are.
template <class Kernel, class... Args>
orlStatus route(std::int32_t cost, const Limits& lim, Lay lay, int count, Kernel&& kernel, const Args&... args)
{
    return routeScratch(cost, lim, lay, count, 0,
                        [&](int items, void*, const auto&... o) { return kernel(items, o...); }, args...);
}

}  // namespace orl
