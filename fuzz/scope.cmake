if(TARGET servo_scope)
    servo_fuzz(scope_file SOURCES scope_file.cpp LINKS servo_scope)
    servo_fuzz(scope_frames SOURCES scope_frames.cpp LINKS servo_scope)
endif()
