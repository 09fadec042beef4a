"""Argument lists of the six eigen families, shared by their modules.

Every member takes one square source, `widthHeight` and, for `ma`, `count`;
the work buffer and the value arrays are plain pointers, never stride-
addressed. The symmetric families put the buffer after the source, the
general ones last.
"""

from grammar import Arg, Opd

STEMS = ["EigenValuesSym", "EigenValuesVectorsSym", "EigenValues",
         "EigenValuesVectorsRight", "EigenValuesVectorsLeft", "EigenValuesVectors"]

# Vector destinations of each family: (argument name, name stem of its strides and offset).
VECTORS = {
    "EigenValuesSym": [],
    "EigenValuesVectorsSym": [("dstVectors", "dst")],
    "EigenValues": [],
    "EigenValuesVectorsRight": [("dstVectors", "dst")],
    "EigenValuesVectorsLeft": [("dstVectors", "dst")],
    "EigenValuesVectors": [("dstVectorsRight", "right"), ("dstVectorsLeft", "left")],
}


def eigen_items(stem, shape, lay):
    sizes = [Arg("int", "widthHeight")] + ([Arg("int", "count")] if shape == "ma" else [])
    buffer = Arg("{T}*", "buffer")
    vectors = [Opd(shape, name, result=True, prefix=prefix) for name, prefix in VECTORS[stem]]
    if stem.endswith("Sym"):
        return [Opd(shape, "src"), buffer] + vectors + [Arg("{T}*", "dstValues")] + sizes
    return [Opd(shape, "src")] + vectors + [Arg("{T}*", "dstValuesRe"), Arg("{T}*", "dstValuesIm")] + sizes + [buffer]
