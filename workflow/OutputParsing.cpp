#include "workflow/OutputParsing.h"

#include "settings/SettingsStore.h"

#include <climits>

namespace OutputParsing {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// A piece read as the platform reads a number out of text: leading white
// space, an optional sign, then digits; 0 when there are none.
qint32 pieceValue(QStringView piece)
{
    return intValueOf(QVariant(piece.toString()));
}

} // namespace

QStringList splitPieces(QStringView text, QStringView separators)
{
    QStringList pieces;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (separators.contains(text.at(i))) {
            pieces.append(text.mid(start, i - start).toString());
            start = i + 1;
        }
    }
    pieces.append(text.mid(start).toString());
    return pieces;
}

QList<qint32> numberHunter(QStringView text)
{
    QList<qint32> numbers;
    qsizetype i = 0;
    while (i < text.size()) {
        if (!isDigit(text.at(i))) {
            ++i;
            continue;
        }
        qint64 value = 0;
        for (; i < text.size() && isDigit(text.at(i)); ++i) {
            value = value * 10 + (text.at(i).unicode() - u'0');
            if (value > INT_MAX)
                value = INT_MAX; // stays saturated for the rest of the run
        }
        numbers.append(static_cast<qint32>(value));
    }
    return numbers;
}

std::optional<qint32> makeProgressValue(QStringView text)
{
    // Only pieces 0 to 4 matter, so the scan stops after the fourth separator
    // instead of splitting a whole chunk of make's output.
    QStringView pieces[4];
    qsizetype start = 0;
    int found = 0;
    for (qsizetype i = 0; i < text.size() && found < 4; ++i) {
        if (MakeSeparators.contains(text.at(i))) {
            pieces[found++] = text.mid(start, i - start);
            start = i + 1;
        }
    }
    if (found < 4) // fewer than five pieces
        return std::nullopt;
    for (int index = 1; index <= 3; ++index) {
        const qint32 value = pieceValue(pieces[index]);
        if (value != 0)
            return value;
    }
    return std::nullopt;
}

CloneProgress cloneProgress(QStringView text)
{
    CloneProgress result;
    const QStringList pieces = splitPieces(text, GitSeparators);
    const int n = static_cast<int>(qMin<qsizetype>(pieces.size(), INT_MAX));
    result.pieces = n;
    if (n < 5) {
        result.outcome = CloneProgress::TooFewPieces;
        return result;
    }
    const QString speed = pieces.at(n - 5) + u' ' + pieces.at(n - 4);

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
