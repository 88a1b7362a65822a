# The prediction and the pager as the windows use them: the open logs as the pager sees them,
# and the pager of the main window with its timer and tools.
target_sources(tarnwick_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/PagerLogs.cpp ${CMAKE_CURRENT_LIST_DIR}/PagerLogs.h
)
target_sources(tarnwick_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/PagerDispatch.cpp ${CMAKE_CURRENT_LIST_DIR}/PagerDispatch.h
)
