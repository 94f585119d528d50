#!/usr/bin/env bash
# Captures what git, cmake, make, gcc, cp and bash print when they fail the
# ways ZELMOR Helper's users meet, in English and in the languages the
# tools translate to, for tst_diagnosis. Run as root on Debian 12 (it
# mounts inside a private mount namespace); writes <case>.<lang>.txt next to
# itself. Paths are fixed (/tmp/zcap) so the captures do not change between
# runs. Needs gcc-12-locales for the compiler's translations.
set -uo pipefail
out="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
base=/tmp/zcap
langs=(en de fr es)

rm -rf "$base"; mkdir -p "$base"; cd "$base"
export GIT_CONFIG_NOSYSTEM=1 HOME="$base/home" GIT_TERMINAL_PROMPT=0
mkdir -p "$HOME"
git config --global user.name cap; git config --global user.email cap@zelmor.invalid
git config --global init.defaultBranch master

# An upstream with one commit, and a clone of it.
git init -q up.work && echo one > up.work/notes.txt && echo a > up.work/other.txt
git -C up.work add -A && git -C up.work commit -qm one && git clone -q --bare up.work up.git

# An HTTP server answering 404 for /missing and 401 for /private.
cat > server.py <<'PY'
import http.server, sys
class H(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        if self.path.startswith('/private'):
            self.send_response(401); self.send_header('WWW-Authenticate', 'Basic realm="x"')
        else:
            self.send_response(404)
        self.send_header('Content-Length', '0'); self.end_headers()
    def log_message(self, *a): pass
http.server.HTTPServer(('127.0.0.1', int(sys.argv[1])), H).serve_forever()
PY
/usr/bin/python3 server.py 18787 & server=$!
sleep 1

# capture <case> <tool> <tag> <stage> <folder> <command...>: runs the command
# in folder and writes what it printed, stream by stream.
capture() {
    local name="$1" tool="$2" tag="$3" stage="$4" folder="$5"; shift 5
    for lang in "${langs[@]}"; do
        [ -n "${prepare:-}" ] && (cd "$base" && eval "$prepare")
        (cd "$folder" && LC_ALL=C.UTF-8 LANGUAGE="$lang" "$@" >"$base/o" 2>"$base/e" </dev/null)
        local status=$?
        { printf 'tool: %s\ntag: %s\nstage: %s\nstatus: %s\n[stderr]\n' "$tool" "$tag" "$stage" "$status"
          cat "$base/e"; printf '[stdout]\n'; cat "$base/o"; } >"$out/$name.$lang.txt"
    done
}

prepare='rm -rf ws'
capture clone-refused git 1 0 "$base" git clone --progress http://127.0.0.1:9/zelmor.git "$base/ws"
capture clone-refused-git git 1 0 "$base" git clone --progress git://127.0.0.1:9/zelmor.git "$base/ws"
capture clone-no-host git 1 0 "$base" git clone --progress https://github.invalid/zelmor.git "$base/ws"
capture clone-timeout git 1 0 "$base" env "GIT_SSH_COMMAND=ssh -o ConnectTimeout=2 -o BatchMode=yes" \
    git clone --progress ssh://git@10.255.255.1/zelmor.git "$base/ws"
capture clone-not-found-http git 1 0 "$base" git clone --progress http://127.0.0.1:18787/missing.git "$base/ws"
capture clone-private git 1 0 "$base" git clone --progress http://127.0.0.1:18787/private.git "$base/ws"
capture clone-not-found-path git 1 0 "$base" git clone --progress "$base/nothing.git" "$base/ws"
capture module-not-found git 4 0 "$base" git clone --progress http://127.0.0.1:18787/emu-lang.git lang

# A workspace that exists without a download in it (left by a compile).
prepare='rm -rf ws && mkdir -p ws/build'
capture clone-exists git 1 0 "$base" git clone --progress "$base/up.git" "$base/ws"

# A workspace whose parent the user may not write: as nobody under a folder
# only root writes, and under a read-only bind mount.
mkdir -p rootonly ro && chmod 755 rootonly ro
prepare=''
capture clone-denied git 1 0 /tmp setpriv --reuid=65534 --regid=65534 --clear-groups \
    git clone --progress "$base/up.git" "$base/rootonly/ZELMOR"
capture clone-read-only git 1 0 /tmp unshare -m bash -c \
    'mount --bind -o ro "$0/ro" "$0/ro" && exec git clone --progress "$0/up.git" "$0/ro/ZELMOR"' "$base"
mkdir -p build && touch build/ZELMORSDL && mkdir -p build/assets lang
capture copy-denied cp 3 2 "$base/build" setpriv --reuid=65534 --regid=65534 --clear-groups \
    bash -c "cp -R $base/build/assets $base/rootonly/Output/assets/ && cp $base/build/ZELMORSDL $base/rootonly/Output"

# A full disk: a small tmpfs in a private mount namespace.
dd if=/dev/urandom of=up.work/big.bin bs=1k count=600 status=none
git -C up.work add -A && git -C up.work commit -qm big && git -C up.work push -q "$base/up.git" master
mkdir -p small
capture clone-full git 1 0 /tmp unshare -m bash -c \
    'mount -t tmpfs -o size=256k tmpfs "$0/small" && exec git clone --progress "$0/up.git" "$0/small/ZELMOR"' "$base"
capture copy-full cp 3 2 "$base" unshare -m bash -c \
    'mount -t tmpfs -o size=256k tmpfs "$0/small" && cp "$0/up.work/big.bin" "$0/small/ZELMORSDL"' "$base"

# Tools that are not installed.
capture git-missing git 2 0 "$base/up.work" env PATH=/nonexistent /bin/bash -c 'git pull --progress'
capture make-missing make 3 1 "$base" env PATH=/nonexistent /bin/bash -c 'make -j3 $1'

# cmake: packages that are not installed, in the three ways projects look.
mkdir -p proj/build
for kind in module config pkgconfig; do
    case $kind in
    module) body='find_package(OpenAL REQUIRED)';;
    config) body='find_package(SDL2_ttf REQUIRED)';;
    pkgconfig) body='find_package(PkgConfig REQUIRED)
pkg_check_modules(SDL2MIXER REQUIRED SDL2_mixer)';;
    esac
    printf 'cmake_minimum_required(VERSION 3.13)\nproject(ZELMORSDL C)\n%s\nadd_executable(ZELMORSDL main.c)\n' "$body" > proj/CMakeLists.txt
    echo 'int main(void) { return 0; }' > proj/main.c
    prepare="rm -rf proj/build && mkdir proj/build"
    capture "cmake-$kind" cmake 3 0 "$base/proj/build" cmake ..
done
prepare=''
capture make-no-makefile make 3 1 "$base/proj/build" /bin/bash -c 'make -j3 $1'

# A compile error, and a header that is not there.
printf 'cmake_minimum_required(VERSION 3.13)\nproject(ZELMORSDL C)\nadd_executable(ZELMORSDL main.c util.c)\n' > proj/CMakeLists.txt
printf 'int helper(void);\nint main(void)\n{\n    return helper()\n}\n' > proj/main.c
printf 'int helper(void) { return 0; }\n' > proj/util.c
rm -rf proj/build && mkdir proj/build && (cd proj/build && cmake .. >/dev/null)
prepare='make -C proj/build clean >/dev/null'
capture make-compile-error make 3 1 "$base/proj/build" /bin/bash -c 'make -j3 $1'
printf '#include <SDL_ttf.h>\nint main(void) { return 0; }\n' > proj/main.c
capture make-missing-header make 3 1 "$base/proj/build" /bin/bash -c 'make -j3 $1'
prepare=''

# git pull blocked by a local change, by a conflict, and by divergent history.
git -C up.work reset -q --hard HEAD~1 && git -C up.work push -qf "$base/up.git" master
git clone -q up.git mine
first="$(git -C mine rev-parse HEAD)"
echo two > up.work/notes.txt && git -C up.work commit -qam two && git -C up.work push -q "$base/up.git" master
prepare="git -C mine reset -q --hard $first && echo local > mine/notes.txt"
capture pull-local-changes git 2 0 "$base/mine" git pull --progress
prepare="git -C mine merge --abort 2>/dev/null; git -C mine reset -q --hard $first && echo mine > mine/notes.txt && git -C mine commit -qam mine"
capture pull-conflict git 2 0 "$base/mine" git -c pull.rebase=false pull --progress
capture pull-divergent git 2 0 "$base/mine" git pull --progress
prepare=''
printf '[submodule "lang"]\n\tpath = lang\n\turl = %s/nothing.git\n' "$base" > mine/.gitmodules
git -C mine add .gitmodules && git -C mine commit -qm modules
git -C mine update-index --add --cacheinfo 160000,"$first",lang && git -C mine commit -qm lang
mkdir -p mine/lang && git init -q mine/lang && git -C mine/lang commit -q --allow-empty -m x
capture submodules-no-upstream git 2 1 "$base/mine" git submodule foreach git pull --progress

kill "$server"
