#include "tools/vek/maya_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <unordered_map>

namespace {

// The edges of a mesh, each from its lower to its higher vertex or as first met.
class Edges {
public:
    // The reference to the edge between two vertices: its number, or ~number the other way.
    std::int32_t between(std::int32_t from, std::int32_t to) {
        const bool forward = from <= to;
        const auto low = static_cast<std::uint64_t>(std::min(from, to));
        const auto high = static_cast<std::uint64_t>(std::max(from, to));
        const auto number = static_cast<std::int32_t>(ends.size());
        const auto known = m_numbers.emplace(low << 32 | high, number);
        if (known.second) ends.push_back({std::min(from, to), std::max(from, to)});
        return forward ? known.first->second : ~known.first->second;
    }

    std::vector<std::array<std::int32_t, 2>> ends;

private:
    std::unordered_map<std::uint64_t, std::int32_t> m_numbers;
};

class SceneText {
public:
    // The count statement, then the entries in ranges of a fixed size.
    template <class Put>
    void put(const std::string& count, const char* name, const char* type, std::size_t inRange,
             std::size_t total, Put putEntry) {
        text += count;
        for (std::size_t first = 0; first < total; first += inRange) {
            const std::size_t end = std::min(first + inRange, total);
            text += fmt::format("\tsetAttr \"{}[{}:{}]\"{}\n", name, first, end - 1, type);
            for (std::size_t i = first; i < end; ++i) putEntry(i);
            text += ";\n";
        }
    }

    std::string text;
};

MeshUV uvAt(const Mesh& mesh, std::int32_t index) {
    return index < 0 ? MeshUV{} : mesh.uvs[static_cast<std::size_t>(index)];
}

void putUVs(SceneText& scene, const Mesh& mesh) {
    std::vector<MeshUV> uvs;
    for (std::size_t f = 0; f < mesh.faces.size(); ++f) {
        for (std::size_t i = 0; i < cornerCount(mesh.faces[f]); ++i) {
            uvs.push_back(uvAt(mesh, mesh.corners[f][i]));
        }
    }
    scene.put(fmt::format("\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";"
                          "setAttr -s {} \".uvst[0].uvsp\";\n",
                          uvs.size()),
              ".uvst[0].uvsp", " -type \"float2\"", 250, uvs.size(), [&](std::size_t i) {
                  scene.text += fmt::format(" {:.5f} {:.5f}", uvs[i][0], uvs[i][1]);
              });
}

// The statement's words that follow its range; none where it has no range.
std::vector<std::string> dataOf(const std::string& statement) {
    const std::size_t range = statement.find("]\"");
    if (range == std::string::npos) return {};
    std::istringstream in(statement.substr(range + 2));
    std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
    if (words.size() >= 2 && words[0] == "-type") words.erase(words.begin(), words.begin() + 2);
    return words;
}

// What the statements of the scene hold.
struct Scene {
    std::vector<float> uvs, vertices;
    std::vector<std::int32_t> edges;
    std::vector<std::string> faces;
};

template <class Number, class Convert>
void append(std::vector<Number>& to, const std::vector<std::string>& words, Convert convert) {
    for (const std::string& word : words) to.push_back(static_cast<Number>(convert(word.c_str())));
}

void takeStatement(const std::string& statement, Scene& scene) {
    const auto real = [](const char* word) { return floatOf(word); };
    const auto integer = [](const char* word) { return std::atoi(word); };
    if (statement.find("\".uvst[0].uvsp[") != std::string::npos) {
        append(scene.uvs, dataOf(statement), real);
    } else if (statement.find("\".vt[") != std::string::npos) {
        append(scene.vertices, dataOf(statement), real);
    } else if (statement.find("\".ed[") != std::string::npos) {
        append(scene.edges, dataOf(statement), integer);
    } else if (statement.find("\".fc[") != std::string::npos) {
        const std::vector<std::string> words = dataOf(statement);
        scene.faces.insert(scene.faces.end(), words.begin(), words.end());
    }
}

// Reads the words of the faces one after the other.
class FaceWords {
public:
    explicit FaceWords(const std::vector<std::string>& words) : m_words(words) {}

    bool atEnd() const { return m_next == m_words.size(); }
    bool take(const char* word) {
        if (atEnd() || m_words[m_next] != word) return false;
        ++m_next;
        return true;
    }
    // The least int, which is no number of anything, where there is none.
    std::int32_t number() { return atEnd() ? INT32_MIN : std::atoi(m_words[m_next++].c_str()); }

private:
    const std::vector<std::string>& m_words;
    std::size_t m_next = 0;
};

bool addFace(FaceWords& words, const Scene& scene, Mesh& mesh) {
    if (!words.take("f")) return false;
    const std::int32_t count = words.number();
    if (count != 3 && count != 4) return false;
    MeshCorners face = {kNoCorner, kNoCorner, kNoCorner, kNoCorner}, corners = face;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const std::int32_t reference = words.number();
        const auto edge = static_cast<std::size_t>(reference < 0 ? ~reference : reference);
        if (3 * edge + 2 >= scene.edges.size()) return false;
        face[i] = scene.edges[3 * edge + (reference < 0 ? 1 : 0)];
        if (face[i] < 0 || static_cast<std::size_t>(face[i]) >= mesh.positions.size()) return false;
    }
    if (words.take("mu")) {
        if (words.number() != 0 || words.number() != count) return false;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            corners[i] = words.number();
            if (corners[i] < 0 || static_cast<std::size_t>(corners[i]) >= mesh.uvs.size())
                return false;
        }
    }
    mesh.faces.push_back(face);
    mesh.corners.push_back(corners);
    return true;
}

}  // namespace

bool writeMayaScene(const std::string& path, const Mesh& mesh, std::string& error) {
    Edges edges;
    std::vector<MeshCorners> references;
    for (const MeshCorners& face : mesh.faces) {
        references.push_back({});
        const std::size_t count = cornerCount(face);
        for (std::size_t i = 0; i < count; ++i) {
            references.back()[i] = edges.between(face[i], face[(i + 1) % count]);
        }
    }
    SceneText scene;
    scene.text =
        "//Maya ASCII 8.5 scene\nrequires maya \"8.5\";\ncreateNode transform -n \"object\";\n"
        "createNode mesh -n \"objectShape\" -p \"object\";\n";
    putUVs(scene, mesh);
    scene.put(fmt::format("\tsetAttr -s {} \".vt\";\n", mesh.positions.size()), ".vt", "", 166,
              mesh.positions.size(), [&](std::size_t i) {
                  const MeshPoint& p = mesh.positions[i];
                  scene.text += fmt::format(" {:.9g} {:.9g} {:.9g}", p[0], p[1], p[2]);
              });
    scene.put(fmt::format("\tsetAttr -s {} \".ed\";\n", edges.ends.size()), ".ed", "", 165,
              edges.ends.size(), [&](std::size_t i) {
                  scene.text += fmt::format(" {} {} 0", edges.ends[i][0], edges.ends[i][1]);
              });
    std::size_t next = 0;
    scene.put(fmt::format("\tsetAttr -s {} \".fc\";\n", mesh.faces.size()), ".fc",
              " -type \"polyFaces\"", 500, mesh.faces.size(), [&](std::size_t f) {
                  const std::size_t count = cornerCount(mesh.faces[f]);
                  scene.text += fmt::format(" f {}", count);
                  for (std::size_t i = 0; i < count; ++i) {
                      scene.text += fmt::format(" {}", references[f][i]);
                  }
                  scene.text += fmt::format(" mu 0 {}", count);
                  for (std::size_t i = 0; i < count; ++i) scene.text += fmt::format(" {}", next++);
              });
    scene.text += "// End of object.ma\n";
    std::ofstream file(path, std::ios::binary);
    file << scene.text << std::flush;
    if (!file) error = "the scene cannot be written: " + path;
    return static_cast<bool>(file);
}

bool readMayaScene(const std::string& path, Mesh& mesh, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    Scene scene;
    for (std::size_t at = 0, end; (end = text.find(';', at)) != std::string::npos; at = end + 1) {
        takeStatement(text.substr(at, end - at), scene);
    }
    mesh = Mesh();
    for (std::size_t i = 0; i + 1 < scene.uvs.size(); i += 2) {
        mesh.uvs.push_back({scene.uvs[i], scene.uvs[i + 1]});
    }
    for (std::size_t i = 0; i + 2 < scene.vertices.size(); i += 3) {
        mesh.positions.push_back({scene.vertices[i], scene.vertices[i + 1], scene.vertices[i + 2]});
    }
    FaceWords words(scene.faces);
    while (!words.atEnd()) {
        if (addFace(words, scene, mesh)) continue;
        error = "the scene has a face that is damaged: " + path;
        return false;
    }
    if (mesh.faces.empty()) error = "the scene has no faces: " + path;
    return !mesh.faces.empty();
}
