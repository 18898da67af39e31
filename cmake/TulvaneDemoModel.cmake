# The bundled demo model: kept packed in resources/, unpacked into the build, so that the program opens a
# plain file and carries no decompressor.
set(TULVANE_DEMO_MODEL "${CMAKE_BINARY_DIR}/share/tulvane/models/demo.bin")
find_program(TULVANE_XZ xz REQUIRED)
add_custom_command(
    OUTPUT "${TULVANE_DEMO_MODEL}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/share/tulvane/models"
    COMMAND "${TULVANE_XZ}" --decompress --stdout "${CMAKE_SOURCE_DIR}/resources/demo-model/ggml-demo.bin.xz"
            > "${TULVANE_DEMO_MODEL}"
    DEPENDS "${CMAKE_SOURCE_DIR}/resources/demo-model/ggml-demo.bin.xz"
    VERBATIM)
add_custom_target(tulvane_demo_model ALL DEPENDS "${TULVANE_DEMO_MODEL}")
