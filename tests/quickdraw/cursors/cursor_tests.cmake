# Cursors through the DLL, read back from USER, with 'CURS' resources in a
# temporary directory. The Cursors cases move the one mouse of the display
# and show a window under it, so they run one at a time.
kwe_wine_tests(cursor_tests
  ${KWE_ROOT}/tests/files/files_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/cursor_test.cpp)
if(TARGET cursor_tests)
  target_compile_options(cursor_tests PRIVATE -Wno-multichar)
  get_property(quickdraw_tests DIRECTORY PROPERTY TESTS)
  foreach(test IN LISTS quickdraw_tests)
    if(test MATCHES "\\.Cursors\\.")
      set_tests_properties(${test} PROPERTIES RESOURCE_LOCK mouse)
    endif()
  endforeach()
endif()
