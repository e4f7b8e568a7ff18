if(SERVO_QT AND TARGET servo_tools_ui AND TARGET servo_app_ui AND TARGET servo_test_support)
    servo_test(test_homing_window QT
        SOURCES ../firmware_ui/main.cpp test_homing_captions.cpp test_homing_values.cpp
                test_homing_window.cpp
        LINKS servo_tools_ui servo_app_ui servo_test_support)
endif()
# The files as they lie beside the program.
if(SERVO_QT AND TARGET servo_homing_pictures AND TARGET servo_app_ui)
    servo_test(test_homing_pictures QT
        SOURCES ../firmware_ui/main.cpp test_homing_pictures.cpp
        LINKS servo_homing_pictures servo_app_ui)
    add_dependencies(test_homing_pictures data_tree)
endif()
