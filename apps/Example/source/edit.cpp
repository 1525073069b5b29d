#include "edit.h"

#include <strings.h>

#include <algorithm>
#include <cmath>

#include "exchange_file.h"
#include "given_mesh.h"
#include "hub.h"
#include "orientation.h"

namespace {

const char kOwnId[] = "Example";

// About the vertical line through the middle of the box: not at the bottom, wholly at the top.
void twistAboutZ(std::vector<Point>& positions, const Box& box, double degrees) {
    if (!(box.size(2) > 0)) return;
    const double full = degrees * std::acos(-1.0) / 180;
    for (Point& point : positions) {
        const double angle = full * (point[2] - box.min[2]) / box.size(2);
        const double x = point[0] - box.centre(0);
        const double y = point[1] - box.centre(1);
        point[0] = static_cast<float>(box.centre(0) + x * std::cos(angle) - y * std::sin(angle));
        point[1] = static_cast<float>(box.centre(1) + x * std::sin(angle) + y * std::cos(angle));
    }
}

bool isTexture(const Block& block) {
    return block.id == kTexture0 || block.id == kTexture1 || block.id == kTexture2;
}

bool isKnown(const Block& block) {
    return block.id == kVertices || (block.id >= kFacesNegative && block.id <= kTriangles) ||
           isTexture(block);
}

// This application writes its paths with backslashes, as some do.
void useBackslashes(Block& texture) {
    const auto end = std::find(texture.payload.begin(), texture.payload.end(), '\0');
    std::replace(texture.payload.begin(), end, '/', '\\');
}

void reportCorner(std::ostream& report, const char* key, const std::array<double, 3>& corner) {
    report << key << ": " << corner[0] << ' ' << corner[1] << ' ' << corner[2] << '\n';
}

void reportMesh(std::ostream& report, const GivenMesh& mesh, const Orientation& orientation) {
    report << "vertices: " << mesh.positions.size() << '\n';
    report << "faces: " << mesh.faces.size() << '\n';
    report << "up: z\n";
    report << "handedness: left\n";
    reportCorner(report, "box_min", orientation.box.min);
    reportCorner(report, "box_max", orientation.box.max);
    report << "height: " << orientation.box.size(2) << '\n';
    report << "open_edges: " << orientation.openEdges << '\n';
    report << "disagreeing_edges: " << orientation.disagreeingEdges << '\n';
    report << "crowded_edges: " << orientation.crowdedEdges << '\n';
    report << "closed: " << (orientation.closed ? "yes" : "no") << '\n';
    report << "signed_volume: " << orientation.signedVolume << '\n';
}

void reportBlocks(std::ostream& report, const ExchangeFile& file) {
    for (const Block& block : file.blocks) {
        if (isTexture(block)) report << "texture: " << block.payload.c_str() << '\n';
        if (!isKnown(block)) report << "kept_block: " << block.id << '\n';
    }
}

std::string editObject(const EditOptions& options, const std::string& object,
                       const std::string& editedObject, std::ostream& report) {
    report << "object: " << object << '\n';
    ExchangeFile file;
    GivenMesh mesh;
    std::string problem = readExchangeFile(object + ".vek", file);
    if (problem.empty()) problem = takeMesh(file, mesh);
    if (!problem.empty()) return problem;

    const Orientation orientation = measure(mesh);
    reportMesh(report, mesh, orientation);
    problem = findFault(orientation, options.knownFlaws);
    if (!problem.empty()) return problem;

    twistAboutZ(mesh.positions, orientation.box, options.twist);
    putPositions(mesh.positions, file);
    for (Block& block : file.blocks) {
        if (isTexture(block)) useBackslashes(block);
    }
    reportBlocks(report, file);
    report << "twist_degrees: " << options.twist << '\n';
    report << "written: " << editedObject << ".vek\n";
    return writeExchangeFile(editedObject + ".vek", file);
}

}  // namespace

std::string editObjects(const EditOptions& options, std::ostream& report) {
    const Hub hub(options.tree);
    report << "application: " << kOwnId << '\n';
    const std::string selected = hub.selectedApplication();
    if (strcasecmp(selected.c_str(), kOwnId) != 0) {
        return "The selected application is \"" + selected + "\", not \"" + kOwnId + "\".";
    }
    std::vector<std::string> objects = hub.objects();
    if (objects.empty()) return "The object list names no object.";
    for (std::string& object : objects) {
        const std::string editedObject = object + "_edited";
        const std::string problem = editObject(options, object, editedObject, report);
        if (!problem.empty()) return problem;
        object = editedObject;
    }
    report << "objects: " << objects.size() << '\n';
    return hub.writeObjects(objects);
}
