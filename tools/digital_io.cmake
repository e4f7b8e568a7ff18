list(APPEND TOOLS_SOURCES
    digital_io.cpp
    digital_io_layout.cpp
    digital_io_list.cpp
    digital_io_notes.cpp
    digital_io_rows.cpp)
