#include "widgets/MessageBar.h"

#include "widgets/AccessibleRoles.h"

#include <QAccessible>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

MessageBar::MessageBar(QWidget *parent)
    : QFrame(parent), m_icon(new QLabel(this)), m_text(new QLabel(this)),
      m_detail(new QLabel(this)), m_close(new QToolButton(this))
{
    AccessibleRoles::install();
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    // Set apart from the console by the palette's alternate base, which
    // stays readable in light and dark schemes alike.
    setBackgroundRole(QPalette::AlternateBase);

    m_icon->setAlignment(Qt::AlignTop);
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_detail->setWordWrap(true);
    m_detail->setTextFormat(Qt::PlainText);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_detail->setFont(mono);
    m_detail->setForegroundRole(QPalette::PlaceholderText);

    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::StrongFocus);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_text);
    texts->addWidget(m_detail);
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(8, 6, 6, 6);
    m_row->addWidget(m_icon);
    m_row->addLayout(texts, 1);
    m_row->addWidget(m_close, 0, Qt::AlignTop);

    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        emit dismissed();
    });
    retranslate();
    hide();
}

void MessageBar::showMessage(const QString &text, const QString &detail, const QString &actionTitle)
{
    // The icons come from the desktop's icon theme, whose first lookup
    // takes milliseconds a start-up should not spend on a bar it may never
    // show.
    if (m_icon->pixmap().isNull()) {
        const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
        m_icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
        m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    }
    m_text->setText(text);
    m_detail->setText(detail);
    m_detail->setVisible(!detail.isEmpty());
    // The button is made with the first action: before that it would be a
    // control without a name, even if never shown.
    if (!m_action && !actionTitle.isEmpty()) {
        m_action = new QPushButton(this);
        m_action->setFocusPolicy(Qt::StrongFocus);
        m_row->insertWidget(m_row->indexOf(m_close), m_action, 0, Qt::AlignVCenter);
        setTabOrder(m_action, m_close);
        connect(m_action, &QPushButton::clicked, this, &MessageBar::actionTriggered);
    }
    if (m_action) {
        // A hidden button keeps its last title, so it is never nameless.
        if (!actionTitle.isEmpty())
            m_action->setText(actionTitle);
        m_action->setVisible(!actionTitle.isEmpty());
    }
    setAccessibleDescription(detail.isEmpty() ? text : text + QLatin1Char('\n') + detail);
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::clear()
{
    hide();
}

QString MessageBar::text() const
{
    return m_text->text();
}

QString MessageBar::detail() const
{
    return m_detail->text();
}

void MessageBar::keyPressEvent(QKeyEvent *event)
{
    // Escape while a button of the bar has the focus closes it.
    if (event->key() == Qt::Key_Escape) {
        m_close->click();
        return;
    }
    QFrame::keyPressEvent(event);
}

void MessageBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
}

void MessageBar::retranslate()
{
    setAccessibleName(tr("Problem"));
    m_close->setToolTip(tr("Close"));
    m_close->setAccessibleName(tr("Close"));
    m_icon->setAccessibleName(tr("Warning"));
}
