# Debian's hivex as one interface target.
include_guard(GLOBAL)
find_package(PkgConfig REQUIRED)
pkg_check_modules(HIVEX REQUIRED IMPORTED_TARGET GLOBAL hivex)
