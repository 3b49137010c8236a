# Every library is a package of Debian; scripts/setup installs them. The versions are the oldest with which the tests
# run: those of Debian 12 with its updates. docs/dependencies.md gives the purpose of each.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(SQLiteCpp 3.2 REQUIRED)

pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0>=2.74 gio-unix-2.0>=2.74 gmodule-2.0>=2.74)
pkg_check_modules(PIXBUF REQUIRED IMPORTED_TARGET gdk-pixbuf-2.0>=2.42)
pkg_check_modules(XML REQUIRED IMPORTED_TARGET libxml-2.0>=2.9.14)
pkg_check_modules(ZIP REQUIRED IMPORTED_TARGET libzip>=1.7.3)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3>=3.40)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig>=2.14)
pkg_check_modules(GTKMM REQUIRED IMPORTED_TARGET gtkmm-4.0>=4.8)
pkg_check_modules(WEBKIT REQUIRED IMPORTED_TARGET webkitgtk-6.0>=2.50)

find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
find_program(MSGFMT msgfmt REQUIRED)
