if(TARGET servo_test_support AND TARGET servo_tools)
    servo_test(test_digital_io
        SOURCES test_digital_io.cpp test_digital_io_chooser.cpp test_digital_io_link.cpp
                test_digital_io_list.cpp test_digital_io_notes.cpp test_digital_io_rows.cpp
        LINKS servo_tools servo_test_support)
endif()
if(TARGET servo_test_sim_bench AND TARGET servo_tools AND TARGET data_tree)
    servo_test(test_digital_io_sim SOURCES test_digital_io_simulated.cpp
               LINKS servo_tools servo_test_sim_bench)
    add_dependencies(test_digital_io_sim data_tree)
endif()
