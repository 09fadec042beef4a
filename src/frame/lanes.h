// SSE lanes of the element type: whole and partial loads and stores, so that
// a straight-line form covers the first n elements of a run and touches
// nothing beyond them.
#pragma once

#include <cstddef>
#include <cstdint>

#include <emmintrin.h>

#include "frame/operand.h"

namespace orl {

template <class E>
struct Lanes;

template <>
struct Lanes<float> {
    using V = __m128;
    static constexpr int n = 4, lanes = 4;
    static V zero() { return _mm_setzero_ps(); }
    static V bcast(float x) { return _mm_set1_ps(x); }
    static V splat(float x) { return _mm_set1_ps(x); }
    static V mul(V a, V b) { return _mm_mul_ps(a, b); }
    static V add(V a, V b) { return _mm_add_ps(a, b); }
    static V sub(V a, V b) { return _mm_sub_ps(a, b); }
    static V div(V a, V b) { return _mm_div_ps(a, b); }
    static V neg(V a) { return _mm_xor_ps(a, _mm_set1_ps(-0.0f)); }
    static V abs(V a) { return _mm_andnot_ps(_mm_set1_ps(-0.0f), a); }
    // Comparisons, all ones where they hold: a < b, a <= b (false with a
    // NaN), not a >= b, not a > b (true with a NaN).
    static V lt(V a, V b) { return _mm_cmplt_ps(a, b); }
    static V le(V a, V b) { return _mm_cmple_ps(a, b); }
    static V nge(V a, V b) { return _mm_cmpnge_ps(a, b); }
    static V ngt(V a, V b) { return _mm_cmpngt_ps(a, b); }
    static bool any(V m) { return _mm_movemask_ps(m) != 0; }
    static V load(const float* p) { return _mm_loadu_ps(p); }
    static void store(float* p, V v) { _mm_storeu_ps(p, v); }
    // Lanes 0 .. c-1 from p, the others zero.
    template <int c>
    static V load(const float* p)
    {
        if constexpr (c >= 4) return _mm_loadu_ps(p);
        else if constexpr (c == 3) return _mm_movelh_ps(_mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p)), _mm_load_ss(p + 2));
        else if constexpr (c == 2) return _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p));
        else return _mm_load_ss(p);
    }
    template <int c>
    static void store(float* p, V v)
    {
        if constexpr (c >= 4) {
            _mm_storeu_ps(p, v);
        } else if constexpr (c == 3) {
            _mm_storel_pi(reinterpret_cast<__m64*>(p), v);
            _mm_store_ss(p + 2, _mm_movehl_ps(v, v));
        } else if constexpr (c == 2) {
            _mm_storel_pi(reinterpret_cast<__m64*>(p), v);
        } else {
            _mm_store_ss(p, v);
        }
    }
    // Lanes 0 .. c-1 from elements f(0) .. f(c-1), the others zero.
    template <int c, class F>
    static V gather(const F& f)
    {
        return _mm_setr_ps(f(0), c > 1 ? f(1) : 0.0f, c > 2 ? f(2) : 0.0f, c > 3 ? f(3) : 0.0f);
    }
    // Lane l of v in every lane.
    template <int l>
    static V splat(V v)
    {
        return _mm_shuffle_ps(v, v, l * 0x55);
    }
};

template <>
struct Lanes<double> {
    using V = __m128d;
    static constexpr int n = 2, lanes = 2;
    static V zero() { return _mm_setzero_pd(); }
    static V bcast(double x) { return _mm_set1_pd(x); }
    static V splat(double x) { return _mm_set1_pd(x); }
    static V mul(V a, V b) { return _mm_mul_pd(a, b); }
    static V add(V a, V b) { return _mm_add_pd(a, b); }
    static V sub(V a, V b) { return _mm_sub_pd(a, b); }
    static V div(V a, V b) { return _mm_div_pd(a, b); }
    static V neg(V a) { return _mm_xor_pd(a, _mm_set1_pd(-0.0)); }
    static V abs(V a) { return _mm_andnot_pd(_mm_set1_pd(-0.0), a); }
    static V lt(V a, V b) { return _mm_cmplt_pd(a, b); }
    static V le(V a, V b) { return _mm_cmple_pd(a, b); }
    static V nge(V a, V b) { return _mm_cmpnge_pd(a, b); }
    static V ngt(V a, V b) { return _mm_cmpngt_pd(a, b); }
    static bool any(V m) { return _mm_movemask_pd(m) != 0; }
    static V load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, V v) { _mm_storeu_pd(p, v); }
    template <int c>
    static V load(const double* p)
    {
        if constexpr (c >= 2) return _mm_loadu_pd(p);
        else return _mm_load_sd(p);
    }
    template <int c>
    static void store(double* p, V v)
    {
        if constexpr (c >= 2) _mm_storeu_pd(p, v);
        else _mm_store_sd(p, v);
    }
    template <int c, class F>
    static V gather(const F& f)
    {
        return _mm_setr_pd(f(0), c > 1 ? f(1) : 0.0);
    }
    template <int l>
    static V splat(V v)
    {
        return l == 0 ? _mm_unpacklo_pd(v, v) : _mm_unpackhi_pd(v, v);
    }
};

// ---- lanes of independent items --------------------------------------------

// One value of each of Lanes<E>::lanes items: lane g belongs to item g, and
// every operator does in each lane exactly what the element type's operator
// does (negation flips the sign bit, as the scalar negation does). A scalar
// straight-line form instantiated on Pack<E> runs on that many items at once
// with each item's bits unchanged.
template <class E>
struct Pack {
    using L = Lanes<E>;
    static constexpr int items = L::lanes;
    typename L::V v;

    Pack() = default;
    Pack(typename L::V x) : v(x) {}
    explicit Pack(E x) : v(L::bcast(x)) {}
    friend Pack operator+(Pack a, Pack b) { return L::add(a.v, b.v); }
    friend Pack operator-(Pack a, Pack b) { return L::sub(a.v, b.v); }
    friend Pack operator*(Pack a, Pack b) { return L::mul(a.v, b.v); }
    friend Pack operator/(Pack a, Pack b) { return L::div(a.v, b.v); }
    Pack operator-() const { return L::neg(v); }
    void lanesTo(E* out) const { L::store(out, v); }
};

// The bytes that an N-by-N item of a strided accessor touches: [lo, hi).
struct Span {
    std::uintptr_t lo, hi;
    bool meets(const Span& o) const { return lo < o.hi && o.lo < hi; }
};

template <int N, class T, bool Tr, bool Unit>
inline Span spanOf(const MatItem<T, Tr, Unit>& m)
{
    const std::ptrdiff_t r = (N - 1) * m.s1, c = (N - 1) * (Unit ? std::ptrdiff_t(sizeof(T)) : m.s2);
    const auto b = reinterpret_cast<std::uintptr_t>(m.b);
    return {b + (r < 0 ? r : 0) + (c < 0 ? c : 0), b + (r > 0 ? r : 0) + (c > 0 ? c : 0) + sizeof(T)};
}

inline Span spanOf(const void* p, std::size_t bytes)
{
    const auto b = reinterpret_cast<std::uintptr_t>(p);
    return {b, b + bytes};
}

// The bytes of items `first` to `last` of an array whose items lie at a
// fixed distance from each other (every layout but the lists).
inline Span hullOf(const Span& first, const Span& last)
{
    return {first.lo < last.lo ? first.lo : last.lo, first.hi > last.hi ? first.hi : last.hi};
}

// Whether items that are read and written one after another can all be read
// first and written afterwards, item by item, with the same outcome: no item
// writes where a later item of the group reads.
template <int G>
inline bool readsBeforeWrites(const Span (&src)[G], const Span (&dst)[G])
{
    bool meet = false;
    #pragma GCC unroll 4
    for (int h = 1; h < G; ++h)
        #pragma GCC unroll 4
        for (int g = 0; g < h; ++g) meet |= dst[g].meets(src[h]);
    return !meet;
}

// Elements (i, j) of N-by-N items: items[g](i, j) into lane g of a[i][j].
// Unit-step rows are loaded whole (or the first N elements of them) and
// turned; other accessors are read element by element. `dense`: the items
// lie one after another with no gap, so that every row but the last one of
// the last item may be read as four elements (the fourth is not used).
template <class E, int N, class It>
[[gnu::always_inline]] inline void loadItems(const It (&items)[Pack<E>::items], Pack<E> (&a)[N][N], bool dense = false)
{
    using L = Lanes<E>;
    constexpr bool rows = std::is_same_v<It, MatItem<const E, false, true>> || std::is_same_v<It, MatItem<E, false, true>>;
    if constexpr (rows && sizeof(E) == 4 && N == 3) {
        if (dense) {
            #pragma GCC unroll 4
            for (int i = 0; i < N; ++i) {
                __m128 c0 = L::load(items[0].row(i)), c1 = L::load(items[1].row(i)), c2 = L::load(items[2].row(i));
                __m128 c3 = i < N - 1 ? L::load(items[3].row(i)) : L::template load<N>(items[3].row(i));
                _MM_TRANSPOSE4_PS(c0, c1, c2, c3);
                a[i][0] = c0, a[i][1] = c1, a[i][2] = c2;
            }
            return;
        }
    }
    if constexpr (rows && sizeof(E) == 4 && N <= 4) {
        #pragma GCC unroll 4
        for (int i = 0; i < N; ++i) {
            __m128 c0 = L::template load<N>(items[0].row(i)), c1 = L::template load<N>(items[1].row(i));
            __m128 c2 = L::template load<N>(items[2].row(i)), c3 = L::template load<N>(items[3].row(i));
            _MM_TRANSPOSE4_PS(c0, c1, c2, c3);
            const __m128 c[4] = {c0, c1, c2, c3};
            #pragma GCC unroll 4
            for (int j = 0; j < N; ++j) a[i][j] = c[j];
        }
    } else if constexpr (rows && sizeof(E) == 8) {
        #pragma GCC unroll 4
        for (int i = 0; i < N; ++i) {
            const E* r0 = items[0].row(i);
            const E* r1 = items[1].row(i);
            int j = 0;
            #pragma GCC unroll 4
            for (; j + 2 <= N; j += 2) {
                const __m128d x = _mm_loadu_pd(r0 + j), y = _mm_loadu_pd(r1 + j);
                a[i][j] = _mm_unpacklo_pd(x, y), a[i][j + 1] = _mm_unpackhi_pd(x, y);
            }
            if (j < N) a[i][j] = _mm_loadh_pd(_mm_load_sd(r0 + j), r1 + j);
        }
    } else {
        #pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
            #pragma GCC unroll 4
            for (int j = 0; j < N; ++j) a[i][j] = L::template gather<Pack<E>::items>([&](int g) { return E(items[g](i, j)); });
    }
}

// The inverse of loadItems: lane g of a[i][j] into items[g](i, j), item after
// item, each in rows from the top and columns from the left.
template <class E, int N, class It>
[[gnu::always_inline]] inline void storeItems(const Pack<E> (&a)[N][N], const It (&items)[Pack<E>::items])
{
    using L = Lanes<E>;
    constexpr int G = Pack<E>::items;
    if constexpr (std::is_same_v<It, MatItem<E, false, true>> && sizeof(E) == 4 && N <= 4) {
        __m128 r[N][4];
        #pragma GCC unroll 4
        for (int i = 0; i < N; ++i) {
            __m128 c0 = a[i][0].v, c1 = a[i][1].v, c2 = a[i][2].v, c3 = N > 3 ? a[i][N - 1].v : _mm_setzero_ps();
            _MM_TRANSPOSE4_PS(c0, c1, c2, c3);
            r[i][0] = c0, r[i][1] = c1, r[i][2] = c2, r[i][3] = c3;
        }
        #pragma GCC unroll 4
        for (int g = 0; g < G; ++g)
            #pragma GCC unroll 4
            for (int i = 0; i < N; ++i) L::template store<N>(items[g].row(i), r[i][g]);
    } else if constexpr (std::is_same_v<It, MatItem<E, false, true>> && sizeof(E) == 8) {
        #pragma GCC unroll 4
        for (int g = 0; g < G; ++g)
            #pragma GCC unroll 4
            for (int i = 0; i < N; ++i) {
                E* row = items[g].row(i);
                int j = 0;
                #pragma GCC unroll 4
                for (; j + 2 <= N; j += 2)
                    _mm_storeu_pd(row + j, g == 0 ? _mm_unpacklo_pd(a[i][j].v, a[i][j + 1].v) : _mm_unpackhi_pd(a[i][j].v, a[i][j + 1].v));
                if (j < N) g == 0 ? _mm_store_sd(row + j, a[i][j].v) : _mm_storeh_pd(row + j, a[i][j].v);
            }
    } else {
        E x[N][N][G];
        #pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
            #pragma GCC unroll 4
            for (int j = 0; j < N; ++j) a[i][j].lanesTo(x[i][j]);
        #pragma GCC unroll 4
        for (int g = 0; g < G; ++g)
            #pragma GCC unroll 4
            for (int i = 0; i < N; ++i)
                #pragma GCC unroll 4
                for (int j = 0; j < N; ++j) items[g](i, j) = x[i][j][g];
    }
}

}  // namespace orl
