if(TARGET servo_tools)
    servo_fuzz(digital_io_list SOURCES digital_io_list.cpp LINKS servo_tools)
    servo_fuzz(position_file SOURCES position_file.cpp LINKS servo_tools)
endif()
