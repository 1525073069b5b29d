# How every target of the project is compiled.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release)
endif()

# What the tool and the tests have a source each for is named after it.
set(VEK_SYSTEM linux)
if(APPLE)
    set(VEK_SYSTEM macos)
endif()

find_program(VEK_CCACHE ccache)
if(VEK_CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${VEK_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${VEK_CCACHE})
endif()

# 64-bit file offsets in both word sizes: exchange files grow past 4 GiB.
add_compile_definitions(_FILE_OFFSET_BITS=64)

if(VEK_32BIT)
    # SSE2 arithmetic: the x87 unit rounds differently, and both word sizes must write the same bytes.
    add_compile_options(-m32 -msse2 -mfpmath=sse)
    add_link_options(-m32)
endif()

if(VEK_FUZZ)
    # Lets the fuzzer see which code of the library an input reaches.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(VEK_COVERAGE)
    add_compile_options(--coverage -fprofile-abs-path)
    add_link_options(--coverage)
    # In the strict dialect GCC does not count what a child runs before it executes a program.
    set(CMAKE_CXX_EXTENSIONS ON)
endif()

if(VEK_SANITIZE)
    add_compile_options(-O1 -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# Unique symbols would pin the library in memory: the host must be able to unload it.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fno-gnu-unique VEK_HAS_NO_GNU_UNIQUE)
if(VEK_HAS_NO_GNU_UNIQUE)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
endif()

# vek_warnings(TARGET): the warnings of the project's own code; libraries around it are not held to them.
function(vek_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${VEK_WERROR}>:-Werror>)
    # The checks that sanitizers put in make GCC see uninitialised values in the standard library.
    if(VEK_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
endfunction()
