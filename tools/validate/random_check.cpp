#include <random>

#include "tools/validate/session.h"

namespace {

// The same numbers on every machine: the standard's distributions are each library's own.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : m_source(seed) {}
    std::size_t below(std::size_t end) { return static_cast<std::size_t>(m_source() % end); }
    bool onceIn(std::size_t times) { return below(times) == 0; }

private:
    std::mt19937_64 m_source;
};

const std::string kFiles[] = {
    tree::project("mesh.vek"),   tree::project("scene.ma"), tree::project("plain.txt"),
    tree::project("doomed.txt"), tree::project("new.vek"),  tree::hub("prefs.txt"),
    tree::project("nowhere/x"),
};
const char* const kWords[] = {"Alpha", "TEXT", "REAL", "EDIT_COMMAND", "other", "Tool:Last"};
const double kValues[] = {0.0, 0.0, 1.0, 2.0, -1.0, 0.5};

template <class Item, std::size_t Count>
const Item& oneOf(Chance& chance, const Item (&items)[Count]) {
    return items[chance.below(Count)];
}

// Most calls are ordinary ones; the others name another file, word or number that is there to be
// named.
void vary(Chance& chance, const StatedCall& call, Arguments& arguments) {
    if (arguments.text && chance.onceIn(3)) {
        const bool isPath = *call.text == '/';
        arguments.ownText = HostBlock::in(isPath ? oneOf(chance, kFiles) : oneOf(chance, kWords));
        arguments.text = arguments.ownText.data();
    }
    if (!entryOf(call).value.empty() && chance.onceIn(3)) arguments.value = oneOf(chance, kValues);
    if (entryOf(call).block1 == BlockKind::IN_TEXT && chance.onceIn(3)) {
        arguments.own1 = HostBlock::in(oneOf(chance, kWords));
        arguments.block1 = arguments.own1.data();
    }
}

// What starts another program takes a thousand times as long as the rest, and is called less often.
bool startsProgram(const StatedCall& call) {
    const std::string group = entryOf(call).group;
    return group == "panel" || group == "control";
}

const StatedCall& next(Chance& chance) {
    for (;;) {
        const StatedCall& call = statedCalls()[chance.below(statedCalls().size())];
        if (isCallable(call) && (!startsProgram(call) || chance.onceIn(20))) return call;
    }
}

std::string told(const StatedCall& call, const Arguments& arguments) {
    const ExportEntry& entry = entryOf(call);
    std::string line = call.name;
    if (arguments.text) line += " text " + quoted(arguments.text);
    if (!entry.value.empty()) line += " value " + asText(arguments.value);
    if (entry.block1 == BlockKind::IN_TEXT) line += " in1 " + quoted(arguments.block1);
    if (entry.block2 == BlockKind::IN_TEXT) line += " in2 " + quoted(arguments.block2);
    return line;
}

constexpr int kCalls = 250;

void runSequence(const Settings& settings, Report& report, std::uint64_t seed) {
    tree::make();
    Chance chance(seed);
    Session session(settings, report);
    session.call("InitializeVek", "/Applications");
    const std::string which = " in the sequence " + std::to_string(seed);
    for (int i = 1; i <= kCalls; ++i) {
        const StatedCall& call = next(chance);
        Arguments arguments(call);
        vary(chance, call, arguments);
        if (!session.has(call)) continue;
        std::string line = std::to_string(i) + " " + told(call, arguments);
        if (settings.reproduces) report.traces(line);
        line.insert(0, "call ");
        line += which;
        const float result = session.pass(call.name, arguments, line);
        if (session.isThrown()) continue;
        if (settings.reproduces) report.traces("  gave " + asText(result));
        if (!isPossible(call.results, result)) report.finds(line + " gave " + asText(result));
    }
}

}  // namespace

void checkRandom(const Settings& settings, Report& report) {
    constexpr std::uint64_t kSequences = 8;
    const std::uint64_t count = settings.reproduces ? 1 : kSequences;
    for (std::uint64_t i = 0; i < count; ++i) runSequence(settings, report, settings.seed + i);
}
