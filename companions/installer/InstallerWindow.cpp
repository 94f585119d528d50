#include "companions/installer/InstallerWindow.h"

#include "companions/installer/InstallCommands.h"
#include "ui_Installer.h"
#include "widgets/Contrast.h"
#include "widgets/Mnemonics.h"

#include <QAccessibleWidget>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QTextCursor>
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
                                 QString cmakeProgram, std::unique_ptr<PackageInstaller> installer,
                                 QWidget *parent)
    : QWidget(parent),
      m_ui(std::make_unique<Ui::Installer>()),
      m_platform(platform),
      m_searchPath(std::move(searchPath)),
      m_cmakeProgram(std::move(cmakeProgram)),
      m_installer(installer ? std::move(installer)
                            : PackageInstaller::forThisSystem(m_cmakeProgram))
{
    static const bool roleInstalled = [] {
        QAccessible::installFactory(accessibleWindow);
        return true;
    }();
    Q_UNUSED(roleInstalled)
    m_ui->setupUi(this);
    Mnemonics::applyTo(QList<QAbstractButton *>{m_ui->copyButton, m_ui->checkAgainButton,
                                                m_ui->refreshButton, m_ui->cancelButton,
                                                m_ui->installButton, m_ui->closeButton});
    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &InstallerWindow::escape);
    // No default button outside a dialog: Return installs, as the window's
    // main action, wherever the focus is.
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *installKey = new QShortcut(QKeySequence(key), this);
        connect(installKey, &QShortcut::activated, this, &InstallerWindow::install);
    }
    m_ui->commandText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->outputText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->outputText->hide();
    m_ui->componentTable->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_ui->componentTable->horizontalHeader()->setStretchLastSection(true);

    connect(m_ui->copyButton, &QPushButton::clicked, this, &InstallerWindow::copyCommand);
    connect(m_ui->checkAgainButton, &QPushButton::clicked, this, &InstallerWindow::checkAgain);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->installButton, &QPushButton::clicked, this, &InstallerWindow::install);
    connect(m_ui->refreshButton, &QPushButton::clicked, this, &InstallerWindow::refreshAndInstall);
    connect(m_ui->cancelButton, &QPushButton::clicked, this, &InstallerWindow::cancel);

    connect(m_installer.get(), &PackageInstaller::progressChanged, this, [this](int percent) {
        m_ui->progressBar->setRange(0, percent < 0 ? 0 : 100); // an empty range is busy
        m_ui->progressBar->setValue(std::max(percent, 0));
    });
    connect(m_installer.get(), &PackageInstaller::statusChanged, m_ui->statusLabel,
            &QLabel::setText);
    connect(m_installer.get(), &PackageInstaller::cancellableChanged, this,
            [this](bool cancellable) {
                m_cancellable = cancellable;
                updateControls();
            });
    connect(m_installer.get(), &PackageInstaller::outputReceived, this, [this](const QString &text) {
        m_ui->outputText->show();
        m_ui->outputText->moveCursor(QTextCursor::End);
        m_ui->outputText->insertPlainText(text);
    });
    connect(m_installer.get(), &PackageInstaller::finished, this, &InstallerWindow::finishInstall);

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
    if (m_thread || m_installing)
        return;
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
    showChecking();
    m_thread->start();
}

bool InstallerWindow::isChecking() const
{
    return m_thread != nullptr;
}

bool InstallerWindow::isInstalling() const
{
    return m_installing;
}

void InstallerWindow::install()
{
    if (m_ui->installButton->isVisible() && m_ui->installButton->isEnabled())
        startInstall(false);
}

void InstallerWindow::refreshAndInstall()
{
    if (m_ui->refreshButton->isVisible() && m_ui->refreshButton->isEnabled())
        startInstall(true);
}

void InstallerWindow::cancel()
{
    if (m_installing && m_cancellable)
        m_installer->cancel();
}

void InstallerWindow::startInstall(bool refreshFirst)
{
    m_installing = true;
    m_cancellable = false;
    m_outcome.reset();
    m_ui->progressBar->setRange(0, 0);
    m_ui->statusLabel->clear();
    m_ui->outputText->clear();
    updateControls();
    m_installer->install(ComponentChecks::missingComponents(m_results), refreshFirst);
}

void InstallerWindow::finishInstall(const InstallOutcome &outcome)
{
    m_installing = false;
    m_cancellable = false;
    m_outcome = outcome;
    // Whatever happened, the list shows what is there now.
    checkAgain();
}

void InstallerWindow::escape()
{
    if (!m_installing)
        close();
    else
        cancel(); // an installation is not left running by a stray key
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
    updateControls();
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
    updateControls();
}

void InstallerWindow::updateControls()
{
    const bool checking = isChecking();
    const QList<Component> missing = ComponentChecks::missingComponents(m_results);
    const bool installable =
        !checking && !missing.isEmpty() && !m_installer->packagesFor(missing).isEmpty();
    const bool retry = !m_outcome || m_outcome->canRetry;
    const bool offerRefresh = m_outcome && m_outcome->kind == InstallOutcome::Kind::NeedsRefresh;

    m_ui->installButton->setVisible(installable || m_installing);
    m_ui->installButton->setEnabled(installable && retry && !m_installing);
    m_ui->refreshButton->setVisible(installable && offerRefresh && !m_installing);
    m_ui->cancelButton->setVisible(m_installing);
    m_ui->cancelButton->setEnabled(m_cancellable);
    m_ui->progressBar->setVisible(m_installing);
    m_ui->statusLabel->setVisible(m_installing);
    m_ui->checkAgainButton->setEnabled(!checking && !m_installing);

    const bool commands = !checking && !installCommand().isEmpty();
    m_ui->commandText->setVisible(commands);
    m_ui->commandLabel->setVisible(commands);
    m_ui->copyButton->setEnabled(commands);
    m_ui->commandLabel->setText(
        installable ? tr("Or run this in a terminal, then click Check Again:")
                    : tr("To install what is missing, run this in a terminal, then click Check "
                         "Again:"));

    QString message;
    if (checking)
        message = tr("Checking…");
    else if (m_installing)
        message = tr("Installing what is missing. The system may ask for your password.");
    else if (m_outcome)
        message = m_outcome->sentence;
    else if (missing.isEmpty())
        message = tr("Everything ZELMOR Helper needs is installed.");
    else if (installable)
        message = tr("Click Install to install what is missing.");
    m_ui->messageLabel->setText(message);
    m_ui->messageLabel->setVisible(!message.isEmpty());
}
