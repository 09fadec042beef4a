/* The public headers compile as strict C99. */
#include "orlm.h"
#include "orlcore.h"

int header_c99_probe(void) { return orlStatusOk + (int)sizeof(orlLibVersion); }
