#include "tools/validate/value_checks.h"

namespace {

// Three applications, each with all that Alpha has, and three objects: whichever index is meant,
// there is something with it, and nothing with the next one outside.
void makeThree() {
    tree::make();
    for (const char* id : {"Beta", "Gamma"}) {
        tree::makeFolder(tree::app(id, ""));
        for (const char* file :
             {"Vek_Info.txt", "Vek_Config.txt", "Vek_InstallList.txt", "edit.sh"}) {
            tree::write(tree::app(id, file), tree::read(tree::app("Alpha", file)));
        }
        // Where its log does not come, an installation waits for it.
        tree::write(tree::app(id, "Vek_InstallLog.txt"), "");
        tree::write(tree::app(id, "init.sh"), ": >'" + tree::app(id, "Vek_InstallLog.txt") + "'\n");
    }
    tree::write(tree::hub("Vek_ObjectList.txt"), "A\nB\nC\n");
}

struct Effect {
    float result = 0.0f;
    std::vector<char> block;
    std::map<std::string, std::string> files;

    bool operator==(const Effect& other) const {
        return result == other.result && block == other.block && files == other.files;
    }
};

Effect effectOf(const Settings& settings, Report& report, const StatedCall& call, double value) {
    makeThree();
    Session session(settings, report);
    session.prepare();
    Arguments arguments(call);
    arguments.value = value;
    Effect effect;
    effect.result = session.call(call, arguments);
    effect.block = arguments.own1.bytes();
    effect.files = tree::snapshot(tree::kRoot);
    return effect;
}

}  // namespace

void expectCutIndexes(const Settings& settings, Report& report, const StatedCall& call) {
    const struct { double value, index; } cuts[] = {{2.9, 2.0}, {-0.5, 0.0}};
    for (const auto& cut : cuts) {
        if (effectOf(settings, report, call, cut.value) ==
            effectOf(settings, report, call, cut.index)) {
            continue;
        }
        report.finds(std::string(call.name) + " takes " + asText(cut.value) +
                     " for another index than " + asText(cut.index));
    }
}
