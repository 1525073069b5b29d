#include "formats/vek_face_rewind.h"

#include <cstring>

#include "formats/vek_header.h"

namespace {

std::int32_t load(const char* group, std::size_t index) {
    std::int32_t value;
    std::memcpy(&value, group + 4 * index, sizeof value);
    return value;
}

void store(char* group, std::size_t index, std::int32_t value) {
    std::memcpy(group + 4 * index, &value, sizeof value);
}

// Exchanges the second value with the third (triangle) or the fourth (quad). Written without a
// branch: in a mesh of both, the next face's kind is anybody's guess.
void exchange(char* group, bool triangle) {
    const std::int32_t second = load(group, 1);
    const std::int32_t third = load(group, 2);
    const std::int32_t fourth = load(group, 3);
    store(group, 1, triangle ? third : fourth);
    store(group, 2, triangle ? second : third);
    store(group, 3, triangle ? fourth : second);
}

// As above, with the fourth value following the third in a triangle.
void exchangeRepeating(char* group, bool triangle) {
    const std::int32_t second = load(group, 1);
    const std::int32_t third = load(group, 2);
    const std::int32_t fourth = load(group, 3);
    store(group, 1, triangle ? third : fourth);
    store(group, 2, triangle ? second : third);
    store(group, 3, second);
}

void exchangeThree(char* group) {
    const std::int32_t second = load(group, 1);
    store(group, 1, load(group, 2));
    store(group, 2, second);
}

void rewindNegative(char* faces, char* corners, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, faces += 16) {
        const bool triangle = load(faces, 3) < 0;
        exchange(faces, triangle);
        if (corners) exchange(corners + 16 * i, triangle);
    }
}

void rewindRepeated(char* faces, char* corners, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, faces += 16) {
        const bool triangle = load(faces, 3) == load(faces, 2);
        exchangeRepeating(faces, triangle);
        if (corners) exchangeRepeating(corners + 16 * i, triangle);
    }
}

void rewindTriangles(char* faces, char* corners, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (faces) exchangeThree(faces + 12 * i);
        if (corners) exchangeThree(corners + 12 * i);
    }
}

}  // namespace

std::size_t vekFaceStride(std::uint32_t faceKind) {
    return faceKind == kVekTriangles ? 12 : 16;
}

void rewindVekFaces(std::uint32_t faceKind, char* faces, char* corners, std::size_t count) {
    if (faceKind == kVekTriangles) return rewindTriangles(faces, corners, count);
    if (faceKind == kVekFacesRepeated) return rewindRepeated(faces, corners, count);
    rewindNegative(faces, corners, count);
}
