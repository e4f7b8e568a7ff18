list(APPEND TOOLS_SOURCES errors.cpp errors_texts.cpp fault_table.cpp)
list(APPEND TOOLS_UI_SOURCES errors_row_widget.cpp errors_window.cpp errors_word_widget.cpp)
