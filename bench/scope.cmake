servo_bench(scope_math SOURCES bench_scope_math.cpp LINKS servo_scope)
target_include_directories(bench_scope_math PRIVATE ${CMAKE_SOURCE_DIR})
