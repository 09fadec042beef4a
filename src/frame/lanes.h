// SSE lanes of the element type: whole and partial loads and stores, so that
// a straight-line form covers the first n elements of a run and touches
// nothing beyond them.
#pragma once

#include <emmintrin.h>

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

}  // namespace orl
