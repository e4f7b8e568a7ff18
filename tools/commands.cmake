list(APPEND TOOLS_SOURCES
    drive_commands.cpp
    drive_commands_restart.cpp
    easy.cpp
    init_save.cpp
    init_save_texts.cpp
    rs485.cpp)
list(APPEND TOOLS_UI_SOURCES
    easy_application_widget.cpp
    easy_control_widget.cpp
    easy_grid_view.cpp
    easy_window.cpp
    form_controls_view.cpp
    init_save_window.cpp
    rs485_window.cpp)
