#include "companions/installer/InstallerWindow.h"

#include "companions/installer/InstallCommands.h"
#include "platform/Contrast.h"
#include "platform/Mnemonics.h"
#include "ui_Installer.h"

#include <QAccessibleWidget>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QEvent>
#include <QHeaderView>
#include <QShortcut>
#include <QThread>

using ComponentChecks::Component;
using ComponentChecks::Result;

namespace {

// The window is a plain widget; to assistive technology it is the
// application's window, not a filler pane.
QAccessibleInterface *accessibleWindow(const QString &className, QObject *object)
{
    if (className == QLatin1String("InstallerWindow"))
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Window);
    return nullptr;
}

} // namespace

InstallerWindow::InstallerWindow(ComponentChecks::Platform platform, QString searchPath,
                                 QString cmakeProgram, QWidget *parent)
    : QWidget(parent),
      m_ui(std::make_unique<Ui::Installer>()),
      m_platform(platform),
      m_searchPath(std::move(searchPath)),
      m_cmakeProgram(std::move(cmakeProgram))
{
    static const bool roleInstalled = [] {
        QAccessible::installFactory(accessibleWindow);
        return true;
    }();
    Q_UNUSED(roleInstalled)
    m_ui->setupUi(this);
    Mnemonics::applyTo(QList<QAbstractButton *>{m_ui->copyButton, m_ui->checkAgainButton,
                                                m_ui->closeButton});
    auto *closeWindow = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(closeWindow, &QShortcut::activated, this, &QWidget::close);
    m_ui->commandText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->componentTable->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_ui->componentTable->horizontalHeader()->setStretchLastSection(true);

    connect(m_ui->copyButton, &QPushButton::clicked, this, &InstallerWindow::copyCommand);
    connect(m_ui->checkAgainButton, &QPushButton::clicked, this, &InstallerWindow::checkAgain);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &QWidget::close);

    checkAgain();
}

InstallerWindow::~InstallerWindow()
{
    // The checks cannot be interrupted, but each tool is given a few seconds
    // at most, so waiting for them is short.
    if (m_thread) {
        m_thread->wait();
        delete m_thread;
    }
}

void InstallerWindow::checkAgain()
{
    if (m_thread)
        return;
    showChecking();
    auto results = std::make_shared<QList<Result>>();
    // The tools run one after another and may each take a moment: off this
    // thread, so the window keeps answering.
    m_thread = QThread::create([results, platform = m_platform, searchPath = m_searchPath,
                                cmake = m_cmakeProgram] {
        *results = ComponentChecks::checkAll(platform, searchPath, cmake);
    });
    connect(m_thread, &QThread::finished, this, [this, results] {
        m_thread->deleteLater();
        m_thread = nullptr;
        showResults(*results);
        emit checksFinished();
    });
    m_thread->start();
}

bool InstallerWindow::isChecking() const
{
    return m_thread != nullptr;
}

QList<Result> InstallerWindow::results() const
{
    return m_results;
}

QString InstallerWindow::installCommand() const
{
    return m_ui->commandText->toPlainText();
}

void InstallerWindow::copyCommand()
{
    if (!installCommand().isEmpty())
        QGuiApplication::clipboard()->setText(installCommand());
}

void InstallerWindow::changeEvent(QEvent *event)
{
    // A switch between light and dark appearance recolours what is missing.
    if (event->type() == QEvent::PaletteChange && !isChecking()) {
        for (int row = 0; row < m_results.size() && row < m_ui->componentTable->rowCount(); ++row) {
            if (QTableWidgetItem *item = m_ui->componentTable->item(row, 1); item && !m_results.at(row).found)
                item->setForeground(Contrast::warningText(m_ui->componentTable->palette()));
        }
    }
    QWidget::changeEvent(event);
}

void InstallerWindow::showChecking()
{
    m_ui->checkAgainButton->setEnabled(false);
    m_ui->copyButton->setEnabled(false);
    m_ui->commandLabel->setText(tr("Checking…"));
    const QList<Component> components = ComponentChecks::componentsFor(m_platform);
    m_ui->componentTable->setRowCount(int(components.size()));
    for (int row = 0; row < components.size(); ++row) {
        m_ui->componentTable->setItem(
            row, 0, new QTableWidgetItem(ComponentChecks::displayName(components.at(row))));
        m_ui->componentTable->setItem(row, 1, new QTableWidgetItem(tr("Checking…")));
        m_ui->componentTable->setItem(row, 2, new QTableWidgetItem());
    }
}

void InstallerWindow::showResults(const QList<Result> &results)
{
    m_results = results;
    m_ui->componentTable->setRowCount(int(results.size()));
    for (int row = 0; row < results.size(); ++row) {
        const Result &result = results.at(row);
        QString status;
        if (!result.found)
            status = tr("Missing");
        else if (result.version.isEmpty())
            status = tr("Found");
        else
            status = tr("Found, version %1").arg(result.version);
        auto *statusItem = new QTableWidgetItem(status);
        if (!result.found)
            statusItem->setForeground(Contrast::warningText(m_ui->componentTable->palette()));
        m_ui->componentTable->setItem(
            row, 0, new QTableWidgetItem(ComponentChecks::displayName(result.component)));
        m_ui->componentTable->setItem(row, 1, statusItem);
        // cmake is looked for at one path only; saying which helps a user
        // whose cmake is installed elsewhere.
        const QString location = result.found ? result.program
                                 : result.component == Component::CMake
                                     ? tr("not at %1").arg(m_cmakeProgram)
                                     : QString();
        m_ui->componentTable->setItem(row, 2, new QTableWidgetItem(location));
    }

    const QStringList commands = InstallCommands::commandsFor(
        m_platform, ComponentChecks::missingComponents(results), m_cmakeProgram);
    m_ui->commandText->setPlainText(commands.join(QLatin1Char('\n')));
    m_ui->commandText->setVisible(!commands.isEmpty());
    m_ui->copyButton->setEnabled(!commands.isEmpty());
    m_ui->checkAgainButton->setEnabled(true);
    m_ui->commandLabel->setText(
        commands.isEmpty()
            ? tr("Everything ZELMOR Helper needs is installed.")
            : tr("To install what is missing, run this in a terminal, then click Check Again:"));
}
