// Found before the C library's functions by everything in the process.

#include "tests/faults/intercept.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <locale.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Those of the test itself are not counted. A locale lives from one call to another.
int s_handles = 0;

// From the half that was written on, nothing more fits.
bool takesHalf(const Way* way) {
    return way && (way->manner == Manner::Short || way->manner == Manner::FillsUp);
}

template <class Result>
Result fail(const Way* way, Result result) {
    errno = way->error;
    return result;
}

// A path below /proc leads to the world's own folder.
std::string redirected(const char* path) {
    const bool isProcess = std::strncmp(path, "/proc", 5) == 0 && (!path[5] || path[5] == '/');
    const std::string& folder = bxWorld().processes;
    return isProcess && !folder.empty() ? folder + (path + 5) : std::string(path);
}

// The redirected path in memory that is not the library's.
class Path {
public:
    explicit Path(const char* path) {
        const bool wasArmed = bxPause();
        const std::string whole = path ? redirected(path) : std::string();
        std::snprintf(m_path, sizeof m_path, "%s", whole.c_str());
        m_isNull = !path;
        bxGoOn(wasArmed);
    }
    operator const char*() const { return m_isNull ? nullptr : m_path; }

private:
    char m_path[4200];
    bool m_isNull;
};

std::vector<Way> failsWith(std::vector<int> errors) {
    std::vector<Way> ways;
    for (const int error : errors) {
        ways.push_back({error == EINTR ? Manner::Interrupted : Manner::Fails, error});
    }
    return ways;
}

std::vector<Way> fromThenOn(int error) {
    return {{Manner::Fails, error}, {Manner::FailsFromThenOn, error}};
}

std::vector<Way> transfers(int error, bool carriedOn) {
    std::vector<Way> ways = fromThenOn(error);
    ways.push_back({carriedOn ? Manner::Short : Manner::Fails, carriedOn ? 0 : EAGAIN});
    if (carriedOn) ways.push_back({Manner::Interrupted, EINTR});
    return ways;
}

std::vector<Way> writes() {
    std::vector<Way> ways = transfers(ENOSPC, true);
    ways.push_back({Manner::Fails, EIO});
    ways.push_back({Manner::FillsUp, 0});
    return ways;
}

}  // namespace

// The next of that name behind this program's own.
#define REAL(function, name) \
    static const auto real = reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, name))

const std::vector<CallKind>& callKinds() {
    static const std::vector<CallKind> kinds = {
        {"operator new", fromThenOn(ENOMEM)},
        {"open64", failsWith({EMFILE, EACCES, EINTR})},
        {"pread64", transfers(EIO, true)},
        {"pwrite64", writes()},
        {"read", transfers(EIO, true)},
        {"write", writes()},
        {"writev", writes()},
        {"ftruncate64", failsWith({EIO, EINTR})},
        {"close", failsWith({EIO})},
        {"fstat64", failsWith({EIO})},
        {"stat64", failsWith({EIO})},
        {"lstat64", failsWith({EIO})},
        {"fstatat64", failsWith({EIO})},
        {"fstatvfs64", failsWith({EIO})},
        {"access", failsWith({EACCES})},
        {"fdopen", failsWith({ENOMEM})},
        {"fread", transfers(EIO, false)},
        {"fwrite", transfers(ENOSPC, false)},
        {"fseeko64", failsWith({EIO})},
        {"ftello64", failsWith({EIO})},
        {"setvbuf", failsWith({EBADF})},
        {"fclose", failsWith({EIO})},
        {"opendir", failsWith({EMFILE})},
        {"readdir64", fromThenOn(EIO)},
        {"closedir", failsWith({EIO})},
        {"mkdir", failsWith({EACCES})},
        {"rename", failsWith({EACCES})},
        {"remove", failsWith({EACCES})},
        {"unlink", failsWith({EACCES})},
        {"rmdir", failsWith({EACCES})},
        {"chmod", failsWith({EPERM})},
        {"chdir", failsWith({EACCES})},
        {"getcwd", failsWith({EACCES})},
        {"readlink", failsWith({EACCES})},
        {"realpath", failsWith({EACCES})},
        {"system", failsWith({EAGAIN})},
        {"nanosleep", failsWith({EINTR})},
        {"newlocale", failsWith({ENOMEM})},
        {"pipe2", failsWith({EMFILE})},
        {"fcntl64", failsWith({EMFILE})},
        {"fork", failsWith({EAGAIN})},
        {"waitpid", failsWith({EINTR, ECHILD})},
        {"posix_spawn_file_actions_init", failsWith({ENOMEM})},
        {"posix_spawn_file_actions_adddup2", failsWith({ENOMEM})},
        {"posix_spawnp", failsWith({ENOENT, EAGAIN})},
        {"dup2", failsWith({EBADF})},
        {"close_range", failsWith({EINVAL})},
        {"setsid", failsWith({EPERM})},
        {"sigprocmask", failsWith({EINVAL})},
        {"execv", failsWith({ENOENT})},
    };
    return kinds;
}

const std::vector<std::string>& callsThatCannotFail() {
    static const std::vector<std::string> names = {
        // Given what the library itself was given by a call that can.
        "fileno", "dirfd", "freelocale", "uselocale", "posix_spawn_file_actions_destroy",
        // The process's own.
        "getpid", "_exit", "signal", "sigemptyset", "clock", "gettimeofday", "__errno_location",
        "__environ", "environ", "__cxa_atexit", "__cxa_finalize", "__assert_fail",
        "__stack_chk_fail", "___tls_get_addr", "__tls_get_addr",
        // Memory and text alone; numbers are printed into blocks that hold any.
        "memchr", "memcmp", "memcpy", "memmove", "memset", "strchr", "strcmp", "strcspn", "strlen",
        "strspn", "strstr", "strnlen", "memrchr", "strrchr", "snprintf", "vsnprintf",
        "__isoc99_sscanf",
        // Arithmetic.
        "__divdi3", "__moddi3", "__udivdi3", "__umoddi3", "cos", "fmod", "sqrt", "trunc", "floor",
        "ceil"};
    return names;
}

int openHandles() {
    return s_handles;
}

#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const int mode = va_arg(arguments, int);
    va_end(arguments);
    REAL(open, "open64");
    const Way* const way = bxDue(Intercepted::Open);
    return way ? fail(way, -1) : real(Path(path), flags, mode);
}

ssize_t pread(int file, void* bytes, size_t count, off_t offset) {
    REAL(pread, "pread64");
    const Way* const way = bxDue(Intercepted::Pread);
    if (takesHalf(way)) return real(file, bytes, (count + 1) / 2, offset);
    return way ? fail(way, ssize_t{-1}) : real(file, bytes, count, offset);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    REAL(pwrite, "pwrite64");
    const Way* const way = bxDue(Intercepted::Pwrite);
    if (takesHalf(way)) return real(file, bytes, (count + 1) / 2, offset);
    return way ? fail(way, ssize_t{-1}) : real(file, bytes, count, offset);
}

ssize_t read(int file, void* bytes, size_t count) {
    REAL(read, "read");
    const Way* const way = bxDue(Intercepted::Read);
    if (takesHalf(way)) return real(file, bytes, (count + 1) / 2);
    return way ? fail(way, ssize_t{-1}) : real(file, bytes, count);
}

ssize_t write(int file, const void* bytes, size_t count) {
    REAL(write, "write");
    const Way* const way = bxDue(Intercepted::Write);
    if (takesHalf(way)) return real(file, bytes, (count + 1) / 2);
    return way ? fail(way, ssize_t{-1}) : real(file, bytes, count);
}

// Half of the first piece counts as half.
ssize_t writev(int file, const iovec* pieces, int count) {
    REAL(writev, "writev");
    const Way* const way = bxDue(Intercepted::Writev);
    if (!takesHalf(way)) return way ? fail(way, ssize_t{-1}) : real(file, pieces, count);
    const iovec half = {pieces[0].iov_base, (pieces[0].iov_len + 1) / 2};
    return real(file, &half, 1);
}

int ftruncate(int file, off_t size) noexcept {
    REAL(ftruncate, "ftruncate64");
    const Way* const way = bxDue(Intercepted::Ftruncate);
    return way ? fail(way, -1) : real(file, size);
}

// A close that fails has closed.
int close(int file) {
    REAL(close, "close");
    const Way* const way = bxDue(Intercepted::Close);
    const int result = real(file);
    return way ? fail(way, -1) : result;
}

int fstat(int file, struct stat* status) noexcept {
    REAL(fstat, "fstat64");
    const Way* const way = bxDue(Intercepted::Fstat);
    return way ? fail(way, -1) : real(file, status);
}

int stat(const char* path, struct stat* status) noexcept {
    static const auto real =
        reinterpret_cast<int (*)(const char*, struct stat*)>(dlsym(RTLD_NEXT, "stat64"));
    const Way* const way = bxDue(Intercepted::Stat);
    return way ? fail(way, -1) : real(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    REAL(lstat, "lstat64");
    const Way* const way = bxDue(Intercepted::Lstat);
    return way ? fail(way, -1) : real(path, status);
}

int fstatat(int folder, const char* name, struct stat* status, int flags) noexcept {
    REAL(fstatat, "fstatat64");
    const Way* const way = bxDue(Intercepted::Fstatat);
    return way ? fail(way, -1) : real(folder, name, status, flags);
}

int fstatvfs(int file, struct statvfs* disk) noexcept {
    static const auto real =
        reinterpret_cast<int (*)(int, struct statvfs*)>(dlsym(RTLD_NEXT, "fstatvfs64"));
    const Way* const way = bxDue(Intercepted::Fstatvfs);
    return way ? fail(way, -1) : real(file, disk);
}

int access(const char* path, int mode) noexcept {
    REAL(access, "access");
    const Way* const way = bxDue(Intercepted::Access);
    return way ? fail(way, -1) : real(path, mode);
}

FILE* fdopen(int file, const char* mode) noexcept {
    REAL(fdopen, "fdopen");
    const Way* const way = bxDue(Intercepted::Fdopen);
    if (way) return fail<FILE*>(way, nullptr);
    FILE* const stream = real(file, mode);
    s_handles += stream && bxIsArmed();
    return stream;
}

size_t fread(void* bytes, size_t size, size_t count, FILE* stream) {
    REAL(fread, "fread");
    const Way* const way = bxDue(Intercepted::Fread);
    // The way that has EAGAIN is the one in which half of it came.
    if (way && way->error == EAGAIN) return real(bytes, size, count / 2, stream);
    return way ? fail(way, size_t{0}) : real(bytes, size, count, stream);
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream) {
    REAL(fwrite, "fwrite");
    const Way* const way = bxDue(Intercepted::Fwrite);
    if (way && way->error == EAGAIN) return real(bytes, size, count / 2, stream);
    return way ? fail(way, size_t{0}) : real(bytes, size, count, stream);
}

int fseeko(FILE* stream, off_t offset, int from) {
    REAL(fseeko, "fseeko64");
    const Way* const way = bxDue(Intercepted::Fseek);
    return way ? fail(way, -1) : real(stream, offset, from);
}

off_t ftello(FILE* stream) {
    REAL(ftello, "ftello64");
    const Way* const way = bxDue(Intercepted::Ftell);
    return way ? fail(way, off_t{-1}) : real(stream);
}

int setvbuf(FILE* stream, char* buffer, int mode, size_t size) noexcept {
    REAL(setvbuf, "setvbuf");
    const Way* const way = bxDue(Intercepted::Setvbuf);
    return way ? fail(way, -1) : real(stream, buffer, mode, size);
}

int fclose(FILE* stream) {
    REAL(fclose, "fclose");
    const Way* const way = bxDue(Intercepted::Fclose);
    s_handles -= bxIsArmed();
    const int result = real(stream);
    return way ? fail(way, EOF) : result;
}

DIR* opendir(const char* path) {
    REAL(opendir, "opendir");
    const Way* const way = bxDue(Intercepted::Opendir);
    if (way) return fail<DIR*>(way, nullptr);
    DIR* const folder = real(Path(path));
    s_handles += folder && bxIsArmed();
    return folder;
}

dirent* readdir(DIR* folder) {
    REAL(readdir, "readdir64");
    const Way* const way = bxDue(Intercepted::Readdir);
    return way ? fail<dirent*>(way, nullptr) : real(folder);
}

int closedir(DIR* folder) {
    REAL(closedir, "closedir");
    const Way* const way = bxDue(Intercepted::Closedir);
    s_handles -= bxIsArmed();
    const int result = real(folder);
    return way ? fail(way, -1) : result;
}

int mkdir(const char* path, mode_t mode) noexcept {
    REAL(mkdir, "mkdir");
    const Way* const way = bxDue(Intercepted::Mkdir);
    return way ? fail(way, -1) : real(path, mode);
}

int rename(const char* from, const char* to) noexcept {
    REAL(rename, "rename");
    const Way* const way = bxDue(Intercepted::Rename);
    return way ? fail(way, -1) : real(from, to);
}

int remove(const char* path) noexcept {
    REAL(remove, "remove");
    const Way* const way = bxDue(Intercepted::Remove);
    return way ? fail(way, -1) : real(path);
}

int unlink(const char* path) noexcept {
    REAL(unlink, "unlink");
    const Way* const way = bxDue(Intercepted::Unlink);
    return way ? fail(way, -1) : real(path);
}

int rmdir(const char* path) noexcept {
    REAL(rmdir, "rmdir");
    const Way* const way = bxDue(Intercepted::Rmdir);
    return way ? fail(way, -1) : real(path);
}

int chmod(const char* path, mode_t mode) noexcept {
    REAL(chmod, "chmod");
    const Way* const way = bxDue(Intercepted::Chmod);
    return way ? fail(way, -1) : real(path, mode);
}

int chdir(const char* path) noexcept {
    REAL(chdir, "chdir");
    const Way* const way = bxDue(Intercepted::Chdir);
    return way ? fail(way, -1) : real(path);
}

char* getcwd(char* path, size_t size) noexcept {
    REAL(getcwd, "getcwd");
    const Way* const way = bxDue(Intercepted::Getcwd);
    return way ? fail<char*>(way, nullptr) : real(path, size);
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    REAL(readlink, "readlink");
    const Way* const way = bxDue(Intercepted::Readlink);
    return way ? fail(way, ssize_t{-1}) : real(Path(path), target, size);
}

char* realpath(const char* path, char* target) noexcept {
    REAL(realpath, "realpath");
    const Way* const way = bxDue(Intercepted::Realpath);
    return way ? fail<char*>(way, nullptr) : real(path, target);
}

int system(const char* command) {
    REAL(system, "system");
    const Way* const way = bxDue(Intercepted::System);
    if (way) return fail(way, -1);
    if (!bxWorld().shell) return real(command);
    const bool wasArmed = bxPause();
    const int result = bxWorld().shell(command);
    bxGoOn(wasArmed);
    return result;
}

int nanosleep(const timespec* wanted, timespec* left) {
    REAL(nanosleep, "nanosleep");
    if (!bxIsArmed()) return real(wanted, left);
    const Way* const way = bxDue(Intercepted::Nanosleep);
    const bool wasArmed = bxPause();
    if (bxWorld().sleep) bxWorld().sleep();
    bxGoOn(wasArmed);
    return way ? fail(way, -1) : 0;
}

locale_t newlocale(int mask, const char* name, locale_t base) noexcept {
    REAL(newlocale, "newlocale");
    const Way* const way = bxDue(Intercepted::Newlocale);
    if (way) return fail<locale_t>(way, nullptr);
    ++s_handles;
    return real(mask, name, base);
}

void freelocale(locale_t locale) noexcept {
    REAL(freelocale, "freelocale");
    --s_handles;
    real(locale);
}

int pipe2(int* ends, int flags) noexcept {
    REAL(pipe2, "pipe2");
    const Way* const way = bxDue(Intercepted::Pipe);
    return way ? fail(way, -1) : real(ends, flags);
}

int fcntl(int file, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    REAL(fcntl, "fcntl64");
    const Way* const way = bxDue(Intercepted::Fcntl);
    return way ? fail(way, -1) : real(file, command, argument);
}

pid_t fork() noexcept {
    REAL(fork, "fork");
    const Way* const way = bxDue(Intercepted::Fork);
    if (way) return fail(way, pid_t{-1});
    const pid_t child = real();
    if (child == 0) bxForked();
    return child;
}

pid_t waitpid(pid_t child, int* status, int options) {
    REAL(waitpid, "waitpid");
    const Way* const way = bxDue(Intercepted::Waitpid);
    // A host that ignores its children's ends: they are waited for and forgotten.
    if (way && way->error == ECHILD) real(child, status, options);
    return way ? fail(way, pid_t{-1}) : real(child, status, options);
}

int posix_spawn_file_actions_init(posix_spawn_file_actions_t* actions) noexcept {
    REAL(posix_spawn_file_actions_init, "posix_spawn_file_actions_init");
    const Way* const way = bxDue(Intercepted::SpawnInit);
    if (way) return way->error;
    s_handles += bxIsArmed();
    return real(actions);
}

int posix_spawn_file_actions_destroy(posix_spawn_file_actions_t* actions) noexcept {
    REAL(posix_spawn_file_actions_destroy, "posix_spawn_file_actions_destroy");
    s_handles -= bxIsArmed();
    return real(actions);
}

int posix_spawn_file_actions_adddup2(posix_spawn_file_actions_t* actions, int file,
                                     int as) noexcept {
    REAL(posix_spawn_file_actions_adddup2, "posix_spawn_file_actions_adddup2");
    const Way* const way = bxDue(Intercepted::SpawnDup);
    return way ? way->error : real(actions, file, as);
}

int posix_spawnp(pid_t* child, const char* program, const posix_spawn_file_actions_t* actions,
                 const posix_spawnattr_t* attributes, char* const* arguments,
                 char* const* environment) {
    REAL(posix_spawnp, "posix_spawnp");
    const Way* const way = bxDue(Intercepted::Spawn);
    if (way) return way->error;
    return real(child, program, actions, attributes, arguments, environment);
}

int dup2(int file, int as) noexcept {
    REAL(dup2, "dup2");
    const Way* const way = bxDue(Intercepted::Dup);
    return way ? fail(way, -1) : real(file, as);
}

int close_range(unsigned int first, unsigned int last, int flags) noexcept {
    REAL(close_range, "close_range");
    const Way* const way = bxDue(Intercepted::CloseRange);
    return way ? fail(way, -1) : real(first, last, flags);
}

pid_t setsid() noexcept {
    REAL(setsid, "setsid");
    const Way* const way = bxDue(Intercepted::Setsid);
    return way ? fail(way, pid_t{-1}) : real();
}

int sigprocmask(int how, const sigset_t* set, sigset_t* old) noexcept {
    REAL(sigprocmask, "sigprocmask");
    const Way* const way = bxDue(Intercepted::Sigmask);
    return way ? fail(way, -1) : real(how, set, old);
}

int execv(const char* path, char* const* arguments) noexcept {
    REAL(execv, "execv");
    const Way* const way = bxDue(Intercepted::Exec);
    return way ? fail(way, -1) : real(path, arguments);
}

}  // extern "C"
#pragma GCC visibility pop
