#include "widgets/TerminalText.h"

#include "text/TextNumbers.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr char16_t Escape = 0x1B;
constexpr char16_t Bell = 0x07;
constexpr char16_t Cancel = 0x18;
constexpr char16_t Substitute = 0x1A;
constexpr char16_t C1Csi = 0x9B;
constexpr char16_t C1StringTerminator = 0x9C;
// Longer parameter lists than this are not SGR a tool would write; the
// sequence is still consumed, just not applied.
constexpr qsizetype MaxParams = 128;

bool isPrintable(char16_t c)
{
    return (c >= 0x20 && c < 0x7F) || c > 0x9F || c == u'\t';
}

bool isC0(char16_t c)
{
    return c < 0x20;
}

// A number of a sequence's parameters: its leading digits, 0 when there are
// none; an absurd one stays absurd without overflowing.
int number(QStringView text)
{
    return static_cast<int>(TextNumbers::leadingDigits(text, 1000000).value);
}

} // namespace

QList<TerminalText::Run> TerminalText::currentRuns() const
{
    QList<Run> runs;
    for (qsizetype i = 0; i < m_lineStyles.size(); ++i) {
        if (!runs.isEmpty() && runs.last().style == m_lineStyles[i])
            ++runs.last().length;
        else
            runs.append({1, m_lineStyles[i]});
    }
    return runs;
}

TerminalText::Finished TerminalText::takeFinished()
{
    Finished finished{std::move(m_finished), std::move(m_finishedRuns)};
    clearFinished();
    return finished;
}

void TerminalText::clearFinished()
{
    // Memory stays for the next lines: a flood of output goes through here
    // chunk after chunk.
    m_finished.truncate(0);
    m_finishedRuns.clear();
    m_finishedStyled = false;
}

void TerminalText::detachLine()
{
    if (m_line.isEmpty() && m_column == 0)
        return;
    finishText(m_line, m_lineStyles);
    m_line.truncate(0); // keeps its memory for the next line
    m_lineStyles.clear();
    m_column = 0;
    m_lineChanged = true;
}

void TerminalText::reset()
{
    *this = TerminalText();
}

void TerminalText::finishText(QStringView text, const QList<Style> &styles)
{
    const qsizetype start = m_finished.size();
    m_finished.append(text);
    if (styles.isEmpty() && !m_finishedStyled)
        return;
    auto add = [this](qsizetype length, Style style) {
        if (length <= 0)
            return;
        if (!m_finishedRuns.isEmpty() && m_finishedRuns.last().style == style)
            m_finishedRuns.last().length += length;
        else
            m_finishedRuns.append({length, style});
    };
    if (!m_finishedStyled) {
        // Until now everything was in the default style.
        m_finishedStyled = true;
        add(start, 0);
    }
    if (styles.isEmpty()) {
        add(text.size(), 0);
        return;
    }
    // A stretch of one style at a time: most lines change style a few times.
    const Style *style = styles.constData();
    const Style *const end = style + styles.size();
    while (style != end) {
        const Style *next = style + 1;
        while (next != end && *next == *style)
            ++next;
        add(next - style, *style);
        style = next;
    }
}

void TerminalText::endLine()
{
    m_line.append(u'\n');
    if (!m_lineStyles.isEmpty())
        m_lineStyles.append(0);
    finishText(m_line, m_lineStyles);
    m_line.truncate(0); // keeps its memory for the next line
    m_lineStyles.clear();
    m_column = 0;
    m_lineChanged = true;
}

void TerminalText::changeLine(qsizetype from, qsizetype to, QStringView text)
{
    // Overwrites [from, to) of the line with text; to may be past its end.
    const qsizetype size = m_line.size();
    const qsizetype replaced = std::min(to, size) - from;
    if (replaced > 0)
        m_line.replace(from, replaced, text.data(), text.size());
    else
        m_line.append(text);
    // Styles are kept once a character has one; before, all are default.
    if (m_style != 0 || !m_lineStyles.isEmpty()) {
        m_lineStyles.resize(m_line.size(), 0);
        std::fill(m_lineStyles.begin() + from, m_lineStyles.begin() + from + text.size(), m_style);
    }
}

void TerminalText::print(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size()) {
        // Wrap, but never between the two halves of a surrogate pair.
        if (m_column >= MaxLineLength && !text[i].isLowSurrogate())
            endLine();
        const qsizetype take = std::max<qsizetype>(
            1, std::min(MaxLineLength - m_column, text.size() - i));
        changeLine(m_column, m_column + take, text.mid(i, take));
        m_column += take;
        i += take;
    }
    m_lineChanged = true;
}

void TerminalText::control(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
        endLine();
        break;
    case u'\r':
        m_column = 0;
        break;
    case u'\b':
        if (m_column == 0)
            break;
        --m_column;
        if (m_column == m_line.size() - 1) {
            m_line.chop(1);
            if (!m_lineStyles.isEmpty())
                m_lineStyles.removeLast();
            m_lineChanged = true;
        }
        break;
    default:
        // Bell, shift in and out and the rest: nothing to show.
        break;
    }
}

void TerminalText::write(QStringView chunk)
{
    const qsizetype size = chunk.size();
    qsizetype i = 0;
    while (i < size) {
        const char16_t c = chunk[i].unicode();
        switch (m_state) {
        case State::Text:
            if (isPrintable(c)) {
                qsizetype end = i + 1;
                while (end < size && isPrintable(chunk[end].unicode()))
                    ++end;
                print(chunk.mid(i, end - i));
                i = end;
                continue;
            }
            if (c == Escape)
                m_state = State::Escape;
            else if (c == C1Csi) {
                m_params.truncate(0);
                m_state = State::Csi;
            } else if (c == 0x90 || c == 0x98 || c == 0x9D || c == 0x9E || c == 0x9F)
                m_state = State::String;
            else
                control(chunk[i]);
            break;

        case State::Escape:
        case State::EscapeIntermediate:
            if (c == Escape)
                m_state = State::Escape;
            else if (c == Cancel || c == Substitute)
                m_state = State::Text;
            else if (isC0(c))
                control(chunk[i]);
            else if (c >= 0x20 && c <= 0x2F)
                m_state = State::EscapeIntermediate;
            else if (m_state == State::Escape && c == u'[') {
                m_params.truncate(0);
                m_state = State::Csi;
            } else if (m_state == State::Escape
                       && (c == u']' || c == u'P' || c == u'X' || c == u'^' || c == u'_'))
                m_state = State::String;
            else if (c >= 0x30 && c <= 0x7E)
                m_state = State::Text; // a complete two-character escape or charset selection
            else {
                m_state = State::Text;
                continue; // not part of a sequence after all: shown
            }
            break;

        case State::Csi:
        case State::CsiIgnore:
            if (c == Escape)
                m_state = State::Escape;
            else if (c == Cancel || c == Substitute)
                m_state = State::Text;
            else if (isC0(c))
                control(chunk[i]);
            else if (c >= 0x30 && c <= 0x3F) {
                if (m_state == State::Csi) {
                    if (m_params.size() < MaxParams)
                        m_params.append(QChar(c));
                    else
                        m_state = State::CsiIgnore;
                }
            } else if (c >= 0x20 && c <= 0x2F)
                m_state = State::CsiIgnore; // intermediates: nothing this view applies
            else if (c >= 0x40 && c <= 0x7E) {
                if (m_state == State::Csi)
                    finishCsi(QChar(c));
                m_state = State::Text;
            } else {
                m_state = State::Text;
                continue;
            }
            break;

        case State::String:
            // OSC and the other strings end with BEL or ST. One never spans
            // lines here: a string left open would otherwise hide all that
            // follows.
            if (c == Bell || c == C1StringTerminator)
                m_state = State::Text;
            else if (c == Escape)
                m_state = State::StringEscape;
            else if (c == u'\n') {
                m_state = State::Text;
                control(chunk[i]);
            }
            break;

        case State::StringEscape:
            if (c == u'\\')
                m_state = State::Text;
            else if (c != Escape) {
                m_state = State::Escape;
                continue;
            }
            break;
        }
        ++i;
    }
}

void TerminalText::finishCsi(QChar final)
{
    // A private marker first ("?", ">", ...) makes it another sequence.
    if (!m_params.isEmpty() && m_params[0] >= u'<')
        return;
    if (final == u'm')
        selectGraphicRendition();
    else if (final == u'K')
        eraseInLine();
}

void TerminalText::eraseInLine()
{
    const int mode = number(m_params);
    if (mode == 0) {
        if (m_column < m_line.size()) {
            m_line.truncate(m_column);
            if (!m_lineStyles.isEmpty())
                m_lineStyles.resize(m_column);
        }
    } else if (mode == 1) {
        const qsizetype blanks = std::min(m_line.size(), m_column + 1);
        m_line.replace(0, blanks, QString(blanks, u' '));
        if (!m_lineStyles.isEmpty())
            std::fill(m_lineStyles.begin(), m_lineStyles.begin() + blanks, Style(0));
    } else if (mode == 2) {
        // Blanks up to the cursor, so what follows stays in its column.
        m_line = QString(m_column, u' ');
        m_lineStyles.clear();
    }
    m_lineChanged = true;
}

namespace {

// Reads an extended colour, "5;n" or "2;r;g;b", from values[at] on; *used
// tells how many values it took.
quint32 extendedColour(const int *values, qsizetype count, qsizetype at, qsizetype *used)
{
    if (at >= count) {
        *used = 0;
        return 0;
    }
    if (values[at] == 5 && at + 1 < count) {
        *used = 2;
        return TerminalText::PaletteColour | quint32(std::clamp(values[at + 1], 0, 255));
    }
    if (values[at] == 2 && at + 3 < count) {
        *used = 4;
        const auto channel = [&](qsizetype k) { return quint32(std::clamp(values[k], 0, 255)); };
        return TerminalText::TrueColour | channel(at + 1) << 16 | channel(at + 2) << 8
               | channel(at + 3);
    }
    *used = 1;
    return 0;
}

} // namespace

void TerminalText::selectGraphicRendition()
{
    // Compiler output sets a style several times a line, so the fields are
    // read without allocating; a parameter list is at most MaxParams long.
    std::array<int, MaxParams + 1> values;
    qsizetype count = 0;
    for (QStringView field : QStringView(m_params).tokenize(u';'))
        values[count++] = number(field);
    const bool colons = m_params.contains(u':');

    QList<QStringView> fields;
    if (colons)
        fields = QStringView(m_params).split(u';');

    for (qsizetype k = 0; k < count; ++k) {
        const int code = values[k];
        if (colons && (code == 38 || code == 48) && fields[k].contains(u':')) {
            // ISO 8613-6 form: 38:5:n, 38:2:r:g:b or 38:2:space:r:g:b.
            QList<int> sub;
            for (QStringView part : fields[k].split(u':'))
                sub.append(number(part));
            if (sub.size() == 6 && sub[1] == 2)
                sub.remove(2);
            qsizetype used = 0;
            const quint32 colour = extendedColour(sub.constData(), sub.size(), 1, &used);
            m_style = code == 38 ? withForeground(m_style, colour) : withBackground(m_style, colour);
            continue;
        }
        switch (code) {
        case 0: m_style = 0; break;
        case 1: m_style |= Bold; break;
        case 2: m_style |= Faint; break;
        case 3: m_style |= Italic; break;
        case 4: m_style |= Underline; break;
        case 7: m_style |= Inverse; break;
        case 21:
        case 22: m_style &= ~(quint64(Bold) | quint64(Faint)); break;
        case 23: m_style &= ~quint64(Italic); break;
        case 24: m_style &= ~quint64(Underline); break;
        case 27: m_style &= ~quint64(Inverse); break;
        case 38:
        case 48: {
            qsizetype used = 0;
            const quint32 colour = extendedColour(values.data(), count, k + 1, &used);
            m_style = code == 38 ? withForeground(m_style, colour) : withBackground(m_style, colour);
            k += used;
            break;
        }
        case 39: m_style = withForeground(m_style, 0); break;
        case 49: m_style = withBackground(m_style, 0); break;
        default:
            if (code >= 30 && code <= 37)
                m_style = withForeground(m_style, PaletteColour | quint32(code - 30));
            else if (code >= 90 && code <= 97)
                m_style = withForeground(m_style, PaletteColour | quint32(code - 90 + 8));
            else if (code >= 40 && code <= 47)
                m_style = withBackground(m_style, PaletteColour | quint32(code - 40));
            else if (code >= 100 && code <= 107)
                m_style = withBackground(m_style, PaletteColour | quint32(code - 100 + 8));
            // Blinking, fonts, frames and the like: not shown.
            break;
        }
    }
}

QString terminalPlainText(const QStringList &chunks)
{
    TerminalText terminal;
    for (const QString &chunk : chunks)
        terminal.write(chunk);
    return terminal.takeFinished().text + terminal.currentLine();
}
