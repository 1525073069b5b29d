#include "formats/bx_binary_file.h"

#include "os/bx_disk_server.h"
#include "os/bx_file.h"

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "numbers are written as they lie in memory: a big-endian build has to swap them"
#endif

BXBinaryFile::BXBinaryFile(const BXString& path, const char* mode) {
    open(path, mode);
}

BXBinaryFile::~BXBinaryFile() {
    close();
}

bool BXBinaryFile::open(const BXString& path, const char* mode) {
    close();
    m_file = BXFile::openStream(path.getValidFilePath(), mode);
    return m_file != BXDiskServer::s_invalidFile;
}

void BXBinaryFile::close() {
    if (m_file == BXDiskServer::s_invalidFile) return;
    std::fclose(m_file);
    m_file = BXDiskServer::s_invalidFile;
}

bool BXBinaryFile::write(int value) {
    return writeBytes(&value, sizeof value);
}

bool BXBinaryFile::write(float value) {
    return writeBytes(&value, sizeof value);
}

bool BXBinaryFile::read(int& value) const {
    return readBytes(&value, sizeof value);
}

bool BXBinaryFile::read(float& value) const {
    return readBytes(&value, sizeof value);
}

bool BXBinaryFile::writeBytes(const void* bytes, std::size_t count) {
    if (m_file == BXDiskServer::s_invalidFile) return false;
    return count == 0 || std::fwrite(bytes, 1, count, m_file) == count;
}

bool BXBinaryFile::readBytes(void* bytes, std::size_t count) const {
    if (m_file == BXDiskServer::s_invalidFile) return false;
    return count == 0 || std::fread(bytes, 1, count, m_file) == count;
}
