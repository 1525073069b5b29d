#pragma once

#include "host/func_tables.h"

// The graphix table that was installed when it was replaced for the first time; null until then.
// Shown to the outside under this very name: host builds look for it.
extern "C" __attribute__((visibility("default"))) void* s_table2;

// The table of one kind of object. Every call of a slot goes by one rule: without a table, or with
// a null slot, nothing happens and the result is zero (null, 0, or a zeroed record); otherwise the
// slot is called with the same arguments and its result is the result. No other error is seen.
template <class Table>
class HostAccess {
public:
    HostAccess() = delete;

    // Null when none is installed. The host's.
    static Table* s_table;

    // Replaces this class's table alone.
    static void setFuncTable(Table* table) { s_table = table; }

protected:
    template <auto Slot>
    struct Call;

    template <class Result, class... Arguments, Result (*Table::*Slot)(Arguments...)>
    struct Call<Slot> {
        Result operator()(Arguments... arguments) const {
            if (!s_table || !(s_table->*Slot)) return Result();
            return (s_table->*Slot)(arguments...);
        }
    };
};

template <class Table>
Table* HostAccess<Table>::s_table = nullptr;

// Also keeps the first table that is replaced, in s_table2.
template <>
void HostAccess<AGraphixFuncTable>::setFuncTable(AGraphixFuncTable* table);

// The accessors, one for each table: each slot is called like a static function of its name, with
// the arguments that the table declares, the object first.

#define VEK_SLOT(name) \
    static constexpr Call<&Table::name> name {}

class AGraphixHelper : public HostAccess<AGraphixFuncTable> {
    using Table = AGraphixFuncTable;

public:
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getPos);
    VEK_SLOT(setPos);
    VEK_SLOT(getSize);
    VEK_SLOT(setSize);
    VEK_SLOT(getClip);
    VEK_SLOT(setClip);
    VEK_SLOT(getParentWindow);
    VEK_SLOT(setParentWindow);
    VEK_SLOT(getChildWindow);
    VEK_SLOT(setChildWindow);
    VEK_SLOT(getNextWindow);
    VEK_SLOT(setNextWindow);
    VEK_SLOT(getPrevWindow);
    VEK_SLOT(setPrevWindow);
};

class AWinHelper : public HostAccess<AWinFuncTable> {
    using Table = AWinFuncTable;

public:
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getCmdState);
    VEK_SLOT(setCmdState);
    VEK_SLOT(getText);
    VEK_SLOT(setText);
    VEK_SLOT(getMaximizeAmount);
    VEK_SLOT(setMaximizeAmount);
};

class ADocHelper : public HostAccess<ADocFuncTable> {
    using Table = ADocFuncTable;

public:
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getWorkCanvas);
    VEK_SLOT(setWorkCanvas);
    VEK_SLOT(getAllLayersCompositeCanvas);
    VEK_SLOT(setAllLayersCompositeCanvas);
    VEK_SLOT(getLayer);
    VEK_SLOT(setLayer);
    VEK_SLOT(getLayersCount);
    VEK_SLOT(setLayersCount);
    VEK_SLOT(getActiveLayerIndex);
    VEK_SLOT(setActiveLayerIndex);
    VEK_SLOT(getBackgroundColor);
    VEK_SLOT(setBackgroundColor);
    VEK_SLOT(getActiveView);
    VEK_SLOT(setActiveView);
    VEK_SLOT(getMaxZ);
    VEK_SLOT(setMaxZ);
    VEK_SLOT(getMaxShadedZ);
    VEK_SLOT(setMaxShadedZ);
    VEK_SLOT(notifyChanged);
    VEK_SLOT(copyToDoc);
};

class AMemHelper : public HostAccess<AMemFuncTable> {
    using Table = AMemFuncTable;

public:
    VEK_SLOT(getPtr);
    VEK_SLOT(setPtr);
};

class ABMapHelper : public HostAccess<ABMapFuncTable> {
    using Table = ABMapFuncTable;

public:
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getMem);
    VEK_SLOT(setMem);
    VEK_SLOT(getDepth);
    VEK_SLOT(setDepth);
    VEK_SLOT(getPreCropedWidth);
    VEK_SLOT(setPreCropedWidth);
    VEK_SLOT(getPreCropedHeight);
    VEK_SLOT(setPreCropedHeight);
    VEK_SLOT(getCropZeroValue);
    VEK_SLOT(setCropZeroValue);
    VEK_SLOT(getDirtyRect);
    VEK_SLOT(setDirtyRect);
};

class ACanvasHelper : public HostAccess<ACanvasFuncTable> {
    using Table = ACanvasFuncTable;

public:
    VEK_SLOT(convertToBMap);
    VEK_SLOT(convertFromBMap);
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getBMap);
    VEK_SLOT(setBMap);
    VEK_SLOT(getBackgroundColor);
    VEK_SLOT(setBackgroundColor);
};

class AWinDocHelper : public HostAccess<AWinDocFuncTable> {
    using Table = AWinDocFuncTable;

public:
    VEK_SLOT(convertToWin);
    VEK_SLOT(convertFromWin);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(convertToObj);
    VEK_SLOT(getDoc);
    VEK_SLOT(setDoc);
};

class AWinPulldownHelper : public HostAccess<AWinPulldownFuncTable> {
    using Table = AWinPulldownFuncTable;

public:
    VEK_SLOT(convertToWin);
    VEK_SLOT(convertFromWin);
    VEK_SLOT(convertToGraphix);
    VEK_SLOT(convertFromGraphix);
    VEK_SLOT(convertToObj);
    VEK_SLOT(convertFromObj);
    VEK_SLOT(getWinsCount);
    VEK_SLOT(getWin);
};

class AMiscHelper : public HostAccess<AMiscFuncTable> {
    using Table = AMiscFuncTable;

public:
    VEK_SLOT(startDebug);
    VEK_SLOT(endDebug);
};

#undef VEK_SLOT

// All nine at once.
class DFunctionsHelper {
public:
    DFunctionsHelper() = delete;

    static DorviaFuncTable* s_table;

    // Keeps the root and installs its nine tables; a null root clears them.
    static void setFuncTable(DorviaFuncTable* root);
};
