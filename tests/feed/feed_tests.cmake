# The weather feed's logic: parsing, framing, dispatch, status line and the weather log.
foreach(name weatherparser serialframer tcplinesplitter statusline weatherfeed weatherlog
             weatherreplay weatherlookup correctionfactor)
    tarnwick_add_test(tst_${name} SOURCES tst_${name}.cpp FeedSamples.h LIBS tarnwick_core
                      LABELS core feed TIMEOUT 60)
endforeach()
