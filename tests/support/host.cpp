#include "tests/support/host.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

LoadedLibrary::LoadedLibrary() : m_handle(dlopen(VEK_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    EXPECT_NE(m_handle, nullptr) << dlerror();
}

LoadedLibrary::~LoadedLibrary() {
    if (m_handle) dlclose(m_handle);
}

void* LoadedLibrary::symbol(const char* name) const {
    return m_handle ? dlsym(m_handle, name) : nullptr;
}

float LoadedLibrary::call(const char* name, const char* text, double value, char* buffer1,
                          char* buffer2) const {
    const auto function = reinterpret_cast<VekExport>(symbol(name));
    if (!function) {
        ADD_FAILURE() << "the library has no " << name;
        return -99.0f;
    }
    // The host's texts are its own: the library must not write to them.
    std::string copy(text ? text : "");
    const float result =
        function(text ? copy.data() : nullptr, value, buffer1, 0, buffer2, 0, nullptr);
    if (text) {
        EXPECT_EQ(copy, text) << name << " wrote to its text argument";
    }
    return result;
}

float LoadedLibrary::preference(const char* name, const std::string& file, const std::string& key,
                                void* value) const {
    std::string keyBlock(key);
    return call(name, file, 0.0, keyBlock.data(), static_cast<char*>(value));
}
