#!/usr/bin/env bash
# Runs the test command as CI would on a new Debian 12 machine: a fresh minimal root made with
# debootstrap from this machine's Debian mirror, the repository (its committed HEAD) and the
# shared folder beside it cloned inside, and `CI=true bash .ci/run` run there as root. A green
# run here shows that the scripts install everything the build and the tests need.
# Not part of the suite; run it as root after any change to what is installed or how it builds.
#   scripts/fresh-check.sh [--keep]      (--keep leaves the root in place to look around)
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
shared=$(cd "$repo/../shared" 2>/dev/null && pwd || true)
keep=false
[ "${1:-}" = "--keep" ] && keep=true

if [ "$(id -u)" -ne 0 ]; then
    echo "fresh-check: run as root (debootstrap and chroot need it)" >&2
    exit 2
fi

# The machine's own mirror, so the fresh root sees the same packages a new machine would.
mirror=$(sed -n 's/^URIs: *\(\S*\/debian\)$/\1/p' /etc/apt/sources.list.d/debian.sources 2>/dev/null |
    head -n1 || true)
[ -n "$mirror" ] || mirror=$(awk '$1 == "deb" && $2 ~ /\/debian\/?$/ {print $2; exit}' \
    /etc/apt/sources.list 2>/dev/null || true)
[ -n "$mirror" ] || mirror=http://deb.debian.org/debian

command -v debootstrap >/dev/null || {
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap >/dev/null
}

root=$(mktemp -d /var/tmp/tarnwick-fresh.XXXXXX)
mounts=()
cleanup() {
    local status=$?
    for ((i = ${#mounts[@]} - 1; i >= 0; i--)); do
        umount -l "${mounts[i]}" 2>/dev/null || true
    done
    if $keep; then
        echo "fresh-check: the root stays in $root"
    else
        rm -rf --one-file-system "$root"
    fi
    exit $status
}
trap cleanup EXIT

started=$(date +%s)
echo "== debootstrap --variant=minbase bookworm from $mirror into $root"
debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.debootstrap.log" 2>&1 || {
    tail -n 20 "$root.debootstrap.log"
    exit 1
}
rm -f "$root.debootstrap.log"
# The same suites as this machine (updates and security fixes), and its name resolution.
if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    cp /etc/apt/sources.list.d/debian.sources "$root/etc/apt/sources.list.d/"
    : >"$root/etc/apt/sources.list"
fi
cp /etc/resolv.conf "$root/etc/resolv.conf"

bind() {
    mkdir -p "$root$2"
    mount "${@:3}" "$1" "$root$2"
    mounts+=("$root$2")
}
bind proc /proc -t proc
bind sysfs /sys -t sysfs
bind /dev /dev --bind
bind /dev/pts /dev/pts --bind
bind /dev/shm /dev/shm --bind

echo "== Clone $(git -C "$repo" rev-parse --short HEAD) into the root"
git clone -q "$repo" "$root/work/main"
[ -n "$shared" ] && cp -a "$shared" "$root/work/shared"
bootstrapped=$(date +%s)

echo "== CI=true bash .ci/run"
set +e
chroot "$root" /usr/bin/env -i CI=true HOME=/root LANG=C.UTF-8 TERM=dumb \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    bash -c 'cd /work/main && bash .ci/run' 2>&1 | tee "$root/ci.log"
status=${PIPESTATUS[0]}
set -e
finished=$(date +%s)

echo
echo "== fresh-check: .ci/run exited $status"
echo "   making the root: $((bootstrapped - started)) s; .ci/run: $((finished - bootstrapped)) s"
grep -E 'tests passed|tests failed' "$root/ci.log" || true
exit "$status"
