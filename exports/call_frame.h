#pragma once

#include "exports/vek.h"
#include "foundation/bx_string.h"

// The way into and out of every export: arguments to library values, library values to blocks, and
// the guard that keeps exceptions out of the host.

// The head of an export's definition. All seven arguments stand in every one, used or not.
#define VEK_DEFINE(name)                                                         \
    float name([[maybe_unused]] char* text, [[maybe_unused]] double value,       \
               [[maybe_unused]] char* buffer1, [[maybe_unused]] int buffer1Size, \
               [[maybe_unused]] char* buffer2, [[maybe_unused]] int buffer2Size, \
               [[maybe_unused]] char** hostData)

// Runs the body of an export. Whatever it throws becomes the export's failure result.
template <class Body>
float guarded(float failure, Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

inline float yesOrNo(bool yes) {
    return yes ? 1.0f : 0.0f;
}

// The index that a number argument means: truncated toward zero; -1 for what no 32-bit integer
// holds.
int indexArgument(double value);

// Copies a text and its NUL into the host's block; a null block is skipped, the null string is a
// single NUL.
void textOut(char* buffer, const BXString& text);

// 4-byte numbers in the host's blocks, which need not be aligned. `buffer` must not be null.
template <class Number>
void numberOut(char* buffer, Number number);
template <class Number>
Number numberIn(const char* buffer);

extern template void numberOut<int>(char*, int);
extern template void numberOut<float>(char*, float);
extern template int numberIn<int>(const char*);
extern template float numberIn<float>(const char*);
