# MuPDF as one imported target, leafwright::mupdf.
#
# Debian 12 ships MuPDF as a static library whose .pc file forgets harfbuzz;
# newer systems ship a shared one. The static flags serve both.
find_package(PkgConfig REQUIRED)
pkg_check_modules(MUPDF REQUIRED mupdf)
pkg_check_modules(HARFBUZZ REQUIRED harfbuzz)

add_library(leafwright_mupdf INTERFACE)
target_include_directories(leafwright_mupdf SYSTEM INTERFACE ${MUPDF_STATIC_INCLUDE_DIRS})
target_link_options(leafwright_mupdf INTERFACE ${MUPDF_STATIC_LDFLAGS_OTHER})
target_link_libraries(leafwright_mupdf INTERFACE ${MUPDF_STATIC_LDFLAGS} ${HARFBUZZ_LDFLAGS})
add_library(leafwright::mupdf ALIAS leafwright_mupdf)
