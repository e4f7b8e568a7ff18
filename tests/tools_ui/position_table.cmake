if(SERVO_QT AND TARGET servo_tools_ui AND TARGET servo_app_ui AND TARGET servo_test_support)
    servo_test(test_pos_flow_window QT
        SOURCES pos_flow_main.cpp test_pos_flow_window.cpp test_pos_flow_window_editing.cpp
                test_pos_flow_window_pictures.cpp test_pos_flow_window_rows.cpp
        LINKS servo_tools_ui servo_app_ui servo_test_support)
endif()
