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

/* ---- Vector add and subtract: dst = src1 +/- src2, dst = src +/- value; cv cva cav cava: dst = value - src ---- */

ORLM_API orlStatus orlmAdd_vv_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmAdd_vv_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmAdd_vv_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmAdd_vv_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmAdd_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* src2, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* src2, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vc_32f(
    const float* src, int srcStride2,
    float value,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmAdd_vc_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmAdd_vc_64f(
    const double* src, int srcStride2,
    double value,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmAdd_vc_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmAdd_vac_32f(
    const float* src, int srcStride0, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vac_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vac_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vac_64f(
    const double* src, int srcStride0, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vac_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vac_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_32f(
    const float* src, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_32f_P(
    const float* const* src, int srcOffset,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_32f_L(
    const float* src, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_64f(
    const double* src, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_64f_P(
    const double* const* src, int srcOffset,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vca_64f_L(
    const double* src, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_32f(
    const float* src, int srcStride0, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_64f(
    const double* src, int srcStride0, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmAdd_vaca_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vv_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_vv_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_vv_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_vv_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* src2, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* src2, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_32f_L(
    const float* src1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vva_64f_L(
    const double* src1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vc_32f(
    const float* src, int srcStride2,
    float value,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_vc_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_vc_64f(
    const double* src, int srcStride2,
    double value,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_vc_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_vac_32f(
    const float* src, int srcStride0, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vac_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vac_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vac_64f(
    const double* src, int srcStride0, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vac_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vac_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_32f(
    const float* src, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_32f_P(
    const float* const* src, int srcOffset,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_32f_L(
    const float* src, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_64f(
    const double* src, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_64f_P(
    const double* const* src, int srcOffset,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vca_64f_L(
    const double* src, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_32f(
    const float* src, int srcStride0, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_64f(
    const double* src, int srcStride0, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_vaca_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cv_32f(
    const float* src, int srcStride2,
    float value,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_cv_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_cv_64f(
    const double* src, int srcStride2,
    double value,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSub_cv_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSub_cva_32f(
    const float* src, int srcStride0, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cva_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cva_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cva_64f(
    const double* src, int srcStride0, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cva_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cva_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_32f(
    const float* src, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_32f_P(
    const float* const* src, int srcOffset,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_32f_L(
    const float* src, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_64f(
    const double* src, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_64f_P(
    const double* const* src, int srcOffset,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cav_64f_L(
    const double* src, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_32f(
    const float* src, int srcStride0, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_64f(
    const double* src, int srcStride0, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSub_cava_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

/* ---- Cholesky decomposition A = L L^T, the diagonal stored as 1 / L[i][i] ---- */

ORLM_API orlStatus orlmCholeskyDecomp_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyDecomp_m_32f_P(
    const float* const* src, int srcOffset,
    float* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyDecomp_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyDecomp_m_64f_P(
    const double* const* src, int srcOffset,
    double* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyDecomp_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyDecomp_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyDecomp_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyDecomp_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyDecomp_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyDecomp_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

/* ---- Cholesky back-substitution: solve A x = b from the factor ---- */

ORLM_API orlStatus orlmCholeskyBackSubst_mv_32f(
    const float* src, int srcStride1, int srcStride2,
    const float* rhs, int rhsStride2,
    float* dst, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyBackSubst_mv_32f_P(
    const float* const* src, int srcOffset,
    const float* const* rhs, int rhsOffset,
    float* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyBackSubst_mv_64f(
    const double* src, int srcStride1, int srcStride2,
    const double* rhs, int rhsStride2,
    double* dst, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyBackSubst_mv_64f_P(
    const double* const* src, int srcOffset,
    const double* const* rhs, int rhsOffset,
    double* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_32f(
    const float* src, int srcStride1, int srcStride2,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_32f_P(
    const float* const* src, int srcOffset,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_32f_L(
    const float* src, int srcStride1, int srcStride2,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_64f(
    const double* src, int srcStride1, int srcStride2,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_64f_P(
    const double* const* src, int srcOffset,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mva_64f_L(
    const double* src, int srcStride1, int srcStride2,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmCholeskyBackSubst_mava_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int widthHeight, int count);

/* ---- Copy between layouts: dst = src, element by element; LoadIdentity: dst = I ---- */

ORLM_API orlStatus orlmCopy_ma_32f_SS(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_SP(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_SL(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_PS(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_PP(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_PL(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_LS(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_LP(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_32f_LL(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_SS(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_SP(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_SL(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_PS(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_PP(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_PL(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_LS(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_LP(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_ma_64f_LL(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmCopy_va_32f_SS(
    const float* src, int srcStride0, int srcStride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_SP(
    const float* src, int srcStride0, int srcStride2,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_SL(
    const float* src, int srcStride0, int srcStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_PS(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_PP(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_PL(
    const float* const* src, int srcOffset, int srcStride0,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_LS(
    const float* const* src, int srcOffset, int srcStride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_LP(
    const float* const* src, int srcOffset, int srcStride2,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_32f_LL(
    const float* const* src, int srcOffset, int srcStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_SS(
    const double* src, int srcStride0, int srcStride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_SP(
    const double* src, int srcStride0, int srcStride2,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_SL(
    const double* src, int srcStride0, int srcStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_PS(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_PP(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_PL(
    const double* const* src, int srcOffset, int srcStride0,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_LS(
    const double* const* src, int srcOffset, int srcStride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_LP(
    const double* const* src, int srcOffset, int srcStride2,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmCopy_va_64f_LL(
    const double* const* src, int srcOffset, int srcStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_32f(
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_32f_P(
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_32f_L(
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_64f(
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_64f_P(
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmLoadIdentity_ma_64f_L(
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

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

/* ---- Extract: the logical elements of an operand packed into dst ---- */

ORLM_API orlStatus orlmExtract_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_m_32f_P(
    const float* const* src, int srcOffset,
    float* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_m_64f_P(
    const double* const* src, int srcOffset,
    double* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_t_32f(
    const float* src, int srcStride1, int srcStride2,
    float* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_t_32f_P(
    const float* const* src, int srcOffset,
    float* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_t_64f(
    const double* src, int srcStride1, int srcStride2,
    double* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_t_64f_P(
    const double* const* src, int srcOffset,
    double* dst,
    int width, int height);

ORLM_API orlStatus orlmExtract_v_32f(
    const float* src, int srcStride2,
    float* dst,
    int length);

ORLM_API orlStatus orlmExtract_v_32f_P(
    const float* const* src, int srcOffset,
    float* dst,
    int length);

ORLM_API orlStatus orlmExtract_v_64f(
    const double* src, int srcStride2,
    double* dst,
    int length);

ORLM_API orlStatus orlmExtract_v_64f_P(
    const double* const* src, int srcOffset,
    double* dst,
    int length);

ORLM_API orlStatus orlmExtract_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_ta_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* dst,
    int width, int height, int count);

ORLM_API orlStatus orlmExtract_va_32f(
    const float* src, int srcStride0, int srcStride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmExtract_va_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmExtract_va_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmExtract_va_64f(
    const double* src, int srcStride0, int srcStride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmExtract_va_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmExtract_va_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double* dst,
    int length, int count);

/* ---- Matrix inverse: dst = inverse(src) ---- */

ORLM_API orlStatus orlmInvert_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    float* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmInvert_m_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    float* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmInvert_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    double* dst, int dstStride1, int dstStride2,
    int widthHeight);

ORLM_API orlStatus orlmInvert_m_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    double* const* dst, int dstOffset,
    int widthHeight);

ORLM_API orlStatus orlmInvert_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* buffer,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmInvert_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* buffer,
    float* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmInvert_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* buffer,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmInvert_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* buffer,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int widthHeight, int count);

ORLM_API orlStatus orlmInvert_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* buffer,
    double* const* dst, int dstOffset, int dstStride0,
    int widthHeight, int count);

ORLM_API orlStatus orlmInvert_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* buffer,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int widthHeight, int count);

/* ---- Determinant: dst = det(src), one result an item with no stride ---- */

ORLM_API orlStatus orlmDet_m_32f(
    const float* src, int srcStride1, int srcStride2,
    int widthHeight,
    float* buffer,
    float* dst);

ORLM_API orlStatus orlmDet_m_32f_P(
    const float* const* src, int srcOffset,
    int widthHeight,
    float* buffer,
    float* dst);

ORLM_API orlStatus orlmDet_m_64f(
    const double* src, int srcStride1, int srcStride2,
    int widthHeight,
    double* buffer,
    double* dst);

ORLM_API orlStatus orlmDet_m_64f_P(
    const double* const* src, int srcOffset,
    int widthHeight,
    double* buffer,
    double* dst);

ORLM_API orlStatus orlmDet_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    int widthHeight,
    float* buffer,
    float* dst,
    int count);

ORLM_API orlStatus orlmDet_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    int widthHeight,
    float* buffer,
    float* dst,
    int count);

ORLM_API orlStatus orlmDet_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    int widthHeight,
    float* buffer,
    float* dst,
    int count);

ORLM_API orlStatus orlmDet_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    int widthHeight,
    double* buffer,
    double* dst,
    int count);

ORLM_API orlStatus orlmDet_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    int widthHeight,
    double* buffer,
    double* dst,
    int count);

ORLM_API orlStatus orlmDet_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    int widthHeight,
    double* buffer,
    double* dst,
    int count);

/* ---- Matrix times vector: dst = op(src1) * src2; Gaxpy: dst = src1 * src2 + src3 ---- */

ORLM_API orlStatus orlmMul_mv_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* dst, int dstStride2);

ORLM_API orlStatus orlmMul_mv_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Length,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mv_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* dst, int dstStride2);

ORLM_API orlStatus orlmMul_mv_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Length,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tv_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* dst, int dstStride2);

ORLM_API orlStatus orlmMul_tv_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Length,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_tv_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* dst, int dstStride2);

ORLM_API orlStatus orlmMul_tv_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Length,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmMul_mva_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mva_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mva_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mva_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mva_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mva_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tva_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tva_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tva_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tva_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tva_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tva_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mav_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mav_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tav_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tav_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mava_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mava_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_mava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_mava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tava_32f(
    const float* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tava_64f(
    const double* src1, int src1Stride0, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmMul_tava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmMul_tava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mv_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride2,
    int src2Length,
    const float* src3, int src3Stride2,
    int src3Length,
    float* dst, int dstStride2);

ORLM_API orlStatus orlmGaxpy_mv_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset,
    int src2Length,
    const float* const* src3, int src3Offset,
    int src3Length,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmGaxpy_mv_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride2,
    int src2Length,
    const double* src3, int src3Stride2,
    int src3Length,
    double* dst, int dstStride2);

ORLM_API orlStatus orlmGaxpy_mv_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset,
    int src2Length,
    const double* const* src3, int src3Offset,
    int src3Length,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmGaxpy_mva_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    const float* src3, int src3Stride0, int src3Stride2,
    int src3Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mva_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    const float* const* src3, int src3Offset, int src3Stride0,
    int src3Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmGaxpy_mva_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    const float* const* src3, int src3Offset, int src3Stride2,
    int src3Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mva_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    const double* src3, int src3Stride0, int src3Stride2,
    int src3Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mva_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    const double* const* src3, int src3Offset, int src3Stride0,
    int src3Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmGaxpy_mva_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    const double* const* src3, int src3Offset, int src3Stride2,
    int src3Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    const float* src3, int src3Stride2,
    int src3Length,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_32f_P(
    const float* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    const float* const* src3, int src3Offset,
    int src3Length,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_32f_L(
    const float* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const float* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    const float* src3, int src3Stride2,
    int src3Length,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_64f(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* src2, int src2Stride0, int src2Stride2,
    int src2Length,
    const double* src3, int src3Stride2,
    int src3Length,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_64f_P(
    const double* const* src1, int src1Offset,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride0,
    int src2Length,
    const double* const* src3, int src3Offset,
    int src3Length,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmGaxpy_mvav_64f_L(
    const double* src1, int src1Stride1, int src1Stride2,
    int src1Width, int src1Height,
    const double* const* src2, int src2Offset, int src2Stride2,
    int src2Length,
    const double* src3, int src3Stride2,
    int src3Length,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

/* ---- QR decomposition by Householder reflectors, height >= width ---- */

ORLM_API orlStatus orlmQRDecomp_m_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmQRDecomp_m_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmQRDecomp_m_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmQRDecomp_m_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmQRDecomp_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* buffer,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRDecomp_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* buffer,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRDecomp_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* buffer,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRDecomp_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* buffer,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRDecomp_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* buffer,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRDecomp_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* buffer,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

/* ---- QR back-substitution: solve A x = b (least squares) through the stored reflectors ---- */

ORLM_API orlStatus orlmQRBackSubst_mv_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    const float* rhs, int rhsStride2,
    float* dst, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmQRBackSubst_mv_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    const float* const* rhs, int rhsOffset,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmQRBackSubst_mv_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    const double* rhs, int rhsStride2,
    double* dst, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmQRBackSubst_mv_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    const double* const* rhs, int rhsOffset,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmQRBackSubst_mva_32f(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mva_32f_P(
    const float* const* src, int srcOffset,
    float* buffer,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mva_32f_L(
    const float* src, int srcStride1, int srcStride2,
    float* buffer,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mva_64f(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mva_64f_P(
    const double* const* src, int srcOffset,
    double* buffer,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mva_64f_L(
    const double* src, int srcStride1, int srcStride2,
    double* buffer,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float* buffer,
    const float* rhs, int rhsStride0, int rhsStride2,
    float* dst, int dstStride0, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* buffer,
    const float* const* rhs, int rhsOffset, int rhsStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float* buffer,
    const float* const* rhs, int rhsOffset, int rhsStride2,
    float* const* dst, int dstOffset, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double* buffer,
    const double* rhs, int rhsStride0, int rhsStride2,
    double* dst, int dstStride0, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* buffer,
    const double* const* rhs, int rhsOffset, int rhsStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmQRBackSubst_mava_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double* buffer,
    const double* const* rhs, int rhsOffset, int rhsStride2,
    double* const* dst, int dstOffset, int dstStride2,
    int width, int height, int count);

/* ---- Dot and cross product: dst = src1 . src2, dst = src1 x src2 ---- */

ORLM_API orlStatus orlmDotProduct_vv_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst,
    int length);

ORLM_API orlStatus orlmDotProduct_vv_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* dst,
    int length);

ORLM_API orlStatus orlmDotProduct_vv_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst,
    int length);

ORLM_API orlStatus orlmDotProduct_vv_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* dst,
    int length);

ORLM_API orlStatus orlmDotProduct_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmDotProduct_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmCrossProduct_vv_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride2);

ORLM_API orlStatus orlmCrossProduct_vv_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmCrossProduct_vv_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride2);

ORLM_API orlStatus orlmCrossProduct_vv_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmCrossProduct_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* src2, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* src2, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_32f(
    const float* src1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_32f_P(
    const float* const* src1, int src1Offset,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_32f_L(
    const float* src1, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_64f(
    const double* src1, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_64f_P(
    const double* const* src1, int src1Offset,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vva_64f_L(
    const double* src1, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmCrossProduct_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int count);

/* ---- Norms and trace: Euclidean norm of vectors, Frobenius norm and trace of matrices ---- */

ORLM_API orlStatus orlmL2Norm_v_32f(
    const float* src, int srcStride2,
    float* dst,
    int length);

ORLM_API orlStatus orlmL2Norm_v_32f_P(
    const float* const* src, int srcOffset,
    float* dst,
    int length);

ORLM_API orlStatus orlmL2Norm_v_64f(
    const double* src, int srcStride2,
    double* dst,
    int length);

ORLM_API orlStatus orlmL2Norm_v_64f_P(
    const double* const* src, int srcOffset,
    double* dst,
    int length);

ORLM_API orlStatus orlmL2Norm_va_32f(
    const float* src, int srcStride0, int srcStride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmL2Norm_va_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmL2Norm_va_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float* dst,
    int length, int count);

ORLM_API orlStatus orlmL2Norm_va_64f(
    const double* src, int srcStride0, int srcStride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmL2Norm_va_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmL2Norm_va_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double* dst,
    int length, int count);

ORLM_API orlStatus orlmFrobNorm_m_32f(
    const float* src, int srcStride1, int srcStride2,
    int width, int height,
    float* dst);

ORLM_API orlStatus orlmFrobNorm_m_32f_P(
    const float* const* src, int srcOffset,
    int width, int height,
    float* dst);

ORLM_API orlStatus orlmFrobNorm_m_64f(
    const double* src, int srcStride1, int srcStride2,
    int width, int height,
    double* dst);

ORLM_API orlStatus orlmFrobNorm_m_64f_P(
    const double* const* src, int srcOffset,
    int width, int height,
    double* dst);

ORLM_API orlStatus orlmFrobNorm_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    int width, int height,
    float* dst,
    int count);

ORLM_API orlStatus orlmFrobNorm_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    int width, int height,
    float* dst,
    int count);

ORLM_API orlStatus orlmFrobNorm_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    int width, int height,
    float* dst,
    int count);

ORLM_API orlStatus orlmFrobNorm_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    int width, int height,
    double* dst,
    int count);

ORLM_API orlStatus orlmFrobNorm_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    int width, int height,
    double* dst,
    int count);

ORLM_API orlStatus orlmFrobNorm_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    int width, int height,
    double* dst,
    int count);

ORLM_API orlStatus orlmTrace_m_32f(
    const float* src, int srcStride1, int srcStride2,
    int widthHeight,
    float* dst);

ORLM_API orlStatus orlmTrace_m_32f_P(
    const float* const* src, int srcOffset,
    int widthHeight,
    float* dst);

ORLM_API orlStatus orlmTrace_m_64f(
    const double* src, int srcStride1, int srcStride2,
    int widthHeight,
    double* dst);

ORLM_API orlStatus orlmTrace_m_64f_P(
    const double* const* src, int srcOffset,
    int widthHeight,
    double* dst);

ORLM_API orlStatus orlmTrace_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    int widthHeight,
    float* dst,
    int count);

ORLM_API orlStatus orlmTrace_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    int widthHeight,
    float* dst,
    int count);

ORLM_API orlStatus orlmTrace_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    int widthHeight,
    float* dst,
    int count);

ORLM_API orlStatus orlmTrace_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    int widthHeight,
    double* dst,
    int count);

ORLM_API orlStatus orlmTrace_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    int widthHeight,
    double* dst,
    int count);

ORLM_API orlStatus orlmTrace_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    int widthHeight,
    double* dst,
    int count);

/* ---- Homogeneous affine transform of 3D points by one 4x4 matrix ---- */

ORLM_API orlStatus orlmAffineTransform3DH_mva_32f(
    const float* src1, int src1Stride1, int src1Stride2,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int count);

/* ---- Saxpy and LComb: dst = value * src1 + src2, dst = value1 * src1 + value2 * src2 ---- */

ORLM_API orlStatus orlmSaxpy_vv_32f(
    const float* src1, int src1Stride2,
    float value,
    const float* src2, int src2Stride2,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSaxpy_vv_32f_P(
    const float* const* src1, int src1Offset,
    float value,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSaxpy_vv_64f(
    const double* src1, int src1Stride2,
    double value,
    const double* src2, int src2Stride2,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmSaxpy_vv_64f_P(
    const double* const* src1, int src1Offset,
    double value,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmSaxpy_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    float value,
    const float* src2, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    float value,
    const float* const* src2, int src2Offset,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    float value,
    const float* src2, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    double value,
    const double* src2, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    double value,
    const double* const* src2, int src2Offset,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    double value,
    const double* src2, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_32f(
    const float* src1, int src1Stride2,
    float value,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_32f_P(
    const float* const* src1, int src1Offset,
    float value,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_32f_L(
    const float* src1, int src1Stride2,
    float value,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_64f(
    const double* src1, int src1Stride2,
    double value,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_64f_P(
    const double* const* src1, int src1Offset,
    double value,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vva_64f_L(
    const double* src1, int src1Stride2,
    double value,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    float value,
    const float* src2, int src2Stride0, int src2Stride2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    float value,
    const float* const* src2, int src2Offset, int src2Stride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    float value,
    const float* const* src2, int src2Offset, int src2Stride2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    double value,
    const double* src2, int src2Stride0, int src2Stride2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    double value,
    const double* const* src2, int src2Offset, int src2Stride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmSaxpy_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    double value,
    const double* const* src2, int src2Offset, int src2Stride2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vv_32f(
    const float* src1, int src1Stride2,
    float value1,
    const float* src2, int src2Stride2,
    float value2,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmLComb_vv_32f_P(
    const float* const* src1, int src1Offset,
    float value1,
    const float* const* src2, int src2Offset,
    float value2,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmLComb_vv_64f(
    const double* src1, int src1Stride2,
    double value1,
    const double* src2, int src2Stride2,
    double value2,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmLComb_vv_64f_P(
    const double* const* src1, int src1Offset,
    double value1,
    const double* const* src2, int src2Offset,
    double value2,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmLComb_vav_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    float value1,
    const float* src2, int src2Stride2,
    float value2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vav_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    float value1,
    const float* const* src2, int src2Offset,
    float value2,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmLComb_vav_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    float value1,
    const float* src2, int src2Stride2,
    float value2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vav_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    double value1,
    const double* src2, int src2Stride2,
    double value2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vav_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    double value1,
    const double* const* src2, int src2Offset,
    double value2,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmLComb_vav_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    double value1,
    const double* src2, int src2Stride2,
    double value2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_32f(
    const float* src1, int src1Stride0, int src1Stride2,
    float value1,
    const float* src2, int src2Stride0, int src2Stride2,
    float value2,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_32f_P(
    const float* const* src1, int src1Offset, int src1Stride0,
    float value1,
    const float* const* src2, int src2Offset, int src2Stride0,
    float value2,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_32f_L(
    const float* const* src1, int src1Offset, int src1Stride2,
    float value1,
    const float* const* src2, int src2Offset, int src2Stride2,
    float value2,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_64f(
    const double* src1, int src1Stride0, int src1Stride2,
    double value1,
    const double* src2, int src2Stride0, int src2Stride2,
    double value2,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_64f_P(
    const double* const* src1, int src1Offset, int src1Stride0,
    double value1,
    const double* const* src2, int src2Offset, int src2Stride0,
    double value2,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmLComb_vava_64f_L(
    const double* const* src1, int src1Offset, int src1Stride2,
    double value1,
    const double* const* src2, int src2Offset, int src2Stride2,
    double value2,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

/* ---- Multiplication by a constant: dst = src * value ---- */

ORLM_API orlStatus orlmMul_mc_32f(
    const float* src, int srcStride1, int srcStride2,
    float value,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmMul_mc_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmMul_mc_64f(
    const double* src, int srcStride1, int srcStride2,
    double value,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmMul_mc_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmMul_tc_32f(
    const float* src, int srcStride1, int srcStride2,
    float value,
    float* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmMul_tc_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmMul_tc_64f(
    const double* src, int srcStride1, int srcStride2,
    double value,
    double* dst, int dstStride1, int dstStride2,
    int width, int height);

ORLM_API orlStatus orlmMul_tc_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int width, int height);

ORLM_API orlStatus orlmMul_mac_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_mac_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_mac_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_mac_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_mac_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_mac_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_tac_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int width, int height, int count);

ORLM_API orlStatus orlmMul_vc_32f(
    const float* src, int srcStride2,
    float value,
    float* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmMul_vc_32f_P(
    const float* const* src, int srcOffset,
    float value,
    float* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmMul_vc_64f(
    const double* src, int srcStride2,
    double value,
    double* dst, int dstStride2,
    int length);

ORLM_API orlStatus orlmMul_vc_64f_P(
    const double* const* src, int srcOffset,
    double value,
    double* const* dst, int dstOffset,
    int length);

ORLM_API orlStatus orlmMul_vac_32f(
    const float* src, int srcStride0, int srcStride2,
    float value,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vac_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    float value,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vac_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    float value,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vac_64f(
    const double* src, int srcStride0, int srcStride2,
    double value,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vac_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    double value,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vac_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    double value,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_32f(
    const float* src, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_32f_P(
    const float* const* src, int srcOffset,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_32f_L(
    const float* src, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_64f(
    const double* src, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_64f_P(
    const double* const* src, int srcOffset,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vca_64f_L(
    const double* src, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_32f(
    const float* src, int srcStride0, int srcStride2,
    const float* values, int valuesStride0,
    float* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    const float* values, int valuesStride0,
    float* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_32f_L(
    const float* const* src, int srcOffset, int srcStride2,
    const float* const* values, int valuesOffset,
    float* const* dst, int dstOffset, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_64f(
    const double* src, int srcStride0, int srcStride2,
    const double* values, int valuesStride0,
    double* dst, int dstStride0, int dstStride2,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    const double* values, int valuesStride0,
    double* const* dst, int dstOffset, int dstStride0,
    int length, int count);

ORLM_API orlStatus orlmMul_vaca_64f_L(
    const double* const* src, int srcOffset, int srcStride2,
    const double* const* values, int valuesOffset,
    double* const* dst, int dstOffset, int dstStride2,
    int length, int count);

/* ---- Transpose: dst = transpose(src) ---- */

ORLM_API orlStatus orlmTranspose_m_32f(
    const float* src, int srcStride1, int srcStride2,
    int width, int height,
    float* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmTranspose_m_32f_P(
    const float* const* src, int srcOffset,
    int width, int height,
    float* const* dst, int dstOffset);

ORLM_API orlStatus orlmTranspose_m_64f(
    const double* src, int srcStride1, int srcStride2,
    int width, int height,
    double* dst, int dstStride1, int dstStride2);

ORLM_API orlStatus orlmTranspose_m_64f_P(
    const double* const* src, int srcOffset,
    int width, int height,
    double* const* dst, int dstOffset);

ORLM_API orlStatus orlmTranspose_ma_32f(
    const float* src, int srcStride0, int srcStride1, int srcStride2,
    int width, int height,
    float* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmTranspose_ma_32f_P(
    const float* const* src, int srcOffset, int srcStride0,
    int width, int height,
    float* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmTranspose_ma_32f_L(
    const float* const* src, int srcOffset, int srcStride1, int srcStride2,
    int width, int height,
    float* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmTranspose_ma_64f(
    const double* src, int srcStride0, int srcStride1, int srcStride2,
    int width, int height,
    double* dst, int dstStride0, int dstStride1, int dstStride2,
    int count);

ORLM_API orlStatus orlmTranspose_ma_64f_P(
    const double* const* src, int srcOffset, int srcStride0,
    int width, int height,
    double* const* dst, int dstOffset, int dstStride0,
    int count);

ORLM_API orlStatus orlmTranspose_ma_64f_L(
    const double* const* src, int srcOffset, int srcStride1, int srcStride2,
    int width, int height,
    double* const* dst, int dstOffset, int dstStride1, int dstStride2,
    int count);


#ifdef __cplusplus
}
#endif

#endif /* ORLM_H */
