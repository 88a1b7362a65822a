# The race log window and the main window's commands on race logs, over real .trl files.
tarnwick_add_test(tst_frmlogrules SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_frmlogrules.cpp
    LIBS tarnwick_core LABELS core racelog TIMEOUT 60)
foreach(name frmlog racelogcommands)
    tarnwick_add_test(tst_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_${name}.cpp
        LIBS tarnwick_ui racelog_testsupport LABELS ui racelog TIMEOUT 60)
endforeach()
