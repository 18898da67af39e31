# The backend for graphics cards, which `make gpu` builds apart from everything else. It lies where the program looks for
# it as soon as it is built, and is installed where it is there.
set(TULVANE_GRAPHICS_BACKEND "${CMAKE_SOURCE_DIR}/build/whisper-gpu/bin/libggml-vulkan.so" CACHE FILEPATH
    "ggml's Vulkan backend, which need not exist")
set(graphics_folder "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}/tulvane/devices")
file(MAKE_DIRECTORY "${graphics_folder}")
file(CREATE_LINK "${TULVANE_GRAPHICS_BACKEND}" "${graphics_folder}/libggml-vulkan.so" SYMBOLIC)
# Optional files would leave an empty folder behind where there are none.
install(CODE "
    if(EXISTS \"${TULVANE_GRAPHICS_BACKEND}\")
        file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/tulvane/devices\"
            TYPE FILE FILES \"${TULVANE_GRAPHICS_BACKEND}\")
    endif()")
