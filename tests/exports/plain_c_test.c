/* The header is plain C and self-contained, and the library can be linked as well as loaded. */

#include "exports/vek.h"

int main(void) {
    VekExport function = VekSetExportScale;
    if (function(0, 1.0, 0, 0, 0, 0, 0) != 0.0f) return 1;
    if (s_table2 != 0 || s_startTimeVal.tv_sec != 0) return 2;
    return ReadVekAppPath(0, -1.0, 0, 0, 0, 0, 0) == 0.0f ? 0 : 3;
}
