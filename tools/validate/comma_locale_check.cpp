#include <locale.h>
#include <stdlib.h>

#include <cstring>
#include <utility>

#include "tools/validate/trace.h"

namespace {

bool hasDecimalComma() {
    return std::strcmp(localeconv()->decimal_point, ",") == 0;
}

// A locale with a decimal comma that is installed here; or else one that is made in `scratch`.
bool setCommaLocale(const std::string& scratch) {
    const char* const names[] = {"de_DE.UTF-8", "de_DE",       "fr_FR.UTF-8", "fr_FR",
                                 "es_ES.UTF-8", "it_IT.UTF-8", "pt_BR.UTF-8", "ru_RU.UTF-8"};
    const auto setAny = [&] {
        for (const char* name : names) {
            if (setlocale(LC_ALL, name) && hasDecimalComma()) return true;
        }
        return false;
    };
    if (setAny()) return true;
    const std::string made = "localedef -c -i de_DE -f UTF-8 '" + scratch + "/de_DE.UTF-8'";
    // Mere warnings make it fail: what counts is whether the locale works.
    const int ignored = system(made.c_str());
    static_cast<void>(ignored);
    setenv("LOCPATH", scratch.c_str(), 1);
    const bool done = setAny();
    unsetenv("LOCPATH");
    return done;
}

}  // namespace

namespace {

// What is stated where the locale has a comma, whatever the library does elsewhere.
void expectPoints(const Settings& settings, Report& report) {
    tree::make();
    Session session(settings, report);
    const std::string prefs = tree::hub("prefs.txt");
    HostBlock key = HostBlock::in("REAL"), in = HostBlock::in("1234"), out = HostBlock::out();
    session.expect(1.0f, "ReadConfigPrefAsFloat", prefs, 0.0, key.data(), out.data());
    session.expectThat(out.number<float>() == 0.5f,
                       "ReadConfigPrefAsFloat read 0.5 as " + asText(out.number<float>()));
    const float number = 2.25f;
    std::memcpy(in.data(), &number, sizeof number);
    tree::write(prefs, "");
    session.expect(0.0f, "WriteConfigPrefAsFloat", prefs, 0.0, key.data(), in.data());
    session.expectFile(prefs, "REAL = 2.250000\n");
    HostBlock path = HostBlock::out(), param = HostBlock::out();
    session.expect(0.0f, "GetFirstObjectTextureFileName", "", 2.0, path.data(), param.data());
    session.expectText(param, "0.500000");
    session.expect(0.0f, "VekPostExport", tree::project("scene.ma"));
    session.expectFile(tree::project("scene.ma"), tree::mergedScene());
}

}  // namespace

void checkCommaLocale(const Settings& settings, Report& report) {
    // It is loaded first: the library lies where it will lie with it.
    if (!setCommaLocale(settings.scratch)) {
        report.cannotTry("no locale with a decimal comma is installed here, and none can be made");
        return;
    }
    const auto forEachCall = [&](auto visit) {
        forEachExport([&](const StatedCall& call) {
            for (const Change& change : ordinaryCalls(call))
                visit(call, traceOf(settings, report, call, change));
        });
    };
    std::vector<Trace> plain;
    setlocale(LC_ALL, "C");
    forEachCall([&](const StatedCall&, Trace trace) { plain.push_back(std::move(trace)); });
    setCommaLocale(settings.scratch);
    auto before = plain.begin();
    forEachCall([&](const StatedCall& call, const Trace& trace) {
        for (const std::string& difference : differences(*before++, trace)) {
            report.finds(std::string(call.name) + " with a decimal comma in the locale " +
                         difference);
        }
        if (!hasDecimalComma()) {
            report.finds("the locale is another one after " + std::string(call.name));
            setCommaLocale(settings.scratch);
        }
    });
    expectPoints(settings, report);
}
