list(APPEND TOOLS_SOURCES homing.cpp homing_comparison.cpp homing_method.cpp homing_poll.cpp
                          homing_travel.cpp homing_travel_texts.cpp)
