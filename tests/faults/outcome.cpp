#include "tests/faults/outcome.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>
#include <sstream>
#include <utility>

namespace {

char s_note[512];

void tellTheNote(int signal) {
    const ssize_t ignored = ::write(2, s_note, std::strlen(s_note));
    static_cast<void>(ignored);
    raise(signal);
}

std::set<std::string> linesOf(const std::string& text) {
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.insert(line);
    return lines;
}

bool holds(const std::set<std::string>& lines, const std::set<std::string>& some) {
    return std::includes(lines.begin(), lines.end(), some.begin(), some.end());
}

// Nothing where there is no such file.
std::string fileIn(const Stage::State& state, const std::string& path) {
    const auto file = state.find(path);
    return file == state.end() ? std::string() : file->second;
}

std::set<std::string> pathsIn(const Stage::State& a, const Stage::State& b) {
    std::set<std::string> paths;
    for (const auto& file : a) paths.insert(file.first);
    for (const auto& file : b) paths.insert(file.first);
    return paths;
}

// Lines that stay stay, and there is none that is neither old nor new.
bool isBetween(const std::string& now, const std::string& before, const std::string& after) {
    const std::set<std::string> old = linesOf(before);
    const std::set<std::string> fresh = linesOf(after);
    std::set<std::string> either = old;
    either.insert(fresh.begin(), fresh.end());
    std::set<std::string> both;
    std::set_intersection(old.begin(), old.end(), fresh.begin(), fresh.end(),
                          std::inserter(both, both.end()));
    std::set<std::string> lines = linesOf(now);
    // Blank lines are left where a file could not be cut to its length.
    lines.erase("");
    const bool endsWhole = now.empty() || (!before.empty() && now.back() == before.back()) ||
                           (!after.empty() && now.back() == after.back());
    return holds(either, lines) && holds(lines, both) && endsWhole;
}

bool areSomeOf(const std::vector<std::string>& some, const std::vector<std::string>& all) {
    return std::all_of(some.begin(), some.end(), [&](const std::string& one) {
        return std::find(all.begin(), all.end(), one) != all.end();
    });
}

std::string withoutLineFeeds(const std::string& text) {
    return text.substr(0, text.find_last_not_of('\n') + 1);
}

// Where the two differ or one ends, from there on.
std::size_t alikeUntil(const std::string& now, const std::string& other, std::size_t from) {
    std::size_t at = from;
    while (at < now.size() && at < other.size() && now[at] == other[at]) ++at;
    return at;
}

// In each of so many runs the beginning of the new bytes, and behind it the old ones that it does
// not cover.
bool isMeeting(const std::string& now, const std::string& before, const std::string& after,
               int runs = 1) {
    std::size_t at = 0;
    for (int run = 0; run < runs; ++run) {
        at = alikeUntil(now, before, alikeUntil(now, after, at));
    }
    return now != before && now != after && at == now.size() && at >= before.size();
}

// A meeting in one run, as long as the old text, with line feeds behind it.
bool isTextMeeting(const std::string& now, const std::string& before, const std::string& after) {
    const std::string text = withoutLineFeeds(now);
    if (text == withoutLineFeeds(before) || text == withoutLineFeeds(after)) return false;
    const bool isAsLong = now.size() >= before.size() && text.size() <= before.size();
    return isAsLong && isMeeting(now.substr(0, before.size()), before, after);
}

// Nothing but a transfer that fails lets a file be half-written.
bool isTransfer(const FaultPoint& point) {
    const std::string symbol = point.callKind().symbol;
    return symbol == "pwrite64" || symbol == "writev" || symbol == "ftruncate64" ||
           symbol == "pread64";
}

}  // namespace

const char* outcomeText(Outcome outcome) {
    switch (outcome) {
        case Outcome::Whole:
            return "without consequence";
        case Outcome::Nothing:
            return "reported, nothing changed";
        case Outcome::Parts:
            return "in part, each file whole";
        case Outcome::Half:
            return "reported, a file half-written";
        case Outcome::Torn:
            return "a text half-written on a disk that fills up";
        case Outcome::Wrong:
            return "wrong";
    }
    return "";
}

bool Judge::isFailure(float result) const {
    const auto& failures = m_scenario.failures;
    return std::find(failures.begin(), failures.end(), result) != failures.end();
}

bool Judge::blocksAre(const Seen& seen, const Seen& expected) const {
    return seen.block1 == expected.block1 && seen.block2 == expected.block2;
}

bool Judge::filesAreWhole(const Stage::State& state) const {
    const Stage::State& before = m_untouched.state;
    const Stage::State& after = m_success.state;
    for (const std::string& path : pathsIn(before, state)) {
        const bool wasThere = before.count(path) != 0;
        const bool isThere = state.count(path) != 0;
        // A file that is to come may be there and empty.
        if (wasThere != isThere && isThere != (after.count(path) != 0)) return false;
        if (!isThere) continue;
        if (!isBetween(fileIn(state, path), fileIn(before, path), fileIn(after, path))) {
            return false;
        }
    }
    return true;
}

bool Judge::isAMessage(const Seen& seen) const {
    if (seen.block2 != m_untouched.block2) return false;
    const auto isIt = [&](const std::string& message) {
        std::string block = m_untouched.block1;
        if (message.empty()) {
            block.at(m_scenario.given1.size()) = '\0';
        } else {
            block.replace(0, message.size() + 1, message.c_str(), message.size() + 1);
        }
        return seen.block1 == block;
    };
    return std::any_of(m_scenario.messages.begin(), m_scenario.messages.end(), isIt);
}

bool Judge::oneFileIsHalf(const Stage::State& state, const FaultPoint& point) const {
    Stage::State rest = state;
    const std::string path = m_scenario.text.substr(Tree::root().size());
    if (rest.count(path) == 0 || m_untouched.state.count(path) == 0) return false;
    const std::string before = fileIn(m_untouched.state, path);
    const std::string after = fileIn(m_success.state, path);
    const std::string now = std::exchange(rest[path], before);
    if (rest != m_untouched.state) return false;
    if (isHalf(now, before, after)) return true;
    // A scene that was only to be cut to its length, at the end, is new already.
    const bool isCutting = std::strcmp(point.callKind().symbol, "ftruncate64") == 0;
    return isCutting && m_scenario.magic.empty() && before != after && now == after;
}

// Whole or in part, the magic is blank, and nothing else is changed before it is blank whole.
bool Judge::isHalf(const std::string& now, const std::string& before,
                   const std::string& after) const {
    const std::size_t size = m_scenario.magic.size();
    if (size == 0) return isMeeting(now, before, after, m_scenario.runs);
    if (now.size() != before.size()) return false;
    const std::string magic = now.substr(0, size), body = now.substr(size);
    const std::string old = before.substr(size), fresh = after.substr(size);
    const std::string blank(size, '\0');
    if (magic == blank) {
        return body == old || body == fresh || isMeeting(body, old, fresh, m_scenario.runs);
    }
    return (body == old && isMeeting(magic, m_scenario.magic, blank)) ||
           (body == fresh && isMeeting(magic, blank, m_scenario.magic));
}

bool Judge::oneTextIsTorn(const Stage::State& state) const {
    Stage::State rest = state;
    int torn = 0;
    for (auto& file : rest) {
        if (!isTorn(file.first, file.second)) continue;
        file.second = fileIn(m_untouched.state, file.first);
        ++torn;
    }
    const bool othersMayChange = (m_scenario.allowed & Scenario::Parts) != 0;
    return torn == 1 && (rest == m_untouched.state || (othersMayChange && filesAreWhole(rest)));
}

bool Judge::isTorn(const std::string& path, const std::string& now) const {
    const bool isFile = path.front() == '/' && m_untouched.state.count(path) != 0;
    if (!isFile || m_success.state.count(path) == 0) return false;
    const std::string before = fileIn(m_untouched.state, path);
    const std::string after = fileIn(m_success.state, path);
    if (before == after) return false;
    const std::string& halfway = m_scenario.halfway;
    if (halfway.empty()) return isTextMeeting(now, before, after);
    return isTextMeeting(now, before, halfway) || isTextMeeting(now, halfway, after);
}

// Each list in memory is as it was, as after success, or empty; of the applications those may lack
// whose files could not be looked at. And the number of each is told truly.
bool Judge::memoryIsRight(const Seen& seen) const {
    const auto isNumberOf = [&](const std::vector<std::string>& list) {
        return seen.result == static_cast<float>(list.size());
    };
    const auto isRight = [&](std::vector<std::string> Memory::*list) {
        const auto& now = seen.memory.*list;
        return now == seen.memoryBefore.*list || now == m_success.memory.*list ||
               (now.empty() && isFailure(seen.result));
    };
    const Memory& memory = seen.memory;
    if (m_scenario.name == "InitializeVek") {
        return isNumberOf(memory.applications) &&
               areSomeOf(memory.applications, m_success.memory.applications);
    }
    const bool isRead = m_scenario.name == "ReadVekObjectList";
    return isRight(&Memory::applications) && isRight(&Memory::objects) &&
           (!isRead || isNumberOf(memory.objects));
}

Outcome Judge::outcomeOf(const Seen& seen, const FaultPoint& point) const {
    return memoryIsRight(seen) ? outcomeOfFiles(seen, point) : Outcome::Wrong;
}

Outcome Judge::outcomeOfFiles(const Seen& seen, const FaultPoint& point) const {
    const bool succeeded = seen.result == m_success.result;
    if (succeeded && blocksAre(seen, m_success) && seen.state == m_success.state) {
        return Outcome::Whole;
    }
    // What is only cut off or interrupted is carried on with.
    const Manner manner = point.how().manner;
    if (manner == Manner::Interrupted || manner == Manner::Short) return Outcome::Wrong;
    const bool reported = isFailure(seen.result);
    if (reported && blocksAre(seen, m_untouched) && seen.state == m_untouched.state) {
        return Outcome::Nothing;
    }
    if ((m_scenario.allowed & Scenario::Parts) && (reported || succeeded) &&
        (blocksAre(seen, m_untouched) || blocksAre(seen, m_success)) && filesAreWhole(seen.state)) {
        return Outcome::Parts;
    }
    if ((m_scenario.allowed & Scenario::Message) && reported && isAMessage(seen) &&
        filesAreWhole(seen.state)) {
        return Outcome::Parts;
    }
    const bool mayBeBegun = reported && blocksAre(seen, m_untouched);
    if ((m_scenario.allowed & Scenario::Torn) && mayBeBegun && manner == Manner::FillsUp &&
        oneTextIsTorn(seen.state)) {
        return Outcome::Torn;
    }
    if ((m_scenario.allowed & Scenario::Half) && mayBeBegun && isTransfer(point) &&
        oneFileIsHalf(seen.state, point)) {
        return Outcome::Half;
    }
    return Outcome::Wrong;
}

std::string Judge::explain(const Seen& seen) const {
    std::ostringstream text;
    text << "result " << seen.result << " instead of " << m_success.result << "\n";
    if (!blocksAre(seen, m_untouched)) text << "the blocks were written to\n";
    if (!memoryIsRight(seen)) {
        text << "in memory are " << seen.memory.applications.size() << " applications and "
             << seen.memory.objects.size() << " objects\n";
    }
    for (const std::string& path : pathsIn(m_untouched.state, seen.state)) {
        const std::string before = fileIn(m_untouched.state, path);
        const std::string now = fileIn(seen.state, path);
        if (now == before && seen.state.count(path) == m_untouched.state.count(path)) continue;
        text << path << (seen.state.count(path) ? "" : " is gone;") << " was ["
             << before.substr(0, 200) << "] is [" << now.substr(0, 200) << "]\n";
    }
    return text.str();
}

void noteForACrash(const std::string& text) {
    static const bool s_told = [] {
        struct sigaction action = {};
        action.sa_handler = tellTheNote;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
        for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT}) {
            sigaction(number, &action, nullptr);
        }
        return true;
    }();
    static_cast<void>(s_told);
    std::snprintf(s_note, sizeof s_note, "ended by a signal: %s\n", text.c_str());
}
