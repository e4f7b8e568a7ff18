list(APPEND TOOLS_SOURCES
    pos_flow.cpp
    pos_flow_additions.cpp
    position_table.cpp
    position_table_entry.cpp
    position_table_file.cpp
    position_table_findings.cpp
    position_table_flow.cpp
    position_table_flow_picture.cpp
    position_table_job.cpp
    position_table_motion.cpp
    position_table_motion_picture.cpp
    position_table_notes.cpp
    position_table_register.cpp
    position_table_rows.cpp
    position_table_steps.cpp
    position_table_transfer.cpp)
list(APPEND TOOLS_UI_SOURCES
    pos_flow_window.cpp
    position_editors_view.cpp
    position_flow_widget.cpp
    position_grid_view.cpp
    position_motion_widget.cpp
    position_pictures_widget.cpp
    position_tables_widget.cpp)
