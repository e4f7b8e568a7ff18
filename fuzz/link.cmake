if(TARGET servo_link)
    servo_fuzz(frame_reader SOURCES frame_reader.cpp LINKS servo_link)
endif()
