#!/usr/bin/env bash
# Fails with file and line for every #include "folder/…" that goes upward or
# sideways between the source folders. The layers, top to bottom:
#   app                      the application shell
#   workflow, settings       engine and main window; settings store and its windows
#   widgets, platform        reusable controls; what differs between systems
#   text                     pure functions on text (pieces, numbers)
# The companions sit beside them and use widgets, platform and text. A folder
# may always include its own files; tests/, bench/ and tools/ may include
# anything.
set -euo pipefail
root="${1:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)}"
cd "$root"

allowed() { # allowed <from-folder> <to-folder> <header>
    local from="$1" to="$2" header="$3"
    [ "$from" = "$to" ] && return 0
    case "$from:$to" in
        *:text) return 0 ;; # the bottom: text includes nothing of the others
        app:workflow|app:settings|app:widgets|app:platform) return 0 ;;
        workflow:widgets|workflow:platform) return 0 ;;
        # The engine reads and writes settings, but opens none of their windows.
        workflow:settings) case "$header" in *Prefs*|*LoginAgent*) return 1 ;; esac; return 0 ;;
        settings:widgets|settings:platform) return 0 ;;
        companions/*:widgets|companions/*:platform) return 0 ;;
    esac
    return 1
}

folder_of() { # the layer a path belongs to (companions count per program)
    case "$1" in
        companions/*/*) echo "${1%%/*}/$(cut -d/ -f2 <<<"$1")" ;;
        */*) echo "${1%%/*}" ;;
        *) echo "" ;;
    esac
}

status=0
while IFS= read -r file; do
    from="$(folder_of "$file")"
    while IFS=: read -r line header; do
        to="$(folder_of "$header")"
        [ -n "$to" ] || continue
        if ! allowed "$from" "$to" "$header"; then
            echo "$file:$line: includes \"$header\": $from may not use $to" >&2
            status=1
        fi
    done < <(grep -nE '^\s*#\s*include\s+"[^"]+/[^"]+"' "$file" \
                | sed -E 's/^([0-9]+):\s*#\s*include\s+"([^"]+)".*/\1:\2/')
done < <(find app workflow settings widgets platform text companions -type f \
            \( -name '*.h' -o -name '*.cpp' \) 2>/dev/null | sort)

[ "$status" -eq 0 ] || echo "Includes must go downward: app > workflow, settings > widgets, platform > text; companions > widgets, platform, text." >&2
exit "$status"
