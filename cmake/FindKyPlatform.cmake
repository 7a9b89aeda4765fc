# Finds the SDK's platform libraries: the logging library (<kylog/kylog.h>, libkylog) and the component
# library (<complib/...>, libkycomp), as targets KyPlatform::kylog and KyPlatform::kycomp. Point
# CMAKE_PREFIX_PATH at the prefix that they are installed in.

find_path(kylog_INCLUDE_DIR kylog/kylog.h)
find_library(kylog_LIBRARY kylog)
find_path(kycomp_INCLUDE_DIR complib/cl_qmap.h)
find_library(kycomp_LIBRARY kycomp)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(KyPlatform REQUIRED_VARS
  kylog_LIBRARY kylog_INCLUDE_DIR kycomp_LIBRARY kycomp_INCLUDE_DIR)

foreach(library IN ITEMS kylog kycomp)
  mark_as_advanced(${library}_INCLUDE_DIR ${library}_LIBRARY)
  if(KyPlatform_FOUND AND NOT TARGET KyPlatform::${library})
    add_library(KyPlatform::${library} SHARED IMPORTED)
    set_target_properties(KyPlatform::${library} PROPERTIES
      IMPORTED_LOCATION ${${library}_LIBRARY}
      INTERFACE_INCLUDE_DIRECTORIES ${${library}_INCLUDE_DIR})
  endif()
endforeach()
