// Set algebra of bit arrays.

#include <algorithm>
#include <cstring>

#include "foundation/bit_lines.h"
#include "foundation/bit_words.h"
#include "foundation/bx_bool_array.h"

namespace {

template <class Operation, class Word>
Word resultOf(Word a, Word b) {
    Operation::apply(a, b);
    return a;
}

// Puts the operation's results in the place of the first `bits` bits of `to`, and of no other.
template <class Operation>
void combine(unsigned char* to, const unsigned char* from, int bits) noexcept {
    const int bytes = bits / 8;
    combineBytes<Operation>(to, from, bytes);
    if (bits % 8 == 0) return;
    const unsigned char result = resultOf<Operation>(to[bytes], from[bytes]);
    const unsigned char mask = bitsBelow(bits % 8);
    to[bytes] = static_cast<unsigned char>((to[bytes] & ~mask) | (result & mask));
}

// Whether the operation's result has a 1 in the first `bits` bits.
template <class Operation>
bool anyOf(const unsigned char* a, const unsigned char* b, int bits) noexcept {
    const int bytes = bits / 8;
    int byte = 0;
    for (; byte + kBitWordBytes <= bytes; byte += kBitWordBytes) {
        if (resultOf<Operation>(loadBits(a + byte), loadBits(b + byte))) return true;
    }
    for (; byte < bytes; ++byte) {
        if (resultOf<Operation>(a[byte], b[byte])) return true;
    }
    return bits % 8 && (resultOf<Operation>(a[bytes], b[bytes]) & bitsBelow(bits % 8));
}

}  // namespace

void BXBoolArray::set(const BXBoolArray& other) {
    if (other.m_count > m_count) resize(other.m_count, false);
    combine<Or>(m_data, other.m_data, other.m_count);
}

void BXBoolArray::toggle(const BXBoolArray& other) {
    if (other.m_count > m_count) resize(other.m_count, false);
    combine<Xor>(m_data, other.m_data, other.m_count);
}

void BXBoolArray::inter(const BXBoolArray& other) noexcept {
    const int common = std::min(m_count, other.m_count);
    combine<And>(m_data, other.m_data, common);
    m_count = common;
    // The storage behind the bits left over begins with a guard of its own.
    unsigned char* const behind = m_data + usedBytes();
    if (behind < m_dataEnd) *behind = 1;
}

void BXBoolArray::clear(const BXBoolArray& other) noexcept {
    combine<AndNot>(m_data, other.m_data, std::min(m_count, other.m_count));
}

bool BXBoolArray::hasInter(const BXBoolArray& other) const noexcept {
    return anyOf<And>(m_data, other.m_data, std::min(m_count, other.m_count));
}

bool BXBoolArray::bitTest(const BXBoolArray& mask) const noexcept {
    if (mask.findLast(true) >= m_count) return false;
    return !anyOf<AndNot>(mask.m_data, m_data, std::min(m_count, mask.m_count));
}

bool BXBoolArray::operator==(const BXBoolArray& other) const noexcept {
    if (m_count != other.m_count) return false;
    if (m_count == 0) return true;
    // Required(R43): without a byte in part there is nothing left to compare, and that is not
    // equal: no array of 8, 16, 24 ... bits is equal to another, nor to itself.
    const int partial = m_count % 8;
    if (partial == 0) return false;
    const int bytes = m_count / 8;
    if (std::memcmp(m_data, other.m_data, static_cast<std::size_t>(bytes)) != 0) return false;
    return ((m_data[bytes] ^ other.m_data[bytes]) & bitsBelow(partial)) == 0;
}
