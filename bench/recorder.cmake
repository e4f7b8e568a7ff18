servo_bench(recorder SOURCES bench_recorder.cpp LINKS servo_sim)
target_include_directories(bench_recorder PRIVATE ${CMAKE_SOURCE_DIR})
