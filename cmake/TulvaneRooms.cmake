# A room is a folder under src/ and the library target tulvane_<name>. It sees the headers of the rooms that it links,
# as <settings/AppSettings.h>, and of no other room: the room's include path, <build>/include/<name>, holds one link for
# each of its own headers.
#
#   tulvane_room(settings LINKS tulvane_base ...)
#   FOLDER names the folder below src/ where it differs from the room's name (platform/linux/atspi).
#   SOURCES names the files, from the folder, where the room is not all that lies in it.
#   LIGHT names, without their ending, the sources that `tulvane` uses of a room with heavier ones: the two are never
#   compiled together, so that it loads the libraries of the light ones alone.
set(CMAKE_AUTOMOC OFF)

# Links each header into the include path of its room, and removes the links of headers that are gone.
function(tulvane_link_headers name folder)
    set(root "${CMAKE_BINARY_DIR}/include/${name}")
    set(wanted)
    foreach(file IN LISTS ARGN)
        if(NOT file MATCHES "\\.h$")
            continue()
        endif()
        set(link "${root}/${folder}/${file}")
        list(APPEND wanted "${link}")
        if(NOT EXISTS "${link}")
            get_filename_component(parent "${link}" DIRECTORY)
            file(MAKE_DIRECTORY "${parent}")
            file(CREATE_LINK "${CMAKE_SOURCE_DIR}/src/${folder}/${file}" "${link}" SYMBOLIC)
        endif()
    endforeach()
    file(GLOB_RECURSE present "${root}/*.h")
    if(present)
        list(REMOVE_ITEM present ${wanted})
    endif()
    if(present)
        file(REMOVE ${present})
    endif()
endfunction()

# The meta-object compiler costs a unit of its own in each target: only where there is something for it.
function(tulvane_moc_where_needed target)
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(files ${target} SOURCES)
    foreach(file IN LISTS files)
        if(NOT IS_ABSOLUTE "${file}")
            set(file "${folder}/${file}")
        endif()
        if(file MATCHES "\\.(h|cpp)$" AND EXISTS "${file}")
            file(STRINGS "${file}" macros REGEX "^ *Q_(OBJECT|GADGET|NAMESPACE)" LIMIT_COUNT 1)
            if(macros)
                set_target_properties(${target} PROPERTIES AUTOMOC ON)
                return()
            endif()
        endif()
    endforeach()
endfunction()

# The headers that nearly every room reads, compiled once.
add_library(tulvane_headers STATIC "${CMAKE_SOURCE_DIR}/src/Precompiled.cpp")
target_link_libraries(tulvane_headers PRIVATE tulvane_options Qt6::Core)
target_precompile_headers(tulvane_headers PRIVATE
    <QByteArray> <QDateTime> <QDebug> <QFile> <QFuture> <QHash> <QJsonArray> <QJsonObject> <QList> <QObject> <QPointer>
    <QPromise> <QString> <QStringList> <QVariant>
    <algorithm> <array> <chrono> <functional> <memory> <optional> <string> <utility> <vector>)

# A room's sources are compiled a few at a time, because reading the headers costs more than the sources themselves. A
# name in an anonymous namespace is therefore the room's: a clash is worth a better name. The debug preset
# compiles each source by itself, and an editor finds its commands there.
function(tulvane_compile_together target)
    if(NOT TULVANE_UNITY)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    # It means headers, and takes each source that a unit includes for one.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    if(ARGN)
        set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
        get_target_property(sources ${target} SOURCES)
        list(FILTER sources INCLUDE REGEX "\\.cpp$")
        set(heavy 0)
        foreach(source IN LISTS sources)
            get_filename_component(name "${source}" NAME_WE)
            if(name IN_LIST ARGN)
                set(group light)
            else()
                math(EXPR group "${heavy} / 6")
                math(EXPR heavy "${heavy} + 1")
            endif()
            set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${group}")
        endforeach()
    endif()
endfunction()

function(tulvane_room name)
    cmake_parse_arguments(room "" "FOLDER" "SOURCES;LIGHT;LINKS;PRIVATE_LINKS" ${ARGN})
    if(NOT room_FOLDER)
        set(room_FOLDER "${name}")
    endif()
    set(folder "${CMAKE_SOURCE_DIR}/src/${room_FOLDER}")
    if(NOT room_SOURCES)
        file(GLOB room_SOURCES CONFIGURE_DEPENDS RELATIVE "${folder}" "${folder}/*.cpp" "${folder}/*.h")
    endif()
    tulvane_link_headers("${name}" "${room_FOLDER}" ${room_SOURCES})
    list(TRANSFORM room_SOURCES PREPEND "${folder}/" REGEX "^[^/]")
    add_library(tulvane_${name} STATIC ${room_SOURCES})
    target_include_directories(tulvane_${name} PUBLIC "${CMAKE_BINARY_DIR}/include/${name}")
    target_link_libraries(tulvane_${name} PUBLIC Qt6::Core ${room_LINKS}
        PRIVATE tulvane_options ${room_PRIVATE_LINKS})
    target_precompile_headers(tulvane_${name} REUSE_FROM tulvane_headers)
    tulvane_compile_together(tulvane_${name} ${room_LIGHT})
    tulvane_moc_where_needed(tulvane_${name})
endfunction()

# A room of headers alone.
function(tulvane_header_room name)
    cmake_parse_arguments(room "" "FOLDER" "LINKS" ${ARGN})
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/src/${name}" "${CMAKE_SOURCE_DIR}/src/${name}/*.h")
    tulvane_link_headers("${name}" "${name}" ${headers})
    add_library(tulvane_${name} INTERFACE)
    target_include_directories(tulvane_${name} INTERFACE "${CMAKE_BINARY_DIR}/include/${name}")
    target_link_libraries(tulvane_${name} INTERFACE ${room_LINKS})
endfunction()
