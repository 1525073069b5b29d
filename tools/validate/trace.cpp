#include "tools/validate/trace.h"

#include <sys/stat.h>

#include <cstring>

namespace {

bool isSame(float one, float other) {
    return std::memcmp(&one, &other, sizeof one) == 0;
}

}  // namespace

std::vector<Change> ordinaryCalls(const StatedCall& call) {
    std::vector<Change> changes = {[](Arguments&) {}};
    const std::string name = call.name;
    if (name == "VekPostExport" || name == "VekPreImport") {
        changes.emplace_back(
            [](Arguments& arguments) { arguments.setText(tree::project("scene.ma")); });
    }
    return changes;
}

void giveNothing(Arguments& arguments) {
    arguments.value = 7.0;
    if (!arguments.text) return;
    arguments.setText(tree::hub("nowhere/file.txt"));
}

void giveNoKey(Arguments& arguments) {
    if (!arguments.text) return;
    arguments.own1 = HostBlock::in("NOWHERE");
    arguments.block1 = arguments.own1.data();
}

bool startsItsText(const StatedCall& call) {
    return std::string("OpenVekApplication") == call.name;
}

std::vector<Change> failingCalls(const StatedCall& call) {
    std::vector<Change> changes;
    const ExportEntry& entry = entryOf(call);
    const bool hasKey = entry.block1 == BlockKind::IN_TEXT;
    const auto giveNull = [=](Arguments& arguments) {
        arguments.text = nullptr;
        if (hasKey) arguments.block1 = nullptr;
        if (entry.block2 == BlockKind::IN_TEXT) arguments.block2 = nullptr;
    };
    const bool usesAny = call.text || !entry.value.empty();
    if (usesAny && !startsItsText(call)) changes.emplace_back(giveNothing);
    if (call.text) changes.emplace_back(giveNull);
    if (hasKey) changes.emplace_back(giveNoKey);
    if (ordinaryCalls(call).size() > 1) {
        changes.emplace_back(
            [](Arguments& arguments) { arguments.setText(tree::project("plain.txt")); });
    }
    return changes;
}

Trace traceOf(const Settings& settings, Report& report, const StatedCall& call,
              const Change& change, void (*makeTree)()) {
    // What an earlier call may have left is not to show in this one.
    umask(022);
    makeTree();
    Session session(settings, report);
    session.prepare();
    Arguments arguments(call);
    change(arguments);
    Trace trace;
    const std::vector<char> text = arguments.ownText.bytes();
    if (session.has(call)) trace.result = session.call(call, arguments);
    trace.isTextKept = arguments.ownText.bytes() == text;
    trace.block1 = arguments.own1.bytes();
    trace.block2 = arguments.own2.bytes();
    if (arguments.windows) trace.windows = arguments.windows->draw();
    trace.files = tree::snapshot(tree::kRoot);
    return trace;
}

std::vector<std::string> differences(const Trace& one, const Trace& other) {
    std::vector<std::string> found;
    if (!isSame(one.result, other.result)) {
        found.push_back("gave another result, " + asText(other.result) + " and not " +
                        asText(one.result));
    }
    if (one.isTextKept && !other.isTextKept) found.emplace_back("wrote to its text");
    if (one.block1 != other.block1) found.emplace_back("wrote other bytes to its first block");
    if (one.block2 != other.block2) found.emplace_back("wrote other bytes to its second block");
    if (one.windows != other.windows) found.emplace_back("left the host's windows otherwise");
    for (const std::string& path : tree::changedFiles(one.files, other.files))
        found.push_back("left another " + path);
    return found;
}
