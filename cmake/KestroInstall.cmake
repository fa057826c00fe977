# The CMake package and the pkg-config modules; libraries, headers and the program install themselves where they are defined.
include(CMakePackageConfigHelpers)

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/KestroDataHelpers")
# The contracts that are built here and installed with the library, not those that an application brought.
set(KESTRO_INSTALLED_CONTRACTS "")
foreach(contract IN LISTS KESTRO_CONTRACTS)
    if(TARGET Kestro${contract})
        list(APPEND KESTRO_INSTALLED_CONTRACTS ${contract})
    endif()
endforeach()

configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/packaging/KestroDataHelpersConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/packaging/KestroDataHelpersConfig.cmake"
    INSTALL_DESTINATION "${packageDir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/packaging/KestroDataHelpersConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/packaging/KestroDataHelpersConfig.cmake"
              "${PROJECT_BINARY_DIR}/packaging/KestroDataHelpersConfigVersion.cmake" DESTINATION "${packageDir}"
        COMPONENT development)

# The modules find their prefix from where they lie, so an installed tree can be moved as a whole.
set(pkgconfigDir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH KESTRO_PREFIX_FROM_PC "/${pkgconfigDir}" "/")
string(REGEX REPLACE "/$" "" KESTRO_PREFIX_FROM_PC "${KESTRO_PREFIX_FROM_PC}")
set(modules kestro-datahelpers)
if(KESTRO_BUILD_PLANNER)
    list(APPEND modules kestro-planner)
endif()
foreach(module IN LISTS modules)
    configure_file("${PROJECT_SOURCE_DIR}/packaging/${module}.pc.in" "${PROJECT_BINARY_DIR}/packaging/${module}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/packaging/${module}.pc" DESTINATION "${pkgconfigDir}"
            COMPONENT development)
endforeach()

install(
    FILES "${PROJECT_SOURCE_DIR}/README.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation)
install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/docs"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation
    FILES_MATCHING
    PATTERN "*.md"
    PATTERN man EXCLUDE
    PATTERN reference EXCLUDE)
# What an application developer copies from.
if(KESTRO_BUILD_PLANNER)
    install(
        DIRECTORY "${PROJECT_SOURCE_DIR}/examples"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        COMPONENT documentation
        PATTERN build-and-run EXCLUDE)
endif()

if(KESTRO_PACKAGES)
    include(KestroPackages)
endif()
