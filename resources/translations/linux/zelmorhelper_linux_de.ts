<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Sie müssen git, cmake, make, einen C/C++-Compiler und die Entwicklungsdateien von SDL 2 installieren.
 
(„Benötigte Komponenten installieren“ im Menü ZELMOR Helper installiert sie)</translation>
    </message>
</context>
</TS>
