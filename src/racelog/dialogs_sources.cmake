# The two dialogs of the race log settings: the stored column choice and the configuration of
# what a new race log starts from. The settings rules they follow need no window.
target_sources(tarnwick_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/RaceLogDefaults.cpp ${CMAKE_CURRENT_LIST_DIR}/RaceLogDefaults.h
)
target_sources(tarnwick_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CentreOnScreen.cpp ${CMAKE_CURRENT_LIST_DIR}/CentreOnScreen.h
    ${CMAKE_CURRENT_LIST_DIR}/ConfigurationTexts.h
    ${CMAKE_CURRENT_LIST_DIR}/TextFieldRules.cpp ${CMAKE_CURRENT_LIST_DIR}/TextFieldRules.h
    ${CMAKE_CURRENT_LIST_DIR}/frmConfiguration.cpp ${CMAKE_CURRENT_LIST_DIR}/frmConfiguration.h
    ${CMAKE_CURRENT_LIST_DIR}/frmSelectLogColumns.cpp ${CMAKE_CURRENT_LIST_DIR}/frmSelectLogColumns.h
)
