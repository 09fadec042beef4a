/* orlm.h - small dense matrix and vector arithmetic, liborlmt7.so.5.2.
 *
 * Every operation works on memory that the caller owns, described by raw
 * pointers, byte strides and sizes, writes its results into the caller's
 * memory and returns an orlStatus. Nothing is kept between calls.
 *
 * Names:   orlm<Stem>_<shape>_<type>[_P|_L]
 *   shape  the source operands in order: m matrix, t matrix read transposed,
 *          v vector, c constant; a trailing a makes it an array of `count`.
 *   type   32f (float) or 64f (double).
 *   layout none: base pointer plus byte strides (stride0 between items,
 *                stride1 between rows, stride2 between elements of a row);
 *          _P:   a table of element pointers plus a byte offset (and
 *                stride0 between items of an array);
 *          _L:   a list of item pointers plus a byte offset, with stride1
 *                and stride2 inside an item.
 * All strides and offsets count bytes.
 *
 * This file is generated from api/members.py; edit that, not this.
 */
#ifndef ORLM_H
#define ORLM_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ORLM_API __attribute__((visibility("default")))
#else
#define ORLM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status codes ------------------------------------------------------ */

typedef int32_t orlStatus;

#define orlStatusOk              0    /* success */
#define orlStatusSmallBlock     (-2)  /* 2x2 complex block below the perturbation threshold */
#define orlStatusSize           (-6)  /* a size is not positive */
#define orlStatusNullPointer    (-8)  /* a pointer argument is NULL */
#define orlStatusDivByZero      (-10) /* a divisor is too small */
#define orlStatusNotPosDefinite (-179)/* the matrix is not positive definite */
#define orlStatusStride         (-182)/* a stride is not a positive multiple of the element size */
#define orlStatusSingular       (-195)/* the matrix is singular within the tolerance */
#define orlStatusOffset         (-202)/* an offset is negative or not a multiple of the element size */
#define orlStatusCount          (-203)/* count is not positive */
#define orlStatusSizeMismatch   (-204)/* sizes that belong together disagree */
#define orlStatusNoConvergence  (-205)/* an iteration reached its limit */

/* ---- Library identity -------------------------------------------------- */

typedef struct orlLibVersion {
    int32_t     versionMajor;
    int32_t     versionMinor;
    int32_t     buildMajor;
    int32_t     buildNumber;
    char        targetCpu[4];
    const char* name;
    const char* versionText;
    const char* buildDate;
} orlLibVersion;

/* The library's constant version record; never NULL, never to be freed. */
ORLM_API const orlLibVersion* orlmGetLibVersion(void);

/* Allocator hooks a host may set; they start as libc's functions. */
extern ORLM_API void* (*i_malloc)(size_t size);
extern ORLM_API void* (*i_calloc)(size_t count, size_t size);
extern ORLM_API void* (*i_realloc)(void* ptr, size_t size);
extern ORLM_API void  (*i_free)(void* ptr);

/* ---- Matrix add and subtract: dst = src1 + src2, dst = src1 - src2 ---- */

ORLM_API orlStatus orlmAdd_mm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_mm_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_mm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_mm_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_tm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_tm_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_tm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_tm_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_tt_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_tt_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_tt_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmAdd_tt_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmAdd_mam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_mama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmAdd_tata_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_mm_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_mm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_mm_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_tm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_tm_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_tm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_tm_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_mt_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_mt_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_mt_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_mt_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_tt_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_tt_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_tt_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmSub_tt_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmSub_mam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mma_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tma_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mta_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tta_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_mata_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmSub_tata_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

/* ---- Matrix multiply: dst = op(src1) * op(src2) ---- */

ORLM_API orlStatus orlmMul_mm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_mm_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_mm_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mt_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_mt_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mt_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_mt_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tm_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_tm_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tm_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_tm_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tt_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_tt_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tt_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmMul_tt_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tam_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tam_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tam_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tam_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tam_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tam_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tat_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tat_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tat_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tat_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tat_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tat_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mma_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mma_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mma_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mma_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mma_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mma_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mta_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mta_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mta_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mta_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mta_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mta_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tma_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tma_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tma_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tma_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tma_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tma_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tta_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tta_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tta_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tta_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tta_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tta_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mata_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mata_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mata_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mata_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mata_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mata_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tama_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tama_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tama_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tama_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tama_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tama_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tata_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tata_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tata_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tata_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tata_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tata_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride1, int src2Stride2,
    int src2Width, int src2Height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

/* ---- LU decomposition with partial pivoting ---- */

ORLM_API orlStatus orlmLUDecomp_m_32f(
    const float* src, int srcStride1, int srcStride2,
    int32_t* perm,
    float* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmLUDecomp_m_32f_P(
    const float* const* src, int srcOffset,
    int32_t* perm,
    float* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmLUDecomp_m_64f(
    const double* src, int srcStride1, int srcStride2,
    int32_t* perm,
    double* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmLUDecomp_m_64f_P(
    const double* const* src, int srcOffset,
    int32_t* perm,
    double* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmLUDecomp_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    int32_t* perm,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUDecomp_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    int32_t* perm,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUDecomp_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    int32_t* perm,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUDecomp_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    int32_t* perm,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUDecomp_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    int32_t* perm,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUDecomp_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    int32_t* perm,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

/* ---- LU back-substitution: solve A x = b from the factor and perm ---- */

ORLM_API orlStatus orlmLUBackSubst_mv_32f(
    const float* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const float* rhs, int rhsStride2,
    float* dst, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmLUBackSubst_mv_32f_P(
    const float* const* src, int srcOffset,
    const int32_t* perm,
    const float* const* rhs, int rhsOffset,
    float* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmLUBackSubst_mv_64f(
    const double* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const double* rhs, int rhsStride2,
    double* dst, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmLUBackSubst_mv_64f_P(
    const double* const* src, int srcOffset,
    const int32_t* perm,
    const double* const* rhs, int rhsOffset,
    double* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmLUBackSubst_mva_32f(
    const float* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mva_32f_P(
    const float* const* src, int srcOffset,
    const int32_t* perm,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mva_32f_L(
    const float* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mva_64f(
    const double* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mva_64f_P(
    const double* const* src, int srcOffset,
    const int32_t* perm,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mva_64f_L(
    const double* src, int srcStride1, int srcStride2,
    const int32_t* perm,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    const int32_t* perm,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const int32_t* perm,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    const int32_t* perm,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    const int32_t* perm,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const int32_t* perm,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmLUBackSubst_mava_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    const int32_t* perm,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

/* ---- Eigen buffer sizes: bytes of the work buffer of the general eigen families ---- */

ORLM_API orlStatus orlmEigenValuesGetBufSize_32f(
    int widthHeight,
    int32_t* bufSize);

ORLM_API orlStatus orlmEigenValuesGetBufSize_64f(
    int widthHeight,
    int32_t* bufSize);

ORLM_API orlStatus orlmEigenValuesVectorsGetBufSize_32f(
    int widthHeight,
    int32_t* bufSize);

ORLM_API orlStatus orlmEigenValuesVectorsGetBufSize_64f(
    int widthHeight,
    int32_t* bufSize);

/* ---- Symmetric eigensolver: eigenvalues largest first, and orthonormal eigenvectors ---- */

ORLM_API orlStatus orlmEigenValuesSym_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    float* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesSym_m_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    float* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesSym_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    double* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesSym_m_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    double* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesSym_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* buffer,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesSym_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* buffer,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesSym_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* buffer,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesSym_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* buffer,
    double* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesSym_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* buffer,
    double* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesSym_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* buffer,
    double* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    float* dstVectors, int dstStride1, int dstStride2,
    float* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesVectorsSym_m_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    float* const* dstVectors, int dstOffset,
    float* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesVectorsSym_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    double* dstVectors, int dstStride1, int dstStride2,
    double* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesVectorsSym_m_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    double* const* dstVectors, int dstOffset,
    double* dstValues,
    int widthHeight);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* buffer,
    float* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* buffer,
    float* const* dstVectors, int dstOffset, int dstStride0,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* buffer,
    float* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    float* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* buffer,
    double* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    double* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* buffer,
    double* const* dstVectors, int dstOffset, int dstStride0,
    double* dstValues,
    int widthHeight, int count);

ORLM_API orlStatus orlmEigenValuesVectorsSym_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* buffer,
    double* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    double* dstValues,
    int widthHeight, int count);

/* ---- General eigenvalues: dstValuesRe + i*dstValuesIm, in the order of the real Schur form ---- */

ORLM_API orlStatus orlmEigenValues_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValues_m_32f_P(
    const float* const* src, int srcOffset,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValues_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValues_m_64f_P(
    const double* const* src, int srcOffset,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValues_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValues_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValues_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValues_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValues_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValues_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

/* ---- General eigenvectors: right, left or both, with the eigenvalues ---- */

ORLM_API orlStatus orlmEigenValuesVectorsRight_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dstVectors, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_m_32f_P(
    const float* const* src, int srcOffset,
    float* const* dstVectors, int dstOffset,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dstVectors, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_m_64f_P(
    const double* const* src, int srcOffset,
    double* const* dstVectors, int dstOffset,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dstVectors, int dstOffset, int dstStride0,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dstVectors, int dstOffset, int dstStride0,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsRight_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dstVectors, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_m_32f_P(
    const float* const* src, int srcOffset,
    float* const* dstVectors, int dstOffset,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dstVectors, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_m_64f_P(
    const double* const* src, int srcOffset,
    double* const* dstVectors, int dstOffset,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dstVectors, int dstOffset, int dstStride0,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dstVectors, int dstStride0, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dstVectors, int dstOffset, int dstStride0,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectorsLeft_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dstVectors, int dstOffset, int dstStride1, int dstStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dstVectorsRight, int rightStride1, int rightStride2,
    float* dstVectorsLeft, int leftStride1, int leftStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_m_32f_P(
    const float* const* src, int srcOffset,
    float* const* dstVectorsRight, int rightOffset,
    float* const* dstVectorsLeft, int leftOffset,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dstVectorsRight, int rightStride1, int rightStride2,
    double* dstVectorsLeft, int leftStride1, int leftStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_m_64f_P(
    const double* const* src, int srcOffset,
    double* const* dstVectorsRight, int rightOffset,
    double* const* dstVectorsLeft, int leftOffset,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dstVectorsRight, int rightStride0, int rightStride1, int rightStride2,
    float* dstVectorsLeft, int leftStride0, int leftStride1, int leftStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dstVectorsRight, int rightOffset, int rightStride0,
    float* const* dstVectorsLeft, int leftOffset, int leftStride0,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dstVectorsRight, int rightOffset, int rightStride1, int rightStride2,
    float* const* dstVectorsLeft, int leftOffset, int leftStride1, int leftStride2,
    float* dstValuesRe,
    float* dstValuesIm,
    int widthHeight, int count,
    float* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dstVectorsRight, int rightStride0, int rightStride1, int rightStride2,
    double* dstVectorsLeft, int leftStride0, int leftStride1, int leftStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dstVectorsRight, int rightOffset, int rightStride0,
    double* const* dstVectorsLeft, int leftOffset, int leftStride0,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);

ORLM_API orlStatus orlmEigenValuesVectors_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dstVectorsRight, int rightOffset, int rightStride1, int rightStride2,
    double* const* dstVectorsLeft, int leftOffset, int leftStride1, int leftStride2,
    double* dstValuesRe,
    double* dstValuesIm,
    int widthHeight, int count,
    double* buffer);


#ifdef __cplusplus
}
#endif

#endif /* ORLM_H */
