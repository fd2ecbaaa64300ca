# leafwright_configure(<target>): what every target of the project has in common.
function(leafwright_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-qual -Woverloaded-virtual)
  if(LEAFWRIGHT_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(LEAFWRIGHT_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${LEAFWRIGHT_SANITIZE} -fno-omit-frame-pointer
      -fno-sanitize-recover=all)
    target_link_options(${target} PUBLIC -fsanitize=${LEAFWRIGHT_SANITIZE})
  endif()
endfunction()

# leafwright_library(<name> SOURCES ... [DEPENDS ...]): a folder of src/ as a static library.
# DEPENDS is public: it says which folders this one may include.
function(leafwright_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  leafwright_configure(${name})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
  target_precompile_headers(${name} PRIVATE
    <QByteArray> <QHash> <QPointF> <QString> <algorithm> <memory> <optional> <vector>)
endfunction()
