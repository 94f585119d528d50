#include "widgets/AlertSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace {
QList<QPointer<AlertSheet>> &registry()
{
    static QList<QPointer<AlertSheet>> sheets;
    return sheets;
}
} // namespace

AlertSheet::AlertSheet(QWidget *parent) : QMessageBox(parent)
{
    setIcon(QMessageBox::Warning);
    // The icon says what kind of alert this is; a screen reader says it too.
    for (QLabel *label : findChildren<QLabel *>()) {
        if (!label->pixmap().isNull())
            label->setAccessibleName(tr("Warning"));
    }
    // The message leads in bold, as the platform's alerts have it.
    if (auto *message = findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = message->font();
        bold.setBold(true);
        message->setFont(bold);
    }
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose, false);
    connect(this, &QMessageBox::buttonClicked, this,
            [this](QAbstractButton *button) { finish(returnCodeOf(button)); });
    // Escape or the window manager's close button: the platform ends a sheet
    // with the cancel answer of no particular button.
    connect(this, &QDialog::rejected, this, [this] { finish(StopReturn); });
}

void AlertSheet::setInformativeText(const QString &text)
{
    QMessageBox::setInformativeText(text);
    // Qt sizes the box by its texts alone, which made a short question a
    // narrow column of wrapped lines; about fifty characters a line read
    // better, in every language.
    if (auto *label = findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")))
        label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 50);
}

void AlertSheet::addButtonWithTitle(const QString &title)
{
    // ActionRole keeps Qt from reordering the buttons by role.
    QPushButton *button = addButton(title, QMessageBox::ActionRole);
    if (m_buttons.isEmpty())
        setDefaultButton(button);
    m_buttons.append(button);
}

void AlertSheet::setCountdown(int seconds, std::function<QString(int)> text,
                              std::function<void()> tick)
{
    m_countdown = seconds;
    m_countdownText = std::move(text);
    m_tick = std::move(tick);
    setInformativeText(m_countdownText(m_countdown));
    if (!m_timer) {
        m_timer = new QTimer(this);
        m_timer->setInterval(1000);
        // The user reads whole seconds; a coarse timer may run up to 5% fast.
        m_timer->setTimerType(Qt::PreciseTimer);
        connect(m_timer, &QTimer::timeout, this, &AlertSheet::countDown);
    }
}

void AlertSheet::stopCountdown()
{
    if (m_timer)
        m_timer->stop();
}

void AlertSheet::countDown()
{
    // Ending runs the did-end handler, which may free this sheet: nothing of
    // it is touched after that.
    const auto tick = m_tick;
    m_countdown -= 1;
    setInformativeText(m_countdownText(m_countdown));
    if (m_countdown == 0) {
        stopCountdown();
        endSheet();
    }
    if (tick)
        tick();
}

void AlertSheet::beginSheet(QWidget *window, std::function<void(int)> didEnd)
{
    m_didEnd = std::move(didEnd);
    m_ended = false;
    // The sheet belongs to the window it was made for (its parent); without
    // one it blocks the whole application instead.
    Q_ASSERT(!window || window == parentWidget());
    setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
    registry().append(this);
    open();
    if (m_timer)
        m_timer->start();
}

void AlertSheet::endSheet(int returnCode)
{
    finish(returnCode);
    hide();
}

int AlertSheet::returnCodeOf(QAbstractButton *button) const
{
    const int index = m_buttons.indexOf(button);
    return index < 0 ? 0 : FirstButtonReturn + index;
}

QAbstractButton *AlertSheet::buttonFor(int returnCode) const
{
    const int index = returnCode - FirstButtonReturn;
    return index >= 0 && index < m_buttons.size() ? m_buttons.at(index) : nullptr;
}

QStringList AlertSheet::buttonTitles() const
{
    QStringList titles;
    for (auto *button : m_buttons)
        titles.append(button->text());
    return titles;
}

QList<AlertSheet *> AlertSheet::openSheets()
{
    QList<AlertSheet *> result;
    auto &sheets = registry();
    sheets.removeAll(nullptr);
    for (const auto &sheet : sheets) {
        if (!sheet->m_ended)
            result.append(sheet.data());
    }
    return result;
}

void AlertSheet::finish(int returnCode)
{
    if (m_ended)
        return;
    m_ended = true;
    registry().removeAll(this);
    // The handler may free this sheet or open the next one.
    auto handler = std::move(m_didEnd);
    m_didEnd = nullptr;
    if (handler)
        handler(returnCode);
}
