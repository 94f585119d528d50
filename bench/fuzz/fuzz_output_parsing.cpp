// libFuzzer target for the output parsers and the module rules: whatever a
// tool prints, parsing must neither crash nor disagree with the plain
// definition it shortcuts. Built and run by bench/fuzz.sh.

#include "FuzzCheck.h"
#include "text/TextNumbers.h"
#include "text/TextPieces.h"
#include "workflow/ModuleRules.h"
#include "workflow/OutputParsing.h"
#include "workflow/TextFormat.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

using namespace OutputParsing;

namespace {


// makeProgressValue() stops after four separators; this is the definition.
std::optional<qint32> makeProgressReference(const QString &text)
{
    const QList<QStringView> pieces = TextPieces::splitAtAny(text, MakeSeparators);
    if (pieces.size() < 5)
        return std::nullopt;
    for (int index = 1; index <= 3; ++index) {
        if (const int value = TextNumbers::integerValue(pieces.at(index)))
            return value;
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));

    check(makeProgressValue(text) == makeProgressReference(text));

    const QList<qint32> numbers = numberHunter(text);
    for (qint32 number : numbers)
        check(number >= 0);

    const CloneProgress progress = cloneProgress(text);
    check(progress.pieces == TextPieces::splitAtAny(text, GitSeparators).size());
    if (progress.outcome == CloneProgress::Progress && numbers.size() >= 3) {
        check(progress.value == numbers.at(1) || progress.value == 0);
    }
    if (progress.outcome == CloneProgress::NoNumbers)
        check(numbers.isEmpty());

    const QStringList urls = moduleURLsFromGitmodules(text);
    check(urls.size() <= text.size() / 8 + 1);
    for (const QString &url : urls) {
        bool named = false;
        const QString name = moduleNameFromURL(url, &named);
        check(named || name.isEmpty());
    }

    // Any text may be a translated format.
    check(formatText(text, {}).size() >= 0);
    return 0;
}
