// Buffer-size queries of the general eigen families: the bytes of one
// matrix's buffer, the wrapping 32-bit product, and the pointer tested
// before the order.
#include <gtest/gtest.h>

#include <cstdint>

#include "orlm.h"

namespace {

using Query = orlStatus (*)(int, std::int32_t*);

struct Row {
    Query q;
    const char* name;
    int n;
    bool nullResult;
    orlStatus st;
    std::int32_t bytes;  // written on success
};

constexpr std::int32_t kUntouched = -12345;

const Row kRows[] = {
    {orlmEigenValuesGetBufSize_32f, "values 32f", 1, false, orlStatusOk, 24},
    {orlmEigenValuesGetBufSize_64f, "values 64f", 4, false, orlStatusOk, 288},
    {orlmEigenValuesVectorsGetBufSize_32f, "vectors 32f", 3, false, orlStatusOk, 168},
    {orlmEigenValuesVectorsGetBufSize_64f, "vectors 64f", 6, false, orlStatusOk, 1104},
    // 10000*30005*8 = 2400400000 wraps to a negative number: no overflow test.
    {orlmEigenValuesVectorsGetBufSize_64f, "vectors 64f wrapping", 10000, false, orlStatusOk, -1894567296},
    {orlmEigenValuesGetBufSize_32f, "order 0", 0, false, orlStatusSize, kUntouched},
    {orlmEigenValuesVectorsGetBufSize_64f, "order -1", -1, false, orlStatusSize, kUntouched},
    {orlmEigenValuesGetBufSize_64f, "NULL result", 3, true, orlStatusNullPointer, kUntouched},
    {orlmEigenValuesVectorsGetBufSize_32f, "NULL result before order 0", 0, true, orlStatusNullPointer, kUntouched},
};

TEST(EigBufSize, BytesAndChecks)
{
    for (const Row& r : kRows) {
        std::int32_t out = kUntouched;
        EXPECT_EQ(r.q(r.n, r.nullResult ? nullptr : &out), r.st) << r.name;
        EXPECT_EQ(out, r.bytes) << r.name;
    }
}

}  // namespace
