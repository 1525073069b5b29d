#pragma once

#include <cstdio>

#include "formats/vectors.h"
#include "foundation/bx_array.h"
#include "foundation/bx_bool_array.h"
#include "foundation/bx_string.h"
#include "os/bx_disk_server.h"

// A binary file stream. Every item is little-endian, as it lies in the memory of the processors
// this is built for:
//
//   int, float      4 bytes
//   text            its length with the NUL as int, the bytes with the NUL, zeros up to a multiple
//                   of 4; the empty and the null text: 01 00 00 00 00 00 00 00
//   array           the number of elements as int, then the elements: 4 bytes each, 2 for short,
//                   1 for char, 8 or 12 for vectors; after short and char elements zeros up to a
//                   multiple of 4 bytes, unless m_packArrays is true
//   bit array       as an array of char: 1 for each bit that is set, 0 for the others
//
// Results are true on success. With no file open every transfer is false and touches nothing; after
// any false the position in the file is not defined. Neither copied nor moved: the object owns its
// stream and closes it.
class BXBinaryFile {
public:
    BXBinaryFile() = default;
    // Opens at once, as open does; whether that worked shows in isOpen and in every transfer.
    BXBinaryFile(const BXString& path, const char* mode);
    BXBinaryFile(const BXBinaryFile&) = delete;
    BXBinaryFile& operator=(const BXBinaryFile&) = delete;
    ~BXBinaryFile();

    bool isOpen() const { return m_file != BXDiskServer::s_invalidFile; }
    void close();

    // An array of more elements than an int counts is not written.
    bool write(int value);
    bool write(float value);
    bool write(const BXString& text);
    bool write(const BXArray<int>& array);
    bool write(const BXArray<unsigned int>& array);
    bool write(const BXArray<unsigned short>& array);
    bool write(const BXArray<unsigned char>& array);
    bool write(const BXArray<BXVector2f>& array);
    bool write(const BXArray<BXVector3f>& array);
    bool write(const BXBoolArray& bits);

    // Closes any open file, then opens the valid file path of `path` with a standard mode string.
    // Only regular files open.
    bool open(const BXString& path, const char* mode);

    // The zeros that follow n bytes up to a multiple of 4. True without any where n is a multiple.
    bool writeAlignData(int n);
    // The characters alone.
    bool writeAsciiString(const BXString& text);

    bool read(int& value) const;
    bool read(float& value) const;
    // The text ends at the first NUL among its bytes. False, with the text as it was, for a
    // negative length.
    bool read(BXString& text) const;
    // False, with the array as it was, where there is no count or a negative one. Where the file
    // ends inside the elements, false, with all of them in the array and those that did not come 0;
    // but elements of more than a MiB that the whole file could not hold are not made room for: the
    // array then has those that came.
    bool read(BXArray<int>& array) const;
    bool read(BXArray<unsigned int>& array) const;
    bool read(BXArray<unsigned short>& array) const;
    bool read(BXArray<unsigned char>& array) const;
    bool read(BXArray<BXVector2f>& array) const;
    bool read(BXArray<BXVector3f>& array) const;
    // A byte that is not 0 is a bit that is set. False leaves the bits as they were.
    bool read(BXBoolArray& bits) const;
    // Reads what writeAlignData writes, whatever the bytes.
    bool readAlignData(int n) const;

    // While true, arrays of 16-bit and 8-bit elements get no zeros after their elements.
    bool m_packArrays = true;
    // The open file, or BXDiskServer::s_invalidFile.
    std::FILE* m_file = nullptr;

protected:
    // Exactly `count` bytes, or false.
    bool writeBytes(const void* bytes, std::size_t count);
    bool readBytes(void* bytes, std::size_t count) const;

private:
    std::size_t readUpTo(void* bytes, std::size_t count) const;
    int roomFor(int count, int elementSize) const;
    bool readCount(int& count) const;
    template <class Element>
    bool writeArray(const BXArray<Element>& array);
    template <class Element>
    bool writePaddedArray(const BXArray<Element>& array);
    template <class Element>
    bool readArray(BXArray<Element>& array) const;
    template <class Element>
    bool readPaddedArray(BXArray<Element>& array) const;
};
