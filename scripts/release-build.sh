# Sourced by the scripts that build Tarnwick as it ships: a gcc Release build with Debian's own
# hardening (fortified C library calls, stack protection, read-only relocations bound at
# start). The package is made from this build, and the suite runs on it too, so what is tested
# is what ships.
#   configure_release <build folder> [more cmake arguments]
configure_release() {
    local build=$1
    shift
    export DEB_BUILD_MAINT_OPTIONS=hardening=+all
    cmake -S "$(dirname "${BASH_SOURCE[0]}")/.." -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DTARNWICK_BENCH=OFF \
        -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)" \
        -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)" "$@" >/dev/null
}
