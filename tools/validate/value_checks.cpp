#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "tools/validate/value_checks.h"

namespace {

const double kInfinity = std::numeric_limits<double>::infinity();
const double kOddNumbers[] = {std::nan(""), kInfinity, -kInfinity,   1e300,
                              -1e300,       5e-324,    2147483648.0, -2147483649.0,
                              4294967296.0, 9.3e18,    -0.5,         2147483647.0};

// Whether a number is an index of the one application or of one of the two objects.
bool isSmall(double value) {
    return value > -1.0 && value < 1.0;
}

void expectOddValues(Session& session, const StatedCall& call) {
    for (const double value : kOddNumbers) {
        Arguments arguments(call);
        arguments.value = value;
        const float result = session.call(call, arguments);
        session.expectThat(
            isPossible(call.results, result),
            std::string(call.name) + " gave " + asText(result) + " for " + asText(value));
        // Where there is nothing with this index, there is nothing to give. The switches are
        // given as 0.
        const BlockKind kind = entryOf(call).block1;
        if (!isOutput(kind) || kind == BlockKind::OUT_IO_PREFS || isSmall(value)) continue;
        session.expectThat(arguments.own1.isUntouched(),
                           std::string(call.name) + " wrote to its block for " + asText(value));
    }
}

void expectOddNumbersInFiles(Session& session) {
    for (const char* text :
         {"nan", "-inf", "1e300", "-1e300", "99999999999999999999", "1e-400", "0x1p9999"}) {
        tree::write(tree::hub("odd.txt"), "K = " + std::string(text) + "\n");
        for (const char* name :
             {"ReadConfigPrefAsBool", "ReadConfigPrefAsInt", "ReadConfigPrefAsFloat"}) {
            HostBlock key = HostBlock::in("K"), out = HostBlock::out();
            session.expect(1.0f, name, tree::hub("odd.txt"), 0.0, key.data(), out.data());
        }
    }
}

void expectOddNumbersWritten(Session& session) {
    const float numbers[] = {std::nanf(""), std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::max(), -std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::denorm_min()};
    for (const float number : numbers) {
        HostBlock key = HostBlock::in("REAL"), in = HostBlock::in("1234");
        std::memcpy(in.data(), &number, sizeof number);
        session.expect(1.0f, "WriteConfigPrefAsFloat", tree::hub("prefs.txt"), 0.0, key.data(),
                       in.data());
    }
}

// The offsets and the scale are numbers of any kind; a mesh is brought into place with them.
void expectOddPlacing(Session& session) {
    const char* const names[] = {"VekSetExportScale", "VekSetExportOffsetX", "VekSetExportOffsetY",
                                 "VekSetExportOffsetZ"};
    for (const char* name : names) {
        for (const double value : kOddNumbers) {
            for (const char* other : names) session.expect(0.0f, other, "", 2.0);
            session.expect(0.0f, name, "", value);
            for (const char* turn : {"VekPostExport", "VekPreImport"}) {
                tree::write(tree::project("mesh.vek"), tree::exchangeFile());
                session.expect(0.0f, turn, tree::project("mesh.vek"));
            }
        }
    }
}

void expectNoOddMap(Session& session) {
    for (const double value : kOddNumbers) {
        HostBlock path = HostBlock::out(), param = HostBlock::out();
        session.expect(-1.0f, "GetFirstObjectTextureFileName", "", value, path.data(),
                       param.data());
        session.expectUntouched(path);
        session.expectUntouched(param);
    }
}

void expectTurned(Session& session, const std::string& bytes, const std::string& what) {
    tree::write(tree::project("mesh.vek"), bytes);
    for (const char* name : {"VekPostExport", "VekPreImport"}) {
        const StatedCall& call = statedCall(name);
        session.expect(0.0f, call, Arguments(call), what);
    }
}

// A mesh may hold any number: as a coordinate, as what a map has, as the count of its vertices, of
// which fewer are there.
void expectOddNumbersInMeshes(Session& session) {
    for (const char* name : {"VekSetExportScale", "VekSetExportOffsetX", "VekSetExportOffsetY",
                             "VekSetExportOffsetZ"}) {
        session.expect(0.0f, name, "", 2.0);
    }
    const StatedCall& map = statedCall("GetFirstObjectTextureFileName");
    for (const double value : kOddNumbers) {
        const auto number = static_cast<float>(value);
        expectTurned(session, tree::exchangeFile(number),
                     "for a mesh with the coordinate " + asText(value));
        const std::string what = "for a mesh with a map of " + asText(value);
        expectTurned(session, tree::exchangeFile(1.0f, number), what);
        session.expect(0.0f, map, Arguments(map), what);
    }
    for (const std::uint32_t count : {0u, 1000001u, 0x7fffffffu, 0x80000000u, 0xffffffffu}) {
        std::string bytes = tree::exchangeFile();
        std::memcpy(&bytes[tree::kVertexCountAt], &count, sizeof count);
        const std::string what = "for a mesh said to have " + std::to_string(count) + " vertices";
        expectTurned(session, bytes, what);
        const float result = session.call(map, Arguments(map));
        session.expectThat(isPossible(map.results, result),
                           session.last() + " gave " + asText(result) + " " + what);
    }
}

}  // namespace

void checkNumbers(const Settings& settings, Report& report) {
    tree::make();
    Session session(settings, report);
    session.prepare();
    forEachExport([&](const StatedCall& call) {
        if (!entryOf(call).value.empty() && session.has(call)) expectOddValues(session, call);
    });
    expectOddNumbersInFiles(session);
    expectOddNumbersWritten(session);
    expectOddPlacing(session);
    expectNoOddMap(session);
    expectOddNumbersInMeshes(session);
    forEachExport([&](const StatedCall& call) {
        const std::string_view use = entryOf(call).value;
        const bool takesIndex = use.find("index") != use.npos;
        if (takesIndex && session.has(call)) expectIndexes(settings, report, call);
    });
}
