# Builds whisper.cpp once for all presets, beside the sources that use it; a step of each preset's build:
#   cmake -DSOURCE=... -DFOLDER=... -DPORTABLE=... -DTOOLS=... -DC_COMPILER=... -DCXX_COMPILER=... [-DLAUNCHER=...]
#         -DBUILT=FILE -P Build.cmake
# FOLDER is where it is built; BUILT is touched when everything is there.
set(stamp "${FOLDER}/.built")
file(MAKE_DIRECTORY "${FOLDER}")
# Two presets may be built at once; the second waits and then finds everything built.
file(LOCK "${FOLDER}/.lock" TIMEOUT 1800)
file(SHA256 "${CMAKE_CURRENT_LIST_DIR}/CMakeLists.txt" recipe)
set(state "${recipe} ${SOURCE} tools=${TOOLS} ${CXX_COMPILER}")
set(built "")
if(EXISTS "${stamp}")
    file(READ "${stamp}" built)
endif()
string(REPLACE "tools=ON" "tools=OFF" without_tools "${built}")
if(NOT built STREQUAL state AND NOT without_tools STREQUAL state)
    set(arguments -S "${CMAKE_CURRENT_LIST_DIR}" -B "${FOLDER}" -G Ninja
        "-DCMAKE_BUILD_TYPE=Release" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_C_COMPILER=${C_COMPILER}"
        "-DWHISPER_SOURCE=${SOURCE}" "-DPORTABLE=${PORTABLE}" "-DTOOLS=${TOOLS}")
    if(LAUNCHER)
        # A list within a list: what separates the launcher's words must not separate the arguments.
        string(REPLACE "|" "\\;" launcher "${LAUNCHER}")
        list(APPEND arguments "-DCMAKE_C_COMPILER_LAUNCHER=${launcher}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${launcher}")
    endif()
    # The stamp must not outlive what it stands for.
    file(REMOVE "${stamp}")
    # Nor may what was found out for another compiler.
    file(REMOVE "${FOLDER}/CMakeCache.txt")
    file(REMOVE_RECURSE "${FOLDER}/CMakeFiles/${CMAKE_VERSION}")
    foreach(step IN ITEMS configure build)
        if(step STREQUAL "configure")
            set(command "${CMAKE_COMMAND}" "${arguments}")
        else()
            set(command "${CMAKE_COMMAND}" --build "${FOLDER}" --target everything)
        endif()
        execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
        if(NOT status EQUAL 0)
            message(FATAL_ERROR "whisper.cpp: ${step} failed\n${output}")
        endif()
    endforeach()
    file(WRITE "${stamp}" "${state}")
endif()
file(LOCK "${FOLDER}/.lock" RELEASE)
file(TOUCH "${BUILT}")
