if(TARGET servo_test_support AND TARGET servo_tools)
    find_package(rapidcheck REQUIRED)
    servo_test(test_position_table
        SOURCES test_position_entry.cpp test_position_file.cpp test_position_flow.cpp
                test_position_findings.cpp test_position_motion.cpp test_position_pictures.cpp
                test_position_register.cpp test_position_rows.cpp test_position_transfer.cpp
                ${CMAKE_SOURCE_DIR}/tests/base/rapidcheck_seed.cpp
        LINKS servo_tools servo_test_support rapidcheck)
    servo_test(test_pos_flow
        SOURCES test_pos_flow.cpp test_pos_flow_additions.cpp test_pos_flow_editing.cpp
                test_pos_flow_job.cpp test_pos_flow_line.cpp
        LINKS servo_tools servo_test_support)
endif()
if(TARGET servo_test_sim_bench AND TARGET servo_tools AND TARGET data_tree)
    servo_test(test_pos_flow_sim SOURCES test_pos_flow_simulated.cpp
               LINKS servo_tools servo_test_sim_bench)
    add_dependencies(test_pos_flow_sim data_tree)
endif()
if(TARGET servo_test_sim_bench AND TARGET servo_tools AND TARGET servo_scope AND TARGET data_tree)
    servo_test(test_pos_flow_scope SOURCES test_pos_flow_scope.cpp
               LINKS servo_tools servo_scope servo_test_sim_bench)
    add_dependencies(test_pos_flow_scope data_tree)
endif()
