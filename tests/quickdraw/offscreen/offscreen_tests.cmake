# GWorlds, the offscreen buffer, the bitmap transforms and ports drawing
# into application memory through the DLL, read back from DIB sections and
# the program's own bytes under Wine.
kwe_wine_tests(offscreen_tests ${CMAKE_CURRENT_LIST_DIR}/offscreen_test.cpp)
