#pragma once

#include <QList>
#include <QStringView>

// Cutting text into pieces at separator characters, the way the tools' output
// and .gitmodules are read.
namespace TextPieces {

// The pieces of text between the characters of separators. Every separator
// ends a piece, so neighbouring separators give an empty piece and text that
// ends in a separator an empty last one; nothing is trimmed. With maxSplits
// of 0 or more, only that many separators cut and the last piece is the rest
// of the text, so a caller that needs the first few pieces does not scan a
// whole chunk. The pieces are views into text.
QList<QStringView> splitAtAny(QStringView text, QStringView separators, qsizetype maxSplits = -1);

} // namespace TextPieces
