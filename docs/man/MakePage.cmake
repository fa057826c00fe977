# A manual page of its template, which may name parts in lines of their own: cmake -D TEMPLATE=... -D PAGE=... -D VERSION=...
#   @COMMANDS@    the commands and options of PROGRAM
#   @SECTIONS@    what FORMAT, a Markdown text, says of presets; by AWK
#   @EXAMPLE@     the program EXAMPLE
# and @VERSION@ and @PRESETS@ anywhere.
cmake_minimum_required(VERSION 3.25)
file(READ "${TEMPLATE}" page)
string(REPLACE "@VERSION@" "${VERSION}" page "${page}")
string(REPLACE "@PRESETS@" "${PRESETS}" page "${page}")
if(PROGRAM)
    execute_process(COMMAND "${PROGRAM}" __manual OUTPUT_VARIABLE commands COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "@COMMANDS@\n" "${commands}" page "${page}")
endif()
if(FORMAT)
    execute_process(
        COMMAND "${AWK}" -v "from=Settings trees" -v to=Reports -f "${CMAKE_CURRENT_LIST_DIR}/markdown.awk" "${FORMAT}"
        OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "@SECTIONS@\n" "${sections}" page "${page}")
endif()
if(EXAMPLE)
    file(READ "${EXAMPLE}" example)
    string(REPLACE "\\" "\\e" example "${example}")
    string(REPLACE "-" "\\-" example "${example}")
    string(REPLACE "@EXAMPLE@" "${example}" page "${page}")
endif()
file(WRITE "${PAGE}" "${page}")
