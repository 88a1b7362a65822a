# The run table of a race log window: run entry and editing, its menus and commands.
tarnwick_add_test(tst_rungrid_core SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_rungrid_core.cpp
    LIBS tarnwick_core LABELS core racelog TIMEOUT 30)
tarnwick_add_test(tst_rungrid SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_rungrid.cpp
    LIBS tarnwick_ui LABELS ui racelog TIMEOUT 60)
