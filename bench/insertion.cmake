tulvane_bench(bench_insertion SOURCES insertion_bench.cpp
    LINKS tulvane_insertion tulvane_fake tulvane_test_targets)
