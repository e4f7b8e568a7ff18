# All programs are started as a user starts them, so the benchmarks themselves need no Qt.
if(SERVO_QT)
    servo_program(empty_window SOURCES empty_window.cpp LINKS Qt6::Widgets)
    set_target_properties(empty_window PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tools)
    servo_bench(start SOURCES bench_start.cpp LINKS servo_base)
    target_include_directories(bench_start PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(bench_start PRIVATE
        SERVO_EMPTY_WINDOW="$<TARGET_FILE:empty_window>")
    add_dependencies(bench_start empty_window servo-workstation data_tree)

    servo_bench(processor SOURCES bench_processor.cpp LINKS servo_base)
    target_include_directories(bench_processor PRIVATE ${CMAKE_SOURCE_DIR})
    add_dependencies(bench_processor servo-workstation drive-sim data_tree)
endif()
