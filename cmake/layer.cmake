# vek_add_layer(NAME SOURCES file... [USES layer...])
#
# One folder of the library. Includes are written from the root of the repository, so a plain
# include path would let any folder reach any other. Each layer's include path is instead a folder
# that holds nothing but a link to that layer: a header of a layer that is not named under USES is
# not found, and the wrong include does not build.
function(vek_add_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;USES" ${ARGN})
    set(view ${CMAKE_BINARY_DIR}/layers/${name})
    file(MAKE_DIRECTORY ${view})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${name} ${view}/${name} SYMBOLIC)

    add_library(vek_${name} OBJECT ${LAYER_SOURCES})
    target_include_directories(vek_${name} PUBLIC ${view})
    foreach(used IN LISTS LAYER_USES)
        target_link_libraries(vek_${name} PUBLIC vek_${used})
    endforeach()
    vek_warnings(vek_${name})
    # What the oldest macOS that is built for does not have would keep the library from being loaded.
    if(APPLE)
        target_compile_options(vek_${name} PRIVATE -Wunguarded-availability)
    endif()
    set_property(GLOBAL APPEND PROPERTY VEK_LAYERS ${name})
endfunction()

# vek_write_layer_views(FILE): each layer's name and, behind it, the include path that its sources are
# compiled with, a layer a line.
function(vek_write_layer_views file)
    get_property(layers GLOBAL PROPERTY VEK_LAYERS)
    set(lines "")
    foreach(layer IN LISTS layers)
        string(APPEND lines
            "${layer} $<JOIN:$<TARGET_PROPERTY:vek_${layer},INCLUDE_DIRECTORIES>,:>\n")
    endforeach()
    file(GENERATE OUTPUT ${file} CONTENT "${lines}")
endfunction()

# vek_collect_core(): the static library vek_core, made of all layers added so far.
function(vek_collect_core)
    get_property(layers GLOBAL PROPERTY VEK_LAYERS)
    add_library(vek_core STATIC)
    foreach(layer IN LISTS layers)
        target_sources(vek_core PRIVATE $<TARGET_OBJECTS:vek_${layer}>)
        target_include_directories(vek_core PUBLIC ${CMAKE_BINARY_DIR}/layers/${layer})
    endforeach()
    set_target_properties(vek_core PROPERTIES LINKER_LANGUAGE CXX)
endfunction()
