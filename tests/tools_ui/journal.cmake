if(SERVO_QT AND TARGET servo_tools_ui AND TARGET servo_app_ui AND TARGET servo_test_support)
    servo_test(test_journal_window QT
        SOURCES ../firmware_ui/main.cpp test_journal_window.cpp
        LINKS servo_tools_ui servo_app_ui servo_test_support)
endif()
