if(TARGET servo_tools)
    # The virtual bench as the tests have it; it is not built with the programs.
    find_package(GTest REQUIRED)
    set(tests ${CMAKE_SOURCE_DIR}/tests)
    servo_bench(configuration
        SOURCES bench_configuration.cpp ${tests}/support/fake_drive.cpp ${tests}/support/fakes.cpp
                ${tests}/support/virtual_bench.cpp ${tests}/support/virtual_line.cpp
                ${tests}/support/virtual_time.cpp
        LINKS servo_tools GTest::gtest)
    target_include_directories(bench_configuration PRIVATE ${CMAKE_SOURCE_DIR} ${tests}
                                                           ${tests}/tools)
endif()
