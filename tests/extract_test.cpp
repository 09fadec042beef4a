// Extract: every member's dense block as bits (transposed sources as their logical matrices),
// the check orders of each shape and layout, and the product check of the members that have it.
#include <vector>

#include "operands.h"
#include "reference.h"

using t::K;
using t::L;
using t::Strides;

namespace {

// kind: 'm', 't' (matrices) or 'v'; array for the shapes with an `a`.
template <class E, char kind, bool array, L lay, class Fn>
void checkExtract(Fn fn, int w, int h, int count, Strides st)
{
    constexpr K mk = kind == 't' ? (array ? K::ta : K::t) : (array ? K::ma : K::m);
    using Src = std::conditional_t<kind == 'v', t::Vec<E, array, lay>, t::Mat<E, mk, lay>>;
    h = kind == 'v' ? 1 : h, count = array ? count : 1;
    Src s(w, h, count, st, 4);
    t::fillEach(s, count, h, w, ref::patternBits<E>);
    std::vector<E> dst(size_t(count) * w * h + 4);
    std::memset(dst.data(), 0xA5, dst.size() * sizeof(E));
    std::vector<E> expect = dst;
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) std::memcpy(&expect[(size_t(k) * h + i) * w + j], &s(k, i, j), sizeof(E));
    const auto sizes = [&] { if constexpr (kind == 'v') return std::make_tuple(w); else return std::make_tuple(w, h); }();
    const auto counts = [&] { if constexpr (array) return std::make_tuple(count); else return std::tuple<>(); }();
    ASSERT_EQ(std::apply(fn, std::tuple_cat(s.args(), std::make_tuple(dst.data()), sizes, counts)), orlStatusOk);
    ASSERT_EQ(std::memcmp(dst.data(), expect.data(), dst.size() * sizeof(E)), 0);
}

#define ORL_EX1(sh, kind, array, suffix, lay, E, ty)                                                     \
    t::registry().push_back({"orlmExtract_" #sh "_" #ty #suffix, [](int w, int h, int n, Strides st) { \
        checkExtract<E, kind, array, lay>(orlmExtract_##sh##_##ty##suffix, w, h, n, st); }});
#define ORL_EX2(sh, kind, array, suffix, lay) ORL_EX1(sh, kind, array, suffix, lay, float, 32f) ORL_EX1(sh, kind, array, suffix, lay, double, 64f)
#define ORL_EX(sh, kind) ORL_EX2(sh, kind, false, , L::Std) ORL_EX2(sh, kind, false, _P, L::P)
#define ORL_EXA(sh, kind) ORL_EX2(sh, kind, true, , L::Std) ORL_EX2(sh, kind, true, _P, L::P) ORL_EX2(sh, kind, true, _L, L::L)

const bool registered = [] {
    ORL_EX(m, 'm') ORL_EX(t, 't') ORL_EX(v, 'v')
    ORL_EXA(ma, 'm') ORL_EXA(ta, 't') ORL_EXA(va, 'v')
    return true;
}();

TEST(ExtractValues, EveryMemberSizeStrideAndCountAsBits)
{
    ASSERT_TRUE(registered);
    t::checkEveryMember(30, {{2, 3}, {4, 4}, {5, 1}, {1, 6}});
}

// ---- argument checks -------------------------------------------------------

TEST(ExtractChecks, OrdersOfEachShapeAndLayout)
{
    t::CheckBuffers b;
    const ref::OrderCase cases[] = {
        {"m: NULL before size", "NZT", "NZ", [&] { return orlmExtract_m_32f(nullptr, 16, 4, b.fo, 0, 4); }},
        {"m _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_m_32f_P(nullptr, 0, b.fo, 0, 4); }},
        {"t 64f _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_t_64f_P(b.tg, 0, nullptr, 2, 0); }},
        {"t _P: offset", "ZNO", "O", [&] { return orlmExtract_t_32f_P(b.tf, -4, b.fo, 2, 2); }},
        {"v 32f _P: NULL before size", "NZO", "NZ", [&] { return orlmExtract_v_32f_P(b.tf, 0, nullptr, 0); }},
        {"v 64f _P: size before NULL", "ZNO", "NZ", [&] { return orlmExtract_v_64f_P(b.tg, 0, nullptr, 0); }},
        {"v: size before stride", "NZT", "ZT", [&] { return orlmExtract_v_64f(b.g, 12, b.go, 0); }},
        {"ma: size before count", "NZCT", "ZC", [&] { return orlmExtract_ma_32f(b.f, 64, 16, 4, b.fo, 4, 0, 0); }},
        {"ma: count before stride", "NZCT", "CT", [&] { return orlmExtract_ma_32f(b.f, 64, 6, 4, b.fo, 4, 4, 0); }},
        {"ta: stride0 0 refused with count 1", "NZCT", "T", [&] { return orlmExtract_ta_64f(b.g, 0, 32, 8, b.go, 2, 2, 1); }},
        {"ma _P: offset before stride0", "NZCOT", "OT", [&] { return orlmExtract_ma_32f_P(b.tf, 2, 6, b.fo, 2, 2, 2); }},
        {"va _L: offset before stride2", "NZCOT", "OT", [&] { return orlmExtract_va_32f_L(b.tf, -4, 6, b.fo, 4, 2); }},
        {"va _P: count before offset", "NZCOT", "CO", [&] { return orlmExtract_va_64f_P(b.tg, 4, 64, b.go, 4, -1); }},
    };
    for (const ref::OrderCase& c : cases) {
        EXPECT_EQ(c.call(), ref::expectedStatus(c.order, c.failing)) << c.what;
        EXPECT_TRUE(b.untouched()) << c.what;
    }
    // Once the 32-bit product of the sizes wraps below 1, the members with the
    // product check return at once and write nothing.
    EXPECT_EQ(orlmExtract_m_32f_P(b.tf, 0, b.fo, 65536, 65536), orlStatusOk);
    EXPECT_EQ(orlmExtract_ma_64f_P(b.tg, 0, 64, b.go, 65536, 32768, 3), orlStatusOk);
    EXPECT_TRUE(b.untouched());
}

}  // namespace
