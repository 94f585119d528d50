#include "text/TextPieces.h"

namespace TextPieces {

QList<QStringView> splitAtAny(QStringView text, QStringView separators, qsizetype maxSplits)
{
    QList<QStringView> pieces;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size() && pieces.size() != maxSplits; ++i) {
        if (separators.contains(text.at(i))) {
            pieces.append(text.sliced(start, i - start));
            start = i + 1;
        }
    }
    pieces.append(text.sliced(start));
    return pieces;
}

} // namespace TextPieces
