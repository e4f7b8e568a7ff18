list(APPEND TOOLS_SOURCES configuration.cpp configuration_job.cpp configuration_rows.cpp)
