if(SERVO_QT)
    servo_bench(browser SOURCES bench_browser.cpp LINKS servo_params_ui)
    target_include_directories(bench_browser PRIVATE ${CMAKE_SOURCE_DIR})
endif()
