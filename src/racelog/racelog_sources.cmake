# The race log's core: the column table, the run table model and the .trl file.
target_sources(tarnwick_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CellColor.cpp ${CMAKE_CURRENT_LIST_DIR}/CellColor.h
    ${CMAKE_CURRENT_LIST_DIR}/ColumnTable.cpp ${CMAKE_CURRENT_LIST_DIR}/ColumnTable.h
    ${CMAKE_CURRENT_LIST_DIR}/Database.h
    ${CMAKE_CURRENT_LIST_DIR}/DatabaseLoad.cpp
    ${CMAKE_CURRENT_LIST_DIR}/DatabaseSave.cpp
    ${CMAKE_CURRENT_LIST_DIR}/LogConnection.cpp ${CMAKE_CURRENT_LIST_DIR}/LogConnection.h
    ${CMAKE_CURRENT_LIST_DIR}/LogFieldRules.cpp ${CMAKE_CURRENT_LIST_DIR}/LogFieldRules.h
    ${CMAKE_CURRENT_LIST_DIR}/LogFileSchema.cpp ${CMAKE_CURRENT_LIST_DIR}/LogFileSchema.h
    ${CMAKE_CURRENT_LIST_DIR}/RaceLogData.h
    ${CMAKE_CURRENT_LIST_DIR}/RunTable.cpp ${CMAKE_CURRENT_LIST_DIR}/RunTable.h
)
