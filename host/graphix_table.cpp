#include "host/graphix_table.h"

void* s_table2 = nullptr;
