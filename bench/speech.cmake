tulvane_bench(bench_clean SOURCES clean_bench.cpp LINKS tulvane_speech)
if(TARGET tulvane_test_support)
    tulvane_bench(bench_model_check SOURCES model_check_bench.cpp LINKS tulvane_speech tulvane_test_support)
endif()
