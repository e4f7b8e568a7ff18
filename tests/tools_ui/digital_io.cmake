if(SERVO_QT AND TARGET servo_tools_ui AND TARGET servo_test_support)
    servo_test(test_digital_io_window QT
        SOURCES digital_io_main.cpp test_digital_io_keys.cpp test_digital_io_window.cpp
        LINKS servo_tools_ui servo_test_support)
endif()
