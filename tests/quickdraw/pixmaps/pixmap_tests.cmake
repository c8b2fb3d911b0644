# Macintosh pixels to DIB rows and back, natively under the sanitizers.
kwe_native_tests(pixel_conversion_tests ${CMAKE_CURRENT_LIST_DIR}/pixel_conversion_test.cpp)
# Library pixel maps over DIBs and DDBs through the DLL.
kwe_wine_tests(pixmap_tests ${CMAKE_CURRENT_LIST_DIR}/pixmaps_test.cpp)
