if(TARGET servo_test_support AND TARGET servo_tools)
    find_package(rapidcheck REQUIRED)
    servo_test(test_configuration
        SOURCES test_configuration.cpp test_configuration_check.cpp test_configuration_compare.cpp
                test_configuration_job.cpp test_configuration_line.cpp
                test_configuration_replies.cpp test_configuration_rows.cpp
                ${CMAKE_SOURCE_DIR}/tests/base/rapidcheck_seed.cpp
        LINKS servo_tools servo_test_support rapidcheck)
endif()
if(TARGET servo_test_sim_bench AND TARGET servo_tools AND TARGET data_tree)
    servo_test(test_configuration_sim SOURCES test_configuration_simulated.cpp
               LINKS servo_tools servo_test_sim_bench)
    add_dependencies(test_configuration_sim data_tree)
endif()
