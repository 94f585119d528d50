#pragma once

#include "settings/PathRules.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class AlertSheet;
class Popover;
class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMainWindow;
class QProcess;
class QPushButton;
class QTimer;
class QWidget;

namespace Ui {
class Preferences;
}

// Controller of the preferences window: the two paths, the switches, the
// login agent of the status-bar companion and the two resets.
//
// The main window controller creates one instance on the first request and
// keeps it; the window is built once, so it shows the settings as they were
// when it was first opened. Outlets and state are public under the names the
// rest of the application knows them by, so the tests reach them directly.
class PrefsController : public QObject
{
    Q_OBJECT

public:
    explicit PrefsController(QWidget *mainWindow, QObject *parent = nullptr);
    ~PrefsController() override;

    // Shows, raises and activates the one preferences window.
    void showWindow();
    QMainWindow *window() const { return prefsWindow; }

    // --- Outlets ---------------------------------------------------------------
    QMainWindow *prefsWindow = nullptr;   // parent of every sheet of this window
    QWidget *mainWindow = nullptr;        // its title carries the restart note
    QAction *toolbarPaths = nullptr;
    QAction *toolbarSwitch = nullptr;
    QWidget *pathsView = nullptr;
    QWidget *switchView = nullptr;
    QLabel *pathsWorkspace = nullptr;
    QLabel *pathsOutput = nullptr;
    QLineEdit *rootText = nullptr;
    QLineEdit *outputText = nullptr;
    QPushButton *browserRootButton = nullptr;
    QPushButton *browserOutputButton = nullptr;
    QCheckBox *defaultToZELMORCheckbox = nullptr;
    QPushButton *helpButton = nullptr;
    Popover *popover = nullptr;            // help on default names
    QLabel *pathsPopMessage = nullptr;
    QPushButton *switchResetAll = nullptr;
    QPushButton *switchResetWarnings = nullptr;
    QCheckBox *enableLogCheckBox = nullptr;
    QCheckBox *enableStartup = nullptr;
    QCheckBox *openquitWithHelperCheckBox = nullptr;
    QLabel *cautionText = nullptr;

    // --- State -------------------------------------------------------------------
    QString rootDirectory;    // as read when the window loaded
    QString outputDirectory;  // as read when the window loaded
    QString pathStr;          // what the last folder chooser produced
    QPointer<AlertSheet> iAlert;  // the restart alert, which counts down itself
    QTimer *timer() const;
    qint32 countdown() const;

    // --- Actions -------------------------------------------------------------------
    void askforHelp();
    void pathViewButton();
    void switchViewButton();
    void controlTextDidChange(QLineEdit *field);
    void defaultToZELMORCheckBox();
    void browserRoot();
    void browserOutput();
    void logCheckBox();
    void openquitWithHelper();
    void enableStartupFunction();
    void resetWarnings();
    void resetAll();

    // --- Restart alert -------------------------------------------------------------
    void settingChanged();
    void timeCountdownOfSettingChanged();
    void alertDidEndForSettingChanged(int returnCode);

    // --- Login agent ---------------------------------------------------------------
    void installStatusDaemon();
    void unInstallStatusDaemon();

private:
    void awakeFromNib();
    void turnToPage(QAction *page, QWidget *view);
    void openFolderChooser(PathRules::Folder which);
    static QString settingChangedText(int count);

    std::unique_ptr<Ui::Preferences> m_ui;
    QPointer<QMainWindow> m_window; // deleted with the main window, or here
};
