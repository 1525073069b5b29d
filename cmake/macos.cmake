# What is built on a Mac when nothing else is said. Included before project(), which reads it, and which
# already links a program for all that is asked for.

# vek_check_macos_families(FAMILIES SDK): stops where the platform's stubs in the folder SDK cannot link a
# family that is asked for, which the linker would say in a way that nobody understands.
function(vek_check_macos_families families sdk)
    set(stub ${sdk}/usr/lib/libSystem.tbd)
    if(NOT "i386" IN_LIST families OR NOT EXISTS ${stub})
        return()
    endif()
    file(STRINGS ${stub} old REGEX "i386" LIMIT_COUNT 1)
    if(NOT old)
        message(FATAL_ERROR "The platform headers at ${sdk} cannot link 32-bit programs: "
            "those up to macOS 10.13 (Xcode 9) can. Name such a folder with -DCMAKE_OSX_SYSROOT=FOLDER, "
            "or build the 64-bit library alone: cmake --preset macos-x86_64")
    endif()
endfunction()

# The host exists in both word sizes, so the library is one file for both.
if(CMAKE_HOST_SYSTEM_NAME STREQUAL "Darwin" AND NOT CMAKE_TOOLCHAIN_FILE)
    set(CMAKE_OSX_DEPLOYMENT_TARGET 10.9 CACHE STRING "The oldest macOS that can load the library")
    set(CMAKE_OSX_ARCHITECTURES "i386;x86_64" CACHE STRING "The processor families built for")
    # What they need is in no package of the system; the presets that want them turn them on.
    set(VEK_TESTS OFF CACHE BOOL "Build the tests")
    set(VEK_TOOL OFF CACHE BOOL "Build the command line tool")

    set(sdk ${CMAKE_OSX_SYSROOT})
    if(NOT sdk)
        execute_process(COMMAND xcrun --sdk macosx --show-sdk-path OUTPUT_VARIABLE sdk
            OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    vek_check_macos_families("${CMAKE_OSX_ARCHITECTURES}" "${sdk}")
endif()
