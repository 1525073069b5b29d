#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Two ways to a full disk. The first works everywhere: a child process in which no file can grow
// beyond `limit` bytes. Whether `body` returned true there.
template <class Body>
bool whereFilesEndAt(rlim_t limit, Body body) {
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit sizes = {limit, limit};
        const bool limited = setrlimit(RLIMIT_FSIZE, &sizes) == 0;
        _exit(limited && body() ? 0 : 1);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

// The other is a real one, where the tests run in a private view of the file system: a folder that
// 64 KiB fill.
inline const char* tinyDisk() {
    return "/full";
}

inline bool hasTinyDisk() {
    return access(tinyDisk(), W_OK) == 0;
}
