# GWorlds, the offscreen buffer and the bitmap transforms through the DLL,
# read back from DIB sections under Wine.
kwe_wine_tests(offscreen_tests ${CMAKE_CURRENT_LIST_DIR}/gworld_test.cpp)
