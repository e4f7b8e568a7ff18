if(TARGET servo_firmware)
    # The virtual bench as the tests have it; it is not built with the programs.
    find_package(GTest REQUIRED)
    set(tests ${CMAKE_SOURCE_DIR}/tests)
    servo_bench(firmware
        SOURCES bench_firmware.cpp ${tests}/firmware/text_bootloader.cpp ${tests}/support/fakes.cpp
                ${tests}/support/virtual_bench.cpp ${tests}/support/virtual_line.cpp
                ${tests}/support/virtual_time.cpp
        LINKS servo_firmware GTest::gtest)
    target_include_directories(bench_firmware PRIVATE ${CMAKE_SOURCE_DIR} ${tests} ${tests}/firmware)
endif()
