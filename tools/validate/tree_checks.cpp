#include "tools/validate/session.h"

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
            session.expect(call.readOnly, call, Arguments(call), "in a tree that may only be read");
            session.expectThat(tree::snapshot(tree::kRoot) == before,
                               std::string(call.name) + " changed a tree that may only be read");
        });
}

namespace {

// Whether the ordinary call would make one of the two files longer that are as long as they can be.
bool growsFile(const StatedCall& call) {
    const std::string name(call.name);
    return name.compare(0, 12, "AddVekObject") == 0 || name.compare(0, 15, "WriteConfigPref") == 0;
}

}  // namespace

void checkFullTree(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::makeFull,
                    [&](Session& session, const StatedCall& call) {
                        const std::string list = tree::read(tree::hub("Vek_ObjectList.txt"));
                        const std::string prefs = tree::read(tree::hub("prefs.txt"));
                        session.expect(call.full, call, Arguments(call), "on a full disk");
                        if (!growsFile(call)) return;
                        session.expectFile(tree::hub("Vek_ObjectList.txt"), list);
                        session.expectFile(tree::hub("prefs.txt"), prefs);
                    });
}
