if(TARGET servo_sim)
    servo_fuzz(sim_line SOURCES sim_line.cpp LINKS servo_sim)
    servo_fuzz(sim_texts SOURCES sim_texts.cpp LINKS servo_sim)
endif()
