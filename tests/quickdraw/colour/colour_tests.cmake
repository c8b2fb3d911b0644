# What a 1-bit device gets for a colour, and the colour tables' laws,
# natively; devices and pixel maps through the DLL.
kwe_native_tests(colour_arithmetic_tests
  ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/colour_tables_test.cpp)
kwe_wine_tests(colour_tests ${CMAKE_CURRENT_LIST_DIR}/devices_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/palettes_test.cpp)
# Palettes of shown windows and the colour dialog: one at a time beside the
# other tests that show windows (the "mouse" lock).
kwe_wine_tests(palette_window_tests ${CMAKE_CURRENT_LIST_DIR}/palette_windows_test.cpp)
if(TARGET palette_window_tests)
  get_property(quickdraw_tests DIRECTORY PROPERTY TESTS)
  foreach(test IN LISTS quickdraw_tests)
    if(test MATCHES "\\.WindowPalettes\\.")
      set_tests_properties(${test} PROPERTIES RESOURCE_LOCK mouse)
    endif()
  endforeach()
endif()
