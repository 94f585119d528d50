#include "app/ZELMORHelperAppDelegate.h"

#include "BuildConfig.h"
#include "platform/Bundle.h"
#include "platform/CompanionChannel.h"
#include "settings/PathRules.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "ui_firstLaunch.h"
#include "ui_MainWindow.h"
#include "ui_wizard.h"
#include "widgets/FolderChoice.h"
#include "widgets/Mnemonics.h"
#include "widgets/Popover.h"
#include "workflow/MainWindow.h"

#include <QMenu>
#include <QToolButton>

#include <cstdio>

namespace {

// The two first-launch sheets end only through their own buttons, like a
// sheet without a cancel button: Escape and the window's close button do
// nothing, so "First Launch" and "Initialization" are cleared only by OK.
// Quitting the application takes them down with it, their settings as they
// are.
class Sheet : public QDialog
{
public:
    Sheet(ZELMORHelperAppDelegate *delegate, QWidget *parent) : QDialog(parent), m_delegate(delegate)
    {
    }
    void reject() override {}

protected:
    void closeEvent(QCloseEvent *event) override
    {
        if (m_delegate && m_delegate->isTerminating())
            QWidget::closeEvent(event);
        else
            QDialog::closeEvent(event);
    }

private:
    QPointer<ZELMORHelperAppDelegate> m_delegate;
};

template<typename T>
void setTitle(T *item, const QString &title)
{
    // An outlet that is not connected (a sheet not loaded yet) is skipped.
    if (item)
        item->setText(title);
}

// Mnemonics go on after the titles, so every language gets its own letters.
void markMenu(QMenu *menu)
{
    if (!menu)
        return;
    QList<QAction *> items;
    for (QAction *action : menu->actions()) {
        if (!action->isSeparator())
            items.append(action);
    }
    Mnemonics::applyTo(items);
}

} // namespace

QString statusbarAppIdentifier()
{
    const auto info = Bundle::readInfo(Bundle::statusbarAppPath());
    return info ? info->identifier : QStringLiteral(ZELMOR_STATUSBAR_BUNDLE_ID);
}

CompanionQuit quitStatusbarAppIfAsked(const QString &identifier)
{
    // A number 1 does not count: only the string the preferences write does.
    if (!SettingsStore::standard().isEqualToString(SettingsKeys::QuitStatusbarApp,
                                                   QStringLiteral("1")))
        return CompanionQuit::NotAsked;
    if (CompanionChannel::requestQuit(identifier))
        return CompanionQuit::Asked;
    // The first running companion was taken without looking whether there
    // was one; report that failure and let termination go on.
    std::fprintf(stderr,
                 "ZELMOR Helper: index 0 beyond bounds of the empty list of running %s "
                 "applications\n",
                 qPrintable(identifier));
    return CompanionQuit::NotRunning;
}

void ZELMORHelperAppDelegate::initialize()
{
    SettingsStore::standard().registerApplicationDefaults(Bundle::mainBundlePath());
    Bundle::exposeHelpersOnPath();
}

ZELMORHelperAppDelegate::ZELMORHelperAppDelegate(MainWindow *w, QObject *parent)
    : QObject(parent), window(w)
{
    if (!window)
        return;
    Ui::MainWindow *ui = window->ui();
    menuAppName = ui->menuAppName;
    MenuAppName = ui->menuAppName->menuAction();
    menuAbout = ui->menuAbout;
    menuRelaunchHelper = ui->menuRelaunchHelper;
    menuLaunchStatus = ui->menuLaunchStatus;
    menuInstallCompo = ui->menuInstallCompo;
    menuPrefs = ui->menuPrefs;
    menuHideHelper = ui->menuHideHelper;
    menuHideOthers = ui->menuHideOthers;
    menuShowAll = ui->menuShowAll;
    menuQuit = ui->menuQuit;
    menuEdit = ui->menuEdit;
    MenuEdit = ui->menuEdit->menuAction();
    menuCopy = ui->menuCopy;
    menuSelectAll = ui->menuSelectAll;
    menuFindDir = ui->menuFindDir->menuAction();
    menuFind = ui->menuFind;
    menuFindNext = ui->menuFindNext;
    menuFindPre = ui->menuFindPre;
    menuFindSelect = ui->menuFindSelect;
    menuJump = ui->menuJump;
    menuWindow = ui->menuWindow;
    MenuWindow = ui->menuWindow->menuAction();
    menuMini = ui->menuMini;
    menuZoom = ui->menuZoom;
    menuFront = ui->menuFront;
}

ZELMORHelperAppDelegate::~ZELMORHelperAppDelegate() = default;

void ZELMORHelperAppDelegate::awakeFromNib()
{
    if (window)
        window->setWindowTitle(tr("ZELMOR Helper"));

    setTitle(menuAbout, tr("About ZELMOR Helper"));
    setTitle(menuRelaunchHelper, tr("Re-launch ZELMOR Helper"));
    setTitle(menuLaunchStatus, tr("Launch ZELMOR Helper Statusbar App"));
    setTitle(menuInstallCompo, tr("Install Essentials"));
    setTitle(menuPrefs, tr("Preferences..."));
    setTitle(menuHideHelper, tr("Hide ZELMOR Helper"));
    setTitle(menuHideOthers, tr("Hide Others"));
    setTitle(menuShowAll, tr("Show All"));
    setTitle(menuQuit, tr("Quit ZELMOR Helper"));
    setTitle(MenuEdit, tr("Edit"));
    if (menuEdit)
        menuEdit->setTitle(tr("Edit"));
    setTitle(menuCopy, tr("Copy"));
    setTitle(menuSelectAll, tr("Select All"));
    setTitle(menuFindDir, tr("Find"));
    setTitle(menuFind, tr("Find..."));
    setTitle(menuFindNext, tr("Find Next"));
    setTitle(menuFindPre, tr("Find Previous"));
    setTitle(menuFindSelect, tr("Use Selection for Find"));
    setTitle(menuJump, tr("Jump to Selection"));
    setTitle(MenuWindow, tr("Window"));
    if (menuWindow)
        menuWindow->setTitle(tr("Window"));
    setTitle(menuMini, tr("Minimize"));
    setTitle(menuZoom, tr("Zoom"));
    setTitle(menuFront, tr("Bring All to Front"));

    setTitle(firstTitle.data(), tr("Welcome"));
    setTitle(firstMessage.data(),
             tr("You need to install Xcode(larger in file size but recommend) or command line "
                "tool(needless for Xcode), homebrew, cmake, sdl.\n \n(cmake and sdl can be "
                "installed through homebrew)"));
    setTitle(firstOKButton.data(), tr("OK"));
    setTitle(firstPopMessage.data(), tr("Don't know how to install? Click here to try wizard."));

    setTitle(wizardTitle.data(), tr("Initialization"));
    setTitle(wizardMessage.data(), tr("Please set where to store source codes of ZELMOR and "
                                      "where to output compiled ZELMOR."));
    setTitle(wizardWorkspaceLabel.data(), tr("Workspace"));
    setTitle(wizardOutputLabel.data(), tr("Output"));
    setTitle(wizardOKButton.data(), tr("OK"));
    setTitle(wizardBrowseWorkspaceButton.data(), tr("Select"));
    setTitle(wizardBrowseOutputButton.data(), tr("Select"));

    markMenus();
    Mnemonics::applyTo(QList<QAbstractButton *>{tryWizardButton.data(), firstOKButton.data()});
    Mnemonics::applyTo(QList<QAbstractButton *>{wizardBrowseWorkspaceButton.data(),
                                                wizardBrowseOutputButton.data(),
                                                wizardOKButton.data()});
}

void ZELMORHelperAppDelegate::markMenus()
{
    Mnemonics::applyTo(QList<QAction *>{MenuAppName, MenuEdit, MenuWindow});
    markMenu(menuAppName);
    markMenu(menuEdit);
    markMenu(menuFindDir ? menuFindDir->menu() : nullptr);
    markMenu(menuWindow);
}

void ZELMORHelperAppDelegate::applicationDidFinishLaunching()
{
    SettingsStore &store = SettingsStore::standard();
    store.setObject(SettingsKeys::AppLocation, Bundle::mainBundlePath());
    if (store.intValue(SettingsKeys::FirstLaunch) == 1) {
        // A new user (or one who reset the warnings) starts from the
        // standard folders, whatever was stored before.
        store.setObject(SettingsKeys::Output, SettingsKeys::DefaultOutput);
        store.setObject(SettingsKeys::Workspace, SettingsKeys::DefaultWorkspace);
        firstLaunch();
    }
    setTitle(MenuAppName, tr("ZELMOR Helper"));
    if (menuAppName)
        menuAppName->setTitle(tr("ZELMOR Helper"));
    markMenus();
}

void ZELMORHelperAppDelegate::terminate()
{
    // Qt ends the run only once every window agreed to close; the sheets
    // agree while this runs.
    m_terminating = true;
    QCoreApplication::quit();
    m_terminating = false;
}

void ZELMORHelperAppDelegate::applicationWillTerminate()
{
    quitStatusbarAppIfAsked(statusbarAppIdentifier());
}

void ZELMORHelperAppDelegate::loadFirstLaunchWindow()
{
    auto *sheet = new Sheet(this, window);
    Ui::firstLaunch ui;
    ui.setupUi(sheet);
    firstTitle = ui.firstTitle;
    firstMessage = ui.firstMessage;
    firstOKButton = ui.firstOKButton;
    firstPopMessage = ui.firstPopMessage;
    tryWizardButton = ui.tryWizardButton;
    tryWizardPopover = ui.tryWizardPopover;
    connect(ui.firstOKButton, &QPushButton::clicked, this,
            &ZELMORHelperAppDelegate::closeFirstLaunch);
    // The hint's text invites a click, and the button it points at offers
    // the same.
    connect(ui.tryWizardButton, &QPushButton::clicked, this, &ZELMORHelperAppDelegate::tryWizard);
    connect(ui.tryWizardPopover, &Popover::clicked, this, &ZELMORHelperAppDelegate::tryWizard);
    connect(sheet, &QDialog::finished, this, &ZELMORHelperAppDelegate::alertDidEndForFirstLaunch);
    firstLaunchWindow = sheet;
    awakeFromNib();
    // The title bar repeats the heading, so translators see the text once.
    sheet->setWindowTitle(ui.firstTitle->text());
}

void ZELMORHelperAppDelegate::firstLaunch()
{
    if (!firstLaunchWindow)
        loadFirstLaunchWindow();
    firstLaunchWindow->setWindowModality(Qt::WindowModal);
    firstLaunchWindow->open();
    if (tryWizardPopover && tryWizardButton)
        tryWizardPopover->showRelativeToRect(tryWizardButton->rect(), tryWizardButton,
                                             Popover::MaxYEdge);
}

void ZELMORHelperAppDelegate::tryWizard()
{
    Bundle::launchApplication(Bundle::installerAppPath());
}

void ZELMORHelperAppDelegate::closeFirstLaunch()
{
    SettingsStore::standard().setObject(SettingsKeys::FirstLaunch, 0);
    endSheet(firstLaunchWindow);
    wizard();
}

void ZELMORHelperAppDelegate::alertDidEndForFirstLaunch(int returnCode)
{
    Q_UNUSED(returnCode)
}

void ZELMORHelperAppDelegate::endSheet(QPointer<QDialog> &sheet)
{
    if (!sheet)
        return;
    QDialog *dialog = sheet.data();
    sheet = nullptr;
    dialog->done(QDialog::Accepted);
    dialog->close();
    dialog->deleteLater();
}

void ZELMORHelperAppDelegate::loadWizardWindow()
{
    auto *sheet = new Sheet(this, window);
    Ui::wizard ui;
    ui.setupUi(sheet);
    wizardTitle = ui.wizardTitle;
    wizardMessage = ui.wizardMessage;
    wizardWorkspaceLabel = ui.wizardWorkspaceLabel;
    wizardOutputLabel = ui.wizardOutputLabel;
    wizardOKButton = ui.wizardOKButton;
    wizardBrowseWorkspaceButton = ui.wizardBrowseWorkspaceButton;
    wizardBrowseOutputButton = ui.wizardBrowseOutputButton;
    wizardPopMessage = ui.wizardPopMessage;
    iniWorkSpaceText = ui.iniWorkSpaceText;
    iniOutputText = ui.iniOutputText;
    iniPopover = ui.iniPopover;
    connect(ui.wizardBrowseWorkspaceButton, &QPushButton::clicked, this,
            &ZELMORHelperAppDelegate::iniWorkspaceBrowse);
    connect(ui.wizardBrowseOutputButton, &QPushButton::clicked, this,
            &ZELMORHelperAppDelegate::iniOutputBrowse);
    connect(ui.wizardOKButton, &QPushButton::clicked, this, &ZELMORHelperAppDelegate::finIni);
    QToolButton *help = ui.wizardHelpButton;
    connect(help, &QToolButton::clicked, this, [this, help] { iniHelp(help); });
    wizardWindow = sheet;
    awakeFromNib();
    sheet->setWindowTitle(ui.wizardTitle->text());
}

void ZELMORHelperAppDelegate::wizard()
{
    endSheet(firstLaunchWindow);
    if (!wizardWindow)
        loadWizardWindow();
    wizardWindow->setWindowModality(Qt::WindowModal);
    wizardWindow->open();
}

void ZELMORHelperAppDelegate::inichooseFolder(PathRules::Folder which, std::function<void()> then)
{
    inipathStr.clear();
    QWidget *parent = wizardWindow ? static_cast<QWidget *>(wizardWindow.data()) : window;
    QPointer<ZELMORHelperAppDelegate> self(this);
    // The wizard asks for the folder to hold the sources, so the entry the
    // user highlighted is the choice (the folder shown when none is); the
    // application's own folder always goes inside it, whatever the
    // preferences' default-name switch says.
    const QString stored = SettingsStore::standard().stringValue(PathRules::settingsKey(which));
    FolderChoice::choose(parent, tr("Select"), FolderChoice::Answer::SelectedEntry, stored,
                         PathRules::appendedByChooser(which, 1),
                         [self, then = std::move(then)](const std::optional<QString> &chosen) {
                             if (!self)
                                 return;
                             if (chosen && !chosen->isEmpty())
                                 self->inipathStr = PathRules::fromChosenFolder(
                                     PathRules::Folder::Workspace, *chosen, 1);
                             then();
                         });
}

void ZELMORHelperAppDelegate::iniHelp(QWidget *sender)
{
    if (iniPopover)
        iniPopover->showRelativeToRect(sender ? sender->rect() : QRect(), sender, Popover::MinXEdge);
}

void ZELMORHelperAppDelegate::iniWorkspaceBrowse()
{
    inichooseFolder(PathRules::Folder::Workspace, [this] {
        if (inipathStr.isEmpty())
            return;
        SettingsStore::standard().setObject(SettingsKeys::Workspace, inipathStr);
        if (iniWorkSpaceText)
            iniWorkSpaceText->setText(inipathStr);
    });
}

void ZELMORHelperAppDelegate::iniOutputBrowse()
{
    inichooseFolder(PathRules::Folder::Output, [this] {
        if (inipathStr.isEmpty())
            return;
        const QString output = PathRules::outputInWorkspace(inipathStr);
        SettingsStore::standard().setObject(SettingsKeys::Output, output);
        if (iniOutputText)
            iniOutputText->setText(output);
    });
}

void ZELMORHelperAppDelegate::finIni()
{
    SettingsStore::standard().setObject(SettingsKeys::Initialization, 0);
    endSheet(wizardWindow);
}
