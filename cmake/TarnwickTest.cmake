# One line registers a test: its sources, the libraries it links, its labels and its timeout.
# Every test runs headless, with the program folder on PATH so it can start oskerby and the
# simulator, and gets its own settings, data and runtime folders below the build tree.
function(tarnwick_add_test name)
    cmake_parse_arguments(T "" "TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
    if(NOT T_TIMEOUT)
        set(T_TIMEOUT 120)
    endif()
    add_executable(${name} ${T_SOURCES})
    target_link_libraries(${name} PRIVATE ${T_LIBS} tarnwick_testsupport Qt6::Test)
    if(tarnwick_ui IN_LIST T_LIBS)
        target_link_libraries(${name} PRIVATE tarnwick_uitestsupport)
        target_precompile_headers(${name} REUSE_FROM tarnwick_uitestsupport)
    else()
        target_precompile_headers(${name} REUSE_FROM tarnwick_testsupport)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set(home ${CMAKE_BINARY_DIR}/testhome/${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${T_TIMEOUT}
        LABELS "${T_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_RUNTIME_DIR=${home}/run;TARNWICK_BIN_DIR=${CMAKE_BINARY_DIR}/bin;ASAN_OPTIONS=detect_leaks=0:abort_on_error=1;UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
endfunction()
