#include "formats/maya_reader.h"

#include <algorithm>

#include "formats/maya_forms.h"

// The scan: nodes, and what becomes of a statement. What is recognised as one is in
// maya_reader_forms.cpp, what its values become in maya_reader_values.cpp, and what a mesh has to
// be in maya_reader_checks.cpp.

MayaReader::MayaReader(const BXFile& file, MayaDialect dialect)
    : m_in(file), m_dialect(dialect), m_reservable(file.size() / kLeastValueBytes) {}

bool MayaReader::read() {
    m_textEnd = -1;
    while (m_textEnd < 0 && m_in.more()) {
        m_in.skipBlanks();
        m_in.more();
        // Required(R63): the text ends in front of this line, which is not written back either.
        if (m_in.comes(s_declareEndOfScene)) {
            if (m_atLineStart) {
                m_textEnd = m_begin;
                break;
            }
            // What is written anew ends its line: the text would end here the next time.
            if (followsReplaced()) return refuse("\"// End of \" behind a statement on its line");
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
    std::int64_t& first = mesh().firstStatement[thingNumber(form.thing)];
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

// Whether the statement that ends here is written anew.
bool MayaReader::followsReplaced() const {
    if (m_meshes.empty() || m_meshes.back().statements.empty()) return false;
    return m_meshes.back().statements.back().end == m_begin;
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
// hold numbers, so that many meshes cannot claim it over and over.
template <class Values>
void MayaReader::reserve(Values& values, std::int64_t count, int numbersInEach) {
    if (values.capacity() > 0) return;
    const std::int64_t granted = std::min(count, m_reservable / numbersInEach);
    m_reservable -= granted * numbersInEach;
    values.reserve(static_cast<std::size_t>(granted));
}

bool MayaReader::readCount(const Form& form) {
    const bool merge = m_dialect == MayaDialect::Merge;
    switch (form.thing) {
        case kMayaUVs:
            reserve(mesh().uvs, form.count, 2);
            // The merge leaves the count that Maya writes apart from the set's name, and says its
            // own beside it.
            if (!merge) {
                mesh().uvRanges.declareOneOf(form.count);
                return true;
            }
            return mesh().uvRanges.declare(form.count) || refuse("two different counts of UVs");
        case kMayaEdges:
            if (merge) reserve(mesh().edges, 2 * std::int64_t{form.count}, 1);
            mesh().saidEdges = form.count;
            return mesh().edgeRanges.declare(form.count) || refuse("two different counts of edges");
        case kMayaVertices:
            reserve(mesh().vertices, 3 * std::int64_t{form.count}, 1);
            return mesh().vertexRanges.declare(form.count) ||
                   refuse("two different counts of vertices");
        case kMayaFaces:
            if (merge) {
                reserve(mesh().quads.edges, 4 * std::int64_t{form.count}, 1);
            } else {
                reserve(mesh().faceRow.items, 12 * std::int64_t{form.count}, 1);
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
