tulvane_bench(bench_recorder SOURCES recorder_bench.cpp
    LINKS tulvane_audio tulvane_fake tulvane_pulse tulvane_test_support)
tulvane_bench(bench_download SOURCES download_bench.cpp
    LINKS tulvane_models tulvane_transfers tulvane_test_support)
add_dependencies(bench_download tulvane-transfers)
target_compile_definitions(bench_download PRIVATE TULVANE_TRANSFER_HELPER="$<TARGET_FILE:tulvane-transfers>")
