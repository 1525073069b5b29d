#include "tools/validate/session.h"

void checkFirstCall(const Settings& settings, Report& report) {
    forEachExport([&](const StatedCall& call) {
        tree::make();
        Session session(settings, report);
        if (session.has(call))
            session.expect(call.first, call, Arguments(call), "as the first call of all");
    });
}

void checkTwice(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        session.call(call, Arguments(call));
        session.expect(call.again, call, Arguments(call), "for the second call");
    });
}

namespace {

void expectNothing(Session& session, const char* getter) {
    HostBlock block = HostBlock::out();
    session.expect(0.0f, getter, "", 0.0, block.data());
    session.expectUntouched(block);
}

// The list in memory changes by three exports only.
void expectStaleList(Session& session) {
    expectNothing(session, "GetVekObjectPath");
    session.expect(1.0f, "ExtractVekObject");
    expectNothing(session, "GetVekObjectPath");
    session.expect(1.0f, "ReadVekObjectList");
    session.expect(1.0f, "ClearVekObjectList");
    HostBlock block = HostBlock::out();
    session.expect(0.0f, "GetVekObjectPath", "", 0.0, block.data());
    session.expectText(block, tree::project("second"));
    session.expect(0.0f, "ReleaseVekObjectList");
    expectNothing(session, "GetVekObjectPath");
    session.expect(0.0f, "ExtractVekObject");
    session.expect(0.0f, "ReadVekObjectList");
}

// Before the applications are read there are none, whatever else was called.
void expectNoApplications(Session& session) {
    session.expect(0.0f, "SetVekAppIndex");
    session.expectFile(tree::hub("Vek_Application.txt"), "");
    session.expect(0.0f, "WriteVekAppPath", "/A/B.app");
    session.expect(-1.0f, "GetVekAppIndex");
    expectNothing(session, "ReadVekAppPath");
    expectNothing(session, "GetVekAppId");
    session.expect(0.0f, "GetVekAppIOPrefs");
    session.expect(0.0f, "VekPreImport", tree::project("mesh.vek"));
    session.expectFile(tree::project("mesh.vek"), tree::exchangeFile());
}

// Everything from the last export to the first: each is called before what it builds on.
void expectReversed(Session& session) {
    const auto& calls = statedCalls();
    for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
        if (!isCallable(*call) || !session.has(*call)) continue;
        const float result = session.call(*call, Arguments(*call));
        session.expectThat(isPossible(call->results, result),
                           std::string(call->name) + " gave " + asText(result) +
                               " with all exports called in reverse");
    }
}

}  // namespace

void checkOrder(const Settings& settings, Report& report) {
    tree::make();
    {
        Session session(settings, report);
        expectStaleList(session);
        expectNoApplications(session);
    }
    tree::make();
    Session session(settings, report);
    session.prepare();
    expectReversed(session);
}
