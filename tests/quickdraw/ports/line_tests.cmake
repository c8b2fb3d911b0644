# One-pixel lines compared with GDI's own, direction by direction, and ports
# switched and closed.
kwe_wine_tests(line_tests ${CMAKE_CURRENT_LIST_DIR}/line_pixels_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/port_switching_test.cpp)
