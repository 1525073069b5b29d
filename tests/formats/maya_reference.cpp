#include "tests/formats/maya_reference.h"

#include <cctype>
#include <cstdlib>
#include <sstream>

namespace maya_reference {

namespace {

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string trimmed(const std::string& line) {
    const std::size_t begin = line.find_first_not_of(" \t");
    return begin == std::string::npos ? "" : line.substr(begin);
}

bool begins(const std::string& text, const std::string& with) {
    return text.compare(0, with.size(), with) == 0;
}

double number(const std::string& word) {
    return std::strtod(word.substr(0, word.find_first_of("eE")).c_str(), nullptr);
}

int integer(const std::string& word) {
    return std::atoi(word.c_str());
}

// The words of a statement: quoted ones without their quotes.
std::vector<std::string> wordsOf(std::string statement) {
    for (char& c : statement) {
        if (c == '"' || c == '\r') c = ' ';
    }
    std::istringstream in(statement);
    std::vector<std::string> words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

// The data of a statement whose attribute has this name, or nothing where it is only a count.
std::vector<std::string> dataOf(const std::vector<std::string>& words,
                                const std::string& attribute) {
    std::size_t i = 0;
    while (i < words.size() && !begins(words[i], attribute)) ++i;
    if (i == words.size() || words[i].back() != ']') return {};
    ++i;
    if (i + 1 < words.size() && words[i] == "-type") i += 2;
    return {words.begin() + static_cast<std::ptrdiff_t>(i), words.end()};
}

void readFaces(const std::vector<std::string>& data, Mesh& mesh) {
    for (std::size_t i = 0; i < data.size();) {
        const std::string word = data[i++];
        const bool isList = word == "mu" || word == "mc";
        const int set = isList ? integer(data[i++]) : 0;
        const int count = integer(data[i++]);
        std::vector<int> values;
        for (int k = 0; k < count; ++k) values.push_back(integer(data[i++]));
        if (isList) {
            mesh.faces.back().back().lists[{word, set}] = values;
            continue;
        }
        if (word == "f") mesh.faces.emplace_back();
        mesh.faces.back().push_back({word == "h", values, {}});
    }
}

enum class Thing { None, UVs, Edges, Faces };

Thing thingOf(const std::string& line, const std::string& statement) {
    const std::string text = lower(line);
    if (!begins(text, "setattr")) return Thing::None;
    const bool counted = text.find("-s ") != std::string::npos;
    if (text.find("\".uvst[0].uvsp\"") != std::string::npos && counted) return Thing::UVs;
    if (text.find("\".uvst[0].uvsp[") != std::string::npos) return Thing::UVs;
    if (text.find("\".ed\"") != std::string::npos && counted) return Thing::Edges;
    if (text.find("\".ed[") != std::string::npos) return Thing::Edges;
    if (text.find("\".fc\"") != std::string::npos && counted) return Thing::Faces;
    if (text.find("\".fc[") != std::string::npos) {
        const std::vector<std::string> data = dataOf(wordsOf(statement), ".fc[");
        return !data.empty() && data[0] == "f" ? Thing::Faces : Thing::None;
    }
    return Thing::None;
}

void take(Thing thing, const std::string& statement, Mesh& mesh) {
    const std::vector<std::string> words = wordsOf(statement);
    if (thing == Thing::UVs) {
        const auto data = dataOf(words, ".uvst[0].uvsp[");
        for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
            mesh.uvs.push_back({number(data[i]), number(data[i + 1])});
        }
        if (!data.empty()) mesh.ranges.push_back(static_cast<int>(data.size() / 2));
    } else if (thing == Thing::Edges) {
        const auto data = dataOf(words, ".ed[");
        for (std::size_t i = 0; i + 2 < data.size(); i += 3) {
            mesh.edges.push_back({integer(data[i]), integer(data[i + 1]), integer(data[i + 2])});
        }
        if (!data.empty()) mesh.ranges.push_back(static_cast<int>(data.size() / 3));
    } else {
        const std::size_t before = mesh.faces.size();
        const auto data = dataOf(words, ".fc[");
        readFaces(data, mesh);
        if (!data.empty()) mesh.ranges.push_back(static_cast<int>(mesh.faces.size() - before));
    }
}

}  // namespace

bool Mesh::usesUVs() const {
    for (const auto& face : faces) {
        for (const Loop& loop : face) {
            if (loop.lists.count({"mu", 0})) return true;
        }
    }
    return false;
}

std::array<double, 2> Mesh::uv(const Loop& loop, std::size_t corner) const {
    const auto list = loop.lists.find({"mu", 0});
    if (list == loop.lists.end()) return {0, 0};
    return uvs.at(static_cast<std::size_t>(list->second.at(corner)));
}

Scene read(const std::string& text) {
    Scene scene;
    scene.meshes.resize(1);
    bool inScope = true;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = text.find('\n', at);
        end = end == std::string::npos ? text.size() : end + 1;
        const std::string line = trimmed(text.substr(at, end - at));
        if (begins(lower(line), "// end of ")) break;
        if (begins(lower(line), "createnode")) {
            const std::vector<std::string> words = wordsOf(lower(line));
            inScope = words.size() > 1 && (words[1] == "mesh" || words[1] == "mesh;");
            if (inScope) scene.meshes.emplace_back();
        }
        // A statement goes on to its ';'; the host writes two of them on the line of its UV count.
        std::size_t statementEnd = text.find(';', at);
        if (begins(lower(line), "setattr \".uvst[0].uvsn\" -type \"string\" \"map1\";setattr")) {
            statementEnd = text.find(';', statementEnd + 1);
        }
        if (inScope && statementEnd != std::string::npos) {
            const std::string statement = text.substr(at, statementEnd - at);
            const Thing thing = thingOf(line, statement);
            if (thing != Thing::None) {
                take(thing, statement, scene.meshes.back());
                end = text.find('\n', statementEnd);
                end = end == std::string::npos ? text.size() : end + 1;
                if (thing == Thing::Edges) scene.rest += text.substr(at, end - at);
                at = end;
                continue;
            }
        }
        scene.rest += text.substr(at, end - at);
        scene.restOfRest += text.substr(at, end - at);
        at = end;
    }
    return scene;
}

}  // namespace maya_reference
