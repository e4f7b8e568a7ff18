list(APPEND TOOLS_SOURCES errors.cpp fault_table.cpp)
