# The Debian package; scripts/package builds it. dpkg-shlibdeps finds the linked libraries.

set(PAGORA_MAINTAINER "Pagora maintainers <maintainers@pagora.invalid>" CACHE STRING
    "Who answers for the package, as Name <address>; the default names no host")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pagora)
set(CPACK_PACKAGE_VENDOR "Pagora")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "library and reader for e-books in the EPUB format")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${PAGORA_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The scripts install the AppArmor profile if AppArmor is recent enough.
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst"
    "${CMAKE_CURRENT_SOURCE_DIR}/debian/prerm" "${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm"
    "${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers")
# Covers and icons in SVG, the MIME database, the default font of books.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "librsvg2-common, default-dbus-session-bus | dbus-session-bus, desktop-file-utils, fonts-sil-charis-compact")
# Substitutes for the fonts of the font menu, covers in WebP, moving books to the Trash, screen readers.
set(recommended fonts-texgyre fonts-adf-baskervald "fonts-liberation2 | fonts-liberation" fonts-dejavu-core
    webp-pixbuf-loader xdg-desktop-portal at-spi2-core)
# Hyphenation patterns: first for the most frequent languages of books, then for all others.
set(hyphenated en-us en-gb de fr es it nl pt-br pt-pt pl ru sv da no cs hu)
set(hyphenated_too af be bg ca el et gl hr id is lt lv mn ro sk sl sr th uk zu as bn gu hi kn ml mr or pa ta te)
list(TRANSFORM hyphenated PREPEND hyphen-)
list(TRANSFORM hyphenated_too PREPEND hyphen-)
# In Debian, the Estonian patterns are part of the dictionary package.
list(TRANSFORM hyphenated_too REPLACE "^hyphen-et$" myspell-et)
list(JOIN recommended ", " recommended)
list(JOIN hyphenated ", " hyphenated)
list(JOIN hyphenated_too ", " hyphenated_too)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "${recommended}, ${hyphenated}")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "${hyphenated_too}, fonts-noto-core, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Give Pagora your books in the EPUB format: it checks each one, files it in
your library with its cover, title and author, and opens it as pages that you
turn. It remembers where you were, to the very page.
.
Reflowable books are set in one to three columns, in your font, text size and
colours; fixed-layout books keep their design and fit the window. Everything
can be reached by keyboard, and what is on the page can be read aloud.
.
Books are hostile until proven otherwise: they cannot read your files, keep
anything about you, or run the reader.")

set(documents "${CMAKE_INSTALL_DATADIR}/doc/pagora")
set(make_changelog "${PROJECT_SOURCE_DIR}/packaging/make-debian-changelog")
set(changelog "${CMAKE_CURRENT_BINARY_DIR}/changelog")
add_custom_command(
  OUTPUT "${changelog}"
  COMMAND "${make_changelog}" "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${PAGORA_MAINTAINER}" > "${changelog}"
  DEPENDS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${make_changelog}"
  VERBATIM)
pagora_install_compressed("${changelog}" changelog "${documents}")
install(FILES debian/copyright DESTINATION "${documents}")

include(CPack)
