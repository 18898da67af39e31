# What a package holds: the program, its whisper.cpp in a folder of its own (so that it never meets another
# program's), the demo model and the licence. `make package` makes a .deb.
if(TULVANE_WHISPER_LIBRARIES)
    # Links to the versioned files travel too; without a backend that this build did not choose.
    install(DIRECTORY "${TULVANE_WHISPER_LIBRARIES}/" DESTINATION "${CMAKE_INSTALL_LIBDIR}/tulvane"
        FILES_MATCHING PATTERN "lib*${CMAKE_SHARED_LIBRARY_SUFFIX}*"
        PATTERN "*sapphirerapids*" EXCLUDE)
endif()
install(FILES "${CMAKE_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/tulvane" RENAME copyright)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tulvane)
set(CPACK_PACKAGE_VENDOR "The Tulvane maintainers")
set(CPACK_PACKAGE_CONTACT "The Tulvane maintainers <maintainers@tulvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${TULVANE_WHISPER_LIBRARIES}")
include(CPack)
