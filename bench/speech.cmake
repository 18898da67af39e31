tulvane_bench(bench_clean SOURCES clean_bench.cpp LINKS tulvane_speech)
