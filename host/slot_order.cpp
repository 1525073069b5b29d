// The order of the slots, held against their numbers: a table is what the host built, and a slot
// out of its place would be another function.

#include <cstddef>

#include "host/func_tables.h"

#define VEK_SLOT(table, number, name)                                                \
    static_assert(offsetof(table##FuncTable, name) == (number) * sizeof(void (*)()), \
                  "slot " #number " of " #table "FuncTable is " #name)
#define VEK_SLOTS(table, count)                                             \
    static_assert(sizeof(table##FuncTable) == (count) * sizeof(void (*)()), \
                  #table " has " #count " slots")

VEK_SLOT(AGraphix, 0, convertToObj);
VEK_SLOT(AGraphix, 1, convertFromObj);
VEK_SLOT(AGraphix, 2, getPos);
VEK_SLOT(AGraphix, 3, setPos);
VEK_SLOT(AGraphix, 4, getSize);
VEK_SLOT(AGraphix, 5, setSize);
VEK_SLOT(AGraphix, 6, getClip);
VEK_SLOT(AGraphix, 7, setClip);
VEK_SLOT(AGraphix, 8, getParentWindow);
VEK_SLOT(AGraphix, 9, setParentWindow);
VEK_SLOT(AGraphix, 10, getChildWindow);
VEK_SLOT(AGraphix, 11, setChildWindow);
VEK_SLOT(AGraphix, 12, getNextWindow);
VEK_SLOT(AGraphix, 13, setNextWindow);
VEK_SLOT(AGraphix, 14, getPrevWindow);
VEK_SLOT(AGraphix, 15, setPrevWindow);
VEK_SLOTS(AGraphix, 16);

VEK_SLOT(AWin, 0, convertToGraphix);
VEK_SLOT(AWin, 1, convertFromGraphix);
VEK_SLOT(AWin, 2, convertToObj);
VEK_SLOT(AWin, 3, convertFromObj);
VEK_SLOT(AWin, 4, getCmdState);
VEK_SLOT(AWin, 5, setCmdState);
VEK_SLOT(AWin, 6, getText);
VEK_SLOT(AWin, 7, setText);
VEK_SLOT(AWin, 8, getMaximizeAmount);
VEK_SLOT(AWin, 9, setMaximizeAmount);
VEK_SLOTS(AWin, 10);

VEK_SLOT(ADoc, 0, convertToGraphix);
VEK_SLOT(ADoc, 1, convertFromGraphix);
VEK_SLOT(ADoc, 2, convertToObj);
VEK_SLOT(ADoc, 3, convertFromObj);
VEK_SLOT(ADoc, 4, getWorkCanvas);
VEK_SLOT(ADoc, 5, setWorkCanvas);
VEK_SLOT(ADoc, 6, getAllLayersCompositeCanvas);
VEK_SLOT(ADoc, 7, setAllLayersCompositeCanvas);
VEK_SLOT(ADoc, 8, getLayer);
VEK_SLOT(ADoc, 9, setLayer);
VEK_SLOT(ADoc, 10, getLayersCount);
VEK_SLOT(ADoc, 11, setLayersCount);
VEK_SLOT(ADoc, 12, getActiveLayerIndex);
VEK_SLOT(ADoc, 13, setActiveLayerIndex);
VEK_SLOT(ADoc, 14, getBackgroundColor);
VEK_SLOT(ADoc, 15, setBackgroundColor);
VEK_SLOT(ADoc, 16, getActiveView);
VEK_SLOT(ADoc, 17, setActiveView);
VEK_SLOT(ADoc, 18, getMaxZ);
VEK_SLOT(ADoc, 19, setMaxZ);
VEK_SLOT(ADoc, 20, getMaxShadedZ);
VEK_SLOT(ADoc, 21, setMaxShadedZ);
VEK_SLOT(ADoc, 22, notifyChanged);
VEK_SLOT(ADoc, 23, copyToDoc);
VEK_SLOTS(ADoc, 24);

VEK_SLOT(AMem, 0, getPtr);
VEK_SLOT(AMem, 1, setPtr);
VEK_SLOTS(AMem, 2);

VEK_SLOT(ABMap, 0, convertToGraphix);
VEK_SLOT(ABMap, 1, convertFromGraphix);
VEK_SLOT(ABMap, 2, convertToObj);
VEK_SLOT(ABMap, 3, convertFromObj);
VEK_SLOT(ABMap, 4, getMem);
VEK_SLOT(ABMap, 5, setMem);
VEK_SLOT(ABMap, 6, getDepth);
VEK_SLOT(ABMap, 7, setDepth);
VEK_SLOT(ABMap, 8, getPreCropedWidth);
VEK_SLOT(ABMap, 9, setPreCropedWidth);
VEK_SLOT(ABMap, 10, getPreCropedHeight);
VEK_SLOT(ABMap, 11, setPreCropedHeight);
VEK_SLOT(ABMap, 12, getCropZeroValue);
VEK_SLOT(ABMap, 13, setCropZeroValue);
VEK_SLOT(ABMap, 14, getDirtyRect);
VEK_SLOT(ABMap, 15, setDirtyRect);
VEK_SLOTS(ABMap, 16);

VEK_SLOT(ACanvas, 0, convertToBMap);
VEK_SLOT(ACanvas, 1, convertFromBMap);
VEK_SLOT(ACanvas, 2, convertToGraphix);
VEK_SLOT(ACanvas, 3, convertFromGraphix);
VEK_SLOT(ACanvas, 4, convertToObj);
VEK_SLOT(ACanvas, 5, convertFromObj);
VEK_SLOT(ACanvas, 6, getBMap);
VEK_SLOT(ACanvas, 7, setBMap);
VEK_SLOT(ACanvas, 8, getBackgroundColor);
VEK_SLOT(ACanvas, 9, setBackgroundColor);
VEK_SLOTS(ACanvas, 10);

VEK_SLOT(AWinDoc, 0, convertToWin);
VEK_SLOT(AWinDoc, 1, convertFromWin);
VEK_SLOT(AWinDoc, 2, convertFromGraphix);
VEK_SLOT(AWinDoc, 3, convertToGraphix);
VEK_SLOT(AWinDoc, 4, convertFromObj);
VEK_SLOT(AWinDoc, 5, convertToObj);
VEK_SLOT(AWinDoc, 6, getDoc);
VEK_SLOT(AWinDoc, 7, setDoc);
VEK_SLOTS(AWinDoc, 8);

VEK_SLOT(AWinPulldown, 0, convertToWin);
VEK_SLOT(AWinPulldown, 1, convertFromWin);
VEK_SLOT(AWinPulldown, 2, convertToGraphix);
VEK_SLOT(AWinPulldown, 3, convertFromGraphix);
VEK_SLOT(AWinPulldown, 4, convertToObj);
VEK_SLOT(AWinPulldown, 5, convertFromObj);
VEK_SLOT(AWinPulldown, 6, getWinsCount);
VEK_SLOT(AWinPulldown, 7, getWin);
VEK_SLOTS(AWinPulldown, 8);

VEK_SLOT(AMisc, 0, startDebug);
VEK_SLOT(AMisc, 1, endDebug);
VEK_SLOTS(AMisc, 2);

VEK_SLOT(Dorvia, 0, graphix);
VEK_SLOT(Dorvia, 1, win);
VEK_SLOT(Dorvia, 2, doc);
VEK_SLOT(Dorvia, 3, mem);
VEK_SLOT(Dorvia, 4, bMap);
VEK_SLOT(Dorvia, 5, canvas);
VEK_SLOT(Dorvia, 6, winDoc);
VEK_SLOT(Dorvia, 7, winPulldown);
VEK_SLOT(Dorvia, 8, misc);
VEK_SLOTS(Dorvia, 9);
