if(TARGET servo_test_support AND TARGET servo_tools)
    servo_test(test_commands SOURCES test_init_save.cpp test_rs485.cpp
               LINKS servo_tools servo_test_support)
endif()
if(TARGET servo_test_sim_bench AND TARGET servo_tools AND TARGET data_tree)
    servo_test(test_commands_sim SOURCES test_commands_simulated.cpp
               LINKS servo_tools servo_test_sim_bench)
    add_dependencies(test_commands_sim data_tree)
endif()
