// vek-validate: checks any build of the library from outside, as a careful host would.

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>

#include "tools/validate/descendants.h"
#include "tools/validate/library.h"
#include "tools/validate/shown_symbols.h"
#include "tools/validate/stand_ins.h"
#include "tools/validate/tree.h"
#include "tools/validate/verdict.h"
#include "tools/validate/view.h"

namespace fs = std::filesystem;

namespace {

constexpr int kCouldNotRun = 2;

int refuse(const std::string& sentence, bool json) {
    printRefusal(sentence, json);
    return kCouldNotRun;
}

std::string sentenceOf(const fs::filesystem_error& error) {
    return error.path1().string() + " cannot be reached: " + error.code().message();
}

// What a number without sign that 64 bits hold is not; empty for one.
std::string whyNoSeed(const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool isPlain = text == "0" || text[0] != '0';
    if (read.ec == std::errc() && read.ptr == end && isPlain) return "";
    return text +
           " is no number of a sequence: it takes a whole number from 0 to "
           "18446744073709551615";
}

// The folder for scratch, which goes with this object, as does the tree.
class Scratch {
public:
    explicit Scratch(View view) {
        const char* const given = view == View::Private ? "/Users" : getenv("TMPDIR");
        m_path = std::string(given ? given : "/tmp") + "/vek-validate-XXXXXX";
        if (!mkdtemp(m_path.data())) throw std::runtime_error("no folder for scratch can be made");
        makeStandIns(m_path);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
        try {
            tree::remove();
        } catch (const fs::filesystem_error&) {
            // What stands in its place is not the validator's.
        }
    }
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

struct Selection {
    std::vector<std::string> only, except;

    bool takes(const Check& check) const {
        const auto has = [&](const std::vector<std::string>& names) {
            return std::find(names.begin(), names.end(), check.name) != names.end();
        };
        return (only.empty() || has(only)) && !has(except);
    }
};

bool isCheck(const std::string& name) {
    for (const Check& check : allChecks()) {
        if (name == check.name) return true;
    }
    return false;
}

std::vector<Outcome> runAll(const Settings& settings, const Selection& selection, bool prints) {
    std::vector<Outcome> outcomes;
    for (const Check& check : allChecks()) {
        if (!selection.takes(check)) continue;
        outcomes.push_back(runCheck(check, settings));
        if (prints) print(outcomes.back());
    }
    return outcomes;
}

// Why the library cannot be checked; empty where it can.
std::string obstacle(const std::string& library, View view) {
    const std::string tree = std::string(tree::kRoot) + "/";
    if (library.compare(0, tree.size(), tree) == 0)
        return "the checks clear the tree: copy the library out of " + tree;
    if (view == View::Private && library.compare(0, 7, "/Users/") == 0) {
        return "the private view has another /Users: copy the library out of " +
               fs::path(library).parent_path().string();
    }
    if (!fs::is_regular_file(library)) return "there is no file " + library;
    const int bits = bitsOf(library), own = sizeof(void*) * 8;
    if (bits == 0) return library + " is no library";
    if (bits != own) {
        return library + " is built for " + std::to_string(bits) +
               " bits: it takes the vek-validate of a build for " + std::to_string(bits) + " bits";
    }
    const std::string why = whyNotLoadable(library);
    return why.empty() ? "" : library + " " + why;
}

int validate(Settings& settings, const Selection& selection, char** arguments) {
    settings.library = fs::absolute(settings.library).lexically_normal().string();
    std::string why;
    const View view = enterView(arguments, why);
    if (view == View::None) return refuse(why, settings.json);
    why = obstacle(settings.library, view);
    if (!why.empty()) return refuse(why, settings.json);
    settings.adoptsOrphans = adoptOrphans();
    const Scratch scratch(view);
    settings.scratch = scratch.path();
    const std::vector<Outcome> outcomes = runAll(settings, selection, !settings.json);
    if (settings.json) {
        printJson(settings, outcomes);
    } else {
        printVerdict(settings, outcomes);
    }
    return exitStatus(outcomes);
}

int run(int argc, char** argv) {
    CLI::App app("Checks a build of the library from outside, as a careful host would.");
    app.name("vek-validate");
    app.set_version_flag("--version", "vek-validate " VEK_VERSION);
    app.footer("Exit status: 0 passed; 1 failed; 2 it could not run.");
    Settings settings;
    Selection selection;
    bool list = false;
    const CLI::Validator known(
        [](std::string& name) {
            return isCheck(name) ? "" : "there is no check " + name + "; --list has them";
        },
        "");
    const CLI::Validator sequenceNumber([](std::string& text) { return whyNoSeed(text); }, "");
    app.add_option("library", settings.library, "The library");
    app.add_flag("--list", list, "List the checks");
    app.add_flag("--json", settings.json, "Print JSON");
    CLI::Option* const only =
        app.add_option("--only", selection.only, "Make these checks alone")->check(known);
    CLI::Option* const except =
        app.add_option("--except", selection.except, "Leave these checks out")->check(known);
    CLI::Option* const seed =
        app.add_option("--seed", settings.seed, "Where the random sequences begin")
            ->check(sequenceNumber);
    std::uint64_t sequence = 0;
    CLI::Option* const reproduce =
        app.add_option("--reproduce", sequence,
                       "Run the random sequence of this seed alone and print its calls")
            ->check(sequenceNumber)
            ->excludes(seed)
            ->excludes(only)
            ->excludes(except);
    app.add_option("--time-limit", settings.timeLimit, "Seconds that a check may take")
        ->check(CLI::Range(1, 86400))
        ->capture_default_str();
    try {
        app.parse(argc, argv);
        if (list) {
            printList(settings.json);
            return 0;
        }
        if (settings.library.empty())
            return refuse("it takes a library to check; --help says more", settings.json);
        if (*reproduce) {
            settings.reproduces = true;
            settings.seed = sequence;
            selection.only = {"random"};
        }
        return validate(settings, selection, argv);
    } catch (const EndedBySignal& ending) {
        return 128 + ending.signal;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);
        // It may stand behind the word at which the reading stopped.
        return refuse(error.what(),
                      std::find(argv, argv + argc, std::string("--json")) != argv + argc);
    } catch (const fs::filesystem_error& error) {
        return refuse(sentenceOf(error), settings.json);
    } catch (const std::exception& error) {
        return refuse(error.what(), settings.json);
    }
}

// Streams that are closed are opened, so that no file of a check takes their place. Writing to them
// fails as before.
void openStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDONLY);
    }
}

// Whether all that was to be printed is.
bool isPrinted() {
    std::cout.flush();
    return std::fflush(stdout) == 0 && !std::ferror(stdout) && std::cout.good();
}

}  // namespace

int main(int argc, char** argv) {
    openStreams();
    // Who does not listen any more is no reason to leave a check behind.
    signal(SIGPIPE, SIG_IGN);
    const int status = run(argc, argv);
    if (isPrinted()) return status;
    std::fputs("vek-validate: the result could not be written to standard output\n", stderr);
    return kCouldNotRun;
}
