"""Buffer-size queries of the general eigen families: bytes of one matrix's work buffer."""

from grammar import Arg, Member
from members import TYPES, Family

eigbufsize = Family(
    key="eigbufsize",
    title="Eigen buffer sizes: bytes of the work buffer of the general eigen families",
    entry="orl::eig::bufSizeEntry<orl::eig::Query::{stem}, {elem}>",
    built=True,
)
eigbufsize.members = [Member("eigbufsize", stem, "", t, "", [Arg("int", "widthHeight"), Arg("int32_t*", "bufSize")])
                      for stem in ["EigenValuesGetBufSize", "EigenValuesVectorsGetBufSize"] for t in TYPES]

FAMILIES = [eigbufsize]
