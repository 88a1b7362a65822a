# The links to the instrument, their settings and the port settings dialog. The serial tests
# run over real pseudo-terminals joined by socat, the TCP tests over 127.0.0.1.
tarnwick_add_test(tst_portsettings SOURCES tst_portsettings.cpp
    LIBS tarnwick_core LABELS core feed TIMEOUT 60)
tarnwick_add_test(tst_instrumentconnection SOURCES tst_instrumentconnection.cpp PtyPair.cpp PtyPair.h TestRelay.h
    LIBS tarnwick_core LABELS core feed TIMEOUT 60)
tarnwick_add_test(tst_playbacklinks SOURCES tst_playbacklinks.cpp
    LIBS tarnwick_core LABELS core feed TIMEOUT 60)
tarnwick_add_test(tst_frmproperties SOURCES tst_frmproperties.cpp PtyPair.cpp PtyPair.h TestRelay.h
    LIBS tarnwick_ui LABELS ui feed TIMEOUT 60)
