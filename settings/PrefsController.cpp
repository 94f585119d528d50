#include "settings/PrefsController.h"

#include "ui_Preferences.h"

#include "platform/Bundle.h"
#include "platform/Relaunch.h"
#include "settings/LoginAgent.h"
#include "settings/PathRules.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AccessibleRoles.h"
#include "widgets/AlertSheet.h"
#include "widgets/FolderChoice.h"
#include "widgets/Mnemonics.h"
#include "widgets/Popover.h"

#include <QActionGroup>
#include <QKeySequence>
#include <QLineEdit>
#include <QShortcut>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QToolBar>
#include <QToolButton>

namespace {

Qt::CheckState checkStateOf(int value)
{
    return value == 0 ? Qt::Unchecked : Qt::Checked;
}

} // namespace

PrefsController::PrefsController(QWidget *mainWindow, QObject *parent)
    : QObject(parent), mainWindow(mainWindow), m_ui(std::make_unique<Ui::Preferences>())
{
    // A child window of the main window, so closing the main window alone
    // still ends the application.
    prefsWindow = new QMainWindow(mainWindow, Qt::Window);
    m_window = prefsWindow;
    m_ui->setupUi(prefsWindow);

    toolbarPaths = m_ui->toolbarPaths;
    toolbarSwitch = m_ui->toolbarSwitch;
    pathsView = m_ui->pathsView;
    switchView = m_ui->switchView;
    pathsWorkspace = m_ui->pathsWorkspace;
    pathsOutput = m_ui->pathsOutput;
    rootText = m_ui->rootText;
    outputText = m_ui->outputText;
    browserRootButton = m_ui->browserRootButton;
    browserOutputButton = m_ui->browserOutputButton;
    defaultToZELMORCheckbox = m_ui->defaultToZELMORCheckbox;
    helpButton = m_ui->helpButton;
    switchResetAll = m_ui->switchResetAll;
    switchResetWarnings = m_ui->switchResetWarnings;
    enableLogCheckBox = m_ui->enableLogCheckBox;
    enableStartup = m_ui->enableStartup;
    openquitWithHelperCheckBox = m_ui->openquitWithHelperCheckBox;
    cautionText = m_ui->cautionText;

    popover = m_ui->popover;
    pathsPopMessage = m_ui->pathsPopMessage;

    // The page buttons show which page is up, take the keyboard focus like
    // any other control, and Ctrl+Page Up / Page Down turn the pages. To
    // assistive technology they are page tabs, not check boxes.
    auto *pages = new QActionGroup(prefsWindow);
    for (QAction *page : {toolbarPaths, toolbarSwitch}) {
        page->setCheckable(true);
        pages->addAction(page);
        if (auto *button = qobject_cast<QAbstractButton *>(m_ui->toolbar->widgetForAction(page))) {
            button->setFocusPolicy(Qt::StrongFocus);
            AccessibleRoles::markAsPageTab(button);
        }
    }
    // The toolbar's own button for pages that do not fit a narrow window.
    for (auto *more : m_ui->toolbar->findChildren<QToolButton *>(Qt::FindDirectChildrenOnly)) {
        if (!more->defaultAction())
            more->setAccessibleName(tr("More Pages"));
    }
    connect(toolbarPaths, &QAction::triggered, this, &PrefsController::pathViewButton);
    connect(toolbarSwitch, &QAction::triggered, this, &PrefsController::switchViewButton);
    auto *previousPage = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), prefsWindow);
    connect(previousPage, &QShortcut::activated, this, [this] { turnToPage(toolbarPaths, pathsView); });
    auto *nextPage = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), prefsWindow);
    connect(nextPage, &QShortcut::activated, this, [this] { turnToPage(toolbarSwitch, switchView); });
    auto *closeWindow = new QShortcut(QKeySequence(Qt::Key_Escape), prefsWindow);
    connect(closeWindow, &QShortcut::activated, prefsWindow, &QWidget::close);
    connect(helpButton, &QPushButton::clicked, this, &PrefsController::askforHelp);
    // User edits only: filling the fields in code must not persist a value
    // that is still only a registered default. The check boxes listen to
    // `toggled`, which a click and an accessibility Toggle both send;
    // filling the window blocks it.
    connect(rootText, &QLineEdit::textEdited, this, [this] { controlTextDidChange(rootText); });
    connect(outputText, &QLineEdit::textEdited, this, [this] { controlTextDidChange(outputText); });
    connect(defaultToZELMORCheckbox, &QCheckBox::toggled, this,
            &PrefsController::defaultToZELMORCheckBox);
    connect(browserRootButton, &QPushButton::clicked, this, &PrefsController::browserRoot);
    connect(browserOutputButton, &QPushButton::clicked, this, &PrefsController::browserOutput);
    connect(enableLogCheckBox, &QCheckBox::toggled, this, &PrefsController::logCheckBox);
    connect(openquitWithHelperCheckBox, &QCheckBox::toggled, this,
            &PrefsController::openquitWithHelper);
    connect(enableStartup, &QCheckBox::toggled, this, &PrefsController::enableStartupFunction);
    connect(switchResetWarnings, &QPushButton::clicked, this, &PrefsController::resetWarnings);
    connect(switchResetAll, &QPushButton::clicked, this, &PrefsController::resetAll);

    awakeFromNib();
    pathViewButton();
}

PrefsController::~PrefsController()
{
    // The main window owns its child windows; without one nothing else
    // would free it.
    if (m_window && !m_window->parentWidget())
        delete m_window.data();
}

void PrefsController::awakeFromNib()
{
    prefsWindow->setWindowTitle(tr("Preferences"));

    toolbarPaths->setText(tr("Paths"));
    pathsWorkspace->setText(tr("Workspace"));
    pathsOutput->setText(tr("Output"));
    defaultToZELMORCheckbox->setText(
        tr("Use 'ZELMOR' and 'Output' as default name of workspace and output folder"));
    pathsPopMessage->setText(
        tr("If you want to use 'ZELMOR' as the default name of workspace  and 'Output' as the "
           "name of output folder, you just need to choose the parent folder of them. "
           "Otherwise, you need to choose the complete path."));
    browserRootButton->setText(tr("Select"));
    browserOutputButton->setText(tr("Select"));
    toolbarSwitch->setText(tr("Switches"));
    switchResetAll->setText(tr("Reset All"));
    switchResetWarnings->setText(tr("Reset Warnings"));
    enableLogCheckBox->setText(tr("Enable Log"));
    enableStartup->setText(tr("Enable ZELMOR Helper Statusbar App Statup at Login"));
    openquitWithHelperCheckBox->setText(tr("Quit statusbar app with ZELMOR Helper"));
    Mnemonics::applyTo(QList<QAbstractButton *>{browserRootButton, browserOutputButton,
                                                defaultToZELMORCheckbox, enableLogCheckBox,
                                                enableStartup, openquitWithHelperCheckBox,
                                                switchResetWarnings, switchResetAll});

    // What the window shows of the settings is not a change of them.
    const QSignalBlocker blockDefaultName(defaultToZELMORCheckbox);
    const QSignalBlocker blockLog(enableLogCheckBox);
    const QSignalBlocker blockQuit(openquitWithHelperCheckBox);
    const QSignalBlocker blockStartup(enableStartup);

    auto &store = SettingsStore::standard();
    rootDirectory = store.stringValue(SettingsKeys::Workspace);
    outputDirectory = store.stringValue(SettingsKeys::Output);
    rootText->setText(rootDirectory);
    outputText->setText(outputDirectory);

    const int defaultName = store.intValue(SettingsKeys::DefaultNameZELMOR);
    defaultToZELMORCheckbox->setCheckState(checkStateOf(defaultName));
    enableLogCheckBox->setCheckState(checkStateOf(store.intValue(SettingsKeys::Log)));
    if (defaultName == 1) {
        rootText->setReadOnly(true);
        outputText->setReadOnly(true);
    }

    openquitWithHelperCheckBox->setCheckState(
        checkStateOf(store.intValue(SettingsKeys::QuitStatusbarApp)));

    // The file itself is the state: one made by hand counts as well.
    enableStartup->setCheckState(LoginAgent::isInstalled() ? Qt::Checked : Qt::Unchecked);
}

void PrefsController::showWindow()
{
    prefsWindow->show();
    prefsWindow->raise();
    prefsWindow->activateWindow();
}

void PrefsController::askforHelp()
{
    popover->showRelativeToRect(helpButton->rect(), helpButton, Popover::MaxXEdge);
}

void PrefsController::pathViewButton()
{
    pathsView->show();
    switchView->hide();
    toolbarPaths->setChecked(true);
}

void PrefsController::switchViewButton()
{
    pathsView->hide();
    switchView->show();
    toolbarSwitch->setChecked(true);
}

void PrefsController::turnToPage(QAction *page, QWidget *view)
{
    page->trigger();
    // The keyboard goes along to the page, to its first control.
    for (QWidget *w = view->nextInFocusChain(); w && w != view; w = w->nextInFocusChain()) {
        if (view->isAncestorOf(w) && w->isVisible() && w->isEnabled()
            && (w->focusPolicy() & Qt::TabFocus)) {
            w->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void PrefsController::controlTextDidChange(QLineEdit *field)
{
    if (field == rootText)
        SettingsStore::standard().setObject(SettingsKeys::Workspace, rootText->text());
    else if (field == outputText)
        SettingsStore::standard().setObject(SettingsKeys::Output, outputText->text());
}

void PrefsController::defaultToZELMORCheckBox()
{
    auto &store = SettingsStore::standard();
    const int state = defaultToZELMORCheckbox->checkState() == Qt::Checked ? 1 : 0;
    store.setObject(SettingsKeys::DefaultNameZELMOR, state);
    if (state != 1) {
        outputText->setReadOnly(false);
        rootText->setReadOnly(false);
        return;
    }
    outputText->setReadOnly(true);
    rootText->setReadOnly(true);

    const QString root = rootText->text();
    const QString output = outputText->text();
    if (const auto workspace = PathRules::withDefaultName(PathRules::Folder::Workspace, root)) {
        rootText->setText(*workspace);
        store.setObject(SettingsKeys::Workspace, rootText->text());
    }
    if (const auto out = PathRules::withDefaultName(PathRules::Folder::Output, output)) {
        outputText->setText(*out);
        store.setObject(SettingsKeys::Output, outputText->text());
    }
}

void PrefsController::browserRoot()
{
    openFolderChooser(PathRules::Folder::Workspace);
}

void PrefsController::browserOutput()
{
    openFolderChooser(PathRules::Folder::Output);
}

void PrefsController::openFolderChooser(PathRules::Folder which)
{
    // Read at the click: what counts is the switch as it was when the user
    // asked for the chooser, not when the chooser ends.
    const int defaultName = SettingsStore::standard().intValue(SettingsKeys::DefaultNameZELMOR);
    const QString key = PathRules::settingsKey(which);
    QPointer<PrefsController> self(this);
    // The preferences ask for the parent of their folders, as the help text
    // says, and that is the folder the chooser shows: an entry highlighted
    // inside it is not what the user is choosing.
    FolderChoice::choose(
        prefsWindow, tr("Select"), FolderChoice::Answer::ShownFolder,
        SettingsStore::standard().stringValue(key),
        PathRules::appendedByChooser(which, defaultName),
        [self, which, key, defaultName](const std::optional<QString> &folder) {
            if (!self || !folder || folder->isEmpty())
                return;
            self->pathStr = PathRules::fromChosenFolder(which, *folder, defaultName);
            SettingsStore::standard().setObject(key, self->pathStr);
            (which == PathRules::Folder::Workspace ? self->rootText : self->outputText)
                ->setText(self->pathStr);
        });
}

void PrefsController::logCheckBox()
{
    SettingsStore::standard().setObject(SettingsKeys::Log,
                                        enableLogCheckBox->checkState() == Qt::Checked ? 1 : 0);
}

void PrefsController::openquitWithHelper()
{
    // A string, never a number: termination compares it with the string "1".
    switch (openquitWithHelperCheckBox->checkState()) {
    case Qt::Checked:
        SettingsStore::standard().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("1"));
        break;
    case Qt::Unchecked:
        SettingsStore::standard().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("0"));
        break;
    default:
        break;
    }
}

void PrefsController::enableStartupFunction()
{
    switch (enableStartup->checkState()) {
    case Qt::Checked:
        installStatusDaemon();
        break;
    case Qt::Unchecked:
        unInstallStatusDaemon();
        break;
    default:
        break;
    }
}

void PrefsController::installStatusDaemon()
{
    LoginAgent::install();
}

void PrefsController::unInstallStatusDaemon()
{
    LoginAgent::uninstall();
}

void PrefsController::resetWarnings()
{
    // The string "1": the next start shows the first-launch sheet again and
    // resets both paths, on purpose.
    SettingsStore::standard().setObject(SettingsKeys::FirstLaunch, QStringLiteral("1"));
}

void PrefsController::resetAll()
{
    // The domain is removed from outside the process, by the same command a
    // user would type; the effect is only promised after the restart.
    // Not owned by the window: a restart right away must not kill the child
    // on its way out.
    auto *task = new QProcess;
    task->setProgram(QStringLiteral("/bin/bash"));
    task->setArguments({QStringLiteral("-c"),
                        QStringLiteral("defaults delete ") + Bundle::mainBundleIdentifier()});
    connect(task, &QProcess::readyReadStandardOutput, task,
            [task] { task->readAllStandardOutput(); });
    connect(task, &QProcess::readyReadStandardError, task,
            [task] { task->readAllStandardError(); });
    connect(task, &QProcess::finished, task, &QObject::deleteLater);
    connect(task, &QProcess::errorOccurred, task, [task](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            task->deleteLater();
    });
    task->start();

    rootText->setEnabled(false);
    outputText->setEnabled(false);
    browserOutputButton->setEnabled(false);
    browserRootButton->setEnabled(false);
    defaultToZELMORCheckbox->setEnabled(false);
    enableLogCheckBox->setEnabled(false);
    enableStartup->setEnabled(false);
    openquitWithHelperCheckBox->setEnabled(false);

    const QString caution = tr("* Please restart ZELMOR Helper to take effect(s).");
    cautionText->setText(caution);
    if (mainWindow)
        mainWindow->setWindowTitle(caution);

    settingChanged();
}

QString PrefsController::settingChangedText(int count)
{
    return QStringLiteral("%1\n%2\n \n%3...")
        .arg(tr("ZELMOR Helper must restart to take effects of changes."),
             tr("You can restart the application later through the menu bar item."),
             // The key keeps the "%d" placeholder that the workflow's countdown
             // (and so every translation of it) uses.
             tr("Count down %d secs").replace(QLatin1String("%d"), QString::number(count)));
}

void PrefsController::settingChanged()
{
    if (iAlert)
        iAlert->deleteLater();
    iAlert = new AlertSheet(prefsWindow);
    iAlert->addButtonWithTitle(tr("Restart"));
    iAlert->addButtonWithTitle(tr("Later"));
    iAlert->setMessageText(tr("Notice"));
    iAlert->setCountdown(10, &PrefsController::settingChangedText,
                         [this] { timeCountdownOfSettingChanged(); });
    iAlert->beginSheet(prefsWindow, [this](int returnCode) {
        alertDidEndForSettingChanged(returnCode);
    });
}

QTimer *PrefsController::timer() const
{
    return iAlert ? iAlert->countdownTimer() : nullptr;
}

qint32 PrefsController::countdown() const
{
    return iAlert ? iAlert->countdown() : 0;
}

void PrefsController::timeCountdownOfSettingChanged()
{
    // The sheet has counted and rewritten its text; at 0 it has ended.
    if (countdown() == 0)
        Relaunch::relaunchAfterDelay(2.0f);
}

void PrefsController::alertDidEndForSettingChanged(int returnCode)
{
    if (returnCode == AlertSheet::FirstButtonReturn) {
        // The relaunch ends the process; the countdown needs no stopping.
        Relaunch::relaunchAfterDelay(2.0f);
        return;
    }
    if (iAlert) {
        iAlert->stopCountdown();
        iAlert->orderOut();
    }
}
