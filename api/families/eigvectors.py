"""General eigenvectors: the eigenvalues of a general real matrix with its
right eigenvectors, its left eigenvectors or both, a complex pair stored as
real and imaginary part in two neighbouring columns."""

from families._eigen import eigen_items
from members import Family, each

STEMS = ["EigenValuesVectorsRight", "EigenValuesVectorsLeft", "EigenValuesVectors"]

eigvectors = Family(
    key="eigvectors",
    title="General eigenvectors: right, left or both, with the eigenvalues",
    entry="orl::eig::vectorsEntry<orl::eig::Fam::{stem}>",
    built=True,
)
eigvectors.members = each([(stem, shape) for stem in STEMS for shape in ["m", "ma"]], eigen_items, "eigvectors")

FAMILIES = [eigvectors]
