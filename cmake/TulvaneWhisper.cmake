# Offers the target tulvane_whisper: the installed libwhisper where there is a fitting one, else the pinned
# release's source (or TULVANE_WHISPER_SOURCE), built once under build/whisper/ and shared by all presets.
option(TULVANE_PORTABLE "CPU backends for every machine, chosen when the program starts (packages)" OFF)
option(TULVANE_SYSTEM_WHISPER "Use an installed libwhisper where one is found" ON)
set(TULVANE_WHISPER_ROOT "${CMAKE_SOURCE_DIR}/build/whisper" CACHE PATH "Where whisper.cpp is unpacked and built")

# Where the program finds ggml's loadable backends, seen from the folder of the executable.
set(TULVANE_BACKEND_FOLDER "../${CMAKE_INSTALL_LIBDIR}/tulvane")

# The step that builds it, for whoever links its libraries; and those libraries as targets.
function(tulvane_build_whisper source variant)
    set(build "${TULVANE_WHISPER_ROOT}/${variant}")
    set(parts whisper ggml ggml-base)
    if(NOT TULVANE_PORTABLE)
        list(APPEND parts ggml-cpu)
    endif()
    set(libraries "")
    foreach(part IN LISTS parts)
        list(APPEND libraries "${build}/bin/lib${part}${CMAKE_SHARED_LIBRARY_SUFFIX}")
    endforeach()
    set(launcher "")
    if(TULVANE_CCACHE)
        string(REPLACE ";" "|" launcher "${CMAKE_CXX_COMPILER_LAUNCHER}")
    endif()
    set(recipe "${CMAKE_SOURCE_DIR}/cmake/whisper")
    set(compilers "-DC_COMPILER=${CMAKE_C_COMPILER}" "-DCXX_COMPILER=${CMAKE_CXX_COMPILER}")
    if(TULVANE_SANITIZE STREQUAL "fuzz")
        # The one build that has another compiler uses what the others have built.
        set(compilers -DC_COMPILER=/usr/bin/cc -DCXX_COMPILER=/usr/bin/c++)
    endif()
    set(stamp "${CMAKE_BINARY_DIR}/whisper-${variant}.built")
    add_custom_command(OUTPUT "${stamp}" BYPRODUCTS ${libraries}
        COMMAND "${CMAKE_COMMAND}" "-DSOURCE=${source}" "-DFOLDER=${build}" "-DPORTABLE=${TULVANE_PORTABLE}"
            "-DTOOLS=${TULVANE_BENCH}" ${compilers}
            "-DLAUNCHER=${launcher}" "-DBUILT=${stamp}" -P "${recipe}/Build.cmake"
        DEPENDS "${recipe}/Build.cmake" "${recipe}/CMakeLists.txt"
        COMMENT "Building the speech library" VERBATIM)
    add_custom_target(tulvane_whisper_build DEPENDS "${stamp}")
    add_library(tulvane_whisper INTERFACE)
    foreach(part library IN ZIP_LISTS parts libraries)
        add_library(tulvane_imported_${part} SHARED IMPORTED)
        set_target_properties(tulvane_imported_${part} PROPERTIES IMPORTED_LOCATION "${library}")
        target_link_libraries(tulvane_whisper INTERFACE tulvane_imported_${part})
    endforeach()
    target_include_directories(tulvane_whisper SYSTEM INTERFACE "${source}/include" "${source}/ggml/include")
    set(TULVANE_WHISPER_LIBRARIES "${build}/bin" PARENT_SCOPE)
endfunction()

if(TULVANE_SYSTEM_WHISPER AND NOT TULVANE_WHISPER_SOURCE)
    find_package(whisper 1.8 QUIET)
endif()
if(whisper_FOUND)
    message(STATUS "whisper.cpp: the installed ${whisper_VERSION}")
    add_library(tulvane_whisper INTERFACE)
    target_link_libraries(tulvane_whisper INTERFACE whisper)
else()
    if(TULVANE_WHISPER_SOURCE)
        set(whisper_source "${TULVANE_WHISPER_SOURCE}")
    else()
        execute_process(COMMAND "${CMAKE_SOURCE_DIR}/tools/fetch-whisper" "${TULVANE_WHISPER_ROOT}/source"
            OUTPUT_VARIABLE whisper_source RESULT_VARIABLE status OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT status EQUAL 0)
            message(FATAL_ERROR "whisper.cpp's source could not be brought")
        endif()
    endif()
    # The one build belongs to the one tree, by whichever links it was reached.
    get_filename_component(whisper_source "${whisper_source}" REALPATH)
    if(TULVANE_PORTABLE)
        set(whisper_variant portable)
    else()
        set(whisper_variant native)
    endif()
    tulvane_build_whisper("${whisper_source}" ${whisper_variant})
    message(STATUS "whisper.cpp: ${whisper_source} (${whisper_variant})")
endif()
