#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app.h"
#include "formats/bx_uv_merge_algo.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"

using Ints = std::vector<std::int32_t>;
using Floats = std::vector<float>;

constexpr std::size_t kFirstPayload = 32 + 16;

class VekTransform : public testing::Test {
protected:
    VekTransform() { reset(); }
    ~VekTransform() override { reset(); }

    static void reset() {
        BXVek::s_ioPref = 0;
        BXVek::s_importReverse = BXVek::s_exportReverse = false;
        BXVek::s_scale = BXVek::s_offsetX = BXVek::s_offsetY = BXVek::s_offsetZ = 0.0;
    }

    std::string path() const { return m_folder / "mesh.Vek"; }

    std::string merged(const std::string& bytes) { return changed(bytes, true); }
    std::string split(const std::string& bytes) { return changed(bytes, false); }

    std::string changed(const std::string& bytes, bool afterExport) {
        writeFile(path(), bytes);
        const BXString file(path().c_str());
        EXPECT_TRUE(afterExport ? BXUVMergeAlgo::mergeUVsInVekFile(file)
                                : BXUVMergeAlgo::splitUVsInVekFile(file));
        return readFile(path());
    }

    static std::vector<float> firstVertex(const std::string& bytes) {
        return floatsAt(bytes, kFirstPayload, 3);
    }

    TempFolder m_folder;
};
