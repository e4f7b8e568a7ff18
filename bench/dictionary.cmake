servo_bench(dictionary SOURCES bench_dictionary.cpp LINKS servo_dictionary)
target_include_directories(bench_dictionary PRIVATE ${CMAKE_SOURCE_DIR})
