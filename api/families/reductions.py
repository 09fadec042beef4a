"""Products of vectors and reductions: dot and cross products, the Euclidean
and Frobenius norms, the trace, and the homogeneous affine transform of
3D points. Results of the dot product and of the reductions are plain
numbers, one per item, with no stride in any layout."""

from grammar import Arg, Member, Opd, count_of, is_array, split_shape
from members import Family, each


def dot_items(stem, shape, lay):
    k1, k2 = split_shape(shape)
    return [Opd(k1, "src1"), Opd(k2, "src2"), Arg("{T}*", "dst"), Arg("int", "length")] + count_of(shape)


def cross_items(stem, shape, lay):
    k1, k2 = split_shape(shape)
    arr = is_array(k1) or is_array(k2)
    return [Opd(k1, "src1"), Opd(k2, "src2"), Opd("va" if arr else "v", "dst", result=True)] + count_of(shape)


dotcross = Family(
    key="dotcross",
    title="Dot and cross product: dst = src1 . src2, dst = src1 x src2",
    entry="orl::dotcross::{stem}Entry",
    built=True,
)
dotcross.members = (each([("DotProduct", s) for s in ["vv", "vav", "vava"]], dot_items, "dotcross")
                    + each([("CrossProduct", s) for s in ["vv", "vav", "vva", "vava"]], cross_items, "dotcross"))


def norm_items(stem, shape, lay):
    src = [Opd(shape, "src")]
    if stem == "L2Norm":
        return src + [Arg("{T}*", "dst"), Arg("int", "length")] + count_of(shape)
    if stem == "FrobNorm":
        return src + [Arg("int", "width"), Arg("int", "height"), Arg("{T}*", "dst")] + count_of(shape)
    return src + [Arg("int", "widthHeight"), Arg("{T}*", "dst")] + count_of(shape)


norms = Family(
    key="norms",
    title="Norms and trace: Euclidean norm of vectors, Frobenius norm and trace of matrices",
    entry="orl::norms::{stem}Entry",
    built=True,
)
norms.members = each([("L2Norm", "v"), ("L2Norm", "va"), ("FrobNorm", "m"), ("FrobNorm", "ma"),
                      ("Trace", "m"), ("Trace", "ma")], norm_items, "norms")

affine = Family(
    key="affine",
    title="Homogeneous affine transform of 3D points by one 4x4 matrix",
    entry="orl::affine::entry",
    built=True,
)
affine.members = [Member("affine", "AffineTransform3DH", "mva", "32f", "",
                         [Opd("m", "src1"), Opd("va", "src2"), Opd("va", "dst", result=True), Arg("int", "count")])]

FAMILIES = [dotcross, norms, affine]
