# Plays one walkthrough in a folder of its own and checks how it ends.
#   PROGRAM   servo-workstation, with drive-sim and the data tree beside it
#   WALK      the file
#   FOLDER    where to play it; made anew
#   ARGUMENTS further options of the program, separated by commas
#   STATUS    the status that it must end with (0)
#   OUTPUT    what standard output must be, line by line; several lines separated by "\n" (nothing)
#   FILES     files that are copied into the folder first, separated by commas
#   PICTURES  files that must be there in the end, separated by commas
if(NOT DEFINED STATUS)
    set(STATUS 0)
endif()
foreach(list ARGUMENTS FILES PICTURES)
    string(REPLACE "," ";" ${list} "${${list}}")
endforeach()

# The program writes sys.ini, so each walkthrough has a tree of its own. The big files are only read.
cmake_path(GET PROGRAM PARENT_PATH tree)
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/data)
file(COPY ${tree}/sys DESTINATION ${FOLDER}/data)
foreach(name qorlan.dat Servo.dat modbus.txt sim HomingPics firmware Servo_Settings.cdo)
    if(EXISTS ${tree}/${name})
        file(CREATE_LINK ${tree}/${name} ${FOLDER}/data/${name} SYMBOLIC)
    endif()
endforeach()

foreach(file ${FILES})
    file(COPY ${file} DESTINATION ${FOLDER})
endforeach()

execute_process(
    COMMAND ${PROGRAM} --data ${FOLDER}/data --walk ${WALK} ${ARGUMENTS}
    WORKING_DIRECTORY ${FOLDER}
    RESULT_VARIABLE status
    OUTPUT_VARIABLE output
    ERROR_VARIABLE error)
string(REPLACE "\\n" "\n" wanted "${OUTPUT}")
string(REPLACE "${WALK}:" "" output "${output}")
# A box of several lines is printed on one, with "\\n" in it.
string(REPLACE "\\n" "\n" output "${output}")
string(STRIP "${output}" output)
if(NOT status STREQUAL STATUS)
    message(FATAL_ERROR "status ${status}, not ${STATUS}\n${output}\n${error}")
endif()
if(NOT output STREQUAL wanted)
    message(FATAL_ERROR "printed\n${output}\nand not\n${wanted}\n${error}")
endif()
foreach(picture ${PICTURES})
    if(NOT EXISTS ${FOLDER}/${picture})
        message(FATAL_ERROR "${picture} is not there")
    endif()
endforeach()
