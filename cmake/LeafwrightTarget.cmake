# leafwright_configure(<target>): what every target of the project has in common.
function(leafwright_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-qual -Woverloaded-virtual
    -fno-semantic-interposition)
  if(LEAFWRIGHT_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(LEAFWRIGHT_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${LEAFWRIGHT_SANITIZE} -fno-omit-frame-pointer
      -fno-sanitize-recover=all)
    target_link_options(${target} PUBLIC -fsanitize=${LEAFWRIGHT_SANITIZE})
    # What GCC adds for threads hides from it that a std::optional was looked at before its value is taken.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND LEAFWRIGHT_SANITIZE MATCHES "thread")
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
  endif()
endfunction()

# leafwright_library(<name> SOURCES ... [DEPENDS ...] [PRIVATE_DEPENDS ...] [WIDGETS]): a folder of src/. Its objects
# go into one of the libraries that the programs share; see src/CMakeLists.txt.
# DEPENDS is public: it says which folders this one may include. As many end in one library, no linker checks
# that; tests/sources/IncludesTest.cpp does.
# WIDGETS: the folder draws on Qt Widgets, or on one that does.
function(leafwright_library name)
  cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} OBJECT ${ARG_SOURCES})
  leafwright_configure(${name})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
  if(ARG_WIDGETS)
    target_precompile_headers(${name} REUSE_FROM leafwright_widget_headers)
  else()
    target_precompile_headers(${name} REUSE_FROM leafwright_core_headers)
  endif()
  if(ARG_WIDGETS)
    set_property(GLOBAL APPEND PROPERTY LEAFWRIGHT_WINDOW_FOLDERS ${name})
  else()
    set_property(GLOBAL APPEND PROPERTY LEAFWRIGHT_FOLDERS ${name})
  endif()
endfunction()

# leafwright_shared_library(<name> <file> FOLDERS ... DEPENDS ...): what the programs share. It is nobody else's, so it
# is installed to a folder of its own; libraries find each other there, and programs by their INSTALL_RPATH.
function(leafwright_shared_library name file)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS" ${ARGN})
  add_library(${name} SHARED)
  target_link_libraries(${name} PRIVATE ${ARG_FOLDERS} PUBLIC ${ARG_DEPENDS})
  # What the folders of the other library stand on is not needed here as well.
  target_link_options(${name} PRIVATE LINKER:--as-needed)
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${file} LINKER_LANGUAGE CXX LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/leafwright)
endfunction()

# leafwright_program(<name> SOURCES ... DEPENDS ...): a program on shared libraries; found in bin/ of the build.
function(leafwright_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  leafwright_configure(${name})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
endfunction()

# leafwright_precompiled(<name> DEPENDS ... HEADERS ...): headers of libraries, parsed once for all targets that
# REUSE_FROM <name>.
function(leafwright_precompiled name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;HEADERS" ${ARGN})
  set(source ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Nothing but what is precompiled.\n")
  add_library(${name} OBJECT ${source})
  leafwright_configure(${name})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()
