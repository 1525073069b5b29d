#include "formats/maya_reader.h"

#include <algorithm>
#include <cmath>

#include "formats/maya_forms.h"
#include "formats/number_parser.h"

namespace {

// The fewest bytes that a value and its separator take.
constexpr std::int64_t kLeastValueBytes = 2;

int numberOf(MayaThing thing) {
    return __builtin_ctz(thing);
}

bool isEdge(int reference, std::size_t edges) {
    return static_cast<std::size_t>(reference < 0 ? ~reference : reference) < edges;
}

constexpr std::size_t kNone = SIZE_MAX;

// The place, among the stored values, of a face with an edge that is not there; kNone without one.
std::size_t faceWithoutEdge(const MayaQuads& quads, std::size_t edges) {
    for (std::size_t slot = 0; slot < quads.edges.size(); ++slot) {
        const int reference = quads.edges[slot];
        const bool isFree = slot % 4 == 3 && reference == MayaQuads::kNoEdge;
        if (!isFree && !isEdge(reference, edges)) return slot;
    }
    return kNone;
}

std::size_t faceWithoutUV(const MayaQuads& quads, std::size_t uvs) {
    const auto isMissing = [uvs](int index) {
        return index >= 0 && static_cast<std::size_t>(index) >= uvs;
    };
    const auto& all = quads.uvIndices;
    const auto found = std::find_if(all.begin(), all.end(), isMissing);
    return found == all.end() ? kNone : static_cast<std::size_t>(found - all.begin());
}

// The edges of a scene that the split reads are known by their count alone, if at all.
std::size_t faceWithoutEdge(const MayaMesh& mesh) {
    if (mesh.saidEdges < 0) return kNone;
    const auto edges = static_cast<std::size_t>(mesh.saidEdges);
    for (MayaLoops loops(mesh.faceRow); loops.next();) {
        for (int corner = 0; corner < loops.corners(); ++corner) {
            if (!isEdge(loops.edges()[corner], edges)) {
                return static_cast<std::size_t>(loops.edges() - mesh.faceRow.items.data());
            }
        }
    }
    return kNone;
}

std::size_t faceWithoutUV(const MayaMesh& mesh) {
    for (MayaLoops loops(mesh.faceRow); loops.next();) {
        const int* const uvs = loops.uvs();
        for (int corner = 0; uvs && corner < loops.corners(); ++corner) {
            if (uvs[corner] < 0 || static_cast<std::size_t>(uvs[corner]) >= mesh.uvs.size()) {
                return static_cast<std::size_t>(uvs - mesh.faceRow.items.data());
            }
        }
    }
    return kNone;
}

// Where the statement begins that holds the stored value.
std::int64_t faceStatementAt(const MayaMesh& mesh, std::size_t stored) {
    const auto next =
        std::upper_bound(mesh.faceStatements.begin(), mesh.faceStatements.end(), stored,
                         [](std::size_t at, const MayaFaceStatement& s) { return at < s.stored; });
    return std::prev(next)->begin;
}

// UVs that no face uses stay as they are.
void keepUVText(MayaMesh& mesh) {
    auto& all = mesh.statements;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [](const MayaStatement& s) { return s.thing == kMayaUVs; }),
              all.end());
}

}  // namespace

MayaReader::MayaReader(const BXFile& file, MayaDialect dialect)
    : m_in(file), m_dialect(dialect), m_reservable(file.size() / kLeastValueBytes) {}

bool MayaReader::read() {
    m_textEnd = -1;
    while (m_textEnd < 0 && m_in.more()) {
        m_in.skipBlanks();
        m_in.more();
        // Required(R63): the text ends in front of this line, which is not written back either.
        if (m_atLineStart && m_in.comes(s_declareEndOfScene)) {
            m_textEnd = m_begin;
            break;
        }
        if (m_in.take(s_declareNode)) {
            beginNode();
        } else if (m_inScope) {
            const Found found = statement();
            if (found == Found::Refused) return false;
            if (found == Found::Passed) continue;
        }
        m_in.skipLine();
        m_atLineStart = true;
        m_begin = m_in.offset();
    }
    if (m_in.failed()) return refuse("the file cannot be read to its end");
    if (m_textEnd < 0) m_textEnd = m_in.offset();
    return checkMeshes();
}

void MayaReader::beginNode() {
    m_inScope = false;
    if (!isMayaBlank(*m_in.at)) return;
    m_in.skipBlanks();
    m_in.more();
    if (!m_in.take("mesh") || !(isMayaSeparator(*m_in.at) || *m_in.at == ';')) return;
    m_inScope = true;
    m_meshBegins = true;
    m_name.clear();
    m_in.skipBlanks();
    m_in.more();
    if (!m_in.take("-n \"")) return;
    const char* const name = m_in.at;
    while (m_in.at < m_in.end && *m_in.at != '"' && *m_in.at != '\n') ++m_in.at;
    m_name.assign(name, m_in.at);
}

MayaMesh& MayaReader::mesh() {
    if (m_meshBegins) m_meshes.emplace_back().name = m_name;
    m_meshBegins = false;
    return m_meshes.back();
}

bool MayaReader::refuse(const char* reason) {
    return refuseAt(m_begin, reason);
}

bool MayaReader::refuseAt(std::int64_t offset, const char* reason) {
    m_refusal = {reason, offset};
    return false;
}

// ---- Forms

bool MayaReader::takeCount(int& count) {
    if (!isMayaBlank(*m_in.at)) return false;
    m_in.skipBlanks();
    m_in.more();
    const char* const countEnd = parseMayaInt(m_in.at, count);
    if (!countEnd || count < 0 || !isMayaBlank(*countEnd)) return false;
    m_in.at = countEnd;
    m_in.skipBlanks();
    m_in.more();
    return true;
}

bool MayaReader::takeRange(Form& form) {
    const char* p = parseMayaInt(m_in.at, form.first);
    if (!p || form.first < 0) return false;
    form.last = form.first;
    if (*p == ':') p = parseMayaInt(p + 1, form.last);
    if (!p || p[0] != ']' || p[1] != '"') return false;
    m_in.at = p + 2;
    return true;
}

bool MayaReader::recogniseAfterCount(Form& form) {
    const bool split = m_dialect == MayaDialect::Split;
    if (split && m_in.comes(s_declareOptionalCHPrefix)) {
        int corners;
        m_in.take(s_declareOptionalCHPrefix);
        if (!takeCount(corners)) return false;
        form.thing = kMayaFaces;
        return m_in.take(s_declareFaceCountPostfix) ||
               (m_in.take(s_declareFaceRangePostfix) && takeRange(form));
    }
    if (m_in.take(s_declareEdgeCountPostfix)) {
        form.thing = kMayaEdges;
        return true;
    }
    if (m_in.take(s_declareFaceCountPostfix)) {
        form.thing = kMayaFaces;
        return true;
    }
    // Required(R64): a count with its range in one statement, as Maya writes small meshes, is text
    // to the merge, which reads what the host writes.
    if (!split) {
        form.thing = kMayaVertices;
        return m_in.take(s_declarePointCountPostfix);
    }
    // Text for the split, but `vek info` tells these counts too.
    if (m_in.comes("\".vt")) mesh().saidVertices = form.count;
    if (m_in.comes("\".ed[")) mesh().saidEdges = form.count;
    if (m_in.take(s_declareUVCountPostfix)) {
        form.thing = kMayaUVs;
        return true;
    }
    if (m_in.take(s_declareFaceRangePostfix)) {
        form.thing = kMayaFaces;
        return takeRange(form);
    }
    form.thing = kMayaUVs;
    return m_in.take(s_declareUVRangePostfix) && takeRange(form);
}

bool MayaReader::recognise(Form& form) {
    if (!m_in.comes("setAttr ")) return false;
    if (m_in.take(s_declareUVCountLineStart)) {
        form.thing = kMayaUVs;
        return takeCount(form.count) && m_in.take(s_declareUVCountPostfix);
    }
    if (m_in.take(s_declareUVCountPrefix)) {
        return takeCount(form.count) && recogniseAfterCount(form);
    }
    if (m_in.take(s_declareUVRange)) {
        form.thing = kMayaUVs;
        return takeRange(form);
    }
    if (m_in.take(s_declareFaceRange)) {
        form.thing = kMayaFaces;
        return takeRange(form);
    }
    if (m_dialect == MayaDialect::Split) {
        int corners;
        form.thing = kMayaFaces;
        return m_in.take(s_declareFaceRangeWithCH) && takeCount(corners) &&
               m_in.take(s_declareFaceRangePostfix) && takeRange(form);
    }
    if (m_in.take(s_declareEdgeRange)) {
        form.thing = kMayaEdges;
        return takeRange(form);
    }
    form.thing = kMayaVertices;
    return m_in.take(s_declarePointRange) && takeRange(form);
}

// Takes '-type "type"' where it comes next. False when another type is named.
bool MayaReader::takeQuotedType(const char* type, bool& isThere) {
    isThere = m_in.take("-type");
    if (!isThere) return true;
    m_atLineStart = false;
    skipToData();
    return m_in.take(type);
}

// Whether the data behind a range are those of its thing: other types, and other nodes, have
// attributes of the same names.
bool MayaReader::isData(const Form& form) {
    bool typed = false;
    if (form.thing == kMayaUVs) {
        const bool withCount = form.count >= 0;
        return takeQuotedType("\"float2\"", typed) && (typed || !withCount);
    }
    if (form.thing != kMayaFaces) return true;
    return takeQuotedType("\"polyFaces\"", typed) &&
           (typed || (*m_in.at == 'f' && isMayaSeparator(m_in.at[1])));
}

// ---- Statements

MayaReader::Found MayaReader::statement() {
    Form form;
    if (!recognise(form)) return Found::NotOurs;
    if (form.first >= 0) {
        const std::int64_t begin = m_begin;
        m_atLineStart = false;
        skipToData();
        if (!isData(form)) return m_atLineStart ? Found::Passed : Found::NotOurs;
        m_begin = begin;
    }
    std::int64_t& first = mesh().firstStatement[numberOf(form.thing)];
    if (first < 0) first = m_begin;
    if (form.count >= 0 && !readCount(form)) return Found::Refused;
    if (form.first >= 0 && !readData(form)) return Found::Refused;
    if (!endStatement()) return Found::Refused;
    noteStatement(form.thing);
    m_begin = m_in.offset();
    return Found::Passed;
}

// Moves to the data of a range. Where they are on another line it is the one at hand, for the case
// that they are no data.
void MayaReader::skipToData() {
    m_in.skipBlanks();
    while (*m_in.at == '\r' || *m_in.at == '\n') {
        m_atLineStart = true;
        ++m_in.at;
        m_begin = m_in.offset();
        m_in.skipBlanks();
    }
    m_in.more();
}

void MayaReader::noteStatement(MayaThing thing) {
    const bool keptByTheSplit = m_dialect == MayaDialect::Split && thing == kMayaEdges;
    if (thing == kMayaVertices || keptByTheSplit) return;
    mesh().statements.push_back({thing, m_begin, m_in.offset()});
}

// Moves behind the ';', and behind the line's end where nothing else follows on the line.
bool MayaReader::endStatement() {
    if (!nextToken()) return false;
    if (*m_in.at != ';') return refuse("more values than the range has entries");
    ++m_in.at;
    m_in.more();
    const char* p = m_in.at;
    while (isMayaBlank(*p)) ++p;
    if (p[0] == '\r' && p[1] == '\n') ++p;
    const bool textEnds = p == m_in.end && !m_in.isCutOff(p);
    m_atLineStart = *p == '\n' || textEnds;
    if (m_atLineStart) m_in.at = textEnds ? p : p + 1;
    return true;
}

// Room for what a count promises. All counts of a scene together get no more than the text could
// hold values, so that many meshes cannot claim it over and over.
template <class Values>
void MayaReader::reserve(Values& values, std::int64_t count) {
    if (values.capacity() > 0) return;
    const std::int64_t granted = std::min(count, m_reservable);
    m_reservable -= granted;
    values.reserve(static_cast<std::size_t>(granted));
}

bool MayaReader::readCount(const Form& form) {
    const bool merge = m_dialect == MayaDialect::Merge;
    switch (form.thing) {
        case kMayaUVs:
            reserve(mesh().uvs, form.count);
            // The merge leaves the count that Maya writes apart from the set's name, and says its
            // own behind it.
            if (!merge) {
                mesh().uvRanges.declareAnew(form.count);
                return true;
            }
            return mesh().uvRanges.declare(form.count) || refuse("two different counts of UVs");
        case kMayaEdges:
            if (merge) reserve(mesh().edges, 2 * std::int64_t{form.count});
            mesh().saidEdges = form.count;
            return mesh().edgeRanges.declare(form.count) || refuse("two different counts of edges");
        case kMayaVertices:
            reserve(mesh().vertices, 3 * std::int64_t{form.count});
            return mesh().vertexRanges.declare(form.count) ||
                   refuse("two different counts of vertices");
        case kMayaFaces:
            if (merge) {
                reserve(mesh().quads.edges, 4 * std::int64_t{form.count});
            } else {
                reserve(mesh().faceRow.items, 12 * std::int64_t{form.count});
            }
            return mesh().faceRanges.declare(form.count) || refuse("two different counts of faces");
    }
    return true;
}

bool MayaReader::readData(const Form& form) {
    if (form.last < form.first) return refuse("a range that ends before it begins");
    switch (form.thing) {
        case kMayaUVs:
            return readUVs(form);
        case kMayaEdges:
            return readEdges(form);
        case kMayaVertices:
            return readVertices(form);
        case kMayaFaces:
            return m_dialect == MayaDialect::Merge ? readQuads(form) : readFaceRow(form);
    }
    return true;
}

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
    while (!isMayaSeparator(*p) && *p != ';' && p < m_in.end) ++p;
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
        int corners;
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
        int set, listed;
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

// ---- Whole meshes

bool MayaReader::checkMeshes() {
    return std::all_of(m_meshes.begin(), m_meshes.end(),
                       [this](MayaMesh& mesh) { return checkMesh(mesh); });
}

bool MayaReader::checkMesh(MayaMesh& mesh) {
    const bool merge = m_dialect == MayaDialect::Merge;
    const auto incomplete = [&](MayaRanges& ranges, MayaThing thing, const char* reason) {
        return !ranges.complete() && !refuseAt(mesh.firstStatement[numberOf(thing)], reason);
    };
    if (incomplete(mesh.uvRanges, kMayaUVs, "UVs that do not match their count") ||
        incomplete(mesh.vertexRanges, kMayaVertices, "vertices that do not match their count") ||
        incomplete(mesh.faceRanges, kMayaFaces, "faces that do not match their count") ||
        (merge && incomplete(mesh.edgeRanges, kMayaEdges, "edges that do not match their count"))) {
        return false;
    }
    std::size_t bad =
        merge ? faceWithoutEdge(mesh.quads, mesh.edges.size() / 2) : faceWithoutEdge(mesh);
    if (bad != kNone) {
        return refuseAt(faceStatementAt(mesh, bad), "a face with an edge that is not there");
    }
    bad = merge ? faceWithoutUV(mesh.quads, mesh.uvs.size()) : faceWithoutUV(mesh);
    if (bad != kNone) {
        return refuseAt(faceStatementAt(mesh, bad), "a face with a UV that is not there");
    }
    mesh.uvRanges.putInOrder(mesh.uvs);
    mesh.vertexRanges.putInOrder(mesh.vertices);
    mesh.edgeRanges.putInOrder(mesh.edges);
    mesh.faceRanges.putInOrder(mesh.quads.edges);
    mesh.faceRanges.putInOrder(mesh.quads.uvIndices);
    mesh.faceRanges.putInOrder(mesh.faceRow.items);
    const bool usesUVs = merge ? !mesh.quads.uvIndices.empty() : mesh.faceRow.usesUVs;
    if (!usesUVs) keepUVText(mesh);
    return true;
}
