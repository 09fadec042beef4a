// One call of one member: arguments from the roles of its parameters, every
// buffer guarded, and the rules checked afterwards (see harness.h).
#include "harness.h"

#include <algorithm>
#include <numeric>
#include <thread>

#if defined(__has_include)
#if __has_include(<sanitizer/common_interface_defs.h>)
#include <sanitizer/common_interface_defs.h>
#define ORLM_FUZZ_DEATH_CALLBACK 1
#endif
#endif

namespace fz {

namespace {

// ---- the bound on a call's time --------------------------------------------

constexpr int kSlots = 16;
std::atomic<long long> gStart[kSlots];
std::atomic<const char*> gName[kSlots];

long long nowMs()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void onDeath();

void watch(int boundMs)
{
    for (;;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        for (int s = 0; s < kSlots; ++s) {
            const long long t = gStart[s].load();
            if (t && nowMs() - t > boundMs) {
                std::fprintf(stderr, "FAULT: %s did not return within %d ms\n", gName[s].load(), boundMs);
                if (s == 0) onDeath();
                std::fflush(stderr);
                std::_Exit(70);
            }
        }
    }
}

// The call in progress on the first slot, told when a sanitizer ends the process.
std::string gLastCall, gInputFile, gInput;

void onDeath()
{
    std::fprintf(stderr, "FAULT: the call was %s\n", gLastCall.c_str());
    if (gInputFile.empty()) return;
    if (std::FILE* f = std::fopen(gInputFile.c_str(), "wb")) {
        std::fwrite(gInput.data(), 1, gInput.size(), f);
        std::fclose(f);
        std::fprintf(stderr, "  input saved as %s\n", gInputFile.c_str());
    }
}

// ---- one operand --------------------------------------------------------

struct Layout {
    std::vector<std::size_t> at;  // byte of each element (k, i, j) in `pool`, item-major
    int pool = -1;                // buffer of the elements
};

}  // namespace

void noteInput(const std::string& file, const std::string& bytes)
{
    gInputFile = file;
    gInput = bytes;
}

void startWatchdog(int boundMs)
{
#ifdef ORLM_FUZZ_DEATH_CALLBACK
    __sanitizer_set_death_callback(onDeath);
#endif
    static std::once_flag once;
    std::call_once(once, [&] { std::thread(watch, boundMs).detach(); });
}

Outcome runOne(const Member& m, Choices& c, const Options& opt)
{
    Call k(m);
    const std::size_t E = k.E;
    k.slots.assign(std::size_t(m.nparams), Slot{});
    k.ints.assign(std::size_t(m.nparams), 0);

    // Sizes: one for all (which meets every relation between them) or one each.
    const bool same = c.chance(65);
    const int common = sizeOf(c);
    int count = opt.count ? opt.count : countOf(c), maxSize = 1;
    for (int x = 0; x < m.nparams; ++x)
        if (m.params[x].role == Role::Size) {
            k.ints[x] = same ? common : sizeOf(c);
            maxSize = std::max(maxSize, int(k.ints[x]));
        }
    // Keep a call's work bounded: cubic members at the largest sizes.
    while (count > 1 && double(maxSize) * maxSize * maxSize * count > 3e6) count /= 2;
    bool hasCount = false;
    for (int x = 0; x < m.nparams; ++x)
        if (m.params[x].role == Role::Count) k.ints[x] = count, hasCount = true;
    if (!hasCount) count = 1;
    k.ext.assign(std::size_t(m.nopnds), Ext{0, 0});
    m.extents(k.ints.data(), k.ext.data());

    // Special values in no, few or many elements; square sources now and
    // then symmetric with a dominant diagonal, so that the decompositions and
    // the eigensolvers get past their first test.
    const int mode = c.below(10);
    k.special = mode < 5 ? 0 : mode < 8 ? 2 : 30;
    const bool dominant = c.chance(35);

    // The operands in their layouts.
    std::vector<Layout> lay(std::size_t(m.nopnds));
    for (int o = 0; o < m.nopnds; ++o) {
        const Operand& op = m.opnds[o];
        const std::size_t e = op.el == El::I32 ? 4 : E;
        const long R = std::max(0L, k.ext[o].rows), C = std::max(0L, k.ext[o].cols);
        const long K = op.array ? count : 1;
        int s0 = 0, s1 = 0, s2 = 0, off = 0;
        int table = -1;
        Layout& L = lay[o];
        if (op.kind == 'b') {
            Buf& b = k.alloc(std::size_t(std::max(C, 1L)) * e, c);
            L.pool = int(k.bufs.size()) - 1;
            if (op.written) {
                std::fill(b.mayWrite.begin() + kGuard, b.mayWrite.begin() + long(kGuard + b.len), 1);
            } else if (op.el == El::I32) {
                // A permutation an item, as the decomposition writes it.
                const long n = C / count;
                std::vector<std::int32_t> perm(std::size_t(std::max(n, 1L)));
                for (long kk = 0; n > 0 && kk * n < C; ++kk) {
                    std::iota(perm.begin(), perm.end(), 0);
                    for (long i = n - 1; i > 0; --i) std::swap(perm[std::size_t(i)], perm[std::size_t(c.below(int(i) + 1))]);
                    std::memcpy(b.at(std::size_t(kk * n) * 4), perm.data(), std::size_t(n) * 4);
                }
            } else {
                for (long x = 0; x < C; ++x) k.put(b, std::size_t(x) * E, c, false);
            }
        } else if (op.kind == 'c' && !op.array) {
            // a plain value: no buffer
        } else if (op.lay == 'P' && op.kind != 'c') {
            // A table of element pointers into a pool, items one stride0 apart.
            const long n = R * C;
            off = int(E) * c.below(3);
            s0 = int(std::size_t(n) * E + E * std::size_t(c.below(3)));
            std::vector<long> place(static_cast<std::size_t>(n));
            std::iota(place.begin(), place.end(), 0);
            for (long i = n - 1; i > 0; --i) std::swap(place[std::size_t(i)], place[std::size_t(c.below(int(i) + 1))]);
            k.alloc(std::size_t(off) + std::size_t(std::max(K - 1, 0L)) * std::size_t(s0) + std::size_t(n) * E, c);
            L.pool = int(k.bufs.size()) - 1;
            Buf& t = k.alloc(std::size_t(std::max(n, 1L)) * sizeof(void*), c);
            table = int(k.bufs.size()) - 1;
            for (long x = 0; x < n; ++x) {
                const void* p = k.bufs[std::size_t(L.pool)].at(std::size_t(place[std::size_t(x)]) * E);
                std::memcpy(t.at(std::size_t(x) * sizeof(void*)), &p, sizeof p);
            }
            for (long kk = 0; kk < K; ++kk)
                for (long x = 0; x < n; ++x)
                    L.at.push_back(std::size_t(off) + std::size_t(kk) * std::size_t(s0) + std::size_t(place[std::size_t(x)]) * E);
        } else {
            // Strided items: in one block, or reached through a list of item pointers.
            const bool list = op.lay == 'L' && op.array;
            s2 = int(E) * (c.chance(80) ? 1 : 2 + c.below(2));
            s1 = int(C) * s2 + int(E) * c.below(3);
            const long span = R && C ? (R - 1) * s1 + (C - 1) * s2 + long(E) : 0;
            s0 = int(span + long(E) * c.below(3));
            if (op.kind == 'c') s0 = int(E) * (1 + c.below(3));
            if (op.kind == 'v') s1 = 0;
            off = list ? int(E) * c.below(3) : 0;
            const long item = op.kind == 'c' ? long(E) : span;
            const long block = list ? off + item + long(E) * c.below(2) : s0;
            k.alloc(std::size_t(std::max(0L, (K - 1) * block + (list ? off : 0) + item)), c);
            L.pool = int(k.bufs.size()) - 1;
            std::vector<long> order(static_cast<std::size_t>(K));
            std::iota(order.begin(), order.end(), 0);
            if (list) {
                for (long i = K - 1; i > 0; --i) std::swap(order[std::size_t(i)], order[std::size_t(c.below(int(i) + 1))]);
                Buf& t = k.alloc(std::size_t(std::max(K, 1L)) * sizeof(void*), c);
                table = int(k.bufs.size()) - 1;
                for (long kk = 0; kk < K; ++kk) {
                    const void* p = k.bufs[std::size_t(L.pool)].at(std::size_t(order[std::size_t(kk)] * block));
                    std::memcpy(t.at(std::size_t(kk) * sizeof(void*)), &p, sizeof p);
                }
            }
            for (long kk = 0; kk < K; ++kk)
                for (long i = 0; i < R; ++i)
                    for (long j = 0; j < C; ++j)
                        L.at.push_back(std::size_t(order[std::size_t(kk)] * block + off + i * s1 + j * s2));
        }
        if (dominant && !op.written && op.kind != 'b' && R == C && R > 1) {
            std::vector<double> sym(std::size_t(R * R));
            for (std::size_t x = 0; x < L.at.size(); ++x) {
                const long i = long(x) / C % R, j = long(x) % C;
                if (j == 0 && i == 0)
                    for (long a = 0; a < R; ++a)
                        for (long b = 0; b <= a; ++b)
                            sym[std::size_t(a * R + b)] = sym[std::size_t(b * R + a)] =
                                a == b ? double(R + 1 + c.below(8)) : k.value(c) / 8;
                k.put(k.bufs[std::size_t(L.pool)], L.at[x], sym[std::size_t(i * R + j)], false);
            }
        } else {
            for (std::size_t a : L.at) k.put(k.bufs[std::size_t(L.pool)], a, c, op.written);
        }

        // The operand's parameters.
        for (int x = 0; x < m.nparams; ++x) {
            if (m.params[x].opd != o) continue;
            Slot& s = k.slots[std::size_t(x)];
            switch (m.params[x].role) {
            case Role::Base: s.p = L.pool >= 0 ? k.bufs[std::size_t(L.pool)].at(0) : nullptr; break;
            case Role::Table: s.p = k.bufs[std::size_t(table)].at(0); break;
            case Role::S0: s.i = s0; break;
            case Role::S1: s.i = s1; break;
            case Role::S2: s.i = s2; break;
            case Role::Off: s.i = off; break;
            case Role::Value: s.d = k.value(c); break;
            default: break;
            }
        }
    }
    for (int x = 0; x < m.nparams; ++x)
        if (m.params[x].role == Role::Size || m.params[x].role == Role::Count) k.slots[std::size_t(x)].i = int(k.ints[std::size_t(x)]);

    // Now and then one argument made invalid: a NULL pointer, a size or count
    // below one, a stride or offset that is not a valid multiple.
    if (!opt.valid && c.chance(25)) {
        const int x = c.below(m.nparams);
        Slot& s = k.slots[std::size_t(x)];
        switch (m.params[x].tested ? m.params[x].role : Role::Value) {
        case Role::Base:
        case Role::Table: s.p = nullptr; break;
        case Role::Size:
        case Role::Count: s.i = -c.below(3); break;
        case Role::S0:
        case Role::S1:
        case Role::S2: s.i = spoiled(c, s.i, E, false); break;
        case Role::Off: s.i = spoiled(c, s.i, E, true); break;
        case Role::Value: break;
        }
    }

    for (Buf& b : k.bufs) b.before.assign(b.raw, b.raw + b.len + 2 * kGuard);
    Outcome out;
    if (opt.slot == 0) gLastCall = describe(k);
    gName[opt.slot] = m.name;
    gStart[opt.slot] = nowMs();
    out.status = m.call(k.slots.data());
    gStart[opt.slot] = 0;
    out.called = true;

    const int bi = bitIndex(out.status);
    char msg[160];
    if (bi == 31 || !(m.statuses & (1u << bi))) {
        std::snprintf(msg, sizeof msg, "status %d is not one the member returns", int(out.status));
        out.fault = msg;
    }
    const bool nothing = (m.statuses & (1u << bi) & kCheckFailures) != 0;
    for (std::size_t b = 0; b < k.bufs.size() && out.fault.empty(); ++b) {
        const Buf& B = k.bufs[b];
        for (std::size_t i = 0; i < B.len + 2 * kGuard; ++i)
            if (B.raw[i] != B.before[i] && (nothing || !B.mayWrite[i])) {
                std::snprintf(msg, sizeof msg, "byte %ld of buffer %zu (of %zu bytes) changed%s",
                              long(i) - long(kGuard), b, B.len, nothing ? " after a failed check" : "");
                out.fault = msg;
                break;
            }
    }
    if (!out.fault.empty()) out.fault += "\n  call: " + describe(k) + "\n  status " + std::to_string(out.status);
    return out;
}

}  // namespace fz
