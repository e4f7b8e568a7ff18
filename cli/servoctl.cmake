# Sources of servoctl: what can be right or wrong is plain, the machine's ports and the tick are Qt.
set(SERVO_CTL_PLAIN
    access_job.cpp
    command_dict.cpp
    command_flash.cpp
    command_formula.cpp
    command_objects.cpp
    command_write.cpp
    drive_texts.cpp
    engine_session.cpp
    options.cpp
    output.cpp
    run.cpp
    target.cpp)
set(SERVO_CTL_QT
    qt_environment.cpp
    sim_process.cpp)
