#include "tests/formats/maya_random.h"

#include <algorithm>
#include <vector>

namespace {

class SceneMaker {
public:
    explicit SceneMaker(std::mt19937& random) : m_random(random) {}

    std::string make() {
        m_text = below(2) ? "//Maya ASCII 8.5 scene\n" : "";
        if (below(3) == 0) m_text += "createNode transform -n \"t\";\n\tsetAttr \".t\" 1 2 3;\n";
        const int meshes = below(4) == 0 ? 2 : 1;
        for (int i = 0; i < meshes; ++i) {
            if (i > 0 || below(2))
                m_text += "createNode mesh -n \"m\";\n\tsetAttr -k off \".v\";\n";
            addMesh();
        }
        if (below(2)) m_text += "connectAttr \"a.b\" \"c.d\";\n";
        if (below(2)) m_text += "// End of scene.ma\n";
        return m_text;
    }

private:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    std::string separator() {
        static const char* const choices[] = {" ", " ", " ", " ", "  ", "\t", "\n\t\t", "\r\n "};
        return choices[below(8)];
    }

    void add(const std::string& word) { m_text += separator() + word; }
    void add(int number) { add(std::to_string(number)); }

    void between() {
        if (below(4) == 0)
            m_text += below(2) ? "\n" : "\tsetAttr \".cuvs\" -type \"string\" \"map1\";\n";
    }

    std::string coordinate() {
        static const char* const choices[] = {"0",  "1",      "-1", ".5",        "0.25", "1e-05",
                                              "-0", "3.0625", "+2", "0.1234567", "1000"};
        return choices[below(11)];
    }

    // A count, then ranges of random lengths.
    template <class AddEntry>
    void addRanges(const std::string& count, const std::string& name, const std::string& type,
                   int total, AddEntry addEntry) {
        if (below(8) != 0) m_text += count;
        for (int first = 0; first < total;) {
            between();
            const int last = std::min(total, first + 1 + below(below(3) ? 300 : 3)) - 1;
            m_text += "\tsetAttr \"" + name + "[" + std::to_string(first);
            if (first != last || below(2)) m_text += ":" + std::to_string(last);
            m_text += "]\"" + type;
            for (; first <= last; ++first) addEntry(first);
            m_text += below(4) == 0 ? " ;\n" : ";\n";
        }
        between();
    }

    void addMesh() {
        const int vertices = 3 + below(12), edges = 3 + below(30), faces = below(40);
        m_corners.clear();
        for (int i = 0; i < faces; ++i) m_corners.push_back(3 + below(2));
        const int withUVs = below(3);  // none, some, all
        std::vector<bool> hasUVs;
        int corners = 0;
        for (const int n : m_corners) {
            hasUVs.push_back(withUVs == 2 || (withUVs == 1 && below(2)));
            if (hasUVs.back()) corners += n;
        }
        addRanges("\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s " +
                      std::to_string(corners) + " \".uvst[0].uvsp\";\n",
                  ".uvst[0].uvsp", " -type \"float2\"", corners, [&](int) {
                      add(coordinate());
                      add(coordinate());
                  });
        if (below(10) != 0) {
            addRanges("\tsetAttr -s " + std::to_string(vertices) + " \".vt\";\n", ".vt", "",
                      vertices, [&](int) {
                          for (int axis = 0; axis < 3; ++axis) add(coordinate());
                      });
        }
        addRanges("\tsetAttr -s " + std::to_string(edges) + " \".ed\";\n", ".ed", "", edges,
                  [&](int) {
                      add(below(vertices));
                      add(below(vertices));
                      add(below(2));
                  });
        int next = 0;
        addRanges("\tsetAttr -s " + std::to_string(faces) + " \".fc\";\n", ".fc",
                  " -type \"polyFaces\"", faces, [&](int face) {
                      const int n = m_corners[static_cast<std::size_t>(face)];
                      add("f");
                      add(n);
                      for (int i = 0; i < n; ++i) add(below(2) ? below(edges) : ~below(edges));
                      if (!hasUVs[static_cast<std::size_t>(face)]) return;
                      add("mu");
                      add(0);
                      add(n);
                      for (int i = 0; i < n; ++i) add(next++);
                  });
    }

    std::mt19937& m_random;
    std::string m_text;
    std::vector<int> m_corners;
};

}  // namespace

std::string randomMayaScene(std::mt19937& random) {
    return SceneMaker(random).make();
}

std::string asMayaWritesIt(std::string text) {
    const auto replaceAll = [&](const std::string& old, const std::string& with) {
        for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos;) {
            text.replace(at, old.size(), with);
            at += with.size();
        }
    };
    replaceAll("\"map1\";setAttr -s", "\"map1\";\n\tsetAttr -s");
    replaceAll(" \".fc\";", " -ch 12 \".fc\";");
    return text;
}
