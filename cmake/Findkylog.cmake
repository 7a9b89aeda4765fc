# Finds the SDK's logging library: <kylog/kylog.h> and libkylog, as target kylog::kylog. Point
# CMAKE_PREFIX_PATH at the prefix that it is installed in.

find_path(kylog_INCLUDE_DIR kylog/kylog.h)
find_library(kylog_LIBRARY kylog)
mark_as_advanced(kylog_INCLUDE_DIR kylog_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(kylog REQUIRED_VARS kylog_LIBRARY kylog_INCLUDE_DIR)

if(kylog_FOUND AND NOT TARGET kylog::kylog)
  add_library(kylog::kylog SHARED IMPORTED)
  set_target_properties(kylog::kylog PROPERTIES
    IMPORTED_LOCATION ${kylog_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${kylog_INCLUDE_DIR})
endif()
