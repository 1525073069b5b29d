#include "tools/validate/turning.h"

#include <cstdint>
#include <cstring>

namespace {

const std::string kMesh = tree::project("mesh.vek");

enum Axis : std::size_t { X, Y, Z };

template <class Value>
Value valueAt(const std::string& bytes, std::size_t at) {
    Value value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

void exchange(std::string& bytes, std::size_t one, std::size_t other) {
    const auto first = valueAt<std::int32_t>(bytes, one),
               second = valueAt<std::int32_t>(bytes, other);
    std::memcpy(bytes.data() + one, &second, sizeof second);
    std::memcpy(bytes.data() + other, &first, sizeof first);
}

// Each part that is whole, mirrored along the axis at this place: a face keeps its first corner,
// and goes round the other way.
std::string mirrored(std::string bytes, Axis axis, float place) {
    for (const tree::Part& part : tree::partsOf(bytes)) {
        if (part.kind == tree::Part::Vertex) {
            const std::size_t at = part.at + 4 * axis;
            const float value = 2.0f * place - valueAt<float>(bytes, at);
            std::memcpy(bytes.data() + at, &value, sizeof value);
        } else {
            exchange(bytes, part.at + 4, part.at + (part.kind == tree::Part::Quad ? 12 : 8));
        }
    }
    return bytes;
}

void expectMirrored(Session& session, const char* name, const std::string& path, Axis axis,
                    float place) {
    tree::write(path, tree::exchangeFile());
    session.expect(0.0f, name, path);
    session.expectThat(tree::read(path) == mirrored(tree::exchangeFile(), axis, place),
                       std::string(name) + " did not mirror the vertices and turn the faces of " +
                           path + " along " + "xyz"[axis] + " at " + asText(place));
}

// A damaged file is no failure: what is whole in it is turned.
void expectTurningOfCut(Session& session, std::size_t length) {
    const std::string cut = tree::exchangeFile().substr(0, length);
    for (const char* name : {"VekPostExport", "VekPreImport"}) {
        tree::write(kMesh, cut);
        session.expect(0.0f, name, kMesh);
        session.expectThat(tree::read(kMesh) == mirrored(cut, X, 0.0f),
                           std::string(name) + " did not turn what is whole in a file cut off at " +
                               std::to_string(length) + " bytes");
    }
}

// The index of an application with this descriptor.
double addApp(Session& session, const char* id, const char* descriptor) {
    tree::addApp(id, descriptor);
    session.call("InitializeVek", "/Applications");
    return session.call("FindVekApp", id);
}

// Two mirrorings leave the faces as they are.
void expectTurningTwice(Session& session) {
    session.call("GetVekAppIOPrefs", "",
                 addApp(session, "Two", "EXTENSION .vek\nEXPORT_FLIP_X 1\nEXPORT_FLIP_Y 1\n"));
    tree::write(kMesh, tree::exchangeFile());
    session.expect(0.0f, "VekPostExport", kMesh);
    const std::string once = mirrored(tree::exchangeFile(), X, 0.0f);
    session.expectThat(tree::read(kMesh) == mirrored(once, Y, 0.0f),
                       "VekPostExport did not mirror along two axes, with the faces as they were");
}

// With the offsets set before, for an application whose switches are others for each direction.
void expectTurningByDirection(Session& session, double axes) {
    session.call("GetVekAppIOPrefs", "", axes);
    expectMirrored(session, "VekPostExport", kMesh, Y, 10.0f);
    expectMirrored(session, "VekPreImport", kMesh, Z, 14.0f);
}

}  // namespace

void expectTurning(Session& session) {
    for (const char* name : {"VekPostExport", "VekPreImport"}) {
        expectMirrored(session, name, kMesh, X, 0.0f);
        expectMirrored(session, name, tree::project("UPPER.VEK"), X, 0.0f);
    }
    constexpr std::size_t kFirstBlock = 32;
    for (std::size_t length = kFirstBlock; length < tree::exchangeFile().size(); ++length)
        expectTurningOfCut(session, length);
    expectTurningTwice(session);
    const double axes =
        addApp(session, "Axes", "EXTENSION .vek\nEXPORT_FLIP_Y 1\nIMPORT_FLIP_Z 1\n");
    // Each mirrors, and keeps the point at scale * offset in its place.
    session.call("GetVekAppIOPrefs", "", session.call("FindVekApp", "Alpha"));
    session.expect(0.0f, "VekSetExportScale", "", 2.0);
    session.expect(0.0f, "VekSetExportOffsetX", "", 3.0);
    session.expect(0.0f, "VekSetExportOffsetY", "", 5.0);
    session.expect(0.0f, "VekSetExportOffsetZ", "", 7.0);
    expectMirrored(session, "VekPostExport", kMesh, X, 6.0f);
    expectMirrored(session, "VekPreImport", kMesh, X, 6.0f);
    expectTurningByDirection(session, axes);
}
