if(TARGET servo_tuner)
    servo_bench(tuner SOURCES bench_tuner.cpp LINKS servo_tuner)
    target_include_directories(bench_tuner PRIVATE ${CMAKE_SOURCE_DIR})
endif()
if(TARGET servo_tuner_ui)
    servo_bench(tuner_picture SOURCES bench_tuner_picture.cpp LINKS servo_tuner_ui)
    target_include_directories(bench_tuner_picture PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(bench_tuner_picture PRIVATE QT_NO_KEYWORDS)
endif()
# The scan runs over the virtual line of the tests.
if(TARGET servo_tuner AND TARGET servo_sim AND TARGET data_tree)
    set(bench_support ${CMAKE_SOURCE_DIR}/tests/support)
    servo_bench(scan_line
        SOURCES bench_scan_line.cpp ${bench_support}/sim_bench.cpp
                ${bench_support}/virtual_line.cpp ${bench_support}/virtual_time.cpp
        LINKS servo_tuner servo_sim)
    target_include_directories(bench_scan_line PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
    add_dependencies(bench_scan_line data_tree)
endif()
