#pragma once

// Plain vectors. Arrays of them are written to files as they lie in memory.
struct BXVector2f {
    float x = 0.0f;
    float y = 0.0f;
};

static_assert(sizeof(BXVector2f) == 8, "the layout of the file");
