#include "tools/validate/folder_watch.h"

#ifdef __linux__

#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>

FolderWatch::FolderWatch(const std::vector<std::string>& folders)
    : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    for (const std::string& folder : folders)
        inotify_add_watch(m_queue, folder.c_str(), IN_ALL_EVENTS);
}

FolderWatch::~FolderWatch() {
    close(m_queue);
}

std::vector<std::string> FolderWatch::events() {
    std::vector<std::string> names;
    char buffer[16384];
    const ssize_t count = read(m_queue, buffer, sizeof buffer);
    for (ssize_t at = 0; at < count;) {
        struct inotify_event event;
        std::memcpy(&event, buffer + at, sizeof event);
        names.push_back(event.len ? buffer + at + sizeof event : "the folder");
        at += static_cast<ssize_t>(sizeof event + event.len);
    }
    return names;
}

#else

FolderWatch::FolderWatch(const std::vector<std::string>&) {}

FolderWatch::~FolderWatch() = default;

std::vector<std::string> FolderWatch::events() {
    return {};
}

#endif
