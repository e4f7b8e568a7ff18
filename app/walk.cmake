# Sources of the walkthrough player and of the state dump: those without a widget, and those with.
set(SERVO_WALK_PLAIN walk_keys.cpp walk_script.cpp walk_words.cpp)
set(SERVO_WALK_QT "")
