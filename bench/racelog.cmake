# The race log file: save and load of a 1,000-run log.
add_executable(racelog_bench ${CMAKE_CURRENT_LIST_DIR}/racelog_bench.cpp)
target_link_libraries(racelog_bench PRIVATE tarnwick_core benchmark::benchmark)
