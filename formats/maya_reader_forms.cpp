// Which lines are statements.

#include "formats/maya_forms.h"
#include "formats/maya_reader.h"
#include "formats/number_parser.h"

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
