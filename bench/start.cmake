# Both programs are started as a user starts them, so the benchmark itself needs no Qt.
if(SERVO_QT)
    servo_program(bench_empty_window SOURCES bench_empty_window.cpp LINKS Qt6::Widgets)
    set_target_properties(bench_empty_window PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                        ${CMAKE_BINARY_DIR}/bench)
    servo_bench(start SOURCES bench_start.cpp LINKS servo_base)
    target_include_directories(bench_start PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(bench_start PRIVATE
        SERVO_EMPTY_WINDOW="$<TARGET_FILE:bench_empty_window>")
    add_dependencies(bench_start bench_empty_window servo-workstation data_tree)
endif()
