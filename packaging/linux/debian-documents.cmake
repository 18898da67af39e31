# Run by cpack over the folder that becomes the package: the documents that Debian wants compressed.
set(data "${CPACK_TEMPORARY_DIRECTORY}${CPACK_TULVANE_DATA_FOLDER}")

function(compress path)
    execute_process(COMMAND gzip --no-name --best --force "${path}" COMMAND_ERROR_IS_FATAL ANY)
    file(CHMOD "${path}.gz" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

# The time is SOURCE_DATE_EPOCH's where that is set, so that one tree gives one package.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
file(WRITE "${data}/doc/tulvane/changelog.Debian" "${CPACK_PACKAGE_NAME} (${version}) unstable; urgency=medium

  * What is new stands in changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
compress("${data}/doc/tulvane/changelog.Debian")
configure_file("${CPACK_TULVANE_SOURCE}/CHANGELOG.md" "${data}/doc/tulvane/changelog" COPYONLY)
compress("${data}/doc/tulvane/changelog")
compress("${data}/man/man1/tulvane.1")
