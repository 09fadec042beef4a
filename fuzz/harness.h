// The fuzz harness: one call of one exported member with arguments built from
// the roles of its parameters, in guarded buffers, and the checks every call
// must pass. The member table (kMembers) is generated from the member
// description into the build tree.
//
// A call draws its choices from the input bytes (then from a generator seeded
// by them once they run out), so that libFuzzer's mutations steer it and a
// replay of the same bytes makes the same call.
#pragma once

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <mutex>
#include <string>
#include <vector>

#include "orlm.h"

namespace fz {

// ---- the member table ------------------------------------------------------

enum class Role : std::uint8_t { Base, Table, S0, S1, S2, Off, Value, Size, Count };
enum class El : std::uint8_t { T, I32 };

struct Param {
    Role role;
    int opd;      // operand the parameter belongs to, -1 for a size or the count
    bool tested;  // the member tests it, so the driver may make it invalid
};
struct Operand {
    char kind;     // m t v c, or b for a plain pointer argument
    bool array;    // one item per count
    char lay;      // S P L: the layout the operand's group follows
    bool written;  // a destination of the member
    El el;
    const char* name;
};
struct Ext {
    long rows, cols;  // stored shape of one item; a plain pointer: 1 x elements of the call
};
union Slot {
    const void* p;
    int i;
    double d;
};
struct Member {
    const char* name;
    const char* family;
    bool f64;
    void (*fn)();  // the exported function, called through `call`
    int nparams;
    const Param* params;
    int nopnds;
    const Operand* opnds;
    void (*extents)(const long* ints, Ext* out);
    orlStatus (*call)(const Slot* slots);
    std::uint32_t statuses;  // bit(status) of every status the member may return
};

// Bits of the status mask, in the order of api/fuzzgen.py's STATUS_BITS.
constexpr orlStatus kStatuses[] = {orlStatusOk, orlStatusSmallBlock, orlStatusSize, orlStatusNullPointer,
                                   orlStatusDivByZero, orlStatusNotPosDefinite, orlStatusStride, orlStatusSingular,
                                   orlStatusOffset, orlStatusCount, orlStatusSizeMismatch, orlStatusNoConvergence};
constexpr int kStatusCount = int(sizeof kStatuses / sizeof kStatuses[0]);
constexpr int bitIndex(orlStatus s)
{
    for (int i = 0; i < kStatusCount; ++i)
        if (kStatuses[i] == s) return i;
    return 31;
}
constexpr std::uint32_t bit(orlStatus s) { return 1u << bitIndex(s); }
// Failed argument checks: nothing may be written.
constexpr std::uint32_t kCheckFailures = bit(orlStatusSize) | bit(orlStatusNullPointer) | bit(orlStatusStride) |
                                         bit(orlStatusOffset) | bit(orlStatusCount) | bit(orlStatusSizeMismatch);

extern const Member kMembers[];
extern const int kMemberCount;

// ---- choices from the input ------------------------------------------------

class Choices {
public:
    Choices(const std::uint8_t* d, std::size_t n) : d_(d), n_(n)
    {
        for (std::size_t i = 0; i < n; ++i) x_ = (x_ ^ d[i]) * 0x100000001b3ull;
    }
    std::uint32_t u32()
    {
        if (i_ + 4 <= n_) {
            std::uint32_t v;
            std::memcpy(&v, d_ + i_, 4);
            i_ += 4;
            return v;
        }
        x_ += 0x9e3779b97f4a7c15ull;  // splitmix64 once the bytes run out
        std::uint64_t z = x_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
        return std::uint32_t(z ^ (z >> 31));
    }
    int below(int n) { return n <= 1 ? 0 : int(u32() % std::uint32_t(n)); }
    bool chance(int percent) { return below(100) < percent; }

private:
    const std::uint8_t* d_;
    std::size_t n_, i_ = 0;
    std::uint64_t x_ = 0xcbf29ce484222325ull;
};

// ---- guarded buffers -------------------------------------------------------

constexpr std::size_t kGuard = 32;  // guard bytes before and after every buffer

// One allocation of its own (so that AddressSanitizer sees its ends), with
// guard bytes on both sides; `mayWrite` marks the bytes a member may change.
struct Buf {
    std::uint8_t* raw = nullptr;
    std::size_t len = 0;  // usable bytes between the guards
    std::vector<std::uint8_t> before, mayWrite;
    std::uint8_t* at(std::size_t o) const { return raw + kGuard + o; }
};

// ---- one call ----------------------------------------------------------------

struct Outcome {
    orlStatus status = 0;
    bool called = false;
    std::string fault;  // empty when the call held every rule
};

// Values: plain numbers, and the special ones at `special` percent.
template <class E>
E valueOf(Choices& c, int special = 30)
{
    using L = std::numeric_limits<E>;
    switch (c.below(100) < special ? c.below(9) : 9) {
    case 0: return L::quiet_NaN();
    case 1: return -L::infinity();
    case 2: return L::infinity();
    case 3: return E(-0.0);
    case 4: return E(0);
    case 5: return L::denorm_min();
    case 6: return -L::min() / 4;
    case 7: return L::max();
    case 8: return L::epsilon();
    default: return E(int(c.below(2001)) - 1000) / E(125);
    }
}

// The size most calls use for every size argument, or one of each size.
inline int sizeOf(Choices& c)
{
    const int r = c.below(100);
    if (r < 85) return 1 + c.below(8);
    if (r < 97) return 9 + c.below(16);
    return 25 + c.below(16);
}

inline int countOf(Choices& c)
{
    const int r = c.below(100);
    if (r < 65) return 1 + c.below(8);
    if (r < 92) return 9 + c.below(42);
    return 51 + c.below(1500);  // long enough for the parallel route
}

struct Call {
    const Member& m;
    bool f64;
    std::size_t E;
    std::vector<Slot> slots;
    std::vector<long> ints;
    std::vector<Ext> ext;
    std::vector<Buf> bufs;

    int special = 0;  // percent of special values among the elements
    explicit Call(const Member& mem) : m(mem), f64(mem.f64), E(mem.f64 ? 8 : 4) {}
    ~Call()
    {
        for (Buf& b : bufs) std::free(b.raw);
    }

    Buf& alloc(std::size_t len, Choices& c)
    {
        Buf b;
        b.len = len;
        b.raw = static_cast<std::uint8_t*>(std::malloc(len + 2 * kGuard));
        for (std::size_t i = 0; i < len + 2 * kGuard; ++i) b.raw[i] = std::uint8_t(c.u32() | 1);
        b.mayWrite.assign(len + 2 * kGuard, 0);
        bufs.push_back(std::move(b));
        return bufs.back();
    }
    void put(Buf& b, std::size_t o, Choices& c, bool written) { put(b, o, value(c), written); }
    double value(Choices& c) { return f64 ? valueOf<double>(c, special) : double(valueOf<float>(c, special)); }
    void put(Buf& b, std::size_t o, double v, bool written)
    {
        if (f64) {
            std::memcpy(b.at(o), &v, 8);
        } else {
            const float f = float(v);
            std::memcpy(b.at(o), &f, 4);
        }
        if (written) std::memset(&b.mayWrite[kGuard + o], 1, E);
    }
};

// A stride or offset made invalid: zero, negative, or not a multiple of the
// element size.
inline int spoiled(Choices& c, int good, std::size_t E, bool offset)
{
    switch (c.below(offset ? 2 : 4)) {
    case 0: return -int(E) * (1 + c.below(3));
    case 1: return good + 1 + c.below(int(E) - 1);
    case 2: return 0;
    default: return -good;
    }
}

inline std::string describe(const Call& k)
{
    std::string s = k.m.name;
    s += "(";
    for (int x = 0; x < k.m.nparams; ++x) {
        const Param& p = k.m.params[x];
        char b[64];
        if (p.role == Role::Base || p.role == Role::Table)
            std::snprintf(b, sizeof b, "%s%s", k.slots[x].p ? "" : "NULL:", k.m.opnds[p.opd].name);
        else if (p.role == Role::Value)
            std::snprintf(b, sizeof b, "%g", k.slots[x].d);
        else
            std::snprintf(b, sizeof b, "%d", k.slots[x].i);
        s += (x ? ", " : "") + std::string(b);
    }
    return s + ")";
}

struct Options {
    int slot = 0;        // the calling thread's place in the watchdog, 0 to 15
    int count = 0;       // the count of an array member; 0: drawn from the input
    bool valid = false;  // no argument made invalid on purpose
};

// Builds the arguments of `m` from `c`, calls it and checks the rules. A
// call that does not return within the watchdog's bound ends the process.
Outcome runOne(const Member& m, Choices& c, const Options& opt = {});
void startWatchdog(int boundMs);
// The input of the next calls on slot 0, written to `file` if a sanitizer
// ends the process during one of them.
void noteInput(const std::string& file, const std::string& bytes);

// The member a fuzz input names: its first two bytes.
inline const Member& memberOf(const std::uint8_t* d, std::size_t n)
{
    const unsigned v = n >= 2 ? unsigned(d[0]) | unsigned(d[1]) << 8 : 0;
    return kMembers[v % unsigned(kMemberCount)];
}

}  // namespace fz
