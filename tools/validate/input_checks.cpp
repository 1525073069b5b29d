#include <algorithm>

#include "tools/validate/guarded_memory.h"
#include "tools/validate/trace.h"

namespace {

constexpr std::size_t kHostPointers = 9;

// What the call leaves changed.
void expectUnchanged(Session& session, const StatedCall& call, const Arguments& arguments) {
    const HostBlock text = arguments.ownText, block1 = arguments.own1, block2 = arguments.own2;
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
    expectSame(arguments.ownText.bytes() == text.bytes(), "text");
    expectSame(isSame(entry.block1, arguments.own1, block1), "first block, an input");
    expectSame(isSame(entry.block2, arguments.own2, block2), "second block, an input");
    expectSame(host.empty() || std::equal(host.begin(), host.end(), arguments.host),
               "host's pointers");
}

// All that the call only reads lies where nothing can be written: what is put back is seen too.
void callWithInputsClosed(Session& session, const StatedCall& call, const Change& change) {
    Arguments arguments(call);
    change(arguments);
    const ExportEntry& entry = entryOf(call);
    GuardedMemory memory;
    const auto place = [&](char*& pointer, const char* bytes, std::size_t count) {
        if (pointer) pointer = memory.putAtEnd(bytes, count);
    };
    place(arguments.text, arguments.text, arguments.ownText.bytes().size());
    if (isInput(entry.block1))
        place(arguments.block1, arguments.block1, arguments.own1.bytes().size());
    if (isInput(entry.block2))
        place(arguments.block2, arguments.block2, arguments.own2.bytes().size());
    if (arguments.host) {
        arguments.host = reinterpret_cast<char**>(memory.putAtEnd(
            reinterpret_cast<const char*>(arguments.host), kHostPointers * sizeof(char*)));
    }
    memory.closeForWriting();
    session.expect(call.ordinary, call, arguments, "with inputs that cannot be written to");
}

}  // namespace

void checkInputs(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        forEachCall(session, call,
                    [&](const Arguments& arguments) { expectUnchanged(session, call, arguments); });
    });
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        for (const Change& change : ordinaryCalls(call))
            callWithInputsClosed(session, call, change);
    });
}
