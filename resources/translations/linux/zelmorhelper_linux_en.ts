<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ZELMORHelperAppDelegate</name>
    <message>
        <source>You need to install Xcode(larger in file size but recommend) or command line tool(needless for Xcode), homebrew, cmake, sdl.
 
(cmake and sdl can be installed through homebrew)</source>
        <translation>You need to install git, cmake, make, a C/C++ compiler and the SDL 2 development files.
 
(Install Essentials in the ZELMOR Helper menu installs them)</translation>
    </message>
</context>
</TS>
