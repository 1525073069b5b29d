#include <cctype>
#include <set>

#include "tools/validate/session.h"
#include "tools/validate/shown_symbols.h"

namespace {

const char* const kData[] = {"s_startTimeVal", "s_table2"};

std::set<std::string> statedSymbols() {
    std::set<std::string> names(std::begin(kData), std::end(kData));
    for (const StatedCall& call : statedCalls()) names.insert(call.name);
    return names;
}

// What a caller could mistype, or a compiler could make of the name.
std::set<std::string> namesNear(const std::string& name) {
    std::string upper, lower;
    for (const char letter : name) {
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    const std::string mangled = "_Z" + std::to_string(name.size()) + name;
    return {upper,
            lower,
            lower.substr(0, 1) + name.substr(1),
            "_" + name,
            name + "_",
            name + "s",
            name.substr(0, name.size() - 1),
            mangled + "v",
            mangled + "PcdS_iS_iPS_"};
}

}  // namespace

void checkSymbols(const Settings& settings, Report& report) {
    std::set<std::string> shown;
    std::string why;
    if (!shownSymbols(settings.library, shown, why)) {
        report.cannotTry(why);
        return;
    }
    const std::set<std::string> stated = statedSymbols();
    for (const std::string& name : stated) {
        if (!shown.count(name)) report.finds("it does not show " + name);
    }
    for (const std::string& name : shown) {
        if (!stated.count(name)) report.finds("it also shows " + name);
    }
}

void checkNearNames(const Settings& settings, Report& report) {
    const Library library(settings.library, report);
    const std::set<std::string> stated = statedSymbols();
    std::set<std::string> near = {"GetVekAppTemplate", "s_vekApps", "s_objectList", "s_table"};
    for (const std::string& name : stated) near.merge(namesNear(name));
    for (const std::string& name : near) {
        if (!stated.count(name) && library.symbol(name)) report.finds(name + " finds something");
    }
}
