#include "widgets/ConsoleView.h"

#include "widgets/Contrast.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

namespace {
// How much text a slice moves at most between two looks at the clock.
constexpr qsizetype PieceChars = 16 * 1024;
// First flush after new text: short enough to feel immediate, long enough to
// gather the many small chunks a busy tool writes into one layout pass.
constexpr int GatherDelayMs = 15;
// Between slices of a long queue: lets input and painting in.
constexpr int SliceGapMs = 1;

// The colour n of the 256-colour palette as terminals define it.
QColor paletteColour(int n)
{
    static const QRgb basic[16] = {
        qRgb(0, 0, 0),       qRgb(205, 0, 0),     qRgb(0, 205, 0),     qRgb(205, 205, 0),
        qRgb(0, 0, 238),     qRgb(205, 0, 205),   qRgb(0, 205, 205),   qRgb(229, 229, 229),
        qRgb(127, 127, 127), qRgb(255, 0, 0),     qRgb(0, 255, 0),     qRgb(255, 255, 0),
        qRgb(92, 92, 255),   qRgb(255, 0, 255),   qRgb(0, 255, 255),   qRgb(255, 255, 255)};
    if (n < 16)
        return QColor(basic[n]);
    if (n < 232) {
        static const int level[6] = {0, 95, 135, 175, 215, 255};
        n -= 16;
        return QColor(level[n / 36], level[n / 6 % 6], level[n % 6]);
    }
    const int grey = 8 + 10 * (n - 232);
    return QColor(grey, grey, grey);
}

QColor terminalColour(quint32 colour)
{
    if (colour & TerminalText::TrueColour)
        return QColor(QRgb(colour & 0xFFFFFF));
    return paletteColour(int(colour & 0xFF));
}

} // namespace

ConsoleView::ConsoleView(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    // Selectable with mouse and keyboard, so the user can copy, and can move
    // the insertion point; never typed into.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    // A terminal's look: tools align their output in columns.
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
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
    QString result = continuesPair ? text.mid(1) : text;
    if (result.contains(u'\r')) {
        result.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        result.replace(u'\r', u'\n');
    }
    return result;
}

void ConsoleView::setString(const QString &text)
{
    m_queue.clear();
    m_flushTimer.stop();
    m_endsWithCarriageReturn = false;
    m_terminal.reset();
    m_liveShown = false;
    setPlainText(normalizedLineEnds(text));
    dropOldestLines();
    // A fresh text is read from the end on: that is where the next line goes.
    moveCursor(QTextCursor::End);
}

void ConsoleView::insertText(const QString &text)
{
    if (text.isEmpty())
        return;
    // The line a tool was writing stays as it reads; this text follows it.
    m_terminal.detachLine();
    queueFinishedToolText();
    m_queue.append(normalizedLineEnds(text));
    scheduleFlush(GatherDelayMs);
}

void ConsoleView::insertToolOutput(const QString &text)
{
    if (text.isEmpty())
        return;
    m_endsWithCarriageReturn = false;
    m_terminal.write(text);
    queueFinishedToolText();
    scheduleFlush(GatherDelayMs);
}

void ConsoleView::queueFinishedToolText()
{
    if (!m_terminal.hasFinished())
        return;
    m_queue.append(m_terminal.finishedText(), m_terminal.finishedRuns());
    m_terminal.clearFinished();
}

void ConsoleView::insertRuns(QTextCursor &cursor, const QString &text,
                             const QList<TerminalText::Run> &runs)
{
    if (runs.isEmpty()) {
        if (!text.isEmpty())
            cursor.insertText(text, format(0));
        return;
    }
    qsizetype at = 0;
    for (const TerminalText::Run &run : runs) {
        cursor.insertText(text.mid(at, run.length), format(run.style));
        at += run.length;
    }
}

const QTextCharFormat &ConsoleView::format(TerminalText::Style style)
{
    auto found = m_formats.constFind(style);
    if (found != m_formats.constEnd())
        return *found;
    QTextCharFormat format;
    if (style != 0) {
        const QPalette colours = palette();
        const QColor base = colours.color(QPalette::Base);
        QColor foreground = colours.color(QPalette::Text);
        QColor background = base;
        const bool ownBackground = TerminalText::background(style) != 0;
        if (const quint32 colour = TerminalText::foreground(style))
            foreground = terminalColour(colour);
        if (ownBackground)
            background = terminalColour(TerminalText::background(style));
        if (style & TerminalText::Inverse)
            std::swap(foreground, background);
        // A tool's colour is made lighter or darker until it reads well on
        // its background: yellow on a white console turns to ochre, blue on a
        // black one to a light blue. Its hue stays, so red still means red.
        foreground = Contrast::textColor(foreground, background, foreground);
        if (style & TerminalText::Faint) {
            foreground = QColor::fromRgbF((foreground.redF() + background.redF()) / 2,
                                          (foreground.greenF() + background.greenF()) / 2,
                                          (foreground.blueF() + background.blueF()) / 2);
        }
        if (TerminalText::foreground(style) || (style & (TerminalText::Inverse | TerminalText::Faint))
            || ownBackground)
            format.setForeground(foreground);
        if (ownBackground || (style & TerminalText::Inverse))
            format.setBackground(background);
        if (style & TerminalText::Bold)
            format.setFontWeight(QFont::Bold);
        if (style & TerminalText::Italic)
            format.setFontItalic(true);
        if (style & TerminalText::Underline)
            format.setFontUnderline(true);
    }
    return *m_formats.insert(style, format);
}

void ConsoleView::changeEvent(QEvent *event)
{
    // Colours are chosen for the palette; text that follows a change gets
    // them anew.
    if (event->type() == QEvent::PaletteChange)
        m_formats.clear();
    QPlainTextEdit::changeEvent(event);
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

void ConsoleView::dropOldestLines(qsizetype incomingLines, qsizetype incomingCharacters)
{
    QTextDocument *doc = document();
    const qsizetype excess = doc->blockCount() + incomingLines - ScrollbackLines;
    const qsizetype excessCharacters =
        doc->characterCount() + incomingCharacters - ScrollbackCharacters;
    if (excess <= 0 && excessCharacters <= 0)
        return;
    // Positions only: no cursor movement, so nothing is laid out. The last
    // line stays whatever comes: it is where text goes on.
    const QTextBlock last = doc->lastBlock();
    int cut = 0;
    if (excess > 0)
        cut = excess < last.blockNumber() ? doc->findBlockByNumber(int(excess)).position()
                                          : last.position();
    if (excessCharacters > 0) {
        const QTextBlock block =
            doc->findBlock(int(std::min<qsizetype>(excessCharacters, last.position())));
        const QTextBlock next = block.next();
        cut = std::max(cut, next.isValid() && block != last ? next.position() : block.position());
    }
    if (cut <= 0)
        return;
    const bool caretDropped = textCursor().position() < cut;
    // Inside an edit, a cursor does not lay out the line it lands on to
    // learn its column; a line of thousands of characters costs
    // milliseconds to lay out, and nobody asks for that column.
    QTextCursor top(doc);
    top.beginEditBlock();
    top.setPosition(cut, QTextCursor::KeepAnchor);
    top.removeSelectedText();
    top.endEditBlock();
    // Should the insertion point still have been in a line that is gone, it
    // goes back to the end.
    if (caretDropped)
        moveCursor(QTextCursor::End);
}

qsizetype ConsoleView::takeBackLiveLine(QTextCursor &cursor)
{
    if (!m_liveShown)
        return 0;
    m_liveShown = false;
    // Should the user have moved the insertion point away from it, it stays
    // as it was.
    if (cursor.position() != m_live.selectionEnd() || !m_live.hasSelection())
        return 0;
    // How much of what the last slice drew of the tool's current line is
    // still right: that much stays, the rest is drawn anew. Keeping it spares
    // the document text it would have to collect as garbage, which it does
    // by copying all its text.
    qsizetype kept = 0;
    qsizetype keptInLine = 0;
    if (!m_liveStyled && !m_queue.isEmpty()) {
        if (!m_queue.isStyled() && m_queue.text().startsWith(m_liveText)) {
            m_queue.skip(m_liveText.size());
            kept = m_liveText.size();
        }
    } else if (!m_liveStyled && m_queue.isEmpty() && m_terminal.currentLine().startsWith(m_liveText)
               && m_terminal.currentRuns().isEmpty()) {
        kept = m_liveText.size();
        keptInLine = kept;
    }
    cursor.setPosition(m_live.selectionStart() + int(kept), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return keptInLine;
}

void ConsoleView::flushSlice()
{
    if (!hasPending())
        return;
    QScrollBar *bar = verticalScrollBar();
    const bool followTail = bar->value() >= bar->maximum();

    // An insertion point in a line that the queued text will push out of
    // the scrollback would lose that text at once; it goes to the end.
    const qsizetype dropping = document()->blockCount() + m_queue.lineCount() - ScrollbackLines;
    if (dropping > 0 && textCursor().blockNumber() < dropping)
        moveCursor(QTextCursor::End);

    QElapsedTimer clock;
    clock.start();
    // The budget learns from the thread's processor time; the slice itself
    // still ends by the clock on the wall.
    const qint64 cpuStart = SliceBudget::threadCpuNs();
    const auto cpuElapsed = [cpuStart] { return SliceBudget::threadCpuNs() - cpuStart; };
    const qint64 moveBudgetNs = m_budget.moveNs(document()->characterCount());
    const qsizetype allowance = m_budget.allowance(document()->characterCount());
    const qsizetype queuedBefore = m_queue.text().size();

    // Room for what this slice brings is made first, as an edit of its own.
    // Every edit has the view lay out the lines it shows, so one drop per
    // slice costs far less than one per piece; in the same edit as the
    // insertion, the change would span the whole document and clear the
    // layout of every line. And first rather than after: when its text
    // buffer is full the document compacts it (copies all its text) at the
    // end of an edit, and a drop straight after that would have it compact
    // everything again in the same slice.
    {
        const qsizetype incoming = std::min(allowance, queuedBefore);
        qsizetype incomingCharacters = incoming;
        if (incoming == queuedBefore)
            incomingCharacters += m_terminal.currentLine().size();
        dropOldestLines(m_queue.text().left(incoming).count(u'\n'),
                        incomingCharacters);
        m_budget.noteOneOffCost(cpuElapsed(), document()->characterCount());
    }
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    // The insertion point is the caret; a selection the user made stays.
    cursor.setPosition(cursor.position());
    const qsizetype keptInLine = takeBackLiveLine(cursor);
    for (qsizetype sliced = 0; !m_queue.isEmpty() && sliced < allowance;) {
        const qint64 pieceStart = cpuElapsed();
        const PendingText::Slice piece = m_queue.take(std::min(PieceChars, allowance - sliced));
        insertRuns(cursor, piece.text, piece.runs);
        const qsizetype length = piece.text.size();
        sliced += length;
        m_budget.noteOneOffCost(cpuElapsed() - pieceStart - m_budget.expectedNs(length),
                                document()->characterCount());
        if (clock.nsecsElapsed() >= moveBudgetNs)
            break;
    }
    const qsizetype moved = queuedBefore - m_queue.text().size();
    if (m_queue.isEmpty()) {
        const int start = cursor.position() - int(keptInLine);
        const QString &line = m_terminal.currentLine();
        const QList<TerminalText::Run> runs = m_terminal.currentRuns();
        insertRuns(cursor, line.mid(keptInLine), runs);
        m_liveText = line;
        m_liveStyled = !runs.isEmpty();
        m_terminal.clearLineChanged();
        m_live = QTextCursor(document());
        m_live.setPosition(start);
        m_live.setPosition(cursor.position(), QTextCursor::KeepAnchor);
        m_liveShown = true;
    }
    const qint64 editEnd = cpuElapsed();
    cursor.endEditBlock();
    m_budget.noteOneOffCost(cpuElapsed() - editEnd, document()->characterCount());

    if (!m_queue.isEmpty())
        scheduleFlush(SliceGapMs);
    if (followTail)
        bar->setValue(bar->maximum());
    m_budget.noteSlice(moved, cpuElapsed());
}
