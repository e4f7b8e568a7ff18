if(TARGET servo_tuner)
    servo_bench(tuner SOURCES bench_tuner.cpp LINKS servo_tuner)
    target_include_directories(bench_tuner PRIVATE ${CMAKE_SOURCE_DIR})
endif()
