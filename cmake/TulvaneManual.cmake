# The manual page and the shells' completions, made from what the built program says with --help.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(manual "${CMAKE_BINARY_DIR}/share")
set(manual_files "${manual}/man/man1/tulvane.1" "${manual}/bash-completion/completions/tulvane"
    "${manual}/zsh/site-functions/_tulvane" "${manual}/fish/vendor_completions.d/tulvane.fish")
add_custom_command(
    OUTPUT ${manual_files}
    COMMAND Python3::Interpreter "${CMAKE_SOURCE_DIR}/tools/make-manual" "$<TARGET_FILE:tulvane>" "${manual}"
    DEPENDS tulvane "${CMAKE_SOURCE_DIR}/tools/make-manual"
    VERBATIM)
add_custom_target(tulvane_manual ALL DEPENDS ${manual_files})
install(FILES "${manual}/man/man1/tulvane.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${manual}/bash-completion/completions/tulvane"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
install(FILES "${manual}/zsh/site-functions/_tulvane" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
install(FILES "${manual}/fish/vendor_completions.d/tulvane.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
