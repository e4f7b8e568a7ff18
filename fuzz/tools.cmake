if(TARGET servo_tools)
    servo_fuzz(digital_io_list SOURCES digital_io_list.cpp LINKS servo_tools)
endif()
