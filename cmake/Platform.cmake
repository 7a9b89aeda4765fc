# Sets ${platform_libraries}: the stand-ins of this tree, or the SDK's own libraries.

if(KRIOLILGLU_PLATFORM STREQUAL "stand-in")
  foreach(library IN ITEMS kylog kycomp)
    add_library(${library} SHARED platform/${library}/${library}.cpp)
    target_link_libraries(${library} PRIVATE $<BUILD_INTERFACE:kriolilglu_library_flags>)
    set_target_properties(${library} PROPERTIES LINKER_LANGUAGE C)
  endforeach()
  target_sources(kylog PUBLIC
    FILE_SET HEADERS
    BASE_DIRS platform/kylog/include
    FILES platform/kylog/include/kylog/kylog.h)
  target_sources(kycomp PUBLIC
    FILE_SET HEADERS
    BASE_DIRS platform/kycomp/include
    FILES
      platform/kycomp/include/complib/cl_assert.h
      platform/kycomp/include/complib/cl_memory.h
      platform/kycomp/include/complib/cl_qcomppool.h
      platform/kycomp/include/complib/cl_qmap.h
      platform/kycomp/include/complib/cl_qpool.h
      platform/kycomp/include/complib/cl_spinlock.h)
  target_link_libraries(kycomp PUBLIC kylog) # its headers log failed assertions
  set(platform_libraries kylog kycomp)
elseif(KRIOLILGLU_PLATFORM STREQUAL "system")
  list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake)
  find_package(KyPlatform REQUIRED)
  set(platform_libraries KyPlatform::kylog KyPlatform::kycomp)
else()
  message(FATAL_ERROR
    "KRIOLILGLU_PLATFORM is '${KRIOLILGLU_PLATFORM}'; it must be 'stand-in' or 'system'")
endif()
