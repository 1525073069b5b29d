#pragma once

#include <set>
#include <string>

// What a check has to say to the process that started it: lines through a pipe, so that they
// arrive whatever becomes of the check.
class Report {
public:
    // The first character of each line.
    enum Kind : char { Call = '@', Finding = '!', NotTried = '?', Trace = '#', Done = '.' };

    // pipe: the end to write to; not closed here.
    explicit Report(int pipe) : m_pipe(pipe) {}

    // Says which call comes next, for the case that it is the last one.
    void calls(const std::string& what) { write(Call, what); }
    // Something is not as it is stated: the check fails.
    void finds(const std::string& what);
    // The check cannot be made on this machine, or with this library. The same is said once.
    void cannotTry(const std::string& why);
    void traces(const std::string& what) { write(Trace, what); }
    void isDone() { write(Done, ""); }

private:
    void write(Kind kind, const std::string& text);

    int m_pipe;
    int m_findings = 0;
    std::set<std::string> m_reasons;
};
