# Manual pages and HTML, from the comments of the public headers, docs/conventions.md and the tables
# that the tool prints. What is public and not documented, an argument included, stops the build.

if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
  message(FATAL_ERROR "KRIOLILGLU_DOCS runs the command kriolilglu: it needs a native build")
endif()
find_package(Doxygen 1.9.4 REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

get_target_property(headers kriolilglu HEADER_SET)
get_target_property(name_headers kriolilglu HEADER_SET_name_headers)
list(APPEND headers ${name_headers})
list(TRANSFORM headers PREPEND ${PROJECT_SOURCE_DIR}/ REGEX "^[^/]")

set(DOXYGEN_PROJECT_NUMBER ${PROJECT_VERSION})
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR})
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/docs/conventions.md)
set(DOXYGEN_OPTIMIZE_OUTPUT_FOR_C YES)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_TYPEDEF_HIDES_STRUCT YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED
  KY_ENUM_BASE= "KY_ENUM(name)=enum name" "__attribute__(list)=" __cplusplus=202002L)
set(doc_tables ${PROJECT_SOURCE_DIR}/cmake/doc_tables.py)
set(tables ${PROJECT_BINARY_DIR}/doc_tables)
set(DOXYGEN_INPUT_FILTER
  "'${Python3_EXECUTABLE}' '${doc_tables}' '${tables}/names' '${tables}/rows'")
set(DOXYGEN_WARN_NO_PARAMDOC YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_ENUM_VALUES_PER_LINE 1)
set(DOXYGEN_SORT_MEMBER_DOCS NO)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_SEARCHENGINE NO)
set(DOXYGEN_GENERATE_XML YES)
set(DOXYGEN_XML_PROGRAMLISTING NO)
doxygen_add_docs(docs ${headers} ${PROJECT_SOURCE_DIR}/docs/conventions.md ALL
  COMMENT "Documentation in ${PROJECT_BINARY_DIR}/html and ${PROJECT_BINARY_DIR}/man")
add_custom_command(OUTPUT ${tables}/names ${tables}/rows VERBATIM DEPENDS kriolilglu-tool
  COMMAND ${CMAKE_COMMAND} -E make_directory ${tables}
  COMMAND kriolilglu-tool name --search "" > ${tables}/names
  COMMAND kriolilglu-tool port > ${tables}/rows)
add_custom_target(doc_tables DEPENDS ${tables}/names ${tables}/rows)
add_dependencies(docs doc_tables)
add_custom_command(TARGET docs POST_BUILD VERBATIM
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/man_pages.py xml man
    ${PROJECT_SOURCE_DIR} "kriolilglu ${PROJECT_VERSION}")

if(KRIOLILGLU_INSTALL)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}
    COMPONENT development)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development)
endif()
