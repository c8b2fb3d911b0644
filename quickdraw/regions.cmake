# Regions: the mask raster is byte work and runs natively (and under the
# fuzzer); the region calls themselves stand on GDI's regions.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/mask_raster.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/mask_regions.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_clip.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_geometry.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_markers.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_queries.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_set_operations.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_storage.cpp)
endif()
