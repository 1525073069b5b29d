#pragma once

#include <cstdint>

// What the host owns and hands in: objects behind pointers that only it looks into, and the few
// values that pass through its functions. The layouts are the host's.

struct AObj;
struct AGraphix;
struct AWin;
struct ADoc;
struct AMem;
struct ABMap;
struct ACanvas;
struct AWinDoc;
struct AWinPulldown;

// Records of which only some fields are known; see host_record.h.
struct AStr;
struct ACmdState;
// A layer of a document; never looked into, so it is passed by reference alone.
struct ADocLayer;

// A position or a size.
struct FPoint {
    float x, y;
};

struct ARect {
    std::int32_t left, top, right, bottom;
};

// A number of the host's interface.
using AVar = float;

static_assert(sizeof(FPoint) == 8 && sizeof(ARect) == 16,
              "passed by value as the host lays them out");
