// Maya scenes on their way to the host: a UV of its own for each face corner, faces wound for the
// host.

#include "bridge/bx_vek.h"
#include "formats/bx_uv_merge_algo.h"
#include "formats/maya_reader.h"
#include "formats/maya_rewrite.h"
#include "formats/maya_text.h"

namespace {

// Whether the indices are `first` to first + corners - 1, in this order or with all but the first
// reversed: as a split writes them, rewound or not.
bool areAsWritten(const int* indices, int corners, int first) {
    bool upwards = true, downwards = true;
    for (int i = 0; i < corners; ++i) {
        upwards = upwards && indices[i] == first + i;
        downwards = downwards && indices[i] == first + (corners - i) % corners;
    }
    return upwards || downwards;
}

// Whether the mesh is as a split left it; it then keeps its numbers, so that it does not change.
bool isSplit(const MayaMesh& mesh) {
    if (static_cast<std::int64_t>(mesh.uvs.size()) != mesh.faceRow.corners) return false;
    int first = 0;
    for (MayaLoops loops(mesh.faceRow); loops.next(); first += loops.corners()) {
        if (!loops.uvs() || !areAsWritten(loops.uvs(), loops.corners(), first)) return false;
    }
    return true;
}

class SplitMeshes : public MayaRegenerator {
public:
    explicit SplitMeshes(bool reverse) : m_reverse(reverse) {}

    void put(const MayaMesh& mesh, MayaThing thing, MayaWriter& writer) const override {
        if (thing == kMayaUVs) putUVs(mesh, writer);
        if (thing == kMayaFaces) putFaces(mesh, writer);
    }

private:
    static void putUVs(const MayaMesh& mesh, MayaWriter& writer) {
        if (mesh.isSplit) {
            putMayaUVs(writer, mesh.faceRow.corners, [&](std::int64_t i) {
                writer.putUV(mesh.uvs[static_cast<std::size_t>(i)]);
            });
            return;
        }
        MayaLoops loops(mesh.faceRow), ahead(mesh.faceRow);
        for (int i = 0; i < kLoopsAhead; ++i) fetchUVs(mesh, ahead);
        int left = 0;
        const int* next = nullptr;
        putMayaUVs(writer, mesh.faceRow.corners, [&](std::int64_t) {
            while (left == 0) {
                loops.next();
                left = loops.corners();
                next = loops.uvs();
                fetchUVs(mesh, ahead);
            }
            --left;
            writer.putUV(next ? mesh.uvs[static_cast<std::size_t>(*next++)] : BXVector2f());
        });
    }

    // So many loops ahead the points are fetched, which lie scattered in many meshes.
    static constexpr int kLoopsAhead = 16;

    // Inline by force: a call that does nothing but fetch counts as one without effect, and GCC
    // drops it.
    static __attribute__((always_inline)) void fetchUVs(const MayaMesh& mesh, MayaLoops& ahead) {
        if (!ahead.next() || !ahead.uvs()) return;
        for (int i = 0; i < ahead.corners(); ++i) {
            __builtin_prefetch(&mesh.uvs[static_cast<std::size_t>(ahead.uvs()[i])]);
        }
    }

    void putFaces(const MayaMesh& mesh, MayaWriter& writer) const {
        MayaLoops loops(mesh.faceRow);
        bool any = loops.next();
        int first = 0;
        putMayaFaces(writer, mesh.faceRanges.entries(), [&](std::int64_t) {
            do {
                putLoop(mesh, loops, first, writer);
                first += loops.corners();
                any = loops.next();
            } while (any && loops.isHole());
        });
    }

    void putLoop(const MayaMesh& mesh, const MayaLoops& loops, int first,
                 MayaWriter& writer) const {
        const int corners = loops.corners();
        putMayaLoop(writer, loops.isHole() ? " h" : " f", loops.edges(), corners, m_reverse);
        if (mesh.faceRow.usesUVs && !loops.uvs()) putOwnUVs(first, corners, writer);
        for (const MayaLoops::List& list : loops.lists()) {
            if (list.indices == loops.uvs() && !mesh.isSplit) {
                putOwnUVs(first, corners, writer);
                continue;
            }
            writer.put(list.kind == MayaFaceRow::kUVs ? " mu" : " mc");
            writer.putInt(list.set);
            putMayaList(writer, "", list.indices, corners, m_reverse);
        }
    }

    // The points of the loop's corners, which are numbered one after the other.
    void putOwnUVs(int first, int corners, MayaWriter& writer) const {
        writer.put(" mu 0");
        writer.putInt(corners);
        writer.putInt(first);
        for (int i = 1; i < corners; ++i)
            writer.putInt(m_reverse ? first + corners - i : first + i);
    }

    bool m_reverse;
};

}  // namespace

bool BXUVMergeAlgo::splitUVsInMayaFile(const BXString& path) {
    BXFile file(path.getValidFilePath(), BXFile::Access::ReadWrite);
    if (!file.isOpen() || file.size() == 0) return false;
    MayaReader reader(file, MayaDialect::Split);
    if (!reader.read()) return false;
    for (MayaMesh& mesh : reader.meshes()) mesh.isSplit = isSplit(mesh);
    return rewriteMayaScene(file, reader.textEnd(), reader.meshes(),
                            SplitMeshes(BXVek::s_importReverse));
}
