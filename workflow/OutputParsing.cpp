#include "workflow/OutputParsing.h"

#include "text/TextNumbers.h"
#include "text/TextPieces.h"

#include <climits>

namespace OutputParsing {

QList<qint32> numberHunter(QStringView text)
{
    QList<qint32> numbers;
    for (qsizetype i = 0; i < text.size();) {
        const TextNumbers::DigitRun run = TextNumbers::leadingDigits(text.sliced(i));
        if (run.length == 0) {
            ++i;
            continue;
        }
        numbers.append(static_cast<qint32>(run.value));
        i += run.length;
    }
    return numbers;
}

std::optional<qint32> makeProgressValue(QStringView text)
{
    // Only pieces 1 to 3 matter, and whether a fifth exists, so four
    // separators are enough instead of splitting a whole chunk of make's output.
    const QList<QStringView> pieces = TextPieces::splitAtAny(text, MakeSeparators, 4);
    if (pieces.size() < 5)
        return std::nullopt;
    for (int index = 1; index <= 3; ++index) {
        if (const qint32 value = TextNumbers::integerValue(pieces.at(index)))
            return value;
    }
    return std::nullopt;
}

CloneProgress cloneProgress(QStringView text)
{
    CloneProgress result;
    const QList<QStringView> pieces = TextPieces::splitAtAny(text, GitSeparators);
    const int n = static_cast<int>(qMin<qsizetype>(pieces.size(), INT_MAX));
    result.pieces = n;
    if (n < 5) {
        result.outcome = CloneProgress::TooFewPieces;
        return result;
    }
    const QString speed = pieces.at(n - 5).toString() + u' ' + pieces.at(n - 4).toString();

    const QList<qint32> numbers = numberHunter(text);
    const qsizetype k = numbers.size();
    const auto take = [&](const QString &label) {
        result.percentage = numbers.at(0);
        result.value = numbers.at(1);
        result.maximum = numbers.at(2);
        result.label = label;
    };
    const QString idle = IdleSpeedLabel.toString();
    if (k % 3 == 0 && k < 4) {
        if (k == 0) {
            result.outcome = CloneProgress::NoNumbers;
            return result;
        }
        take(idle);
    } else if (k % 3 == 0) {
        take(numbers.at(2) == numbers.at(5) ? idle : speed);
    } else if (k % 7 == 0) {
        take(speed);
    } else {
        result.label = idle;
    }
    return result;
}

} // namespace OutputParsing
