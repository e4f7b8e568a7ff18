servo_bench(scope_math SOURCES bench_scope_math.cpp LINKS servo_scope)
target_include_directories(bench_scope_math PRIVATE ${CMAKE_SOURCE_DIR})
if(SERVO_QT)
    servo_bench(scope_plot SOURCES bench_scope_plot.cpp LINKS servo_scope_ui)
    target_include_directories(bench_scope_plot PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(bench_scope_plot PRIVATE QT_NO_KEYWORDS)
endif()

# The upload runs over the virtual line of the tests and, with Qt, over a pseudo-terminal.
if(TARGET servo_sim AND TARGET data_tree)
    set(bench_support ${CMAKE_SOURCE_DIR}/tests/support)
    servo_bench(scope_upload
        SOURCES bench_scope_upload.cpp ${bench_support}/sim_bench.cpp
                ${bench_support}/virtual_line.cpp ${bench_support}/virtual_time.cpp
        LINKS servo_scope servo_sim)
    target_include_directories(bench_scope_upload PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
    add_dependencies(bench_scope_upload data_tree)
    if(SERVO_QT)
        target_link_libraries(bench_scope_upload PRIVATE servo_link_qt Qt6::Core)
        target_compile_definitions(bench_scope_upload PRIVATE SERVO_BENCH_PTY)
        add_dependencies(bench_scope_upload drive-sim)
    endif()
endif()

if(SERVO_QT)
    servo_bench(scope_poller SOURCES bench_scope_poller.cpp LINKS servo_scope_ui servo_link_qt)
    target_include_directories(bench_scope_poller PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(bench_scope_poller PRIVATE QT_NO_KEYWORDS)
    add_dependencies(bench_scope_poller drive-sim data_tree)
endif()
