#include "host/accessors.h"

void* s_table2 = nullptr;
DorviaFuncTable* DFunctionsHelper::s_table = nullptr;

template <>
void HostAccess<AGraphixFuncTable>::setFuncTable(AGraphixFuncTable* table) {
    if (!s_table2) s_table2 = s_table;
    s_table = table;
}

void DFunctionsHelper::setFuncTable(DorviaFuncTable* root) {
    s_table = root;
    const DorviaFuncTable tables = root ? *root : DorviaFuncTable();
    AGraphixHelper::setFuncTable(tables.graphix);
    AWinHelper::setFuncTable(tables.win);
    ADocHelper::setFuncTable(tables.doc);
    AMemHelper::setFuncTable(tables.mem);
    ABMapHelper::setFuncTable(tables.bMap);
    ACanvasHelper::setFuncTable(tables.canvas);
    AWinDocHelper::setFuncTable(tables.winDoc);
    AWinPulldownHelper::setFuncTable(tables.winPulldown);
    AMiscHelper::setFuncTable(tables.misc);
}
