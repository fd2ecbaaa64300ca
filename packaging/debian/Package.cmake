# The Debian package: cmake --preset package && cmake --build --preset package --target package

# The licence is not among those that every Debian system has, so its text goes along.
file(READ ${CMAKE_SOURCE_DIR}/LICENSE agpl)
string(REPLACE "\n" "\n " agpl "\n${agpl}")
string(REGEX REPLACE "\n (\n|$)" "\n .\n" agpl "${agpl}")
string(REGEX REPLACE "\n (\n|$)" "\n .\n" agpl "${agpl}")  # Every other one of several empty lines.
string(REGEX REPLACE "( \\.\n)+$" "" agpl "${agpl}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/copyright.in ${CMAKE_CURRENT_BINARY_DIR}/debian/copyright @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian COPYONLY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME leafwright)
set(CPACK_PACKAGE_VENDOR Leafwright)
set(CPACK_PACKAGE_CONTACT "The Leafwright developers <developers@leafwright.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for the outline (bookmarks) of PDF files")
set(CPACK_PACKAGE_DESCRIPTION "\
Leafwright edits the outline that is embedded in PDF files: the list of
bookmarks that a reader shows beside the pages. It builds one from the fonts
of the headings, or takes the one that is there, lets you move, rename, add
and remove its entries, and appends the result to the file, of which
everything else stays as it was.
.
The command leafwright-cli does the same without a window, many files at once
if need be.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://leafwright.org/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The other ends of what the program talks to; each is done without where it is missing.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, fonts-dejavu-core | fonts-liberation, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-gtk-platformtheme, qt6-xdgdesktopportal-platformtheme, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/Stage.cmake)
set(CPACK_LEAFWRIGHT_DEBIAN_FILES ${CMAKE_CURRENT_BINARY_DIR}/debian)
include(CPack)
