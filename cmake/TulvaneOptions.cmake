# Compiler settings that hold for every target of ours: warnings are errors, and the sanitizers are one switch.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
# bin/tulvane finds its libraries and its resources beside itself, in the build tree as in a package.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/tulvane")

find_program(TULVANE_CCACHE ccache)
if(TULVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # What was compiled in one clone serves in another: paths count from the tree's root.
    set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros "${TULVANE_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

add_library(tulvane_options INTERFACE)
# A program loads the libraries that it uses, not those of the rooms that it could have used.
target_link_options(tulvane_options INTERFACE "$<$<PLATFORM_ID:Linux>:-Wl,--as-needed>")
target_compile_options(tulvane_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    -fno-omit-frame-pointer)
target_compile_definitions(tulvane_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x060400 QT_USE_QSTRINGBUILDER QT_MESSAGELOGCONTEXT
    # As some of the libraries ask for: without it the precompiled headers would not serve their rooms.
    _REENTRANT)
if(TULVANE_PORTABLE)
    # What is given away names no folder of the machine that made it, and is as hard to break into as a
    # distribution's own programs.
    target_compile_options(tulvane_options INTERFACE "-ffile-prefix-map=${CMAKE_SOURCE_DIR}/="
        -fstack-protector-strong -D_FORTIFY_SOURCE=2)
    target_link_options(tulvane_options INTERFACE -Wl,-z,relro,-z,now)
endif()

if(TULVANE_SANITIZE STREQUAL "address")
    set(tulvane_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
elseif(TULVANE_SANITIZE STREQUAL "thread")
    set(tulvane_sanitizers -fsanitize=thread)
elseif(TULVANE_SANITIZE STREQUAL "fuzz")
    set(tulvane_sanitizers -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    # The other compiler's warnings are those of every build but this one.
    target_compile_options(tulvane_options INTERFACE -Wno-error)
elseif(TULVANE_SANITIZE STREQUAL "lines")
    set(tulvane_sanitizers --coverage -fprofile-abs-path)
elseif(TULVANE_SANITIZE)
    message(FATAL_ERROR "TULVANE_SANITIZE is 'address', 'thread', 'fuzz' or 'lines', not '${TULVANE_SANITIZE}'")
endif()
if(tulvane_sanitizers)
    target_compile_options(tulvane_options INTERFACE ${tulvane_sanitizers})
    target_link_options(tulvane_options INTERFACE ${tulvane_sanitizers})
endif()
