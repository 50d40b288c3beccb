# The floors of the house, lowest first. A room includes from itself and from floors below its own,
# never from a neighbour on its floor. platform/qt stands on platform and is for windows alone.
set(ORVIA_FLOORS
    "common"
    "platform"
    "logger"
    "flow"
    "records"
    "link"
    "client console"
    "setup history trace"
    "archive"
    "collect"
    "app")
string(REPLACE " " ";" ORVIA_ROOMS "${ORVIA_FLOORS}")

# Run as a script (-D SOURCE=<folder of the rooms>), it looks at every include of every file and
# fails on one that goes up.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    return()
endif()

set(level 0)
foreach(floor IN LISTS ORVIA_FLOORS)
    string(REPLACE " " ";" rooms "${floor}")
    foreach(room IN LISTS rooms)
        set(level_of_${room} ${level})
    endforeach()
    math(EXPR level "${level} + 1")
endforeach()

set(wrong 0)
set(looked_at 0)
file(GLOB folders RELATIVE ${SOURCE} ${SOURCE}/*)
foreach(room IN LISTS folders)
    if(NOT IS_DIRECTORY ${SOURCE}/${room})
        continue()
    endif()
    if(NOT DEFINED level_of_${room})
        message(SEND_ERROR "the room ${room} has no floor (cmake/OrviaFloors.cmake)")
        continue()
    endif()
    file(GLOB_RECURSE files RELATIVE ${SOURCE} ${SOURCE}/${room}/*.h ${SOURCE}/${room}/*.cpp)
    foreach(file IN LISTS files)
        file(STRINGS ${SOURCE}/${file} includes REGEX "^#include \"[a-z]+/")
        foreach(include IN LISTS includes)
            math(EXPR looked_at "${looked_at} + 1")
            string(REGEX REPLACE "^#include \"([a-z]+)/.*" "\\1" other "${include}")
            if(other STREQUAL room)
                continue()
            endif()
            if(NOT DEFINED level_of_${other} OR NOT level_of_${other} LESS level_of_${room})
                message(SEND_ERROR "src/${file}: ${include} does not go down")
            endif()
        endforeach()
    endforeach()
endforeach()
if(looked_at LESS 100)
    message(FATAL_ERROR "only ${looked_at} includes found below ${SOURCE}: wrong folder?")
endif()
message("${looked_at} includes, none of them up")
