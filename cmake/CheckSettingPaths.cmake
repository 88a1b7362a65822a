# Holds every settings path to the one key table. A file under SOURCE_DIR other than
# core/SettingKeys.h that spells a path of the settings tree in a string literal (written with
# doubled backslashes; a comment may name a path) reaches the tree around the table, and fails
# the check.
#   cmake -DSOURCE_DIR=<src> -P CheckSettingPaths.cmake
get_filename_component(SOURCE_DIR "${SOURCE_DIR}" ABSOLUTE)
file(GLOB_RECURSE sources RELATIVE "${SOURCE_DIR}" "${SOURCE_DIR}/*.h" "${SOURCE_DIR}/*.cpp")
if(NOT sources)
    message(FATAL_ERROR "No sources under ${SOURCE_DIR}")
endif()
list(REMOVE_ITEM sources core/SettingKeys.h)
set(problems "")
foreach(source IN LISTS sources)
    file(STRINGS "${SOURCE_DIR}/${source}" paths REGEX [["SOFTWARE\\\\]])
    if(paths)
        string(APPEND problems "${source} spells a settings path of its own\n")
    endif()
endforeach()
if(problems)
    message(FATAL_ERROR "Settings paths outside the key table:\n${problems}")
endif()
list(LENGTH sources checked)
message(STATUS "${checked} files reach the settings through the key table")
