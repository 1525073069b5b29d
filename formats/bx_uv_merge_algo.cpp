#include "formats/bx_uv_merge_algo.h"

#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app.h"
#include "formats/vek_file_transform.h"

namespace {

// The preference bits of one direction.
struct Switches {
    unsigned int flips[3];
    unsigned int switchYZ;

    unsigned int all() const { return flips[0] | flips[1] | flips[2] | switchYZ; }
};

constexpr Switches kExport = {
    {BXVekApp::EXPORT_FLIP_X, BXVekApp::EXPORT_FLIP_Y, BXVekApp::EXPORT_FLIP_Z},
    BXVekApp::EXPORT_SWITCH_YZ};
constexpr Switches kImport = {
    {BXVekApp::IMPORT_FLIP_X, BXVekApp::IMPORT_FLIP_Y, BXVekApp::IMPORT_FLIP_Z},
    BXVekApp::IMPORT_SWITCH_YZ};

// Required(R60): an export or import that has nothing to do resets the offset along z for all that
// follow it.
void forgetOffsetZWhereNothingIsAsked(const Switches& switches) {
    if (BXVek::s_ioPref & switches.all()) return;
    if (BXVek::s_scale != 1.0 || BXVek::s_offsetX != 0.0 || BXVek::s_offsetY != 0.0) return;
    BXVek::s_offsetZ = 0.0;
}

VekOrientation orientationOf(const Switches& switches, bool reverse) {
    VekOrientation orientation;
    for (int axis = 0; axis < 3; ++axis) {
        orientation.flip[axis] = (BXVek::s_ioPref & switches.flips[axis]) != 0;
    }
    orientation.switchYZ = (BXVek::s_ioPref & switches.switchYZ) != 0;
    orientation.rewind = reverse;
    orientation.centre[0] = BXVek::s_scale * BXVek::s_offsetX;
    orientation.centre[1] = BXVek::s_scale * BXVek::s_offsetY;
    orientation.centre[2] = BXVek::s_scale * BXVek::s_offsetZ;
    return orientation;
}

}  // namespace

bool BXUVMergeAlgo::mergeUVsInVekFile(const BXString& path) {
    forgetOffsetZWhereNothingIsAsked(kExport);
    const VekOrientation orientation = orientationOf(kExport, BXVek::s_exportReverse);
    return transformVekFile(path.getValidFilePath(), VekPositionMap::toTarget(orientation),
                            orientation.rewind);
}

bool BXUVMergeAlgo::splitUVsInVekFile(const BXString& path) {
    forgetOffsetZWhereNothingIsAsked(kImport);
    const VekOrientation orientation = orientationOf(kImport, BXVek::s_importReverse);
    return transformVekFile(path.getValidFilePath(), VekPositionMap::toHost(orientation),
                            orientation.rewind);
}
