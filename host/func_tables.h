#pragma once

#include "host/host_types.h"

// The host's function tables: arrays of function pointers, slot for slot in this order, any of them
// null. slot_order.cpp holds the order against the numbers of the slots.

struct AGraphixFuncTable {
    AObj* (*convertToObj)(AGraphix*);
    AGraphix* (*convertFromObj)(AObj*);
    FPoint (*getPos)(AGraphix*);
    void (*setPos)(AGraphix*, const FPoint&);
    FPoint (*getSize)(AGraphix*);
    void (*setSize)(AGraphix*, const FPoint&);
    ARect (*getClip)(AGraphix*);
    void (*setClip)(AGraphix*, const ARect&);
    AWin* (*getParentWindow)(AGraphix*);
    void (*setParentWindow)(AGraphix*, AWin*);
    AWin* (*getChildWindow)(AGraphix*);
    void (*setChildWindow)(AGraphix*, AWin*);
    AWin* (*getNextWindow)(AGraphix*);
    void (*setNextWindow)(AGraphix*, AWin*);
    AWin* (*getPrevWindow)(AGraphix*);
    void (*setPrevWindow)(AGraphix*, AWin*);
};

struct AWinFuncTable {
    AGraphix* (*convertToGraphix)(AWin*);
    AWin* (*convertFromGraphix)(AGraphix*);
    AObj* (*convertToObj)(AWin*);
    AWin* (*convertFromObj)(AObj*);
    ACmdState* (*getCmdState)(AWin*);
    void (*setCmdState)(AWin*, ACmdState*);
    AStr* (*getText)(AWin*);
    void (*setText)(AWin*, AStr*);
    AVar (*getMaximizeAmount)(AWin*);
    void (*setMaximizeAmount)(AWin*, AVar);
};

struct ADocFuncTable {
    AGraphix* (*convertToGraphix)(ADoc*);
    ADoc* (*convertFromGraphix)(AGraphix*);
    AObj* (*convertToObj)(ADoc*);
    ADoc* (*convertFromObj)(AObj*);
    ACanvas* (*getWorkCanvas)(ADoc*);
    void (*setWorkCanvas)(ADoc*, ACanvas*);
    ACanvas* (*getAllLayersCompositeCanvas)(ADoc*);
    void (*setAllLayersCompositeCanvas)(ADoc*, ACanvas*);
    ADocLayer* (*getLayer)(ADoc*, int index);
    void (*setLayer)(ADoc*, int index, const ADocLayer&);
    int (*getLayersCount)(ADoc*);
    void (*setLayersCount)(ADoc*, int);
    int (*getActiveLayerIndex)(ADoc*);
    void (*setActiveLayerIndex)(ADoc*, int);
    unsigned long (*getBackgroundColor)(ADoc*);
    void (*setBackgroundColor)(ADoc*, unsigned long);
    AWinDoc* (*getActiveView)(ADoc*);
    void (*setActiveView)(ADoc*, AWinDoc*);
    float (*getMaxZ)(ADoc*);
    void (*setMaxZ)(ADoc*, float);
    float (*getMaxShadedZ)(ADoc*);
    void (*setMaxShadedZ)(ADoc*, float);
    void (*notifyChanged)(ADoc*);
    void (*copyToDoc)(ADoc*, ABMap*);
};

struct AMemFuncTable {
    char* (*getPtr)(AMem*);
    void (*setPtr)(AMem*, char*);
};

struct ABMapFuncTable {
    AGraphix* (*convertToGraphix)(ABMap*);
    ABMap* (*convertFromGraphix)(AGraphix*);
    AObj* (*convertToObj)(ABMap*);
    ABMap* (*convertFromObj)(AObj*);
    AMem* (*getMem)(ABMap*);
    void (*setMem)(ABMap*, AMem*);
    int (*getDepth)(ABMap*);
    void (*setDepth)(ABMap*, int);
    short (*getPreCropedWidth)(ABMap*);
    void (*setPreCropedWidth)(ABMap*, short);
    short (*getPreCropedHeight)(ABMap*);
    void (*setPreCropedHeight)(ABMap*, short);
    unsigned long (*getCropZeroValue)(ABMap*);
    void (*setCropZeroValue)(ABMap*, unsigned long);
    ARect (*getDirtyRect)(ABMap*);
    void (*setDirtyRect)(ABMap*, const ARect&);
};

struct ACanvasFuncTable {
    ABMap* (*convertToBMap)(ACanvas*);
    ACanvas* (*convertFromBMap)(ABMap*);
    AGraphix* (*convertToGraphix)(ACanvas*);
    ACanvas* (*convertFromGraphix)(AGraphix*);
    AObj* (*convertToObj)(ACanvas*);
    ACanvas* (*convertFromObj)(AObj*);
    ABMap* (*getBMap)(ACanvas*, int index);
    void (*setBMap)(ACanvas*, int index, ABMap*);
    unsigned long (*getBackgroundColor)(ACanvas*);
    void (*setBackgroundColor)(ACanvas*, unsigned long);
};

// Unlike in every other table, graphix and objects are converted from before they are converted to.
struct AWinDocFuncTable {
    AWin* (*convertToWin)(AWinDoc*);
    AWinDoc* (*convertFromWin)(AWin*);
    AWinDoc* (*convertFromGraphix)(AGraphix*);
    AGraphix* (*convertToGraphix)(AWinDoc*);
    AWinDoc* (*convertFromObj)(AObj*);
    AObj* (*convertToObj)(AWinDoc*);
    ADoc* (*getDoc)(AWinDoc*);
    void (*setDoc)(AWinDoc*, ADoc*);
};

struct AWinPulldownFuncTable {
    AWin* (*convertToWin)(AWinPulldown*);
    AWinPulldown* (*convertFromWin)(AWin*);
    AGraphix* (*convertToGraphix)(AWinPulldown*);
    AWinPulldown* (*convertFromGraphix)(AGraphix*);
    AObj* (*convertToObj)(AWinPulldown*);
    AWinPulldown* (*convertFromObj)(AObj*);
    int (*getWinsCount)(AWinPulldown*);
    AWin* (*getWin)(AWinPulldown*, int index);
};

struct AMiscFuncTable {
    void (*startDebug)();
    void (*endDebug)();
};

// What the host hands in: the nine tables.
struct DorviaFuncTable {
    AGraphixFuncTable* graphix;
    AWinFuncTable* win;
    ADocFuncTable* doc;
    AMemFuncTable* mem;
    ABMapFuncTable* bMap;
    ACanvasFuncTable* canvas;
    AWinDocFuncTable* winDoc;
    AWinPulldownFuncTable* winPulldown;
    AMiscFuncTable* misc;
};
