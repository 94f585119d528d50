#include "widgets/ConsoleFindBar.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>

#include <algorithm>

TextMatch findInText(const QString &text, const QString &needle, qsizetype selectionStart,
                     qsizetype selectionEnd, bool backward)
{
    if (needle.isEmpty() || text.isEmpty())
        return {};
    selectionStart = std::clamp<qsizetype>(selectionStart, 0, text.size());
    selectionEnd = std::clamp<qsizetype>(selectionEnd, selectionStart, text.size());
    qsizetype index = -1;
    if (backward) {
        if (selectionStart > 0)
            index = text.lastIndexOf(needle, selectionStart - 1, Qt::CaseInsensitive);
        if (index < 0)
            index = text.lastIndexOf(needle, -1, Qt::CaseInsensitive);
    } else {
        index = text.indexOf(needle, selectionEnd, Qt::CaseInsensitive);
        if (index < 0)
            index = text.indexOf(needle, 0, Qt::CaseInsensitive);
    }
    if (index < 0)
        return {};
    return {index, needle.size()};
}

ConsoleFindBar::ConsoleFindBar(QPlainTextEdit *console, QWidget *parent)
    : QWidget(parent),
      m_console(console),
      m_field(new QLineEdit(this)),
      m_previous(new QToolButton(this)),
      m_next(new QToolButton(this)),
      m_done(new QToolButton(this)),
      m_status(new QLabel(this))
{
    setObjectName(QStringLiteral("consoleFindBar"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_field->setPlaceholderText(tr("Find"));
    m_field->setAccessibleName(tr("Find"));
    m_previous->setAccessibleName(tr("Find Previous"));
    m_next->setAccessibleName(tr("Find Next"));
    m_field->setClearButtonEnabled(true);
    // Qt's clear button is a bare icon, nameless to a screen reader.
    for (auto *clear : m_field->findChildren<QToolButton *>(Qt::FindDirectChildrenOnly)) {
        clear->setAccessibleName(tr("Clear"));
        clear->setToolTip(tr("Clear"));
    }
    m_previous->setArrowType(Qt::LeftArrow);
    m_previous->setToolTip(tr("Find Previous"));
    m_next->setArrowType(Qt::RightArrow);
    m_next->setToolTip(tr("Find Next"));
    m_done->setText(tr("Done"));
    layout->addWidget(m_field, 1);
    layout->addWidget(m_previous);
    layout->addWidget(m_next);
    layout->addWidget(m_status);
    layout->addWidget(m_done);

    connect(m_previous, &QToolButton::clicked, this, &ConsoleFindBar::findPrevious);
    connect(m_next, &QToolButton::clicked, this, &ConsoleFindBar::findNext);
    connect(m_done, &QToolButton::clicked, this, &ConsoleFindBar::closeBar);
    // Typing searches as it goes, keeping the match that grows under the
    // cursor rather than jumping to the next one.
    connect(m_field, &QLineEdit::textEdited, this, [this] { find(false, true); });
    m_field->installEventFilter(this);
    hide();
}

void ConsoleFindBar::showFindBar()
{
    show();
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

bool ConsoleFindBar::findNext()
{
    return find(false, false);
}

bool ConsoleFindBar::findPrevious()
{
    return find(true, false);
}

void ConsoleFindBar::useSelectionForFind()
{
    if (!m_console)
        return;
    QString selected = m_console->textCursor().selectedText();
    // Selections separate lines with U+2029; the search text wants '\n'.
    selected.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    if (!selected.isEmpty())
        setFindString(selected);
}

void ConsoleFindBar::jumpToSelection()
{
    if (m_console)
        m_console->ensureCursorVisible();
}

QString ConsoleFindBar::findString() const
{
    return m_field->text();
}

void ConsoleFindBar::setFindString(const QString &text)
{
    m_field->setText(text);
    m_status->clear();
}

bool ConsoleFindBar::find(bool backward, bool fromSelectionStart)
{
    if (!m_console)
        return false;
    if (findString().isEmpty()) {
        // Nothing to look for yet: ask for it.
        m_status->clear();
        showFindBar();
        return false;
    }
    QTextCursor cursor = m_console->textCursor();
    const qsizetype start = cursor.selectionStart();
    const qsizetype end = fromSelectionStart ? start : cursor.selectionEnd();
    const TextMatch match =
        findInText(m_console->toPlainText(), findString(), start, end, backward);
    if (!match.found()) {
        m_status->setText(tr("Not found"));
        QApplication::beep();
        return false;
    }
    m_status->clear();
    cursor.setPosition(static_cast<int>(match.start));
    cursor.setPosition(static_cast<int>(match.start + match.length), QTextCursor::KeepAnchor);
    m_console->setTextCursor(cursor);
    m_console->ensureCursorVisible();
    return true;
}

void ConsoleFindBar::closeBar()
{
    hide();
    if (m_console)
        m_console->setFocus(Qt::OtherFocusReason);
}

bool ConsoleFindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            find(key->modifiers().testFlag(Qt::ShiftModifier), false);
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            closeBar();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
