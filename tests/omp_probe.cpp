#include "omp_probe.h"

#include <dlfcn.h>

namespace probe {
Regions& regions()
{
    static Regions r;
    return r;
}
}  // namespace probe

// The executable's definition comes first in the dynamic lookup, so the
// library's calls arrive here; the runtime's own function does the work.
extern "C" void GOMP_parallel(void (*fn)(void*), void* data, unsigned threads, unsigned flags)
{
    using Real = void (*)(void (*)(void*), void*, unsigned, unsigned);
    static Real real = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "GOMP_parallel"));
    probe::regions().count++;
    probe::regions().threads = threads;
    real(fn, data, threads, flags);
}
