#include <fcntl.h>
#include <locale.h>
#include <pthread.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <stdexcept>

#include "tools/validate/process_state.h"
#include "tools/validate/session.h"

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

void checkCommaLocale(const Settings& settings, Report& report) {
    if (!setCommaLocale(settings.scratch)) {
        report.cannotTry("no locale with a decimal comma is installed here, and none can be made");
        return;
    }
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
    session.expectThat(hasDecimalComma(), "the locale is another one after the calls");
}

namespace {

#if defined(__SANITIZE_ADDRESS__)
// Functions that are watched take more of it.
constexpr std::size_t kSmallStack = std::size_t{512} * 1024;
#else
constexpr std::size_t kSmallStack = std::size_t{64} * 1024;
#endif

// Runs `work` on a thread with a small stack.
void onSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kSmallStack);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    const int failed =
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (failed) throw std::runtime_error("no thread can be started");
    pthread_join(thread, nullptr);
}

}  // namespace

void checkSmallStack(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        const Arguments arguments(call);
        onSmallStack([&] { session.expect(call.ordinary, call, arguments, "on a small stack"); });
    });
}

void checkOpenFiles(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        const int before = openFileCount();
        session.call(call, Arguments(call));
        session.expectThat(openFileCount() <= before, std::string(call.name) + " left a file open");
    });
}

void checkProcessState(const Settings& settings, Report& report) {
    forEachPrepared(settings, report, tree::make, [](Session& session, const StatedCall& call) {
        const auto take = [] {
            return std::vector<ProcessState>{localeState(), signalState(), environmentState(),
                                             folderState()};
        };
        const auto before = take();
        session.call(call, Arguments(call));
        const auto after = take();
        for (std::size_t i = 0; i < before.size(); ++i) {
            for (const std::string& difference : differences(before[i], after[i])) {
                session.report().finds("after " + std::string(call.name) + " " + difference);
            }
        }
    });
}

void checkSilence(const Settings& settings, Report& report) {
    const std::string printed = settings.scratch + "/printed";
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        const int file = open(printed.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        const int output = dup(STDOUT_FILENO), errors = dup(STDERR_FILENO);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        session.call(call, Arguments(call));
        fflush(nullptr);
        dup2(output, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        for (const int descriptor : {file, output, errors}) close(descriptor);
        const std::string text = tree::read(printed);
        session.expectThat(text.empty(), std::string(call.name) + " printed " + quoted(text));
    });
}
