#include <algorithm>
#include <cmath>
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
    forEachExport([&](const StatedCall& call) {
        const std::string_view use = entryOf(call).value;
        const bool takesIndex = use.find("index") != use.npos;
        if (takesIndex && session.has(call)) expectCutIndexes(settings, report, call);
    });
}

namespace {

// Which bytes of a block an export may write: how many from where on; text counts with its NUL.
struct Result {
    std::size_t from;
    std::size_t count;
};

std::vector<Result> resultsOf(BlockKind kind, const char* block) {
    switch (kind) {
        case BlockKind::OUT_TEXT:
        case BlockKind::OUT_SIZED_TEXT:
            return {{0, *block == kFill ? 0 : std::strlen(block) + 1}};
        case BlockKind::OUT_INT:
        case BlockKind::OUT_BOOL:
        case BlockKind::OUT_FLOAT:
            return {{0, 4}};
        case BlockKind::OUT_IO_PREFS:
            return {{0, 4}, {8, 4}};
        default:
            return {};
    }
}

// Whether all of `bytes` is fill but for the results, which begin at `begin`.
bool isFillAround(std::vector<char> bytes, std::size_t begin, const std::vector<Result>& results) {
    for (const Result& result : results) {
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(begin + result.from), result.count,
                    kFill);
    }
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == kFill; });
}

constexpr std::size_t kBefore = 1024;
constexpr std::size_t kHostPointers = 9;

// A block out in the middle of fill.
char* canaryBlock(std::vector<char>& bytes) {
    bytes.assign(kBefore + HostBlock::kRoom, kFill);
    return bytes.data() + kBefore;
}

// The one size that counts, with a message that is longer.
void expectSizedText(const Settings& settings, Report& report) {
    constexpr int kSize = 8;
    tree::make();
    tree::write(tree::app("Alpha", "init.sh"),
                "echo a long message >'" + tree::app("Alpha", "Vek_InstallLog.txt") + "'\n");
    Session session(settings, report);
    session.prepare();
    const StatedCall& call = statedCall("VekAppInstall");
    Arguments arguments(call);
    std::vector<char> bytes;
    arguments.block1 = canaryBlock(bytes);
    arguments.size1 = kSize;
    session.call(call, arguments);
    session.expectThat(isFillAround(bytes, kBefore, {{0, kSize}}),
                       "VekAppInstall wrote more than the size of its block");
}

}  // namespace

void checkCanaries(const Settings& settings, Report& report) {
    const auto gives = [](const StatedCall& call) {
        return isOutput(entryOf(call).block1) || isOutput(entryOf(call).block2);
    };
    const auto expect = [](Session& session, const StatedCall& call) {
        const ExportEntry& entry = entryOf(call);
        Arguments arguments(call);
        std::vector<char> bytes1, bytes2;
        if (isOutput(entry.block1)) arguments.block1 = canaryBlock(bytes1);
        if (isOutput(entry.block2)) arguments.block2 = canaryBlock(bytes2);
        session.call(call, arguments);
        const auto expectFill = [&](BlockKind kind, const std::vector<char>& bytes,
                                    const char* which) {
            if (!isOutput(kind)) return;
            session.expectThat(
                isFillAround(bytes, kBefore, resultsOf(kind, bytes.data() + kBefore)),
                std::string(call.name) + " wrote more than its result to its " + which + " block");
        };
        expectFill(entry.block1, bytes1, "first");
        expectFill(entry.block2, bytes2, "second");
    };
    forEachPrepared(settings, report, tree::make, gives, expect);
    expectSizedText(settings, report);
}

void checkInputs(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        Arguments arguments(call);
        const Arguments before(call);
        const ExportEntry& entry = entryOf(call);
        std::vector<char*> host;
        if (arguments.host) host.assign(arguments.host, arguments.host + kHostPointers);
        session.call(call, arguments);
        const auto expectSame = [&](bool isSame, const char* what) {
            session.expectThat(isSame, std::string(call.name) + " wrote to its " + what);
        };
        const auto isSame = [](BlockKind kind, const HostBlock& one, const HostBlock& other) {
            return !isInput(kind) || one.bytes() == other.bytes();
        };
        expectSame(arguments.ownText.bytes() == before.ownText.bytes(), "text");
        expectSame(isSame(entry.block1, arguments.own1, before.own1), "first block, an input");
        expectSame(isSame(entry.block2, arguments.own2, before.own2), "second block, an input");
        expectSame(host.empty() || std::equal(host.begin(), host.end(), arguments.host),
                   "host's pointers");
    });
}
