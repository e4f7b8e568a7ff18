if(TARGET servo_test_support AND TARGET servo_tools)
    find_package(rapidcheck REQUIRED)
    servo_test(test_journal
        SOURCES test_journal.cpp test_journal_line.cpp test_journal_restore.cpp test_tapped_port.cpp
                ${CMAKE_SOURCE_DIR}/tests/base/rapidcheck_seed.cpp
        LINKS servo_tools servo_test_support rapidcheck)
endif()
