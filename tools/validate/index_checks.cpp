#include <sys/stat.h>

#include <cmath>
#include <limits>

#include "tools/validate/trace.h"
#include "tools/validate/value_checks.h"

namespace {

// Three applications, each with all that Alpha has and a command that leaves a file, and three
// objects: whichever index is meant, there is something with it, and nothing with the next one
// outside.
void makeThree() {
    tree::make();
    for (const char* id : {"Alpha", "Beta", "Gamma"}) {
        tree::makeFolder(tree::app(id, ""));
        for (const char* file : {"Vek_Info.txt", "Vek_Config.txt", "Vek_InstallList.txt"})
            tree::write(tree::app(id, file), tree::read(tree::app("Alpha", file)));
        tree::write(tree::app(id, "edit.sh"), ": >'" + tree::app(id, "ran") + "'\n");
        // Where its log does not come, an installation waits for it.
        tree::write(tree::app(id, "Vek_InstallLog.txt"), "");
        tree::write(tree::app(id, "init.sh"), ": >'" + tree::app(id, "Vek_InstallLog.txt") + "'\n");
    }
    tree::write(tree::hub("Vek_ObjectList.txt"), "A\nB\nC\n");
}

Trace effectOf(const Settings& settings, Report& report, const StatedCall& call, double value) {
    return traceOf(
        settings, report, call, [&](Arguments& arguments) { arguments.value = value; }, makeThree);
}

void expectSame(const Settings& settings, Report& report, const StatedCall& call, double value,
                const Trace& effect, const char* index) {
    const Trace other = effectOf(settings, report, call, value);
    for (const std::string& difference : differences(effect, other)) {
        report.finds(std::string(call.name) + " for " + asText(value) + ", which is the index " +
                     index + ", " + difference);
    }
}

// There is nothing with the index -1: the result is that before any application was read, and but
// for the selected application, which is none then, no file is another one.
void expectNothingAt(const Settings& settings, Report& report, const StatedCall& call,
                     const Trace& effect) {
    const std::string name(call.name);
    if (effect.result != call.first)
        report.finds(name + " gave " + asText(effect.result) + " for the index -1");
    umask(022);
    makeThree();
    {
        Session session(settings, report);
        session.prepare();
    }
    for (const std::string& path : tree::changedFiles(tree::snapshot(tree::kRoot), effect.files)) {
        if (name == "SetVekAppIndex" && path == tree::hub("Vek_Application.txt")) continue;
        report.finds(name + " changed " + path + " for the index -1");
    }
}

}  // namespace

void expectIndexes(const Settings& settings, Report& report, const StatedCall& call) {
    expectSame(settings, report, call, 2.9, effectOf(settings, report, call, 2.0), "2");
    expectSame(settings, report, call, -0.5, effectOf(settings, report, call, 0.0), "0");
    const Trace nothing = effectOf(settings, report, call, -1.0);
    expectNothingAt(settings, report, call, nothing);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double value :
         {std::nan(""), kInfinity, -1e300, 4294967296.0, 2147483648.0, -2147483649.0}) {
        expectSame(settings, report, call, value, nothing, "-1");
    }
}
