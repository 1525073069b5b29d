#include "tools/validate/library.h"

#include <dlfcn.h>

#include <exception>
#include <stdexcept>

Library::Library(const std::string& path, Report& report) : m_report(report) {
    m_report.calls("loading");
    // What its initializers throw comes through the loader.
    try {
        m_handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    } catch (const std::exception& error) {
        throw std::runtime_error("loading let an exception out: \"" + std::string(error.what()) +
                                 '"');
    } catch (...) {
        throw std::runtime_error("loading let an exception out");
    }
    if (!m_handle) throw std::runtime_error(std::string("it cannot be loaded: ") + dlerror());
}

Library::~Library() {
    m_report.calls("unloading");
    dlclose(m_handle);
}

void* Library::symbol(const std::string& name) const {
    return dlsym(m_handle, name.c_str());
}

VekExport Library::find(const std::string& name) const {
    return reinterpret_cast<VekExport>(symbol(name));
}

bool Library::isLoaded(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}
