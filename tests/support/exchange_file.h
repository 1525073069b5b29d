#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Exchange files as bytes, written without the library's own writer.
class ExchangeFile {
public:
    ExchangeFile();  // header only, no end block yet

    // A block with its padding. The count is stated apart from the payload, so that it can lie.
    ExchangeFile& block(std::uint32_t id, std::uint32_t count, const std::string& payload,
                        float param = 0.0f);
    ExchangeFile& vertices(const std::vector<float>& xyz);
    ExchangeFile& faces(std::uint32_t id, const std::vector<std::int32_t>& indices);
    ExchangeFile& corners(std::uint32_t id, const std::vector<std::int32_t>& values);
    ExchangeFile& map(std::uint32_t id, const std::string& name, float param = 0.0f);
    ExchangeFile& end();

    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

// The bytes of 4-byte values, little-endian.
std::string bytesOf(const std::vector<float>& values);
std::string bytesOf(const std::vector<std::int32_t>& values);
// And back: `count` values from `offset` on.
std::vector<float> floatsAt(const std::string& bytes, std::size_t offset, std::size_t count);
std::vector<std::int32_t> intsAt(const std::string& bytes, std::size_t offset, std::size_t count);
