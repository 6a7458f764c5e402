#The fuzzer's targets, for both builds that run them.
set(fuzz_target_sources format_targets.cpp picture_targets.cpp record_targets.cpp)
