# Sources of the walkthrough player and of the state dump: those without a widget, and those with.
set(SERVO_WALK_PLAIN
    state_document.cpp
    walk_dialogs.cpp
    walk_keys.cpp
    walk_script.cpp
    walk_words.cpp)
set(SERVO_WALK_QT
    state_controls.cpp
    state_reader.cpp
    walk_actions.cpp
    walk_control_actions.cpp
    walk_input.cpp
    walk_player.cpp
    walk_target.cpp)
