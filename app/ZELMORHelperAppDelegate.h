#pragma once

#include "settings/PathRules.h"
#include "widgets/Popover.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QPushButton>

#include <functional>

class AppController;
class MainWindow;
class QAction;
class QMenu;

// What applicationWillTerminate did about the status-bar companion.
enum class CompanionQuit {
    NotAsked,   // the switch is not the string "1"
    Asked,      // the running companion was told to quit
    NotRunning, // asked for, but none runs: reported on standard error
};

// Asks the status-bar companion with this identifier to quit when the setting
// "Quit Statusbar App Main App quits" is the string "1".
CompanionQuit quitStatusbarAppIfAsked(const QString &identifier);

// The status-bar companion's identifier, as its own Info.plist gives it.
QString statusbarAppIdentifier();

// The application delegate: titles the main window and its menus, records
// where the bundle is, leads a new user through the first-launch and
// initialization sheets, and quits the companion at the end when asked.
class ZELMORHelperAppDelegate : public QObject
{
    Q_OBJECT

public:
    // Runs before any window exists: the defaults must answer from the very
    // first read, and children must find the bundle's own tools.
    static void initialize();

    explicit ZELMORHelperAppDelegate(MainWindow *window, QObject *parent = nullptr);
    ~ZELMORHelperAppDelegate() override;

    // Titles everything that is loaded; runs again whenever a sheet's
    // interface file is loaded.
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();
    // The platform's terminate action (Quit): ends the run even while a
    // first-launch sheet is open, leaving its setting as it is.
    void terminate();
    bool isTerminating() const { return m_terminating; }
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }

    // --- First launch and initialization ------------------------------------
    void firstLaunch();
    void tryWizard();
    void closeFirstLaunch();
    void alertDidEndForFirstLaunch(int returnCode);
    void wizard();
    // Asks for a parent folder for `which`, opening where choosing again
    // gives back what is stored; inipathStr is "<folder>/ZELMOR", or empty
    // when cancelled. then() runs once the user has answered.
    void inichooseFolder(PathRules::Folder which, std::function<void()> then);
    void iniHelp(QWidget *sender);
    void iniWorkspaceBrowse();
    void iniOutputBrowse();
    void finIni();

    // --- Outlets -------------------------------------------------------------
    MainWindow *window = nullptr;
    QPointer<QDialog> firstLaunchWindow;
    QPointer<QDialog> wizardWindow;
    QPointer<Popover> iniPopover;

    QAction *MenuAppName = nullptr;
    QMenu *menuAppName = nullptr;
    QAction *menuAbout = nullptr;
    QAction *menuRelaunchHelper = nullptr;
    QAction *menuLaunchStatus = nullptr;
    QAction *menuInstallCompo = nullptr;
    QAction *menuPrefs = nullptr;
    QAction *menuHideHelper = nullptr;
    QAction *menuHideOthers = nullptr;
    QAction *menuShowAll = nullptr;
    QAction *menuQuit = nullptr;
    QAction *MenuEdit = nullptr;
    QMenu *menuEdit = nullptr;
    QAction *menuCopy = nullptr;
    QAction *menuSelectAll = nullptr;
    QAction *menuFindDir = nullptr;
    QAction *menuFind = nullptr;
    QAction *menuFindNext = nullptr;
    QAction *menuFindPre = nullptr;
    QAction *menuFindSelect = nullptr;
    QAction *menuJump = nullptr;
    QAction *MenuWindow = nullptr;
    QMenu *menuWindow = nullptr;
    QAction *menuMini = nullptr;
    QAction *menuZoom = nullptr;
    QAction *menuFront = nullptr;

    QPointer<QLabel> firstTitle;
    QPointer<QLabel> firstMessage;
    QPointer<QPushButton> firstOKButton;
    QPointer<QLabel> firstPopMessage;
    QPointer<QPushButton> tryWizardButton;
    QPointer<Popover> tryWizardPopover;
    QPointer<QLabel> wizardTitle;
    QPointer<QLabel> wizardMessage;
    QPointer<QLabel> wizardWorkspaceLabel;
    QPointer<QLabel> wizardOutputLabel;
    QPointer<QPushButton> wizardOKButton;
    QPointer<QPushButton> wizardBrowseWorkspaceButton;
    QPointer<QPushButton> wizardBrowseOutputButton;
    QPointer<QLabel> wizardPopMessage;
    QPointer<QLineEdit> iniWorkSpaceText;
    QPointer<QLineEdit> iniOutputText;
    QString inipathStr;

private:
    bool m_terminating = false;
    void loadFirstLaunchWindow();
    void markMenus();
    void loadWizardWindow();
    static void endSheet(QPointer<QDialog> &sheet);
};
