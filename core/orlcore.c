/* Stand-in core support library: thread count and largest cache size. */
#include "orlcore.h"

#include <omp.h>
#include <unistd.h>

int32_t threads_omp_of_n_orl = 1;

/* The count is set once when the library is loaded, from the OpenMP
 * runtime's maximum team size (which honours OMP_NUM_THREADS). */
__attribute__((constructor)) static void orlcore_init(void)
{
    threads_omp_of_n_orl = (int32_t)omp_get_max_threads();
}

int32_t orlGetMaxCacheSizeB(int32_t* sizeB)
{
    if (!sizeB)
        return 0;
    long best = 0;
#if defined(_SC_LEVEL1_DCACHE_SIZE)
    const int names[] = {
        _SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE,
        _SC_LEVEL3_CACHE_SIZE,  _SC_LEVEL4_CACHE_SIZE,
    };
    for (unsigned i = 0; i < sizeof names / sizeof names[0]; ++i) {
        long v = sysconf(names[i]);
        if (v > best)
            best = v;
    }
#endif
    if (best > INT32_MAX)
        best = INT32_MAX;
    *sizeB = (int32_t)best;
    return 0;
}
