# Manual pages, one a function, and HTML, from the comments of the public headers. What is exported
# and not documented, or an argument that is not, stops the build.

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
set(DOXYGEN_PREDEFINED KY_EXPORT= "KY_ENUM(name)=enum name" __cplusplus=202002L)
# What the types of the name functions stand for is said above the functions.
set(DOXYGEN_INPUT_FILTER
  "sed -E 's|^typedef uint32_t (ky_[a-z0-9_]+)_t|/** What \\1_str names. */ &|'")
set(DOXYGEN_WARN_NO_PARAMDOC YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_ENUM_VALUES_PER_LINE 1)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_HTML_TIMESTAMP NO)
set(DOXYGEN_SEARCHENGINE NO)
set(DOXYGEN_GENERATE_XML YES)
set(DOXYGEN_XML_PROGRAMLISTING NO)
doxygen_add_docs(docs ${headers} ${PROJECT_SOURCE_DIR}/docs/conventions.md ALL
  COMMENT "Documentation in ${PROJECT_BINARY_DIR}/html and ${PROJECT_BINARY_DIR}/man")
add_custom_command(TARGET docs POST_BUILD VERBATIM
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/man_pages.py xml man/man3
    ${PROJECT_SOURCE_DIR}/abi/kriolilglu.map "kriolilglu ${PROJECT_VERSION}")

if(KRIOLILGLU_INSTALL)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}
    COMPONENT development)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development)
endif()
