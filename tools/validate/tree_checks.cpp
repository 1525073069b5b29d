#include <sys/stat.h>

#include "tools/validate/trace.h"

void checkMissingTree(const Settings& settings, Report& report) {
    const std::string above = "/Users/Shared";
    forEachPrepared(settings, report, tree::remove, [&](Session& session, const StatedCall& call) {
        const auto before = tree::snapshot(above);
        session.expect(call.missing, call, Arguments(call), "without the tree");
        session.expectThat(tree::snapshot(above) == before,
                           std::string(call.name) + " made something where there is no tree");
    });
}

void checkReadOnlyTree(const Settings& settings, Report& report) {
    forEachPrepared(
        settings, report, tree::makeReadOnly, [&](Session& session, const StatedCall& call) {
            const auto before = tree::snapshot(tree::kRoot);
            for (const Change& change : ordinaryCalls(call)) {
                Arguments arguments(call);
                change(arguments);
                session.expect(call.readOnly, call, arguments, "in a tree that may only be read");
            }
            session.expectThat(tree::snapshot(tree::kRoot) == before,
                               std::string(call.name) + " changed a tree that may only be read");
        });
}

namespace {

// After a call each file is one of these: as before, or as after the same call where there is room.
// One that was missing may be there and empty.
void expectWholeFiles(Session& session, const StatedCall& call, const tree::Files& before,
                      const tree::Files& success) {
    const tree::Files after = tree::snapshot(tree::kRoot);
    const auto holds = [](const tree::Files& files, const std::string& path,
                          const std::string* entry) {
        const auto found = files.find(path);
        return entry ? found != files.end() && found->second == *entry : found == files.end();
    };
    for (const std::string& path : tree::changedFiles(before, after)) {
        const auto found = after.find(path);
        const std::string* const entry = found == after.end() ? nullptr : &found->second;
        const bool isEmptyNow =
            entry && !before.count(path) && entry->back() == '\n' && success.count(path);
        session.expectThat(isEmptyNow || holds(success, path, entry),
                           std::string(call.name) + " left half of " + path + " on a full disk");
    }
}

}  // namespace

void checkFullTree(const Settings& settings, Report& report) {
    forEachExport([&](const StatedCall& call) {
        const tree::Files success =
            traceOf(
                settings, report, call, [](Arguments&) {}, tree::makeNearlyFull)
                .files;
        umask(022);
        tree::makeFull();
        Session session(settings, report);
        if (!session.has(call)) return;
        session.prepare();
        const tree::Files before = tree::snapshot(tree::kRoot);
        session.expect(call.full, call, Arguments(call), "on a full disk");
        expectWholeFiles(session, call, before, success);
    });
}
