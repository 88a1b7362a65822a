tarnwick_add_test(tst_commandtable SOURCES tst_commandtable.cpp LIBS tarnwick_core LABELS core)
tarnwick_add_test(tst_palette SOURCES tst_palette.cpp LIBS tarnwick_core LABELS core)
tarnwick_add_test(tst_mainwindow_bar
    SOURCES tst_mainwindow_bar.cpp MainWindowTesting.h LIBS tarnwick_ui LABELS ui)
tarnwick_add_test(tst_mainwindow_load
    SOURCES tst_mainwindow_load.cpp MainWindowTesting.h LIBS tarnwick_ui LABELS ui)
tarnwick_add_test(tst_mainwindow_commands
    SOURCES tst_mainwindow_commands.cpp MainWindowTesting.h LIBS tarnwick_ui LABELS ui)
tarnwick_add_test(tst_mainwindow_dialogs
    SOURCES tst_mainwindow_dialogs.cpp MainWindowTesting.h LIBS tarnwick_ui LABELS ui)
