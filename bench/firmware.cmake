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

# Over a pseudo-terminal, with an image made for the run.
if(SERVO_QT AND TARGET servo_firmware AND TARGET drive-sim)
    find_package(Python3 COMPONENTS Interpreter REQUIRED)
    servo_bench(firmware_line SOURCES bench_firmware_line.cpp
        LINKS servo_firmware servo_link_qt Qt6::Core)
    target_include_directories(bench_firmware_line PRIVATE ${CMAKE_SOURCE_DIR})
    add_dependencies(bench_firmware_line drive-sim data_tree)
    add_custom_command(TARGET bench_firmware_line POST_BUILD
        COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/scripts/make_firmware --blocks 121
                ${CMAKE_BINARY_DIR}/bench/long.servo)
endif()
