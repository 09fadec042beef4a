// Counts the parallel regions that the library opens, by standing in for the
// OpenMP runtime's entry to a parallel region and passing every call on.
// A test reads it to see which route a call took and how many threads the
// driver asked for, without looking inside the library.
#pragma once

namespace probe {

struct Regions {
    int count = 0;        // regions opened since reset()
    unsigned threads = 0; // team size asked for by the last one
};

Regions& regions();
inline void reset() { regions() = Regions{}; }

}  // namespace probe
