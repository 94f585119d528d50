#!/usr/bin/env bash
# Installs what is missing on Debian 12, builds, then runs the application
# ("run"), every test ("test"), makes the Debian package ("package") or takes
# the metainfo's screenshot again ("screenshot"). Safe to run again: apt and
# cmake only do what is left to do.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$here"
jobs="$(nproc 2>/dev/null || echo 2)"

# librsvg2-bin renders the icons; dpkg-dev, appstream and dbus-daemon are for
# the package and its tests (dpkg-shlibdeps, the metainfo validator, a private
# session bus); packagekit (its daemon's dummy backend) and python3-dbusmock
# (a polkit stand-in) for the component installer's tests; libxcb1-dev lets
# the start-up benchmark watch the X server; gcc-12-locales lets
# tests/data/diagnosis/capture.sh record the compiler's messages in other
# languages.
packages=(qt6-base-dev qt6-tools-dev qt6-l10n-tools qt6-tools-dev-tools libgl-dev
          qt6-translations-l10n cmake g++ git make xvfb xauth desktop-file-utils libsdl2-dev
          librsvg2-bin dpkg-dev appstream dbus-daemon gcovr packagekit python3-dbusmock
          libxcb1-dev gcc-12-locales)

install_missing() {
    local missing=()
    for p in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    if ((${#missing[@]})); then
        local sudo=""
        [ "$(id -u)" -eq 0 ] || sudo="sudo"
        $sudo apt-get update
        DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
    fi
}

# Debian's cmake is /usr/bin/cmake; the application starts the cmake program
# fixed at build time (see README, "Where cmake lives").
cmake_program="$(command -v cmake)"

# The builds are the presets of CMakePresets.json: plain (build/), asan
# (build-asan/) and coverage (build-cov/).
build() { # build <preset>
    cmake --preset "$1" -DZELMOR_CMAKE_PROGRAM="$cmake_program" >/dev/null
    cmake --build --preset "$1" -j"$jobs"
}

run_tests() { # run_tests <preset>
    ctest --preset "$1" -j"$jobs"
}

case "${1:-}" in
run)
    install_missing
    build plain
    app="build/ZELMOR Helper.app/Contents/MacOS/ZELMORHelper"
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        echo "No display found: starting ZELMOR Helper on a virtual X server (xvfb-run)." >&2
        exec xvfb-run -a "$app"
    fi
    exec "$app"
    ;;
test)
    install_missing
    build plain
    run_tests plain
    # The same suite again with AddressSanitizer and UndefinedBehaviorSanitizer.
    # Leak checking is off (see the preset): Qt's platform plugins keep caches
    # until exit.
    build asan
    run_tests asan
    ;;
package)
    install_missing
    # The package is for Debian, whose cmake is /usr/bin/cmake whatever this
    # machine has first on its PATH.
    cmake_program=/usr/bin/cmake
    build plain
    (cd build && cpack)
    deb="$(ls -t build/zelmor-helper_*.deb | head -n 1)"
    echo "Built $deb; install it with: apt install ./$deb"
    ;;
coverage)
    # Line coverage of the application's folders (not of the tests), from a
    # build of its own instrumented with gcov. Counters add up across runs,
    # so the old ones go first.
    install_missing
    build coverage
    find build-cov -name '*.gcda' -delete
    status=0
    run_tests coverage || status=$?
    gcovr --root . --object-directory build-cov --exclude-directories 'build-cov/CMakeFiles' \
        --filter '(app|workflow|settings|widgets|platform|companions)/' \
        --print-summary --txt build-cov/coverage.txt
    exit "$status"
    ;;
coverage-by-test)
    # Which application lines each test function reaches, and which only it
    # does: what to look at before merging or dropping a test.
    install_missing
    build coverage
    python3 tools/coverage_by_test.py build-cov
    ;;
screenshot)
    # The software centre's picture, taken again after the main window
    # changed. The workspace path shows in it; it must not exist yet, and
    # what is made for it is removed afterwards.
    install_missing
    build plain
    cmake --build build --target zelmor_screenshot
    build/tools/zelmor_screenshot "${2:-/home/alex/Developer/ZELMOR}" \
        resources/linux/screenshot-main-window.png
    ;;
*)
    echo "usage: tools/dev.sh run|test|package|coverage|coverage-by-test|screenshot [workspace]" >&2
    exit 2
    ;;
esac
