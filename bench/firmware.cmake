if(NOT TARGET servo_test_support AND TARGET servo_link)
    # The virtual bench, in a build without the tests.
    find_package(GTest REQUIRED)
    add_subdirectory(${CMAKE_SOURCE_DIR}/tests/support ${CMAKE_BINARY_DIR}/tests_support)
endif()
if(TARGET servo_test_support AND TARGET servo_firmware)
    servo_bench(firmware SOURCES bench_firmware.cpp
                                 ${CMAKE_SOURCE_DIR}/tests/firmware/text_bootloader.cpp
                LINKS servo_test_support servo_firmware)
    target_include_directories(bench_firmware PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests
                                                      ${CMAKE_SOURCE_DIR}/tests/firmware)
endif()
