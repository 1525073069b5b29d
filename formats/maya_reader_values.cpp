// The values of statements: numbers, and the UVs, edges, vertices and faces that they make.

#include <algorithm>
#include <cmath>

#include "formats/maya_reader.h"
#include "formats/number_parser.h"

// ---- Values

// Moves to the next value. False at the end of the text.
bool MayaReader::nextToken() {
    if (isMayaSeparator(*m_in.at) || m_in.at == m_in.end) m_in.skipSeparators();
    return m_in.more() || refuse("no ';' at its end");
}

template <class Number, class Parse>
bool MayaReader::nextNumber(Number& value, Parse parse) {
    if (!nextToken()) return false;
    const char* p = parse(m_in.at, value);
    if (!p)
        return refuse(*m_in.at == ';' ? "fewer values than its range has entries"
                                      : "a value that is no number");
    // What a number's form does not reach, an exponent say, is passed over.
    while (!isMayaSeparator(*p) && *p != ';' && *p != '"' && p < m_in.end) ++p;
    if (*p == '"') return refuse("a quote in a value");
    if (m_in.isCutOff(p)) return refuse("a value of thousands of characters");
    m_in.at = p;
    return true;
}

bool MayaReader::nextInt(int& value) {
    return nextNumber(value, [](const char* p, int& to) { return parseMayaInt(p, to); });
}

// Values with one separator between them, far from the end of what has been read, take the short
// way; all others that of nextNumber.
template <class Number, class Parse>
bool MayaReader::readNumbers(Number* to, std::int64_t count, Parse parse) {
    Number* const toEnd = to + count;
    while (to < toEnd) {
        const char* p = m_in.at;
        const char* const near = m_in.end - MayaInput::kLookAhead;
        for (; to < toEnd && p < near; ++to) {
            if (isMayaSeparator(*p)) ++p;
            const char* const numberEnd = parse(p, *to);
            if (!numberEnd || !(isMayaSeparator(*numberEnd) || *numberEnd == ';')) break;
            p = numberEnd;
        }
        m_in.at = p;
        if (to < toEnd && !nextNumber(*to++, parse)) return false;
    }
    return true;
}

bool MayaReader::readFloats(float* to, std::int64_t count) {
    const bool read = readNumbers(
        to, count, [](const char* p, float& value) { return parseMayaFloat(p, value); });
    if (!read) return false;
    const bool finite =
        std::all_of(to, to + count, [](float value) { return std::isfinite(value); });
    return finite || refuse("a number that is too large");
}

bool MayaReader::readInts(int* to, int count) {
    return readNumbers(to, count, [](const char* p, int& value) { return parseMayaInt(p, value); });
}

// Whether the rest of the text can hold so many values: memory is taken for them only then.
bool MayaReader::fits(std::int64_t values) {
    return values * kLeastValueBytes <= m_in.bytesLeft() ||
           refuse("a range of more entries than the text holds");
}

// ---- UVs, edges, vertices

bool MayaReader::readUVs(const Form& form) {
    const std::int64_t count = std::int64_t{form.last} - form.first + 1;
    if (!fits(2 * count)) return false;
    BXArray<BXVector2f>& uvs = mesh().uvs;
    const std::size_t stored = uvs.size();
    mesh().uvRanges.begin(form.first, form.last, stored);
    uvs.resize(stored + static_cast<std::size_t>(count));
    return readFloats(&uvs[stored].x, 2 * count);
}

bool MayaReader::readVertices(const Form& form) {
    const std::int64_t count = std::int64_t{form.last} - form.first + 1;
    if (!fits(3 * count)) return false;
    std::vector<float>& vertices = mesh().vertices;
    const std::size_t stored = vertices.size();
    mesh().vertexRanges.begin(form.first, form.last, stored);
    vertices.resize(stored + static_cast<std::size_t>(3 * count));
    return readFloats(&vertices[stored], 3 * count);
}

bool MayaReader::readEdges(const Form& form) {
    const std::int64_t count = std::int64_t{form.last} - form.first + 1;
    if (!fits(3 * count)) return false;
    std::vector<int>& edges = mesh().edges;
    const std::size_t stored = edges.size();
    mesh().edgeRanges.begin(form.first, form.last, stored);
    edges.resize(stored + static_cast<std::size_t>(2 * count));
    for (std::size_t i = stored; i < edges.size(); i += 2) {
        int ignoredMark;
        if (!readInts(&edges[i], 2) || !nextInt(ignoredMark)) return false;
        if (edges[i] < 0 || edges[i + 1] < 0) return refuse("a vertex below 0");
    }
    return true;
}

// ---- Faces of the merge

bool MayaReader::readQuads(const Form& form) {
    constexpr std::int64_t kLeastFaceValues = 5;  // f 3 and three references
    const std::int64_t count = std::int64_t{form.last} - form.first + 1;
    if (!fits(kLeastFaceValues * count)) return false;
    MayaQuads& quads = mesh().quads;
    const std::size_t stored = quads.edges.size();
    mesh().faceRanges.begin(form.first, form.last, stored);
    mesh().faceStatements.push_back({m_begin, stored});
    const std::size_t slots = stored + static_cast<std::size_t>(4 * count);
    if (slots > static_cast<std::size_t>(INT_MAX)) return refuse("too many faces");
    quads.edges.resize(slots);
    if (!quads.uvIndices.empty()) quads.uvIndices.resize(slots, MayaQuads::kNoUV);
    for (std::size_t slot = stored; slot < slots; slot += 4) {
        if (!readQuad(&quads.edges[slot], slot)) return false;
    }
    return true;
}

bool MayaReader::readQuad(int* edges, std::size_t slot) {
    if (!nextToken()) return false;
    if (*m_in.at == ';') return refuse("fewer faces than its range has entries");
    if (m_in.at[0] != 'f' || !isMayaSeparator(m_in.at[1])) return refuse("an unknown word");
    ++m_in.at;
    int corners;
    if (!nextInt(corners)) return false;
    if (corners != 3 && corners != 4) return refuse("a face that has neither 3 nor 4 corners");
    if (!readInts(edges, corners)) return false;
    if (corners == 3) {
        edges[3] = MayaQuads::kNoEdge;
    } else if (edges[3] == MayaQuads::kNoEdge) {
        return refuse("an edge that is not there");
    }

    if (!nextToken()) return false;
    if (*m_in.at == 'h') return refuse("a face with a hole");
    if (*m_in.at != 'm') return true;
    if (m_in.at[1] == 'c' && isMayaSeparator(m_in.at[2])) return refuse("a list of colours");
    if (m_in.at[1] != 'u' || !isMayaSeparator(m_in.at[2])) return refuse("an unknown word");
    m_in.at += 2;
    int set, listed;
    if (!nextInt(set) || !nextInt(listed)) return false;
    if (set != 0) return refuse("a list of a further UV set");
    if (listed != corners) return refuse("a list of UVs that is not as long as its face");
    BXArray<int>& uvIndices = mesh().quads.uvIndices;
    if (uvIndices.empty()) {
        uvIndices.reserve(mesh().quads.edges.capacity());
        uvIndices.resize(mesh().quads.edges.size(), MayaQuads::kNoUV);
    }
    int* const uvs = &uvIndices[slot];
    if (!readInts(uvs, corners)) return false;
    for (int i = 0; i < corners; ++i) {
        if (uvs[i] < 0) return refuse("a UV index below 0");
    }
    if (!nextToken()) return false;
    return *m_in.at != 'm' || refuse("a second list");
}

// ---- Faces of the split

bool MayaReader::readFaceRow(const Form& form) {
    constexpr std::int64_t kLeastFaceValues = 3;  // f 1 and a reference
    const std::int64_t count = std::int64_t{form.last} - form.first + 1;
    if (!fits(kLeastFaceValues * count)) return false;
    mesh().faceRanges.begin(form.first, form.last, mesh().faceRow.items.size());
    mesh().faceStatements.push_back({m_begin, mesh().faceRow.items.size()});
    for (std::int64_t face = 0; face < count; ++face) {
        if (!readFace()) return false;
    }
    return true;
}

bool MayaReader::readFace() {
    if (!nextToken()) return false;
    if (*m_in.at == ';') return refuse("fewer faces than its range has entries");
    if (*m_in.at != 'f') return refuse("an unknown word");
    MayaFaceRow& row = mesh().faceRow;
    do {
        if (!isMayaSeparator(m_in.at[1])) return refuse("an unknown word");
        const auto loop = *m_in.at == 'f' ? MayaFaceRow::kFace : MayaFaceRow::kHole;
        ++m_in.at;
        int corners = 0;
        if (!nextInt(corners)) return false;
        if (corners < 1) return refuse("a face without corners");
        if (!fits(corners)) return false;
        const std::size_t at = row.items.size();
        row.items.resize(at + 2 + static_cast<std::size_t>(corners));
        row.items[at] = loop;
        row.items[at + 1] = corners;
        row.corners += corners;
        if (row.corners > INT_MAX) return refuse("too many faces");
        if (!readInts(&row.items[at + 2], corners) || !readLists(corners)) return false;
    } while (*m_in.at == 'h');
    return true;
}

bool MayaReader::readLists(int corners) {
    MayaFaceRow& row = mesh().faceRow;
    bool hasUVs = false;
    while (nextToken()) {
        if (*m_in.at != 'm') return true;
        const char kind = m_in.at[1];
        if ((kind != 'u' && kind != 'c') || !isMayaSeparator(m_in.at[2])) {
            return refuse("an unknown word");
        }
        m_in.at += 2;
        int set = 0, listed = 0;
        if (!nextInt(set) || !nextInt(listed)) return false;
        if (set < 0) return refuse("a set below 0");
        if (listed != corners) return refuse("a list that is not as long as its loop");
        const bool isUVs = kind == 'u' && set == 0;
        if (isUVs && hasUVs) return refuse("two lists of UVs");
        hasUVs = hasUVs || isUVs;
        row.usesUVs = row.usesUVs || isUVs;
        const std::size_t at = row.items.size();
        row.items.resize(at + 2 + static_cast<std::size_t>(corners));
        row.items[at] = kind == 'u' ? MayaFaceRow::kUVs : MayaFaceRow::kColours;
        row.items[at + 1] = set;
        if (!readInts(&row.items[at + 2], corners)) return false;
    }
    return false;
}
