tulvane_bench(bench_clean SOURCES clean_bench.cpp LINKS tulvane_speech_whisper)
tulvane_bench(bench_model_check SOURCES model_check_bench.cpp LINKS tulvane_speech_whisper tulvane_test_support)
# The helper that it starts lies beside it.
tulvane_bench(bench_devices SOURCES device_bench.cpp LINKS tulvane_program tulvane_session_local tulvane_audio_files)
add_dependencies(bench_devices tulvane-compute tulvane_demo_model)
