#!/usr/bin/env bash
# Lists, per language, the texts a translator still has to do: keys missing
# from a translation file, unfinished entries, and translations whose
# placeholders (%1, %@, %d, ...) differ from their key. The translation files
# themselves are left alone; the check refreshes copies of them with lupdate.
# Exits non-zero while anything is left. To fill the gaps, refresh the files
# (cmake --build build --target update_translations) and open them in Qt
# Linguist (linguist resources/translations/zelmorhelper_de.ts).
#
#   tools/translation_status.sh [build folder, default build]
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${1:-$root/build}"
cmake --build "$build" --target tst_translations -j2 >/dev/null
# The check's own output: one summary line per language, then one line per
# text ("de: [Context] "source" is unfinished").
QT_QPA_PLATFORM=offscreen "$build/tests/tst_translations" everyTextIsTranslated 2>&1 |
    sed -n -e 's/^QINFO *: [^ ]* //p' \
        -e 's/^\([A-Za-z_]*: \[.*\(missing\|unfinished\|"\)\))\{0,1\}$/\1/p'
exit "${PIPESTATUS[0]}"
