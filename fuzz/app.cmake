if(TARGET servo_app)
    servo_fuzz(walkthrough_file SOURCES walkthrough_file.cpp LINKS servo_app)
endif()
