# CopyBits: the pipeline's seeded sweep against the reference model natively
# under the sanitizers; colour tables, copies and banded copies through the
# DLL into DIB sections under Wine, with part of the same sweep.
kwe_native_tests(pixel_pipeline_tests ${CMAKE_CURRENT_LIST_DIR}/pipeline_sweep_test.cpp)
kwe_wine_tests(copybits_tests ${CMAKE_CURRENT_LIST_DIR}/copybits_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/dc_copies_test.cpp)
