# The main window with its command bar, and the dialogs the person at the screen sees.
target_sources(tarnwick_core PRIVATE
    Calculator.cpp Calculator.h
    CommandTable.cpp CommandTable.h
    Hourglass.h
    Palette.cpp Palette.h
)
target_sources(tarnwick_ui PRIVATE
    CommandBar.cpp CommandBar.h
    DialogParts.cpp DialogParts.h
    DemoRecorder.cpp DemoRecorder.h
    ElidedLabelText.cpp ElidedLabelText.h
    WidgetDialogs.cpp WidgetDialogs.h
    WindowArrangement.cpp WindowArrangement.h
    frmAbout.cpp frmAbout.h
    frmMain.cpp frmMain.h
)
set_property(SOURCE ${CMAKE_CURRENT_SOURCE_DIR}/frmAbout.cpp DIRECTORY ${PROJECT_SOURCE_DIR}/src
    APPEND PROPERTY COMPILE_DEFINITIONS TARNWICK_VERSION="${PROJECT_VERSION}")

# The user manual lies where Help finds it: <prefix>/share/tarnwick/manual beside <prefix>/bin,
# in the build tree as in an installation.
set(tarnwick_manual_source ${PROJECT_SOURCE_DIR}/docs/manual)
set(tarnwick_manual_target ${CMAKE_BINARY_DIR}/share/tarnwick/manual)
file(GLOB tarnwick_manual_files CONFIGURE_DEPENDS ${tarnwick_manual_source}/*)
set(tarnwick_manual_stamp ${CMAKE_CURRENT_BINARY_DIR}/manual.stamp)
add_custom_command(
    OUTPUT ${tarnwick_manual_stamp}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${tarnwick_manual_source} ${tarnwick_manual_target}
    COMMAND ${CMAKE_COMMAND} -E touch ${tarnwick_manual_stamp}
    DEPENDS ${tarnwick_manual_files}
    COMMENT "Copying the user manual")
add_custom_target(tarnwick_manual DEPENDS ${tarnwick_manual_stamp})
add_dependencies(tarnwick_ui tarnwick_manual)
install(DIRECTORY ${tarnwick_manual_source} DESTINATION share/tarnwick)
