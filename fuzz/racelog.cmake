# A race log file of any bytes, or a real one with bytes changed, read by the loader.
tarnwick_add_fuzzer(racelog_fuzz)
