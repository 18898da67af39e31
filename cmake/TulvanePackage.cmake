# What a package holds beside the program: its whisper.cpp in a folder of its own (so that it never meets another
# program's), and what a desktop wants to know of it. `make package` makes a .deb.
if(TULVANE_WHISPER_LIBRARIES)
    # Each library under the name that others load it by; the links for compilers stay behind.
    install(DIRECTORY "${TULVANE_WHISPER_LIBRARIES}/" DESTINATION "${CMAKE_INSTALL_LIBDIR}/tulvane"
        FILES_MATCHING PATTERN "lib*${CMAKE_SHARED_LIBRARY_SUFFIX}*"
        REGEX "/lib(whisper|ggml|ggml-base|ggml-cpu)\\${CMAKE_SHARED_LIBRARY_SUFFIX}$" EXCLUDE)
endif()

set(packaging "${CMAKE_SOURCE_DIR}/packaging/linux")
install(FILES "${packaging}/copyright" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/tulvane")
install(FILES "${packaging}/com.dunio.Tulvane.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
# KDE lets a program press keys whose own entry says so, by the full path of its executable. The one that asks is not the
# one that the user calls: the program with windows pastes, and `doctor` says whether it can.
set(entries "${CMAKE_BINARY_DIR}/entries")
foreach(name IN ITEMS desktop commands)
    install(CODE "
        string(REGEX REPLACE \"^.*/_CPack_Packages/.*(/usr)$\" \"\\\\1\" prefix \"\${CMAKE_INSTALL_PREFIX}\")
        set(program \"\${prefix}/${CMAKE_INSTALL_BINDIR}/tulvane-${name}\")
        configure_file(\"${packaging}/keys.desktop.in\" \"${entries}/com.dunio.Tulvane.${name}.desktop\" @ONLY)")
    install(FILES "${entries}/com.dunio.Tulvane.${name}.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
endforeach()
# For users who want it; it is in force nowhere by being installed.
install(FILES "${packaging}/70-tulvane-keyboards.rules" DESTINATION "${CMAKE_INSTALL_DATADIR}/tulvane/udev")
install(FILES "${packaging}/com.dunio.Tulvane.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
set(icons "${CMAKE_SOURCE_DIR}/resources/icons")
install(FILES "${icons}/com.dunio.Tulvane.svg" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
install(FILES "${icons}/com.dunio.Tulvane-symbolic.svg"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tulvane)
set(CPACK_PACKAGE_VENDOR "The Tulvane maintainers")
set(CPACK_PACKAGE_CONTACT "The Tulvane maintainers <maintainers@tulvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION_FILE "${packaging}/description")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_STRIP_FILES ON)
# Whatever the umask of the process that builds it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    "${TULVANE_WHISPER_LIBRARIES}" "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}/tulvane")
# What is looked for while the program runs, and no library's name tells of: the windows' building blocks and typeface.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtquick, qml6-module-qtquick-templates, qml6-module-qtquick-window, \
qml6-module-qtqml, qml6-module-qtqml-models, qml6-module-qtqml-workerscript, fonts-inter")
# A sound server to hear with, text fields that can be written into directly, what opens our help page, and the windows
# on a Wayland desktop, which bring the library that the program opens there.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pipewire-pulse | pulseaudio, at-spi2-core, xdg-utils, qt6-wayland")
set(CPACK_PRE_BUILD_SCRIPTS "${packaging}/debian-documents.cmake")
set(CPACK_TULVANE_SOURCE "${CMAKE_SOURCE_DIR}")
set(CPACK_TULVANE_DATA_FOLDER "${CMAKE_INSTALL_FULL_DATADIR}")
include(CPack)
