# Makes of CPack's packages what Debian expects beyond them: the kind of Multi-Arch, compressed pages, and no call of ldconfig,
# for which there is a trigger. CPack runs this after it made them.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    cmake_path(GET package STEM LAST_ONLY name)
    string(REGEX REPLACE "_.*" "" name "${name}")
    execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/finish" "${package}" "${CPACK_KESTRO_MULTIARCH_${name}}"
                            COMMAND_ERROR_IS_FATAL ANY)
endforeach()
