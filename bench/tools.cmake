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
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 sees an overflow in every vector that grows from a list of one element when it
        # optimises.
        target_compile_options(bench_configuration PRIVATE -Wno-array-bounds -Wno-stringop-overflow
                                                           -Wno-stringop-overread)
    endif()
endif()
