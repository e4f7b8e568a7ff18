servo_test(test_homing
    SOURCES test_homing.cpp test_homing_link.cpp test_homing_method.cpp test_homing_poll.cpp
            test_homing_travel.cpp
    LINKS servo_tools servo_test_support fmt::fmt)
# The same numbers read by the simulated drive.
servo_test(test_homing_simulated SOURCES test_homing_simulated.cpp LINKS servo_tools servo_sim)
