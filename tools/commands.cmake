list(APPEND TOOLS_SOURCES drive_commands.cpp init_save.cpp rs485.cpp)
