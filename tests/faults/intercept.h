#pragma once

#include "tests/faults/fault_points.h"

// What the functions in front of the C library's go by.

// In the order of callKinds().
enum class Intercepted {
    Allocation,
    Open,
    Pread,
    Pwrite,
    Read,
    Write,
    Writev,
    Ftruncate,
    Close,
    Fstat,
    Stat,
    Lstat,
    Fstatat,
    Fstatvfs,
    Access,
    Fdopen,
    Fread,
    Fwrite,
    Fseek,
    Ftell,
    Setvbuf,
    Fclose,
    Opendir,
    Readdir,
    Closedir,
    Mkdir,
    Rename,
    Remove,
    Unlink,
    Rmdir,
    Chmod,
    Chdir,
    Getcwd,
    Readlink,
    Realpath,
    System,
    Nanosleep,
    Newlocale,
    Pipe,
    Fcntl,
    Fork,
    Waitpid,
    SpawnInit,
    SpawnDup,
    Spawn,
    Dup,
    CloseRange,
    Setsid,
    Sigmask,
    Exec
};

// Counts the call. How it is to fail, or null.
const Way* bxDue(Intercepted kind);
// In a process that was forked just now.
void bxForked();
World& bxWorld();
bool bxIsArmed();
// Calls made meanwhile are not the library's. Hands back what bxGoOn is to be given.
bool bxPause();
void bxGoOn(bool wasArmed);
