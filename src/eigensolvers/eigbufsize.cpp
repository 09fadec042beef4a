// Buffer-size queries of the general eigen families.
#include "eigensolvers/eigenframe.h"

#include "eigbufsize.inc"
