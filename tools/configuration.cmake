list(APPEND TOOLS_SOURCES
    configuration.cpp
    configuration_additions.cpp
    configuration_check.cpp
    configuration_compare.cpp
    configuration_job.cpp
    configuration_notes.cpp
    configuration_report.cpp
    configuration_rows.cpp)
list(APPEND TOOLS_UI_SOURCES
    configuration_controls_view.cpp
    configuration_grid_view.cpp
    configuration_report_widget.cpp
    configuration_tab_widget.cpp
    configuration_window.cpp)
