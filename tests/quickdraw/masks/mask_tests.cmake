# Masks: the seed fill and CalcMask natively against a plain flood fill;
# the calls through the DLL under Wine.
kwe_native_tests(seed_fill_tests ${CMAKE_CURRENT_LIST_DIR}/seed_fill_test.cpp)
kwe_wine_tests(mask_tests ${CMAKE_CURRENT_LIST_DIR}/masks_test.cpp)
