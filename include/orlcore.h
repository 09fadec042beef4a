/* orlcore.h - the core support library that liborlmt7 relies on.
 *
 * Two names: the thread count that the parallel drivers read at the start
 * of every call, and a query for the size of the processor's largest cache.
 */
#ifndef ORLCORE_H
#define ORLCORE_H

#include <stdint.h>

#if defined(__GNUC__)
#define ORLCORE_API __attribute__((visibility("default")))
#else
#define ORLCORE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Number of threads a parallel driver may use. Starts as the OpenMP
 * maximum of the process; a value below 2 makes every driver run serially.
 * The numerics library only reads it. */
extern ORLCORE_API int32_t threads_omp_of_n_orl;

/* Stores the size in bytes of the largest cache of the processor into
 * *sizeB, or 0 when it cannot be found. The caller clears *sizeB first.
 * The return value carries no meaning. */
ORLCORE_API int32_t orlGetMaxCacheSizeB(int32_t* sizeB);

#ifdef __cplusplus
}
#endif

#endif
