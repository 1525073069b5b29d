#include "exports/call_frame.h"

#include <climits>
#include <cstring>

int indexArgument(double value) {
    // Compared so that NaN fails: one past each end of what truncates into an int.
    if (!(value > INT_MIN - 1.0 && value < INT_MAX + 1.0)) return -1;
    return static_cast<int>(value);
}

void textOut(char* buffer, const BXString& text) {
    if (!buffer) return;
    std::memcpy(buffer, text.c_str(), static_cast<std::size_t>(text.length()) + 1);
}

template <class Number>
void numberOut(char* buffer, Number number) {
    static_assert(sizeof number == 4, "the host's numbers");
    std::memcpy(buffer, &number, sizeof number);
}

template <class Number>
Number numberIn(const char* buffer) {
    static_assert(sizeof(Number) == 4, "the host's numbers");
    Number number;
    std::memcpy(&number, buffer, sizeof number);
    return number;
}

template void numberOut<int>(char*, int);
template void numberOut<float>(char*, float);
template int numberIn<int>(const char*);
template float numberIn<float>(const char*);
