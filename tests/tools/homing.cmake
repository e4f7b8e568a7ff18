servo_test(test_homing
    SOURCES test_homing.cpp test_homing_link.cpp test_homing_method.cpp test_homing_poll.cpp
            test_homing_travel.cpp
    LINKS servo_tools servo_test_support fmt::fmt)
