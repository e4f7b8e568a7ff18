if(TARGET servo_params)
    servo_fuzz(page_file SOURCES page_file.cpp LINKS servo_params)
endif()
