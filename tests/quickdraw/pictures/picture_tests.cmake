# Pictures: the opcode walker natively under the sanitizers; recording and
# playback through the DLL into DIB sections under Wine.
kwe_native_tests(picture_walker_tests ${CMAKE_CURRENT_LIST_DIR}/picture_walker_test.cpp)
kwe_wine_tests(picture_tests ${CMAKE_CURRENT_LIST_DIR}/pictures_test.cpp)
