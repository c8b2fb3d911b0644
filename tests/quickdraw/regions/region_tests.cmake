# Regions through the DLL, drawn into memory DCs and read back; the mask
# raster natively under the sanitizers.
kwe_wine_tests(region_tests
  ${CMAKE_CURRENT_LIST_DIR}/regions_test.cpp)
kwe_native_tests(mask_raster_tests ${CMAKE_CURRENT_LIST_DIR}/mask_raster_test.cpp)
