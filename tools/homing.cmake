list(APPEND TOOLS_SOURCES homing.cpp homing_comparison.cpp homing_method.cpp homing_poll.cpp
                          homing_travel.cpp homing_travel_texts.cpp)
list(APPEND TOOLS_UI_SOURCES homing_choice_widget.cpp homing_controls_view.cpp
                             homing_picture_widget.cpp homing_values_widget.cpp homing_window.cpp)
