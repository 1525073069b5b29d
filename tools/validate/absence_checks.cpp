#include <cstring>

#include "tools/validate/changed_calls.h"
#include "tools/validate/guarded_memory.h"
#include "tools/validate/trace.h"

// What an export does without one of the things that it is given, or all of them.

namespace {

// A thing that a pointer of the arguments leads to.
struct Piece {
    const char* name;
    char*& (*pointer)(Arguments&);
    BlockKind (*kind)(const StatedCall&);  // IN_TEXT for the text; NONE where it is not used
};

const Piece kText = {
    "text", [](Arguments& arguments) -> char*& { return arguments.text; },
    [](const StatedCall& call) { return call.text ? BlockKind::IN_TEXT : BlockKind::NONE; }};
const Piece kBlock1 = {"first block",
                       [](Arguments& arguments) -> char*& { return arguments.block1; },
                       [](const StatedCall& call) { return entryOf(call).block1; }};
const Piece kBlock2 = {"second block",
                       [](Arguments& arguments) -> char*& { return arguments.block2; },
                       [](const StatedCall& call) { return entryOf(call).block2; }};
const Piece kPieces[] = {kText, kBlock1, kBlock2};

// The result without this piece alone, be it null or empty.
float statedWithout(const Piece& piece, const StatedCall& call) {
    if (piece.pointer == kBlock2.pointer) {
        // A number that is not there is not written; an empty text is.
        const bool isNumber =
            isInput(entryOf(call).block2) && piece.kind(call) != BlockKind::IN_TEXT;
        return isNumber ? call.nulls : call.ordinary;
    }
    // Its block is what the panel cannot do without; the top window is what an item without a name
    // is.
    const std::string& group = entryOf(call).group;
    const bool canDoWithout =
        piece.pointer == kText.pointer && (group == "panel" || group == "placement");
    return canDoWithout ? call.ordinary : call.nulls;
}

void expectWithout(Session& session, const StatedCall& call, const Piece& piece) {
    Arguments arguments(call);
    piece.pointer(arguments) = nullptr;
    session.expect(statedWithout(piece, call), call, arguments,
                   std::string("with its ") + piece.name + " null");
}

// Whether the text goes into a file.
bool recordsText(const StatedCall& call) {
    for (const char* name : {"InitializeVek", "AddVekObject", "AddVekObjectToList", "VekAppInstall",
                             "WriteVekAppPath"}) {
        if (std::string(name) == call.name) return true;
    }
    return false;
}

// A null text is the empty text, also in the file.
void expectAsEmpty(const Settings& settings, Report& report, const StatedCall& call) {
    HostBlock nothing = HostBlock::in("");
    const Trace empty = traceOf(settings, report, call,
                                [&](Arguments& arguments) { arguments.text = nothing.data(); });
    const Trace null =
        traceOf(settings, report, call, [](Arguments& arguments) { arguments.text = nullptr; });
    for (const std::string& difference : differences(empty, null)) {
        report.finds(std::string(call.name) + " with its text null instead of empty " + difference);
    }
}

// The empty text is written as text; as a number nothing is.
void expectWritingNothing(Session& session) {
    const std::string prefs = tree::hub("prefs.txt");
    HostBlock key = HostBlock::in("TEXT");
    tree::write(prefs, "TEXT = old\nOTHER = 1\n");
    session.expect(1.0f, "WriteConfigPrefAsString", prefs, 0.0, key.data());
    session.expectFile(prefs, "TEXT = \nOTHER = 1\n");
    for (const char* name :
         {"WriteConfigPrefAsBool", "WriteConfigPrefAsInt", "WriteConfigPrefAsFloat"}) {
        tree::write(prefs, "TEXT = 1\nOTHER = 1\n");
        session.expect(0.0f, name, prefs, 0.0, key.data());
        session.expectFile(prefs, "TEXT = 1\nOTHER = 1\n");
    }
}

}  // namespace

void checkNulls(const Settings& settings, Report& report) {
    expectOfChanged(settings, report, "with every pointer null", &StatedCall::nulls,
                    [](Arguments& arguments, const ExportEntry&) {
                        arguments.text = arguments.block1 = arguments.block2 = nullptr;
                        arguments.size1 = arguments.size2 = 0;
                        arguments.host = nullptr;
                    });
    for (const Piece& piece : kPieces) {
        const auto has = [&](const StatedCall& call) {
            return piece.kind(call) != BlockKind::NONE;
        };
        forEachPrepared(
            settings, report, tree::make, has,
            [&](Session& session, const StatedCall& call) { expectWithout(session, call, piece); });
    }
    forEachExport([&](const StatedCall& call) {
        if (recordsText(call)) expectAsEmpty(settings, report, call);
    });
    tree::make();
    Session session(settings, report);
    expectWritingNothing(session);
    const auto takesHost = [](const StatedCall& call) {
        return entryOf(call).group == "placement";
    };
    forEachPrepared(settings, report, tree::make, takesHost,
                    [](Session& placing, const StatedCall& call) {
                        Arguments arguments(call);
                        arguments.host = nullptr;
                        placing.expect(call.nulls, call, arguments, "without the host's data");
                    });
}

namespace {

using Put = char* (GuardedMemory::*)(const char*, std::size_t);

// A text of its own for a piece, against one end of a page.
void putText(GuardedMemory& memory, Put put, char*& pointer, const char* text) {
    pointer = (memory.*put)(text, std::strlen(text) + 1);
}

void expectEmpties(const Settings& settings, Report& report, Put put) {
    GuardedMemory memory;
    const auto takesText = [](const StatedCall& call, const Piece& piece) {
        return piece.kind(call) == BlockKind::IN_TEXT;
    };
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        Arguments all(call);
        memory.clear();
        for (const Piece& piece : kPieces) {
            if (takesText(call, piece)) putText(memory, put, piece.pointer(all), "");
        }
        session.expect(call.empties, call, all, "with empty texts");
        for (const Piece& piece : kPieces) {
            if (!takesText(call, piece)) continue;
            tree::make();
            session.prepare();
            Arguments one(call);
            memory.clear();
            putText(memory, put, piece.pointer(one), "");
            session.expect(statedWithout(piece, call), call, one,
                           std::string("with its ") + piece.name + " empty");
            memory.clear();
            putText(memory, put, piece.pointer(one), "x");
            const float result = session.call(call, one);
            session.expectThat(isPossible(call.results, result),
                               std::string(call.name) + " gave " + asText(result) +
                                   " with a text of one character");
        }
    });
}

}  // namespace

void checkEmpties(const Settings& settings, Report& report) {
    expectEmpties(settings, report, &GuardedMemory::putAtEnd);
    expectEmpties(settings, report, &GuardedMemory::putAtBegin);
}
