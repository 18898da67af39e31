# A room is a folder under src/ and the library target tulvane_<name>. Each has an include path of its own,
# <build>/include/<name>, which holds one link back to the folder: a target sees the headers of the rooms
# that it links, as <settings/AppSettings.h>, and of no other room.
#
#   tulvane_room(settings SOURCES AppSettings.cpp AppSettings.h LINKS tulvane_base ...)
#   FOLDER names the folder below src/ where it differs from the room's name (platform/linux).
function(tulvane_room name)
    cmake_parse_arguments(room "" "FOLDER" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    if(NOT room_FOLDER)
        set(room_FOLDER "${name}")
    endif()
    set(link "${CMAKE_BINARY_DIR}/include/${name}/${room_FOLDER}")
    get_filename_component(parent "${link}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    if(NOT EXISTS "${link}")
        file(CREATE_LINK "${CMAKE_SOURCE_DIR}/src/${room_FOLDER}" "${link}" SYMBOLIC)
    endif()

    add_library(tulvane_${name} STATIC ${room_SOURCES})
    target_include_directories(tulvane_${name} PUBLIC "${CMAKE_BINARY_DIR}/include/${name}")
    target_link_libraries(tulvane_${name} PUBLIC Qt6::Core ${room_LINKS}
        PRIVATE tulvane_options ${room_PRIVATE_LINKS})
endfunction()
