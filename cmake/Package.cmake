# `./dev package`: a Debian package of what `cmake --install` puts in place,
# depending on the Debian packages of the shared libraries the program links
# (found by dpkg-shlibdeps from dpkg-dev).
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "stockverify")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "stockverify maintainers <stockverify@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "godown stock verification for warehouse terminals")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Count what stands in a godown (warehouse), item by item, by barcode scan\nor from a searchable list, record it against the book stock, and bring the\ngodown's stock into line. Runs in a terminal on an embedded SQLite database\nor on a database server.")
set(CPACK_DEBIAN_PACKAGE_SECTION "misc")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What it needs besides the libraries it links: the font its PDF reports are
# set in; and, to print, a spooler's lp.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "cups-client")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
include(CPack)
