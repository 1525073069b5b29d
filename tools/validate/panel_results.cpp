#include "tools/validate/results.h"
#include "tools/validate/stand_ins.h"

void checkPanelResults(const Settings& settings, Report& report) {
    if (!isCallable(statedCall("OpenFileDialog"))) {
        report.cannotTry("the open panel would wait for somebody to choose");
        return;
    }
    expectOrdinary(settings, report, "panel");
    tree::make();
    Session session(settings, report);
    HostBlock chosen = HostBlock::out();
    session.expect(0.0f, "OpenFileDialog", "Title", 0.0, chosen.data());
    session.expectText(chosen, kChosenPath);
    session.expectThat(takeAsked(settings.scratch).find("Title\n") != std::string::npos,
                       "OpenFileDialog did not show its title");
    chooseNothing(settings.scratch);
    HostBlock none = HostBlock::out();
    session.expect(-1.0f, "OpenFileDialog", "Title", 0.0, none.data());
    session.expectUntouched(none);
}
