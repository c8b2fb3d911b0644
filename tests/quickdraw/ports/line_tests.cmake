# One-pixel lines compared with GDI's own, direction by direction.
kwe_wine_tests(line_tests ${CMAKE_CURRENT_LIST_DIR}/line_pixels_test.cpp)
