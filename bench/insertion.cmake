tulvane_bench(bench_insertion SOURCES insertion_bench.cpp
    LINKS tulvane_insertion tulvane_fake tulvane_test_targets)
tulvane_bench(bench_pictures SOURCES picture_bench.cpp
    LINKS tulvane_insertion tulvane_fake tulvane_test_targets)
target_compile_definitions(bench_pictures PRIVATE TULVANE_PICTURE_HOLDER="${CMAKE_CURRENT_SOURCE_DIR}/picture_holder.py")
