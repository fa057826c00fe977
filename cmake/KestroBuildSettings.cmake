# How everything here is compiled, linked and installed.

if(PROJECT_IS_TOP_LEVEL)
    if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
        set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
    endif()
    find_program(KESTRO_CCACHE ccache)
    mark_as_advanced(KESTRO_CCACHE)
    if(KESTRO_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${KESTRO_CCACHE}")
    endif()
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

# Binaries find their libraries relative to themselves, in the build tree as well as installed.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(KESTRO_LIBRARY_RPATH "\$ORIGIN")
file(RELATIVE_PATH _libdirFromBin "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(KESTRO_PROGRAM_RPATH "\$ORIGIN/${_libdirFromBin}")

# What install() gives to no component is the program's: its pages and completions. The others are library, translations,
# development and documentation; packages are made of them.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)

# One place for the results: the libraries in lib, the programs in bin.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

if(KESTRO_SANITIZE)
    add_compile_options(-fsanitize=${KESTRO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KESTRO_SANITIZE})
    if(KESTRO_SANITIZE MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # With these GCC takes no comparison of two constants' addresses for constant, and the checks of the sheets need it.
        # A null pointer that is followed is the address sanitizer's find.
        add_compile_options(-fno-sanitize=null,nonnull-attribute,returns-nonnull-attribute)
    endif()
endif()

# Sets what every target here has in common: C++20, warnings, hidden symbols, no path of this machine in the result.
function(kestro_target_settings target)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "${KESTRO_PROGRAM_RPATH}")
    else()
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "${KESTRO_LIBRARY_RPATH}")
    endif()
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_options(
        ${target}
        PRIVATE -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wconversion
                -Wold-style-cast
                -Wcast-qual
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                -Wformat=2
                -Wundef
                -Wno-missing-field-initializers # the rows of a sheet name the fields that they set
                -Werror=deprecated-declarations
                $<$<BOOL:${KESTRO_WERROR}>:-Werror>
                $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wlogical-op>
                # A unique symbol would keep a library that was unloaded in memory.
                $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
                "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/="
                "-ffile-prefix-map=${PROJECT_BINARY_DIR}=.")
    if(NOT KESTRO_SANITIZE)
        target_link_options(${target} PRIVATE -Wl,-z,defs)
    endif()
    kestro_harden(${target})
endfunction()

# What makes a fault of memory end the program instead of serving an attacker: checked stacks and copies, tables of addresses
# that are written once, jumps to where jumps may go alone.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection KESTRO_HAS_CF_PROTECTION)
include(CheckPIESupported)
check_pie_supported()
function(kestro_harden target)
    target_compile_options(
        ${target} PRIVATE -fstack-protector-strong $<$<BOOL:${KESTRO_HAS_CF_PROTECTION}>:-fcf-protection>)
    if(NOT KESTRO_SANITIZE) # it needs an optimised build, and to see the copies itself
        target_compile_options(
            ${target} PRIVATE "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
    target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now)
endfunction()

# Installs a library with its headers, under a set of exported targets of its own: so the package can leave out a contract
# that the application has itself.
function(kestro_install_library target)
    install(
        TARGETS ${target}
        EXPORT ${target}
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
    install(
        EXPORT ${target}
        FILE ${target}Targets.cmake
        NAMESPACE Kestro::
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/KestroDataHelpers"
        COMPONENT development)
endfunction()
