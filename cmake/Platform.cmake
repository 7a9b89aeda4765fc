# The platform libraries, as ${platform_libraries}: those of this tree, or the SDK's own.

if(KRIOLILGLU_PLATFORM STREQUAL "stand-in")
  add_library(kylog SHARED platform/kylog/kylog.cpp)
  target_sources(kylog PUBLIC
    FILE_SET HEADERS
    BASE_DIRS platform/kylog/include
    FILES platform/kylog/include/kylog/kylog.h)
  target_link_libraries(kylog PRIVATE $<BUILD_INTERFACE:kriolilglu_library_flags>)
  set_target_properties(kylog PROPERTIES LINKER_LANGUAGE C)
  set(platform_libraries kylog)
elseif(KRIOLILGLU_PLATFORM STREQUAL "system")
  list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake)
  find_package(kylog REQUIRED)
  set(platform_libraries kylog::kylog)
else()
  message(FATAL_ERROR
    "KRIOLILGLU_PLATFORM is '${KRIOLILGLU_PLATFORM}'; it must be 'stand-in' or 'system'")
endif()
