# The race log's core: column table, run table, and the .trl file with its failures.
set(racelog_tests ${CMAKE_CURRENT_LIST_DIR})

tarnwick_add_test(tst_columntable SOURCES ${racelog_tests}/tst_columntable.cpp
    LIBS tarnwick_core LABELS core racelog TIMEOUT 30)
tarnwick_add_test(tst_runtable SOURCES ${racelog_tests}/tst_runtable.cpp
    LIBS tarnwick_core LABELS core racelog TIMEOUT 30)

add_library(racelog_testsupport STATIC
    ${racelog_tests}/SampleLogs.cpp ${racelog_tests}/SampleLogs.h
    ${racelog_tests}/SqliteShell.cpp ${racelog_tests}/SqliteShell.h)
target_include_directories(racelog_testsupport PUBLIC ${racelog_tests})
target_link_libraries(racelog_testsupport PUBLIC tarnwick_core)

tarnwick_add_test(tst_racelogfile SOURCES ${racelog_tests}/tst_racelogfile.cpp
    LIBS racelog_testsupport LABELS core racelog TIMEOUT 60)
tarnwick_add_test(tst_racelogrecovery SOURCES ${racelog_tests}/tst_racelogrecovery.cpp
    LIBS racelog_testsupport LABELS core racelog TIMEOUT 60)

# Saves logs in a loop until killed, for the tests of a save cut short.
add_executable(racelog_save_loop ${racelog_tests}/racelog_save_loop.cpp)
target_link_libraries(racelog_save_loop PRIVATE racelog_testsupport)

tarnwick_add_test(tst_racelogsafety SOURCES ${racelog_tests}/tst_racelogsafety.cpp
    LIBS racelog_testsupport LABELS core racelog TIMEOUT 120)
add_dependencies(tst_racelogsafety racelog_save_loop)
include(${CMAKE_CURRENT_LIST_DIR}/frmlog_tests.cmake OPTIONAL)
include(${CMAKE_CURRENT_LIST_DIR}/dialogs_tests.cmake OPTIONAL)
include(${CMAKE_CURRENT_LIST_DIR}/rungrid_tests.cmake OPTIONAL)
