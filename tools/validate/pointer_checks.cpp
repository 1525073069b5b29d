#include <cstring>

#include "tools/validate/changed_calls.h"
#include "tools/validate/guarded_memory.h"
#include "tools/validate/trace.h"

namespace {

// The bytes that a host has to have in a block: of a text out, a path's.
std::size_t sizeOf(BlockKind kind, const char* block) {
    switch (kind) {
        case BlockKind::IN_TEXT:
            return std::strlen(block) + 1;
        case BlockKind::OUT_TEXT:
        case BlockKind::OUT_SIZED_TEXT:
            return 4096;
        case BlockKind::OUT_IO_PREFS:
            return 12;
        default:
            return 4;
    }
}

// Puts the text and the blocks where `place` says.
template <class Place>
void placeAll(Arguments& arguments, const ExportEntry& entry, Place place) {
    if (arguments.text) arguments.text = place(arguments.text, std::strlen(arguments.text) + 1);
    const auto placeBlock = [&](BlockKind kind, char*& block, int& size) {
        if (kind == BlockKind::NONE) return;
        const std::size_t count = sizeOf(kind, block);
        block = place(block, count);
        size = static_cast<int>(count);
    };
    placeBlock(entry.block1, arguments.block1, arguments.size1);
    placeBlock(entry.block2, arguments.block2, arguments.size2);
}

}  // namespace

void checkLongTexts(const Settings& settings, Report& report) {
    constexpr std::size_t kLength = 100000;
    HostBlock text = HostBlock::in("/" + std::string(kLength, 'x'));
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        Arguments arguments(call);
        const ExportEntry& entry = entryOf(call);
        if (arguments.text) arguments.text = text.data();
        if (entry.block1 == BlockKind::IN_TEXT) arguments.block1 = text.data();
        if (entry.block2 == BlockKind::IN_TEXT) arguments.block2 = text.data();
        const float result = session.call(call, arguments);
        session.expectThat(isPossible(call.results, result),
                           std::string(call.name) + " gave " + asText(result) + " for a long text");
    });
}

void checkGuardPages(const Settings& settings, Report& report) {
    GuardedMemory memory;
    const auto atEnd = [&](const char* bytes, std::size_t count) {
        return memory.putAtEnd(bytes, count);
    };
    const auto atBegin = [&](const char* bytes, std::size_t count) {
        return memory.putAtBegin(bytes, count);
    };
    const auto expectAt = [&](const char* when, const auto& place) {
        forEachPrepared(settings, report, tree::make,
                        [&](Session& session, const StatedCall& call) {
                            for (const Change& change : ordinaryCalls(call)) {
                                Arguments arguments(call);
                                change(arguments);
                                memory.clear();
                                placeAll(arguments, entryOf(call), place);
                                session.expect(call.ordinary, call, arguments, when);
                            }
                        });
    };
    expectAt("with blocks that end with a page", atEnd);
    expectAt("with blocks that begin with a page", atBegin);
}

void checkUnusedArguments(const Settings& settings, Report& report) {
    GuardedMemory memory;
    char* const poison = memory.nothing();
    forEachExport([&](const StatedCall& call) {
        const ExportEntry& entry = entryOf(call);
        const auto putPoison = [&](Arguments& arguments) {
            if (entry.text.empty()) arguments.text = poison;
            if (entry.value.empty()) arguments.value = -1e300;
            if (entry.block1 == BlockKind::NONE) arguments.block1 = poison;
            if (entry.block2 == BlockKind::NONE) arguments.block2 = poison;
            // The only size that counts is that of a sized text.
            if (entry.block1 != BlockKind::OUT_SIZED_TEXT) arguments.size1 = -2147483647;
            arguments.size2 = 2147483647;
            if (!arguments.host) arguments.host = reinterpret_cast<char**>(poison);
        };
        const Trace plain = traceOf(settings, report, call, [](Arguments&) {});
        const Trace other = traceOf(settings, report, call, putPoison);
        for (const std::string& difference : differences(plain, other)) {
            report.finds(std::string(call.name) + " with poison in what it does not use " +
                         difference);
        }
    });
}
