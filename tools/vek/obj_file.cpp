#include "tools/vek/obj_file.h"

#include <tiny_obj_loader.h>

#include <charconv>
#include <cstdio>
#include <sstream>

#include "os/bx_file.h"

namespace {

struct ObjCorner {
    std::int32_t vertex;
    std::int32_t uv;
};

// Collects what the OBJ reader calls out, line by line.
class MeshCollector {
public:
    explicit MeshCollector(Mesh& mesh) : m_mesh(mesh) {}

    static void addPosition(void* self, tinyobj::real_t x, tinyobj::real_t y, tinyobj::real_t z,
                            tinyobj::real_t) {
        static_cast<MeshCollector*>(self)->m_mesh.positions.push_back({x, y, z});
    }
    static void addUV(void* self, tinyobj::real_t u, tinyobj::real_t v, tinyobj::real_t) {
        static_cast<MeshCollector*>(self)->m_mesh.uvs.push_back({u, v});
    }
    static void addFace(void* self, tinyobj::index_t* indices, int count) {
        static_cast<MeshCollector*>(self)->addFace(indices, count);
    }

    // A face may use a vertex that the file names further down, so indices are checked at the end.
    bool finish(std::string& error) {
        if (m_mesh.faces.empty()) {
            error = "has no faces";
            return false;
        }
        for (std::size_t i = 0; i < m_mesh.faces.size(); ++i) {
            if (!cornersAreThere(i)) {
                error = "has a face with a vertex or a UV that is not there";
                return false;
            }
        }
        makeMissingUVs();
        return true;
    }

    ObjNotes notes;

private:
    // OBJ counts from 1, and backwards from the newest with negative numbers; 0 stands for none.
    static std::int32_t indexOf(int written, std::size_t known) {
        if (written > 0) return written - 1;
        const auto fromStart = static_cast<std::int64_t>(known) + written;
        return written == 0 || fromStart < 0 ? kNotThere : static_cast<std::int32_t>(fromStart);
    }

    void addFace(const tinyobj::index_t* indices, int count) {
        if (count < 3) {
            ++notes.facesSkipped;
            return;
        }
        m_face.clear();
        for (int i = 0; i < count; ++i) {
            const int uv = indices[i].texcoord_index;
            m_face.push_back({indexOf(indices[i].vertex_index, m_mesh.positions.size()),
                              uv == 0 ? kNoCorner : indexOf(uv, m_mesh.uvs.size())});
        }
        if (count == 4) return addQuad();
        if (count > 4) ++notes.facesCut;
        // A fan round the first corner keeps the outline and the winding of every polygon.
        for (std::size_t i = 2; i < m_face.size(); ++i) {
            const ObjCorner &a = m_face[0], &b = m_face[i - 1], &c = m_face[i];
            m_mesh.faces.push_back({a.vertex, b.vertex, c.vertex, kNoCorner});
            m_mesh.corners.push_back({a.uv, b.uv, c.uv, kNoCorner});
        }
    }

    void addQuad() {
        const ObjCorner* f = m_face.data();
        m_mesh.faces.push_back({f[0].vertex, f[1].vertex, f[2].vertex, f[3].vertex});
        m_mesh.corners.push_back({f[0].uv, f[1].uv, f[2].uv, f[3].uv});
    }

    bool cornersAreThere(std::size_t face) const {
        const MeshCorners& vertices = m_mesh.faces[face];
        const MeshCorners& uvs = m_mesh.corners[face];
        // A quad whose fourth vertex is not there must not pass for a triangle.
        if (vertices[3] == kNotThere) return false;
        for (std::size_t i = 0; i < cornerCount(vertices); ++i) {
            const auto vertex = static_cast<std::int64_t>(vertices[i]);
            const auto uv = static_cast<std::int64_t>(uvs[i]);
            if (vertex < 0 || vertex >= static_cast<std::int64_t>(m_mesh.positions.size())) {
                return false;
            }
            if (uv < kNoCorner || uv >= static_cast<std::int64_t>(m_mesh.uvs.size())) return false;
        }
        return true;
    }

    void makeMissingUVs() {
        const MeshBounds bounds = boundsOf(m_mesh);
        std::vector<std::int32_t> made(m_mesh.positions.size(), kNoCorner);
        for (std::size_t i = 0; i < m_mesh.faces.size(); ++i) {
            for (std::size_t corner = 0; corner < cornerCount(m_mesh.faces[i]); ++corner) {
                if (m_mesh.corners[i][corner] != kNoCorner) continue;
                const auto vertex = static_cast<std::size_t>(m_mesh.faces[i][corner]);
                if (made[vertex] == kNoCorner) made[vertex] = makeUV(vertex, bounds);
                m_mesh.corners[i][corner] = made[vertex];
            }
        }
    }

    std::int32_t makeUV(std::size_t vertex, const MeshBounds& bounds) {
        const MeshPoint& point = m_mesh.positions[vertex];
        const auto share = [&](std::size_t axis) {
            const double size = bounds.size(axis);
            return size > 0 ? static_cast<float>((point[axis] - bounds.min[axis]) / size) : 0.0f;
        };
        m_mesh.uvs.push_back({share(0), share(2)});
        ++notes.uvsMade;
        return static_cast<std::int32_t>(m_mesh.uvs.size() - 1);
    }

    static constexpr std::int32_t kNotThere = INT32_MIN;

    Mesh& m_mesh;
    std::vector<ObjCorner> m_face;  // one for all faces: no allocation per face
};

// Text with numbers as OBJ has them, whatever locale is set.
class ObjText {
public:
    ObjText& operator<<(const char* text) {
        m_text += text;
        return *this;
    }
    template <class Number>
    ObjText& number(Number value) {
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        m_text.append(digits, end);
        return *this;
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

void addFaceLine(ObjText& obj, const Mesh& mesh, std::size_t face) {
    obj << "f";
    for (std::size_t i = 0; i < cornerCount(mesh.faces[face]); ++i) {
        (obj << " ").number(std::int64_t{mesh.faces[face][i]} + 1);
        const std::int64_t uv = mesh.corners[face][i];
        const bool known = uv >= 0 && uv < static_cast<std::int64_t>(mesh.uvs.size());
        if (known) (obj << "/").number(uv + 1);
    }
    obj << "\n";
}

}  // namespace

bool loadObj(const std::string& path, Mesh& mesh, ObjNotes& notes, std::string& error) {
    std::string text;
    if (!BXFile::readWhole(path.c_str(), text)) {
        error = "The file cannot be read: " + path;
        return false;
    }
    std::istringstream lines(text);
    tinyobj::callback_t calls;
    calls.vertex_cb = MeshCollector::addPosition;
    calls.texcoord_cb = MeshCollector::addUV;
    calls.index_cb = MeshCollector::addFace;
    mesh = Mesh();
    MeshCollector collector(mesh);
    std::string reason;
    if (!tinyobj::LoadObjWithCallback(lines, calls, &collector, nullptr, nullptr, &reason)) {
        error = "The OBJ file is not understood (" + reason + "): " + path;
        return false;
    }
    if (!collector.finish(reason)) {
        error = "The OBJ file " + reason + ": " + path;
        return false;
    }
    notes = collector.notes;
    return true;
}

bool saveObj(const std::string& path, const Mesh& mesh, std::string& error) {
    ObjText obj;
    for (const MeshPoint& point : mesh.positions) {
        (obj << "v ").number(point[0]);
        (obj << " ").number(point[1]);
        (obj << " ").number(point[2]) << "\n";
    }
    for (const MeshUV& uv : mesh.uvs) {
        (obj << "vt ").number(uv[0]);
        (obj << " ").number(uv[1]) << "\n";
    }
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) addFaceLine(obj, mesh, face);
    if (BXFile::overwrite(path.c_str(), obj.text().data(), obj.text().size())) return true;
    error = "The file cannot be written: " + path;
    return false;
}
