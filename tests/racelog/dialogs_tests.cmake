# The column choice and configuration dialogs, over a settings tree of each test's own.
foreach(name selectlogcolumns configuration)
    tarnwick_add_test(tst_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_${name}.cpp
        LIBS tarnwick_ui LABELS ui racelog TIMEOUT 60)
endforeach()
