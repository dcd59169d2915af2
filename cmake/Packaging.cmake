# "cpack -G DEB" in the build folder makes the Debian package.
set(CPACK_PACKAGE_NAME quenmar)
set(CPACK_PACKAGE_VENDOR "The Quenmar developers")
set(CPACK_PACKAGE_CONTACT "The Quenmar developers <developers@quenmar.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compare and edit the configuration files of a game server")
set(CPACK_PACKAGE_DESCRIPTION
"Quenmar is an editor for the plain-text .conf files of a game server. It is
made for administrators who keep two folders: the distribution's, which holds
every setting that the server release knows, and the running server's, which
has their own values. After each release it says what is new, what is gone
and what must be set, and writes the merged file back.
.
The package holds the desktop program quenmar and the console program
quenmarctl.")
set(CPACK_STRIP_FILES ON)
# Whatever the umask of the one who builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0quenmar1)  # sorts below any package of Debian's own
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
if(QUENMAR_BUILD_GUI)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-translations-l10n")
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
endif()
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/DebianFiles.cmake")
include(CPack)
