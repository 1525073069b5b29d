#include <algorithm>
#include <cstring>

#include "tools/validate/trace.h"

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

// Calls the export with a canary block for each that it writes to.
void expectFillAround(Session& session, const StatedCall& call, const Change& change) {
    const ExportEntry& entry = entryOf(call);
    Arguments arguments(call);
    change(arguments);
    std::vector<char> bytes1, bytes2;
    if (isOutput(entry.block1)) arguments.block1 = canaryBlock(bytes1);
    if (isOutput(entry.block2)) arguments.block2 = canaryBlock(bytes2);
    session.call(call, arguments);
    const auto expectFill = [&](BlockKind kind, const std::vector<char>& bytes, const char* which) {
        if (!isOutput(kind)) return;
        session.expectThat(
            isFillAround(bytes, kBefore, resultsOf(kind, bytes.data() + kBefore)),
            std::string(call.name) + " wrote more than its result to its " + which + " block");
    };
    expectFill(entry.block1, bytes1, "first");
    expectFill(entry.block2, bytes2, "second");
}

}  // namespace

void checkCanaries(const Settings& settings, Report& report) {
    const auto gives = [](const StatedCall& call) {
        return isOutput(entryOf(call).block1) || isOutput(entryOf(call).block2);
    };
    const auto ordinary = [](Session& session, const StatedCall& call) {
        expectFillAround(session, call, [](Arguments&) {});
    };
    // Where there is nothing to give the block is not to be touched.
    const auto failing = [](Session& session, const StatedCall& call) {
        expectFillAround(session, call, giveNothing);
        if (entryOf(call).block1 == BlockKind::IN_TEXT) expectFillAround(session, call, giveNoKey);
    };
    forEachPrepared(settings, report, tree::make, gives, ordinary);
    forEachPrepared(settings, report, tree::make, gives, failing);
    forEachPrepared(settings, report, tree::remove, gives, ordinary);
    expectSizedText(settings, report);
}
