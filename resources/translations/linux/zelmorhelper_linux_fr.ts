<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>Vous devez installer git, cmake, make, un compilateur C/C++ et les fichiers de développement de SDL 2.
 
(« Installer les composants requis » dans le menu ZELMOR Helper les installe)</translation>
    </message>
</context>
</TS>
