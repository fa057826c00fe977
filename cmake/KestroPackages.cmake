# Debian packages by CPack: one for each component of the installation. Version and date are the changelog's.
set(debian "${PROJECT_SOURCE_DIR}/packaging/debian")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${debian}/changelog")
file(STRINGS "${debian}/changelog" entry LIMIT_COUNT 1)
if(NOT entry MATCHES "^([a-z]+) \\(([0-9.]+)-([0-9]+)\\) " OR NOT CMAKE_MATCH_2 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/debian/changelog must begin with an entry of version ${PROJECT_VERSION}: ${entry}")
endif()
set(CPACK_DEBIAN_PACKAGE_SOURCE "${CMAKE_MATCH_1}")
set(CPACK_DEBIAN_PACKAGE_RELEASE "${CMAKE_MATCH_3}")
set(version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# kestro_package(<component> <package> SECTION <section> MULTIARCH <value> SUMMARY <text> DESCRIPTION <text>
#     [ARCHITECTURE all]
#     [NEEDS <component>...]    of exactly this version
#     [DEPENDS <dependency>...]) beside those of dpkg-shlibdeps
macro(kestro_package component package)
    cmake_parse_arguments(arg "" "SECTION;MULTIARCH;SUMMARY;DESCRIPTION;ARCHITECTURE" "NEEDS;DEPENDS" ${ARGN})
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    string(TOUPPER ${component} upper)
    set(CPACK_COMPONENT_${upper}_DEPENDS ${arg_NEEDS})
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${arg_SUMMARY}\n${arg_DESCRIPTION}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${arg_SECTION})
    list(JOIN arg_DEPENDS ", " CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS)
    if(arg_ARCHITECTURE)
        set(CPACK_DEBIAN_${upper}_PACKAGE_ARCHITECTURE ${arg_ARCHITECTURE})
    else()
        set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
    endif()
    set(CPACK_KESTRO_MULTIARCH_${package} ${arg_MULTIARCH})
    install(FILES "${debian}/copyright" "${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component})
endmacro()

execute_process(COMMAND gzip -9 --no-name --stdout "${debian}/changelog"
                OUTPUT_FILE "${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz" COMMAND_ERROR_IS_FATAL ANY)

kestro_package(
    library libkestrodatahelpers${PROJECT_VERSION_MAJOR}
    SECTION libs
    MULTIARCH same
    SUMMARY "what media containers, encoders and filters accept and prefer"
    DESCRIPTION
    "Applications that convert media ask this library for default settings, for\n\
the constraints that a user interface shows, for the rules between settings,\n\
and for settings that a container or encoder takes. The planner makes them\n\
of an input file and a preset, and explains every choice."
    DEPENDS "libkestrodatahelpers-common (>= ${version})")
# Apart from the library, so that libraries of two major versions can be installed beside each other.
kestro_package(
    translations libkestrodatahelpers-common
    SECTION localization
    MULTIARCH foreign
    ARCHITECTURE all
    SUMMARY "translated messages of the media conversion helpers"
    DESCRIPTION "The names and explanations of settings in German and French, for every\n\
application of libkestrodatahelpers${PROJECT_VERSION_MAJOR}.")
kestro_package(
    development libkestrodatahelpers-dev
    SECTION libdevel
    MULTIARCH same
    SUMMARY "development files of the media conversion helpers"
    DESCRIPTION "Headers, CMake package and pkg-config modules of libKestroDataHelpers and of\n\
the planner libKestroPlanner. They need C++20."
    NEEDS library
    DEPENDS "libboost-dev (>= 1.74)" "libavcodec-dev (>= 7:5.1)" "libavutil-dev (>= 7:5.1)")
kestro_package(
    program datahelpers
    SECTION video
    MULTIARCH foreign
    SUMMARY "plans media conversions, explains them and carries them out"
    DESCRIPTION "Converts media files by FFmpeg with settings that suit container, encoder\n\
and input, and tells what was chosen or corrected and why. Shows what\n\
containers and encoders accept. Presets are included."
    NEEDS library
    DEPENDS "ffmpeg (>= 7:5.1)")
kestro_package(
    documentation kestrodatahelpers-doc
    SECTION doc
    MULTIARCH foreign
    ARCHITECTURE all
    SUMMARY "documentation and examples of the media conversion helpers"
    DESCRIPTION "Describes the program datahelpers, its presets and its reports in JSON, and\n\
has an example of an application of libkestrodatahelpers${PROJECT_VERSION_MAJOR}.")

# What would be in no package is told here, not found missing later.
get_cmake_property(components COMPONENTS)
list(REMOVE_ITEM components ${CPACK_COMPONENTS_ALL})
if(components)
    message(FATAL_ERROR "No package has what is installed as ${components}: see cmake/KestroPackages.cmake")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGE_CONTACT "DataHelpers developers <datahelpers@example.org>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${debian}/triggers")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")
include(CPack)
