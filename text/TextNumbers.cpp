#include "text/TextNumbers.h"

namespace TextNumbers {

DigitRun leadingDigits(QStringView text, qint64 ceiling)
{
    DigitRun run;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            break;
        run.value = qMin(run.value * 10 + (c.unicode() - u'0'), ceiling);
        ++run.length;
    }
    return run;
}

qint32 integerValue(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    const bool negative = i < text.size() && text.at(i) == u'-';
    if (i < text.size() && (text.at(i) == u'+' || negative))
        ++i;
    constexpr qint64 Largest = std::numeric_limits<qint32>::max();
    // One more than the largest positive value is still a 32-bit number when
    // it is negative.
    const qint64 magnitude = leadingDigits(text.sliced(i), negative ? Largest + 1 : Largest).value;
    return static_cast<qint32>(negative ? -magnitude : magnitude);
}

} // namespace TextNumbers
