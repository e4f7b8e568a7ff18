list(APPEND TOOLS_SOURCES tapped_port.cpp journal.cpp journal_restore.cpp journal_texts.cpp)
list(APPEND TOOLS_UI_SOURCES journal_window.cpp)
