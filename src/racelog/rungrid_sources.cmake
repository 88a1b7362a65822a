# The run table view of a race log window with run entry and editing; the rules it follows
# that need no window live in the core.
target_sources(tarnwick_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/RunCellText.cpp ${CMAKE_CURRENT_LIST_DIR}/RunCellText.h
    ${CMAKE_CURRENT_LIST_DIR}/RunClipboard.cpp ${CMAKE_CURRENT_LIST_DIR}/RunClipboard.h
    ${CMAKE_CURRENT_LIST_DIR}/RunRows.cpp ${CMAKE_CURRENT_LIST_DIR}/RunRows.h
    ${CMAKE_CURRENT_LIST_DIR}/RunWeather.cpp ${CMAKE_CURRENT_LIST_DIR}/RunWeather.h
    ${CMAKE_CURRENT_LIST_DIR}/TypedKey.cpp ${CMAKE_CURRENT_LIST_DIR}/TypedKey.h
)
target_sources(tarnwick_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CellEditors.cpp ${CMAKE_CURRENT_LIST_DIR}/CellEditors.h
    ${CMAKE_CURRENT_LIST_DIR}/RunGrid.cpp ${CMAKE_CURRENT_LIST_DIR}/RunGrid.h
    ${CMAKE_CURRENT_LIST_DIR}/RunGridCommands.cpp ${CMAKE_CURRENT_LIST_DIR}/RunGridPrivate.h
    ${CMAKE_CURRENT_LIST_DIR}/RunMenus.cpp ${CMAKE_CURRENT_LIST_DIR}/RunMenus.h
)
