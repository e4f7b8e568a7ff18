if(SERVO_QT AND TARGET servo_tools_ui AND TARGET servo_test_support)
    servo_test(test_configuration_window QT
        SOURCES digital_io_main.cpp test_configuration_window.cpp
        LINKS servo_tools_ui servo_test_support)
endif()
