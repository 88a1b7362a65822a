tarnwick_add_test(tst_settings SOURCES tst_settings.cpp LIBS tarnwick_core LABELS core)
tarnwick_add_test(tst_instance SOURCES tst_instance.cpp OtherInstance.h LIBS tarnwick_core LABELS core TIMEOUT 60)
tarnwick_add_test(tst_placement SOURCES tst_placement.cpp LIBS tarnwick_ui LABELS ui)
tarnwick_add_test(tst_startup_splash SOURCES tst_startup_splash.cpp LIBS tarnwick_ui LABELS ui)
# Each screen layout needs a process of its own: the platform reads its screens at start.
foreach(layout single side_by_side left_of_primary unsampled tiny)
    tarnwick_add_test(tst_monitors_${layout} SOURCES tst_monitors_${layout}.cpp ScreenLayout.h
                      LIBS tarnwick_ui LABELS ui)
endforeach()
tarnwick_add_test(tst_startup_main SOURCES tst_startup_main.cpp OtherInstance.h
                  LIBS tarnwick_ui LABELS ui TIMEOUT 60)
# Starts the real program, so it is built first.
tarnwick_add_test(tst_startup_process SOURCES tst_startup_process.cpp
                  LIBS tarnwick_core tarnwick_tooltestsupport LABELS process TIMEOUT 120)
add_dependencies(tst_startup_process tarnwick oskerby)
