list(APPEND TOOLS_SOURCES
    digital_io.cpp
    digital_io_layout.cpp
    digital_io_list.cpp
    digital_io_notes.cpp
    digital_io_rows.cpp)
list(APPEND TOOLS_UI_SOURCES
    digital_io_chooser_widget.cpp
    digital_io_controls_view.cpp
    digital_io_legend_widget.cpp
    digital_io_table_widget.cpp
    digital_io_window.cpp
    icons/digital_io/digital_io_icons.qrc)
set(CMAKE_AUTORCC ON)  # for the pictures of this folder's windows
