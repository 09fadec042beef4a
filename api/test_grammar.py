#!/usr/bin/env python3
"""The argument grammar against argument lists as the library documents them.

Besides the built families, this covers members of families still to come,
so that the grammar is known to express their departures from the plain
rule: Mul's per-source sizes, Copy's pair of layouts, Transpose's sizes in the
middle, and the solvers' extra arguments.
"""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from grammar import Arg, Member, Opd  # noqa: E402
from members import FAMILIES  # noqa: E402


def names(m):
    return ", ".join(n for _, n in m.params())


def built(name):
    for f in FAMILIES:
        for m in f.members:
            if m.name == name:
                return m
    raise KeyError(name)


def member(stem, shape, t, lay, items, suffix=""):
    return Member("sample", stem, shape, t, lay, items, suffix)


SIZES = [Arg("int", "width"), Arg("int", "height")]
LENGTH = [Arg("int", "length")]
COUNT = [Arg("int", "count")]

SAMPLES = [
    # described families, as the generator emits them
    (built("orlmAdd_mm_32f"), "src1, src1Stride1, src1Stride2, src2, src2Stride1, src2Stride2, dst, dstStride1, dstStride2, width, height"),
    (built("orlmAdd_mam_32f"), "src1, src1Stride0, src1Stride1, src1Stride2, src2, src2Stride1, src2Stride2, dst, dstStride0, dstStride1, dstStride2, width, height, count"),
    (built("orlmAdd_mam_32f_P"), "src1, src1Offset, src1Stride0, src2, src2Offset, dst, dstOffset, dstStride0, width, height, count"),
    (built("orlmAdd_mam_32f_L"), "src1, src1Offset, src1Stride1, src1Stride2, src2, src2Stride1, src2Stride2, dst, dstOffset, dstStride1, dstStride2, width, height, count"),
    (built("orlmSub_tma_32f"), "src1, src1Stride1, src1Stride2, src2, src2Stride0, src2Stride1, src2Stride2, dst, dstStride0, dstStride1, dstStride2, width, height, count"),
    (built("orlmAdd_tata_64f_P"), "src1, src1Offset, src1Stride0, src2, src2Offset, src2Stride0, dst, dstOffset, dstStride0, width, height, count"),
    (built("orlmAdd_tm_32f_P"), "src1, src1Offset, src2, src2Offset, dst, dstOffset, width, height"),
    (built("orlmMul_mm_32f"), "src1, src1Stride1, src1Stride2, src1Width, src1Height, src2, src2Stride1, src2Stride2, src2Width, src2Height, dst, dstStride1, dstStride2"),
    (built("orlmMul_mama_32f_P"), "src1, src1Offset, src1Stride0, src1Width, src1Height, src2, src2Offset, src2Stride0, src2Width, src2Height, dst, dstOffset, dstStride0, count"),
    (built("orlmMul_mam_32f_L"), "src1, src1Offset, src1Stride1, src1Stride2, src1Width, src1Height, src2, src2Stride1, src2Stride2, src2Width, src2Height, dst, dstOffset, dstStride1, dstStride2, count"),
    (built("orlmLUDecomp_ma_32f"), "src, srcStride0, srcStride1, srcStride2, perm, dst, dstStride0, dstStride1, dstStride2, widthHeight, count"),
    (built("orlmLUDecomp_ma_64f_P"), "src, srcOffset, srcStride0, perm, dst, dstOffset, dstStride0, widthHeight, count"),
    (built("orlmLUBackSubst_mva_32f_L"), "src, srcStride1, srcStride2, perm, rhs, rhsOffset, rhsStride2, dst, dstOffset, dstStride2, widthHeight, count"),
    (built("orlmLUBackSubst_mava_32f_P"), "src, srcOffset, srcStride0, perm, rhs, rhsOffset, rhsStride0, dst, dstOffset, dstStride0, widthHeight, count"),
    # vector and constant operands by the plain rule
    (built("orlmAdd_vac_32f"), "src, srcStride0, srcStride2, value, dst, dstStride0, dstStride2, length, count"),
    (built("orlmAdd_vca_32f_L"), "src, srcStride2, values, valuesOffset, dst, dstOffset, dstStride2, length, count"),
    (built("orlmAdd_vca_32f_P"), "src, srcOffset, values, valuesStride0, dst, dstOffset, dstStride0, length, count"),
    (built("orlmAdd_vaca_32f"), "src, srcStride0, srcStride2, values, valuesStride0, dst, dstStride0, dstStride2, length, count"),
    (built("orlmAdd_vc_64f"), "src, srcStride2, value, dst, dstStride2, length"),
    (built("orlmSub_vac_32f_P"), "src, srcOffset, srcStride0, value, dst, dstOffset, dstStride0, length, count"),
    # Sub with a leading constant: the vector's group comes first
    (built("orlmSub_cav_32f_P"), "src, srcOffset, values, valuesStride0, dst, dstOffset, dstStride0, length, count"),
    (built("orlmSub_cava_64f_L"), "src, srcOffset, srcStride2, values, valuesOffset, dst, dstOffset, dstStride2, length, count"),
    (built("orlmSub_cv_32f"), "src, srcStride2, value, dst, dstStride2, length"),
    # Saxpy: value after the first source; LComb: a value after each source
    (built("orlmSaxpy_vav_32f"), "src1, src1Stride0, src1Stride2, value, src2, src2Stride2, dst, dstStride0, dstStride2, length, count"),
    (built("orlmSaxpy_vv_32f"), "src1, src1Stride2, value, src2, src2Stride2, dst, dstStride2, length"),
    (built("orlmSaxpy_vva_32f_L"), "src1, src1Stride2, value, src2, src2Offset, src2Stride2, dst, dstOffset, dstStride2, length, count"),
    (built("orlmLComb_vav_64f_L"), "src1, src1Offset, src1Stride2, value1, src2, src2Stride2, value2, dst, dstOffset, dstStride2, length, count"),
    (built("orlmLComb_vv_64f"), "src1, src1Stride2, value1, src2, src2Stride2, value2, dst, dstStride2, length"),
    (built("orlmLComb_vava_32f_P"), "src1, src1Offset, src1Stride0, value1, src2, src2Offset, src2Stride0, value2, dst, dstOffset, dstStride0, length, count"),
    # Copy: a layout for each operand
    (built("orlmCopy_ma_32f_SS"), "src, srcStride0, srcStride1, srcStride2, dst, dstStride0, dstStride1, dstStride2, width, height, count"),
    (built("orlmCopy_ma_32f_SP"), "src, srcStride0, srcStride1, srcStride2, dst, dstOffset, dstStride0, width, height, count"),
    (built("orlmCopy_ma_32f_LL"), "src, srcOffset, srcStride1, srcStride2, dst, dstOffset, dstStride1, dstStride2, width, height, count"),
    (built("orlmCopy_ma_32f_PP"), "src, srcOffset, srcStride0, dst, dstOffset, dstStride0, width, height, count"),
    (built("orlmCopy_va_32f_PS"), "src, srcOffset, srcStride0, dst, dstStride0, dstStride2, length, count"),
    # Extract: the result is one plain pointer; LoadIdentity: the result alone
    (built("orlmExtract_t_32f"), "src, srcStride1, srcStride2, dst, width, height"),
    (built("orlmExtract_ta_32f_P"), "src, srcOffset, srcStride0, dst, width, height, count"),
    (built("orlmExtract_va_32f_L"), "src, srcOffset, srcStride2, dst, length, count"),
    (built("orlmLoadIdentity_ma_32f_P"), "dst, dstOffset, dstStride0, width, height, count"),
    # Transpose: sizes between the source and the result
    (built("orlmTranspose_m_32f"), "src, srcStride1, srcStride2, width, height, dst, dstStride1, dstStride2"),
    (built("orlmTranspose_m_32f_P"), "src, srcOffset, width, height, dst, dstOffset"),
    (built("orlmTranspose_ma_32f_P"), "src, srcOffset, srcStride0, width, height, dst, dstOffset, dstStride0, count"),
    (built("orlmTranspose_ma_32f_L"), "src, srcOffset, srcStride1, srcStride2, width, height, dst, dstOffset, dstStride1, dstStride2, count"),
    # solvers: buffers, scalar results and several results with strides of their own
    (member("Det", "ma", "64f", "", [Opd("ma", "src"), Arg("int", "widthHeight"), Arg("{T}*", "buffer"), Arg("{T}*", "dst")] + COUNT),
     "src, srcStride0, srcStride1, srcStride2, widthHeight, buffer, dst, count"),
    (member("QRBackSubst", "mva", "32f", "", [Opd("m", "src"), Arg("{T}*", "buffer"), Opd("va", "rhs"), Opd("va", "dst", True)] + SIZES + COUNT),
     "src, srcStride1, srcStride2, buffer, rhs, rhsStride0, rhsStride2, dst, dstStride0, dstStride2, width, height, count"),
    (member("EigenValuesVectors", "ma", "64f", "", [Opd("ma", "src"), Opd("ma", "dstVectorsRight", True, "right"),
                                                    Opd("ma", "dstVectorsLeft", True, "left"), Arg("{T}*", "dstValuesRe"),
                                                    Arg("{T}*", "dstValuesIm"), Arg("int", "widthHeight")] + COUNT + [Arg("unsigned char*", "buffer")]),
     "src, srcStride0, srcStride1, srcStride2, dstVectorsRight, rightStride0, rightStride1, rightStride2, dstVectorsLeft, leftStride0, leftStride1, leftStride2, dstValuesRe, dstValuesIm, widthHeight, count, buffer"),
]


def main():
    bad = 0
    for m, expect in SAMPLES:
        got = names(m)
        if got != expect:
            bad += 1
            print(f"{m.name}:\n  got    {got}\n  expect {expect}")
    print(f"{len(SAMPLES) - bad} passed, {bad} failed")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
