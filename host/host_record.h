#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "host/host_types.h"

// The host's records are read by the offsets of their fields, in bytes, the same for both word
// sizes. A record need not be aligned; a null one reads as zeros.

template <class Field>
Field hostField(const void* record, std::size_t offset) {
    Field field{};
    // NOLINTNEXTLINE(bugprone-sizeof-expression): a field can be a pointer.
    if (record) std::memcpy(&field, static_cast<const char*>(record) + offset, sizeof field);
    return field;
}

// The characters of a text record: `count` of them, no NUL behind them. Null and 0 for no text.
struct HostText {
    const char* characters = nullptr;
    std::uint32_t count = 0;
};

inline HostText hostText(const AStr* text) {
    constexpr std::size_t kCount = 20, kCharacters = 24;
    const auto count = hostField<std::uint32_t>(text, kCount);
    if (count == 0) return {};
    return {reinterpret_cast<const char*>(text) + kCharacters, count};
}

// The kind of an interface item.
constexpr std::uint16_t kHostPulldownMenu = 1007;
inline std::uint16_t hostKind(const ACmdState* state) {
    constexpr std::size_t kKind = 20;
    return hostField<std::uint16_t>(state, kKind);
}

inline HostText hostLabel(const ACmdState* state) {
    constexpr std::size_t kLabel = 96;
    return hostText(hostField<const AStr*>(state, kLabel));
}
