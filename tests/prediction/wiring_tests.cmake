# The prediction and the pager in the windows, and the pager through a simulated instrument
# on a pseudo-terminal.
foreach(name predictionwindow pagerdispatch)
    tarnwick_add_test(tst_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_${name}.cpp
        ${CMAKE_CURRENT_LIST_DIR}/PredictionWindows.h
        LIBS tarnwick_ui LABELS ui prediction TIMEOUT 60)
endforeach()
tarnwick_add_test(tst_pager_endtoend SOURCES ${CMAKE_CURRENT_LIST_DIR}/tst_pager_endtoend.cpp
    ${CMAKE_CURRENT_LIST_DIR}/PredictionWindows.h
    LIBS tarnwick_ui tarnwick_tooltestsupport LABELS ui prediction tools TIMEOUT 90)
add_dependencies(tst_pager_endtoend pellamor-sim)
