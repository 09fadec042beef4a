"""Argument lists of the solver families whose decomposition writes a factor
that a back-substitution reads: the decomposition takes src, its own plain
arguments, dst, the sizes and the count; the back-substitution src, the same
plain arguments, rhs, dst, the sizes and the count."""

from grammar import Arg, Opd, is_array, split_shape


def decomp_rule(plain, sizes):
    def items(stem, shape, lay):
        return [Opd(shape, "src")] + plain + [Opd(shape, "dst", result=True)] + [Arg("int", s) for s in sizes] + \
            ([Arg("int", "count")] if is_array(shape) else [])
    return items


def backsubst_rule(plain, sizes):
    def items(stem, shape, lay):
        kinds = split_shape(shape)          # m v | m va | ma va
        return [Opd(kinds[0], "src")] + plain + [Opd(kinds[1], "rhs"), Opd(kinds[1], "dst", result=True)] + \
            [Arg("int", s) for s in sizes] + ([Arg("int", "count")] if is_array(kinds[1]) else [])
    return items
