<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>About</name>
    <message>
        <source>About ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fetches, updates and compiles the source codes of ZELMOR on your own machine.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Made by the ZELMOR Helper developers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thank you for using ZELMOR Helper!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AboutController</name>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlertSheet</name>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AppCommandLine</name>
    <message>
        <source>Fetches, updates and compiles the sources of the ZELMOR emulator.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AppController</name>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get a complete copy of source codes of ZELLMOR from GitHub</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get module initialized</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update source codes and submodules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compile ZELMOR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Perform</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Task terminated by user.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready to install modules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get modules initialized right now?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&apos;asssets&apos; not found in %@/Android.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please re-download a complete copy of source codes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>.git not found in %@.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compiling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Build in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Moving files to output folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%@ already exists. It may be source codes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder will add current date as extension if you choose to keep it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How to deal with it?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading source codes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Location</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Registering modules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking modules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failure.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> or .git in it not found!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> gives no module name!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> is not a plain module URL!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> is your home folder or the workspace, or holds one of them! Compiling empties the output folder: please choose another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> It is skipped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Module Exists</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found submodule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Getting module</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip module</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Main source codes are ready. Do you want to get essential modules initialized right now?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready to start initializing modules. Please wait...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please re-initialize it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Updating source codes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking for update of ZELMOR master</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking for update of submodules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> holds more than submodule entries!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> The modules are not registered in .git/config.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ApplicationShell</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ComponentChecks</name>
    <message>
        <source>Homebrew</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Git</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CMake</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C compiler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C++ compiler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDL 2 development files</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConsoleFindBar</name>
    <message>
        <source>Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HomebrewInstaller</name>
    <message>
        <source>Installing with Homebrew</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The installer could not be started. Run the command below in a terminal.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apple&apos;s installer for the command line tools has opened. When it has finished, click Install again for the rest.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Homebrew could not install the packages; its output above says why.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FailureDiagnosis</name>
    <message>
        <source>You may not write to the output folder %1. Choose another folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You may not write to the workspace folder %1. Choose another folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changes made in the workspace stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changes made in the workspace to %1 stand in the way of the update. Keep the workspace aside and download the sources again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not installed. Install Essentials installs it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The workspace folder %1 already exists but holds no download. Move it aside and download again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A folder without a download is in the way of git.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The disk is full: it has %1 free. Free some space, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The disk is full. Free some space, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server could not be reached. Check the internet connection, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The repository was not found or asks for a login: its address is wrong, or it is private.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CMake could not find %1, which compiling ZELMOR needs. Install Essentials installs it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The compiler stopped at an error in %1, line %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 was ended by signal %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ended with status %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Another Folder...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move Aside and Download Again</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Installer</name>
    <message>
        <source>Install Components</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZELMOR Helper uses these tools to download and compile ZELMOR.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Component</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Location</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Components</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installation status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installer output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh and Try Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InstallerWindow</name>
    <message>
        <source>Checking…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found, version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything ZELMOR Helper needs is installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To install what is missing, run this in a terminal, then click Check Again:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Or run this in a terminal, then click Check Again:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing what is missing. The system may ask for your password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click Install to install what is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks the tools ZELMOR Helper needs and installs the missing ones.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Operation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Console</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Activity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Problem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OperationNotice</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ended with a problem</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PackageInstaller</name>
    <message>
        <source>Installation finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The installation was cancelled. The list shows what is installed now.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PackageKitRules</name>
    <message>
        <source>Waiting for another installer…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for authentication</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking up packages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refreshing package lists</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking signatures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finished</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Working</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available from this system&apos;s package sources: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was installed: the packages are not signed by a source this system trusts. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing was not authorized: the password prompt was cancelled, the password was wrong, or no password prompt can be shown in this session. Click Install to try again, or run the command below in a terminal.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another installer is using the package manager. Wait until it has finished, then click Install again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The packages could not be downloaded. Check the internet connection, then click Install again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough free disk space. Free some space, then click Install again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The package manager could not install the packages. Run the command below in a terminal to see why.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The package manager could not install the packages: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PackageKit, which installs software on this system, is not available. Run the command below in a terminal, then click Check Again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This computer is offline. Connect it to the internet, then click Install again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The package manager stopped before it finished. The list shows what is installed now; click Install to try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This system&apos;s package lists do not know %1. Refresh the package lists and try again?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be found in this system&apos;s package sources, even after refreshing the package lists. Check the package sources in the system&apos;s software settings, or run the command below in a terminal.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Select workspace folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PrefsController</name>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use &apos;ZELMOR&apos; and &apos;Output&apos; as default name of workspace and output folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>If you want to use &apos;ZELMOR&apos; as the default name of workspace  and &apos;Output&apos; as the name of output folder, you just need to choose the parent folder of them. Otherwise, you need to choose the complete path.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset Warnings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable ZELMOR Helper Statusbar App Statup at Login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit statusbar app with ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>* Please restart ZELMOR Helper to take effect(s).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZELMOR Helper must restart to take effects of changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You can restart the application later through the menu bar item.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Notice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count down %d secs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More Pages</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatusbarCompanion</name>
    <message>
        <source>Open ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZELMOR Helper Statusbar App is running.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 — %2%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows the operation ZELMOR Helper is running in the system tray.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How it was started; &quot;autoLaunched&quot; (at login) skips the greeting.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run without a tray icon (sessions without a tray).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No system tray is available on this desktop; exiting.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another instance is already running; exiting.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ended with a problem: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re-launch ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Launch ZELMOR Helper Statusbar App</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install Essentials</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Others</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit ZELMOR Helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use Selection for Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Jump to Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bring All to Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Welcome</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Don&apos;t know how to install? Click here to try wizard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initialization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please set where to store source codes of ZELMOR and where to output compiled ZELMOR.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>firstLaunch</name>
    <message>
        <source>Try Wizard</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>wizard</name>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The workspace keeps the source codes of ZELMOR; it is also where ZELMOR is compiled. The output folder receives the compiled ZELMOR and its assets. A folder named ZELMOR is created in the folder you select, and the output goes into its Output folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select workspace folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select output folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
