# The race log window with its side panel and column menu, and the main window's commands on
# race logs; the rules they follow that need no window live in the core.
target_sources(tarnwick_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/RaceLogFileRequests.cpp ${CMAKE_CURRENT_LIST_DIR}/RaceLogFileRequests.h
    ${CMAKE_CURRENT_LIST_DIR}/RaceLogSlots.cpp ${CMAKE_CURRENT_LIST_DIR}/RaceLogSlots.h
    ${CMAKE_CURRENT_LIST_DIR}/SidePanelRules.cpp ${CMAKE_CURRENT_LIST_DIR}/SidePanelRules.h
)
target_sources(tarnwick_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/LogSidePanel.cpp ${CMAKE_CURRENT_LIST_DIR}/LogSidePanel.h
    ${CMAKE_CURRENT_LIST_DIR}/RaceLogCommands.cpp ${CMAKE_CURRENT_LIST_DIR}/RaceLogCommands.h
    ${CMAKE_CURRENT_LIST_DIR}/ShowColumnMenu.cpp ${CMAKE_CURRENT_LIST_DIR}/ShowColumnMenu.h
    ${CMAKE_CURRENT_LIST_DIR}/frmLog.cpp ${CMAKE_CURRENT_LIST_DIR}/frmLog.h
)
