# The fuzzer's targets, for both builds that run them.
set(fuzz_target_sources
  addin_targets.cpp
  differences.cpp
  format_targets.cpp
  input.cpp
  picture_targets.cpp
  record_targets.cpp
  ../toolpicture/reference_drawing.cpp)
