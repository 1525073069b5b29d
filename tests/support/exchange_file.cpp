#include "tests/support/exchange_file.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

template <class Value>
std::string packed(const std::vector<Value>& values) {
    return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Value));
}

template <class Value>
std::vector<Value> unpacked(const std::string& bytes, std::size_t offset, std::size_t count) {
    std::vector<Value> values(count);
    if (offset + count * sizeof(Value) > bytes.size()) {
        ADD_FAILURE() << "no " << count << " values at " << offset;
        return values;
    }
    std::memcpy(values.data(), bytes.data() + offset, count * sizeof(Value));
    return values;
}

}  // namespace

ExchangeFile::ExchangeFile() : m_bytes("Vekb") {
    m_bytes.append(28, '\0');
}

ExchangeFile& ExchangeFile::block(std::uint32_t id, std::uint32_t count, const std::string& payload,
                                  float param) {
    const auto size = static_cast<std::uint32_t>((payload.size() + 19) / 4 * 4);
    for (const std::uint32_t field : {id, size, count}) {
        m_bytes.append(reinterpret_cast<const char*>(&field), 4);
    }
    m_bytes.append(reinterpret_cast<const char*>(&param), 4);
    m_bytes += payload;
    m_bytes.append(size - 16 - payload.size(), '\0');
    return *this;
}

ExchangeFile& ExchangeFile::vertices(const std::vector<float>& xyz) {
    return block(10001, static_cast<std::uint32_t>(xyz.size() / 3), packed(xyz));
}

ExchangeFile& ExchangeFile::faces(std::uint32_t id, const std::vector<std::int32_t>& indices) {
    const std::size_t corners = id == 20003 ? 3 : 4;
    return block(id, static_cast<std::uint32_t>(indices.size() / corners), packed(indices));
}

ExchangeFile& ExchangeFile::corners(std::uint32_t id, const std::vector<std::int32_t>& values) {
    return block(id, 0, packed(values));
}

ExchangeFile& ExchangeFile::map(std::uint32_t id, const std::string& name, float param) {
    return block(id, 0, name + '\0', param);
}

ExchangeFile& ExchangeFile::end() {
    m_bytes.append(16, '\0');
    return *this;
}

std::string bytesOf(const std::vector<float>& values) {
    return packed(values);
}

std::string bytesOf(const std::vector<std::int32_t>& values) {
    return packed(values);
}

std::vector<float> floatsAt(const std::string& bytes, std::size_t offset, std::size_t count) {
    return unpacked<float>(bytes, offset, count);
}

std::vector<std::int32_t> intsAt(const std::string& bytes, std::size_t offset, std::size_t count) {
    return unpacked<std::int32_t>(bytes, offset, count);
}
