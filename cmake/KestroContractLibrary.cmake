# The contract libraries: what the application's core libraries provide to this one.
#
# An application that has its own defines the targets before it adds this project, for instance
#
#     add_library(Kestro::CoreInt ALIAS MyCoreInt)      # has the headers Kestro/Core/Property.h, ...
#     add_subdirectory(data-helpers)
#
# and every contract whose target Kestro::<Lib> is there already is taken as it is and not built.

# In the order of their dependencies: each depends on earlier ones only.
set(KESTRO_CONTRACTS CoreInt CoreLocalization ConfInt Settings ProcInt FFWrapper)

# kestro_contract_library(<Lib>
#     SOURCES <file>...             relative to the calling folder
#     HEADERS <file>...             installed under their own path: Kestro/Core/Property.h
#     [DEPENDS <target>...]         what the headers need; a contract's plain name (CoreInt) stands for its target
#     [PRIVATE_DEPENDS <target>...] what the sources alone need
#     [HEADERS_FROM <target>...])   targets whose headers are seen, but which are not linked
#
# Defines the shared library Kestro<Lib> (libKestro<Lib>.so.1) with the alias Kestro::<Lib>. It exports what exports.map
# in the calling folder says.
function(kestro_contract_library lib)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;DEPENDS;PRIVATE_DEPENDS;HEADERS_FROM")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "kestro_contract_library(${lib}): unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(TARGET Kestro::${lib})
        message(STATUS "Kestro::${lib}: the application's own")
        return()
    endif()
    list(JOIN KESTRO_CONTRACTS "|" plainNames)
    foreach(list arg_DEPENDS arg_PRIVATE_DEPENDS arg_HEADERS_FROM)
        list(TRANSFORM ${list} REPLACE "^(${plainNames})$" "Kestro::\\1")
    endforeach()

    # A user of the installed package who does without the contract's headers does without these modules, too.
    list(TRANSFORM arg_DEPENDS REPLACE "^PkgConfig::.*" "$<TARGET_NAME_IF_EXISTS:\\0>")

    set(target Kestro${lib})
    add_library(${target} SHARED ${arg_SOURCES})
    add_library(Kestro::${lib} ALIAS ${target})
    kestro_target_settings(${target})
    set_target_properties(
        ${target}
        PROPERTIES EXPORT_NAME ${lib}
                   VERSION ${PROJECT_VERSION}
                   SOVERSION ${PROJECT_VERSION_MAJOR})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}" FILES ${arg_HEADERS})
    set(exportsMap "${CMAKE_CURRENT_SOURCE_DIR}/exports.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${exportsMap}")
    set_target_properties(${target} PROPERTIES LINK_DEPENDS "${exportsMap}")
    target_link_libraries(
        ${target}
        PUBLIC ${arg_DEPENDS}
        PRIVATE ${arg_PRIVATE_DEPENDS})
    foreach(other IN LISTS arg_HEADERS_FROM)
        target_include_directories(
            ${target} PUBLIC $<BUILD_INTERFACE:$<TARGET_PROPERTY:${other},INTERFACE_INCLUDE_DIRECTORIES>>)
    endforeach()
    if(KESTRO_INSTALL)
        kestro_install_library(${target})
    endif()
endfunction()
