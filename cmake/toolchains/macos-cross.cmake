# Builds for macOS on Linux, with clang, lld, llvm and libc++ of Debian's packages (clang, lld, llvm,
# libc++-dev):
#
#     cmake --preset macos-cross -DVEK_MACOS_SDK=FOLDER
#
# VEK_MACOS_SDK   the folder of the platform's headers and stubs: usr/include with the C library's,
#                 usr/lib with libSystem.tbd, libc++.tbd and libobjc.tbd, System/Library/Frameworks.
#                 It is nobody's to pass on, so it is neither here nor looked for. With
#                 VEK_PORTABLE_ONLY the C library's headers and stub are enough.
# VEK_MACOS_ARCH  x86_64, or i386, which these tools compile but cannot link.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 13)  # of the kernel that macOS 10.9 has; CMake asks it what the linker can do
set(VEK_MACOS_ARCH x86_64 CACHE STRING "The processor family that is built for: x86_64 or i386")
set(CMAKE_SYSTEM_PROCESSOR ${VEK_MACOS_ARCH})
# CMake's own trials are configured from here too, and get no more of the cache than these.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VEK_MACOS_SDK VEK_MACOS_ARCH)

if(NOT VEK_MACOS_SDK)
    message(FATAL_ERROR "VEK_MACOS_SDK is not set. Set it to a folder that holds the platform's "
        "headers and stubs: usr/include, usr/lib/libSystem.tbd and System/Library/Frameworks. Nothing "
        "is looked for by itself.")
endif()
if(NOT IS_ABSOLUTE ${VEK_MACOS_SDK})
    message(FATAL_ERROR "VEK_MACOS_SDK is ${VEK_MACOS_SDK}. Write the whole path, from its first '/' on.")
endif()
foreach(needed usr/include/math.h usr/lib/libSystem.tbd)
    if(NOT EXISTS ${VEK_MACOS_SDK}/${needed})
        message(FATAL_ERROR "VEK_MACOS_SDK is ${VEK_MACOS_SDK}, and there is no ${needed} in it.")
    endif()
endforeach()

set(target ${VEK_MACOS_ARCH}-apple-macos10.9)
foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_TARGET ${target})
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_OSX_SYSROOT ${VEK_MACOS_SDK})
set(CMAKE_OSX_DEPLOYMENT_TARGET 10.9 CACHE STRING "The oldest macOS that can load the library")
set(CMAKE_OSX_ARCHITECTURES ${VEK_MACOS_ARCH} CACHE STRING "The processor families built for")

# Debian keeps what carries no version in its name only partly under /usr/bin.
execute_process(COMMAND clang -print-resource-dir OUTPUT_VARIABLE resources
    OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(llvm ${resources}/../../.. ABSOLUTE)
foreach(tool AR:llvm-ar RANLIB:llvm-ranlib INSTALL_NAME_TOOL:llvm-install-name-tool NM:llvm-nm
        LIPO:llvm-lipo OTOOL:llvm-otool STRIP:llvm-strip)
    string(REPLACE ":" ";" tool ${tool})
    list(GET tool 0 variable)
    list(GET tool 1 program)
    if(NOT EXISTS ${llvm}/bin/${program})
        message(FATAL_ERROR "There is no ${llvm}/bin/${program}: install the package llvm.")
    endif()
    set(CMAKE_${variable} ${llvm}/bin/${program} CACHE FILEPATH "")
endforeach()
if(NOT EXISTS ${llvm}/bin/ld64.lld)
    message(FATAL_ERROR "There is no ${llvm}/bin/ld64.lld: install the package lld.")
endif()
if(NOT EXISTS ${llvm}/include/c++/v1/vector)
    message(FATAL_ERROR "There is no ${llvm}/include/c++/v1/vector: install the package libc++-dev.")
endif()
# Not -nostdinc++: CMake hands these flags to the linker too, which does not know it.
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -stdlib++-isystem ${llvm}/include/c++/v1")
# Headers of later years declare functions of a type that Debian's clang does not have for Intel. None
# of them is called.
file(STRINGS ${VEK_MACOS_SDK}/usr/include/math.h half_floats REGEX "_Float16" LIMIT_COUNT 1)
if(half_floats)
    foreach(language C CXX)
        string(APPEND CMAKE_${language}_FLAGS_INIT " -D_Float16=short")
    endforeach()
endif()
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()

# lld looks for a symbol in an umbrella framework itself, and not in the frameworks below it, which hold
# most of what the library calls: they are named to it one by one.
set(frameworks ${VEK_MACOS_SDK}/System/Library/Frameworks)
foreach(below CoreServices/AE CoreServices/CarbonCore CoreServices/LaunchServices
        ApplicationServices/HIServices Carbon/HIToolbox)
    get_filename_component(umbrella ${below} DIRECTORY)
    get_filename_component(name ${below} NAME)
    set(stub ${frameworks}/${umbrella}.framework/Frameworks/${name}.framework/${name}.tbd)
    if(EXISTS ${stub})
        string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " \"-Wl,-needed_library,${stub}\"")
    endif()
endforeach()

# Programs are the build machine's own; what is linked is the platform's alone.
set(CMAKE_FIND_ROOT_PATH ${VEK_MACOS_SDK})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
# CMake's trials are linked only where the stubs for it are there.
if(VEK_MACOS_ARCH STREQUAL i386 OR NOT EXISTS ${VEK_MACOS_SDK}/usr/lib/libc++.tbd)
    set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
endif()
