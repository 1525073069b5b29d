#include "tests/support/locale.h"

#include <fcntl.h>
#include <locale.h>
#include <spawn.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>

extern char** environ;

namespace fs = std::filesystem;

namespace {

const char kLocaleName[] = "de_DE.UTF-8";

bool decimalPointIsComma() {
    return strcmp(localeconv()->decimal_point, ",") == 0;
}

bool setCommaLocale() {
    return setlocale(LC_ALL, kLocaleName) && decimalPointIsComma();
}

// Runs localedef without a word on the terminal. It can fail over mere warnings, so its exit status
// is not looked at: what counts is whether the locale works.
void runLocaledef(const std::string& output) {
    std::string words[] = {"localedef", "-c", "-i", "de_DE", "-f", "UTF-8", output};
    char* arguments[std::size(words) + 1] = {};
    for (std::size_t i = 0; i < std::size(words); ++i) arguments[i] = words[i].data();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (!failed) waitpid(child, nullptr, 0);
}

// Makes the locale in a folder of its own and then moves it to its place, so that tests that run at
// the same time see all of it or nothing. The first one to move it wins. The folder is not named
// after the process: each private view counts its processes from 1.
void makeLocale(const fs::path& folder) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    std::string own = (folder / "unfinished-XXXXXX").string();
    if (!mkdtemp(own.data())) return;
    const fs::path unfinished = fs::path(own) / kLocaleName;
    runLocaledef(unfinished.string());
    fs::rename(unfinished, folder / kLocaleName, ignored);
    fs::remove_all(own, ignored);
}

// Sets the locale that lies in `folder`; makes it when it is not there.
bool setCommaLocaleFrom(const fs::path& folder) {
    std::error_code ignored;
    if (!fs::exists(folder / kLocaleName, ignored)) makeLocale(folder);
    const char* previousPath = getenv("LOCPATH");
    const std::string saved = previousPath ? previousPath : "";
    setenv("LOCPATH", folder.c_str(), 1);
    const bool done = setCommaLocale();
    if (previousPath) {
        setenv("LOCPATH", saved.c_str(), 1);
    } else {
        unsetenv("LOCPATH");
    }
    return done;
}

}  // namespace

CommaLocale::CommaLocale() : m_previousLocale(setlocale(LC_ALL, nullptr)) {
    m_active = setCommaLocale() || setCommaLocaleFrom(fs::path(VEK_BUILD_DIR) / "locale");
}

CommaLocale::~CommaLocale() {
    setlocale(LC_ALL, m_previousLocale.c_str());
}
