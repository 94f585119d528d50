#include "app/AboutController.h"

#include "BuildConfig.h"
#include "platform/Bundle.h"
#include "ui_About.h"
#include "widgets/AccessibleRoles.h"
#include "widgets/Popover.h"

#include <QApplication>
#include <QShortcut>
#include <QTimer>

AboutController::AboutController(QWidget *parentWindow, QObject *parent)
    : QObject(parent), m_ui(std::make_unique<Ui::About>())
{
    AccessibleRoles::install();
    auto *window = new QWidget(parentWindow, Qt::Window);
    m_ui->setupUi(window);
    m_window = window;
    auto *closeWindow = new QShortcut(QKeySequence(Qt::Key_Escape), window);
    connect(closeWindow, &QShortcut::activated, window, &QWidget::close);
    creator = m_ui->creator;
    m_popoverMe = m_ui->popoverMe;

    const auto info = Bundle::readInfo(Bundle::mainBundlePath());
    const QString version = info && !info->version.isEmpty() ? info->version
                                                             : QStringLiteral(ZELMOR_VERSION);
    m_ui->appVersion->setText(tr("Version %1").arg(version));
    const QIcon icon = QApplication::windowIcon();
    if (icon.isNull())
        m_ui->appIcon->hide();
    else
        m_ui->appIcon->setPixmap(icon.pixmap(64, 64));

    windowDidLoad();
}

AboutController::~AboutController()
{
    // Without a parent window nothing else would free it.
    if (m_window && !m_window->parentWidget())
        delete m_window;
}

void AboutController::timeToload()
{
    QTimer::singleShot(500, this, &AboutController::onMe);
}

void AboutController::onMe()
{
    if (!m_popoverMe)
        return;
    QLabel *anchor = creator;
    m_popoverMe->showRelativeToRect(anchor ? anchor->rect() : QRect(), anchor, Popover::MaxYEdge);
}

void AboutController::showMe(QObject *sender)
{
    Q_UNUSED(sender)
}

void AboutController::showWindow(QObject *sender)
{
    Q_UNUSED(sender)
    if (!m_window)
        return;
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}
