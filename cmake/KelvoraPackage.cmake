# make package: a Debian package of the installed tree, built with CPack. Its dependencies
# come from the shared libraries the programs link (dpkg-shlibdeps). The menu, MIME and icon
# caches are refreshed by the triggers Debian's desktop-file-utils, shared-mime-info and
# hicolor-icon-theme packages hold on their folders, so no maintainer scripts are needed.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelvora)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(CPACK_PACKAGE_VENDOR Kelvora)
set(CPACK_PACKAGE_CONTACT "Kelvora <info@kelvora.net>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "encrypts texts, files and folders with a passphrase")
# The summary is the synopsis line; this is the long description below it.
set(CPACK_PACKAGE_DESCRIPTION
    "Kelvora encrypts short texts into printable Base64 lines to paste or mail,
and single files, sets of files and whole folder trees into one .vexo
container. The cipher is Rijndael with a 256-bit block and a 256-bit key;
file data is compressed with zlib first. Texts and containers open byte for
byte in every other copy of the program.
.
The package holds the desktop program kelvora and the command-line tool
kelvora-cli, with manual pages and bash completion.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.kelvora.net/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
