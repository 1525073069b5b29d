#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/maya_input.h"
#include "formats/maya_mesh.h"

// Which statements are recognised, and what faces are read as.
//   Merge  counts and ranges apart, as the host writes them; faces as MayaQuads
//   Split  also ranges with a count, with "-ch", and of one entry, as Maya writes them; faces as
//          MayaFaceRow. Of edges the count alone is read.
enum class MayaDialect { Merge, Split };

// Reads the meshes of a Maya scene, each mesh node for itself, and what stands before the first
// node as one more. It takes no memory for what a statement claims, only for what the text holds.
class MayaReader {
public:
    // Why a scene is refused: a few words, and the place of the statement in the file.
    struct Refusal {
        std::string reason;
        std::int64_t offset = 0;
    };

    // `file` stays the caller's.
    MayaReader(const BXFile& file, MayaDialect dialect);

    // False when the scene is refused, or could not be read; to be called once. Nodes without any
    // statement that is looked at are no meshes.
    bool read();

    std::vector<MayaMesh>& meshes() { return m_meshes; }
    // Where the text ends: at the line "// End of ", or with the file.
    std::int64_t textEnd() const { return m_textEnd; }
    const Refusal& refusal() const { return m_refusal; }

private:
    // NotOurs: the rest of the line is text. Passed: it goes on where the scan stands.
    enum class Found { NotOurs, Passed, Refused };

    // What a recognised form says.
    struct Form {
        MayaThing thing = kMayaUVs;
        int count = -1;  // -1: none
        int first = -1;  // -1: no range
        int last = -1;
    };

    bool recognise(Form& form);
    bool recogniseAfterCount(Form& form);
    bool takeCount(int& count);
    bool takeRange(Form& form);
    bool takeQuotedType(const char* type, bool& isThere);
    bool isData(const Form& form);

    void beginNode();
    Found statement();
    void skipToData();
    bool readCount(const Form& form);
    bool readData(const Form& form);
    bool readUVs(const Form& form);
    bool readEdges(const Form& form);
    bool readVertices(const Form& form);
    bool readQuads(const Form& form);
    bool readQuad(int* edges, std::size_t slot);
    bool readFaceRow(const Form& form);
    bool readFace();
    bool readLists(int corners);
    bool endStatement();
    void noteStatement(MayaThing thing);
    bool followsReplaced() const;

    bool nextToken();
    bool nextInt(int& value);
    template <class Number, class Parse>
    bool nextNumber(Number& value, Parse parse);
    template <class Number, class Parse>
    bool readNumbers(Number* to, std::int64_t count, Parse parse);
    bool readFloats(float* to, std::int64_t count);
    bool readInts(int* to, int count);
    bool fits(std::int64_t values);
    template <class Values>
    void reserve(Values& values, std::int64_t count, int numbersInEach);
    bool refuse(const char* reason);
    bool refuseAt(std::int64_t offset, const char* reason);
    bool checkMeshes();
    bool checkMesh(MayaMesh& mesh);
    MayaMesh& mesh();

    // The fewest bytes that a value and its separator take.
    static constexpr std::int64_t kLeastValueBytes = 2;

    MayaInput m_in;
    MayaDialect m_dialect;
    std::vector<MayaMesh> m_meshes;  // those that have a statement
    bool m_meshBegins = true;        // with the next statement
    std::string m_name;              // of the node at hand
    bool m_inScope = true;           // in a mesh node, or before the first node
    bool m_atLineStart = true;
    std::int64_t m_reservable;  // numbers that memory may still be taken for ahead of them
    std::int64_t m_begin = 0;   // of the statement or line at hand
    std::int64_t m_textEnd = 0;
    Refusal m_refusal;
};
