#include "widgets/ConsoleView.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

namespace {
// How long one slice may hold the event loop, and how much text it moves at
// most between two looks at the clock. Together they keep a slice well under
// the time a user notices.
constexpr qint64 SliceBudgetMs = 10;
constexpr qsizetype PieceChars = 16 * 1024;
// First flush after new text: short enough to feel immediate, long enough to
// gather the many small chunks a busy tool writes into one layout pass.
constexpr int GatherDelayMs = 15;
// Between slices of a long queue: lets input and painting in.
constexpr int SliceGapMs = 1;
} // namespace

ConsoleView::ConsoleView(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    // Selectable with mouse and keyboard, so the user can copy, and can move
    // the insertion point; never typed into.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    // The scrollback is enforced by dropOldestLines(), not by
    // setMaximumBlockCount(): the document's own trimming walks the cursor
    // over every dropped line and lays each one out first, which costs far
    // more than inserting it did.
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_flushTimer.setSingleShot(true);
    connect(&m_flushTimer, &QTimer::timeout, this, &ConsoleView::flushSlice);
}

QString ConsoleView::normalizedLineEnds(const QString &text)
{
    // A "\r\n" cut between two chunks is still one line break.
    const bool continuesPair = m_endsWithCarriageReturn && text.startsWith(u'\n');
    m_endsWithCarriageReturn = text.endsWith(u'\r');
    if (!text.contains(u'\r'))
        return continuesPair ? text.mid(1) : text;
    QString result = continuesPair ? text.mid(1) : text;
    result.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    result.replace(u'\r', u'\n');
    return result;
}

void ConsoleView::setString(const QString &text)
{
    m_pending.clear();
    m_pendingStart = 0;
    m_pendingLines = 0;
    m_flushTimer.stop();
    m_endsWithCarriageReturn = false;
    setPlainText(normalizedLineEnds(text));
    dropOldestLines();
    // A fresh text is read from the end on: that is where the next line goes.
    moveCursor(QTextCursor::End);
}

void ConsoleView::insertText(const QString &text)
{
    if (text.isEmpty())
        return;
    const QString normalized = normalizedLineEnds(text);
    m_pending.append(normalized);
    m_pendingLines += normalized.count(u'\n');
    trimPending();
    scheduleFlush(GatherDelayMs);
}

QString ConsoleView::string()
{
    flushPending();
    return toPlainText();
}

void ConsoleView::flushPending()
{
    m_flushTimer.stop();
    while (hasPending())
        flushSlice();
    m_flushTimer.stop();
}

void ConsoleView::scheduleFlush(int delayMs)
{
    if (!m_flushTimer.isActive())
        m_flushTimer.start(delayMs);
}

void ConsoleView::trimPending()
{
    // Lines beyond the scrollback would be dropped as soon as they were
    // shown; dropping them while queued gives the same text for less work.
    // The last, unfinished line does not count.
    if (m_pendingLines <= ScrollbackLines)
        return;
    qsizetype excess = m_pendingLines - ScrollbackLines;
    qsizetype cut = m_pendingStart;
    while (excess > 0) {
        cut = m_pending.indexOf(u'\n', cut) + 1;
        --excess;
    }
    m_pendingStart = cut;
    m_pendingLines = ScrollbackLines;
    compactPending();
}

void ConsoleView::compactPending()
{
    // Moving the rest down costs a copy; doing it only once the done part is
    // the larger half keeps the cost per character constant.
    if (m_pendingStart > m_pending.size() / 2) {
        m_pending.remove(0, m_pendingStart);
        m_pendingStart = 0;
    }
}

void ConsoleView::dropOldestLines()
{
    QTextDocument *doc = document();
    const int excess = doc->blockCount() - ScrollbackLines;
    if (excess <= 0)
        return;
    // Positions only: no cursor movement, so nothing is laid out.
    const int cut = doc->findBlockByNumber(excess).position();
    const bool caretDropped = textCursor().position() < cut;
    QTextCursor top(doc);
    top.setPosition(cut, QTextCursor::KeepAnchor);
    top.removeSelectedText();
    // Should the insertion point still have been in a line that is gone, it
    // goes back to the end.
    if (caretDropped)
        moveCursor(QTextCursor::End);
}

void ConsoleView::flushSlice()
{
    if (!hasPending())
        return;
    QScrollBar *bar = verticalScrollBar();
    const bool followTail = bar->value() >= bar->maximum();

    // An insertion point in a line that the queued text will push out of
    // the scrollback would lose that text at once; it goes to the end.
    const qsizetype dropping = document()->blockCount() + m_pendingLines - ScrollbackLines;
    if (dropping > 0 && textCursor().blockNumber() < dropping)
        moveCursor(QTextCursor::End);

    QElapsedTimer clock;
    clock.start();
    QTextCursor cursor = textCursor();
    // The insertion point is the caret; a selection the user made stays.
    cursor.setPosition(cursor.position());
    cursor.beginEditBlock();
    do {
        qsizetype length = qMin(PieceChars, m_pending.size() - m_pendingStart);
        // End the piece after a line feed when there is one, so a line is not
        // laid out twice.
        if (m_pendingStart + length < m_pending.size()) {
            const qsizetype lineEnd = m_pending.lastIndexOf(u'\n', m_pendingStart + length - 1);
            if (lineEnd >= m_pendingStart)
                length = lineEnd + 1 - m_pendingStart;
        }
        const QStringView piece = QStringView(m_pending).mid(m_pendingStart, length);
        m_pendingLines -= piece.count(u'\n');
        cursor.insertText(piece.toString());
        m_pendingStart += length;
    } while (hasPending() && clock.elapsed() < SliceBudgetMs);
    dropOldestLines();
    cursor.endEditBlock();

    if (hasPending()) {
        compactPending();
        scheduleFlush(SliceGapMs);
    } else {
        m_pending.clear();
        m_pendingStart = 0;
        m_pendingLines = 0;
    }
    if (followTail)
        bar->setValue(bar->maximum());
}
