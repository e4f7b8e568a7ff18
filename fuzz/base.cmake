servo_fuzz(profile_file SOURCES profile_file.cpp LINKS servo_base)
