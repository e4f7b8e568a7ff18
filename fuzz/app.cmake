if(TARGET servo_app)
    servo_fuzz(walkthrough_file SOURCES walkthrough_file.cpp LINKS servo_app)
    servo_fuzz(desk_file SOURCES desk_file.cpp LINKS servo_app)
endif()
