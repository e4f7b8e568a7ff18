if(TARGET servo_test_support AND TARGET servo_tools)
    servo_test(test_faults SOURCES test_errors.cpp test_fault_table.cpp
               LINKS servo_tools servo_test_support)
endif()
if(TARGET servo_fault_document AND TARGET data_tree)
    servo_test(test_fault_document SOURCES test_fault_document.cpp
               LINKS servo_fault_document)
    add_dependencies(test_fault_document data_tree)
endif()
