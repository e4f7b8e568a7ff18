if(TARGET servo_tuner)
    servo_fuzz(bode_file SOURCES bode_file.cpp LINKS servo_tuner)
    servo_fuzz(scan_frames SOURCES scan_frames.cpp LINKS servo_tuner)
endif()
