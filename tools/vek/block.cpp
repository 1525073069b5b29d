#include "tools/vek/block.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t kSpare = 65536;
constexpr char kFill = '\x5A';  // tells bytes that were not written from those that were

// A text that need not end with a NUL goes into zeros, as the host does it.
char fillOf(BlockKind kind) {
    return kind == BlockKind::OUT_SIZED_TEXT ? '\0' : kFill;
}

template <class Number>
std::string packed(Number number) {
    static_assert(sizeof number == 4, "the host's numbers");
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

std::int32_t toInteger(const std::string& text) {
    std::size_t used = 0;
    const long long number = std::stoll(text, &used);
    if (used != text.size() || number < INT32_MIN || number > INT32_MAX)
        throw std::out_of_range("");
    return static_cast<std::int32_t>(number);
}

float toReal(const std::string& text) {
    std::size_t used = 0;
    const float number = std::stof(text, &used);
    if (used != text.size()) throw std::out_of_range("");
    return number;
}

std::string pack(BlockKind kind, const std::string& text) {
    try {
        if (kind == BlockKind::IN_INT) return packed(toInteger(text));
        if (kind == BlockKind::IN_FLOAT) return packed(toReal(text));
        if (kind == BlockKind::IN_BOOL) {
            if (text == "true" || text == "false") return packed<std::int32_t>(text == "true");
            return packed(toInteger(text));
        }
    } catch (const std::logic_error&) {
        throw std::invalid_argument(fmt::format(
            "\"{}\" is no {}", text, kind == BlockKind::IN_FLOAT ? "number" : "integer"));
    }
    return text;
}

}  // namespace

Block::Block(BlockKind kind, const std::optional<std::string>& input, int size)
    : m_kind(kind), m_size(size) {
    if (isInput(kind) && input) m_bytes = pack(kind, *input);
    if (isInput(kind) && input) m_size = static_cast<int>(m_bytes.size()) + 1;
    if (isOutput(kind)) m_bytes.assign(static_cast<std::size_t>(size) + kSpare, fillOf(kind));
}

char* Block::data() {
    if (m_kind == BlockKind::NONE) return nullptr;
    // An input that was not given is a null block, unless it is the empty text.
    if (isInput(m_kind) && m_bytes.empty() && m_size == 0) return nullptr;
    return m_bytes.data();
}

bool Block::written() const {
    return m_bytes.find_first_not_of(fillOf(m_kind)) != std::string::npos;
}

std::int32_t Block::integer() const {
    std::int32_t number;
    std::memcpy(&number, m_bytes.data(), sizeof number);
    return number;
}

float Block::real() const {
    float number;
    std::memcpy(&number, m_bytes.data(), sizeof number);
    return number;
}

unsigned int Block::switches() const {
    std::uint32_t low, high;
    std::memcpy(&low, m_bytes.data(), sizeof low);
    std::memcpy(&high, m_bytes.data() + 8, sizeof high);
    return (low & 0xFFFFu) | high << 16;
}

std::string Block::readable() const {
    if (!written()) return "untouched";
    switch (m_kind) {
        case BlockKind::OUT_INT:
            return fmt::format("{}", integer());
        case BlockKind::OUT_BOOL:
            return integer() ? "true" : "false";
        case BlockKind::OUT_FLOAT:
            return fmt::format("{}", real());
        case BlockKind::OUT_IO_PREFS:
            return fmt::format("{} {} ({})", switches() & 0xFFFFu, switches() >> 16,
                               fmt::join(switchNames(switches()), ", "));
        default:
            return fmt::format("\"{}\"{}", text(),
                               text().size() + 1 > static_cast<std::size_t>(m_size)
                                   ? fmt::format(" (more than the {} bytes asked for)", m_size)
                                   : "");
    }
}
