# Installing and packaging for Linux desktops.
#
# The bundle is installed whole, in the shape the build gives it, under
# <prefix>/lib/zelmor-helper: every path the programs derive from their own
# bundle (the companions, the `defaults` tool, Info.plist) stays valid. The
# desktop finds it through a launcher in <prefix>/bin, a symbolic link to the
# application's program; the program resolves the link through /proc/self/exe,
# so it still knows its bundle. Around it: desktop entries, AppStream
# metainfo, hicolor icons and the man page.
#
# `cpack` in the build tree makes the Debian package; tools/dev.sh package
# does that with the right cmake program.

set(ZELMOR_INSTALL_DIR "lib/zelmor-helper")
set(ZELMOR_INSTALL_BUNDLE "${ZELMOR_INSTALL_DIR}/${ZELMOR_BUNDLE_NAME}")

# Each program goes where the build put it, relative to the bundle, with the
# Info.plist of its own bundle beside its Contents/MacOS.
function(zelmor_install_bundle_program target)
    get_target_property(dir ${target} RUNTIME_OUTPUT_DIRECTORY)
    file(RELATIVE_PATH relative "${ZELMOR_BUNDLE_DIR}" "${dir}")
    # Qt's libraries are the system's; an installed program needs no RPATH.
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "")
    install(TARGETS ${target} RUNTIME DESTINATION "${ZELMOR_INSTALL_BUNDLE}/${relative}")
    if(relative MATCHES "^(.*)/MacOS$")
        install(FILES "${dir}/../Info.plist"
                DESTINATION "${ZELMOR_INSTALL_BUNDLE}/${CMAKE_MATCH_1}")
    endif()
endfunction()
foreach(program ZELMORHelper ZELMORHelperStatusbarApp ZELMORInstallComponets)
    zelmor_install_bundle_program(${program})
endforeach()
if(TARGET defaults)
    zelmor_install_bundle_program(defaults)
endif()
install(DIRECTORY DESTINATION "${ZELMOR_INSTALL_BUNDLE}/Contents/Resources")

# The launcher: a relative link, so the installed tree works under any prefix
# and when unpacked somewhere else.
set(launcher_target "../${ZELMOR_INSTALL_BUNDLE}/Contents/MacOS/${ZELMOR_EXECUTABLE}")
install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
    file(CREATE_LINK \"${launcher_target}\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/zelmor-helper\" SYMBOLIC)
")

# The companion's entry names its program by full path, which is only known
# once the prefix is (CPack installs with its own).
set(linux_resources "${PROJECT_SOURCE_DIR}/resources/linux")
install(FILES "${linux_resources}/org.zelmor.ZELMORHelper.desktop" DESTINATION share/applications)
install(CODE "
    set(ZELMOR_INSTALLED_BUNDLE \"\${CMAKE_INSTALL_PREFIX}/${ZELMOR_INSTALL_BUNDLE}\")
    configure_file(\"${linux_resources}/org.zelmor.ZELMORHelperStatusbarApp.desktop.in\"
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/share/applications/org.zelmor.ZELMORHelperStatusbarApp.desktop\"
        @ONLY)
")
install(FILES "${linux_resources}/org.zelmor.ZELMORHelper.metainfo.xml" DESTINATION share/metainfo)
foreach(icon IN LISTS ZELMOR_ICON_NAMES)
    install(FILES "${PROJECT_SOURCE_DIR}/resources/icons/${icon}.svg"
            DESTINATION share/icons/hicolor/scalable/apps)
    foreach(size IN LISTS ZELMOR_ICON_SIZES)
        install(FILES "${ZELMOR_ICON_DIR}/hicolor/${size}x${size}/apps/${icon}.png"
                DESTINATION "share/icons/hicolor/${size}x${size}/apps")
    endforeach()
endforeach()
install(FILES "${ZELMOR_MAN_PAGE}" DESTINATION share/man/man1)

# The Debian package.
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "zelmor-helper")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_VENDOR "The ZELMOR Helper developers")
set(CPACK_PACKAGE_CONTACT "The ZELMOR Helper developers <zelmor-helper@zelmor.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "fetch, update and compile the ZELMOR emulator's sources")
set(CPACK_PACKAGE_DESCRIPTION
    "ZELMOR Helper gets a fresh build of the ZELMOR emulator onto your own machine
without the command line. It drives git, cmake and make as child processes,
shows what they print with a progress bar, and tells you by a desktop
notification when an operation has ended.")
# Installed with DESTDIR, so the install steps see the real prefix and the
# companion's entry names /usr, not the staging folder.
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_INSTALL_PREFIX "/usr")
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "devel")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads its display plugins at run time, where dpkg-shlibdeps cannot see them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
# What the operations start; the application runs without them and its
# "Install Essentials" window installs what is missing through PackageKit.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "git, cmake, make, g++, libsdl2-dev, packagekit")
include(CPack)
