// The version record and the allocator hooks.
#include <cstdlib>

#include "orlm.h"

namespace {

constexpr orlLibVersion kVersion = {
    5,                   // versionMajor
    2,                   // versionMinor
    108,                 // buildMajor
    345,                 // buildNumber
    {'t', '7', 0, 0},    // targetCpu
    "liborlmt7.so.5.2",  // name
    "5.2",               // versionText
    "Jul 11 2007",       // buildDate
};

}  // namespace

extern "C" {

const orlLibVersion* orlmGetLibVersion(void) { return &kVersion; }

// Hooks by which a host may substitute an allocator. The library itself
// never allocates through them.
void* (*i_malloc)(size_t) = std::malloc;
void* (*i_calloc)(size_t, size_t) = std::calloc;
void* (*i_realloc)(void*, size_t) = std::realloc;
void (*i_free)(void*) = std::free;
}
