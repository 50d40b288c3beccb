# Installs the console into an empty folder and looks there as the program does: beside the file that
# the command leads to. Every table that a catalogue names has to lie there too.
set(prefix ${BUILD}/installed)
file(REMOVE_RECURSE ${prefix})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(command ${prefix}/bin/orvia)
if(NOT EXISTS ${command})
    message(FATAL_ERROR "${command} is missing or leads nowhere")
endif()
file(REAL_PATH ${command} program)
cmake_path(GET program PARENT_PATH folder)

set(tables 0)
foreach(catalogue flumes.lst weirs.lst)
    if(NOT EXISTS ${folder}/${catalogue})
        message(FATAL_ERROR "${catalogue} is not beside ${program}")
    endif()
    file(READ ${folder}/${catalogue} text)
    string(REGEX MATCHALL "[A-Za-z0-9_.-]+[.]tbl" named "${text}")
    foreach(table IN LISTS named)
        math(EXPR tables "${tables} + 1")
        if(NOT EXISTS ${folder}/${table})
            message(SEND_ERROR "${catalogue} names ${table}, which is not beside ${program}")
        endif()
    endforeach()
endforeach()
if(tables EQUAL 0)
    message(FATAL_ERROR "no catalogue names a table: has their form changed?")
endif()

# And nothing is left behind that the sources ship.
file(GLOB shipped RELATIVE ${DATA} ${DATA}/*.lst ${DATA}/*.tbl)
foreach(file IN LISTS shipped)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${DATA}/${file} ${folder}/${file}
        RESULT_VARIABLE differs)
    if(differs)
        message(SEND_ERROR "${file} is not installed as it is")
    endif()
endforeach()

# The help lies there, and what a practice needs.
foreach(file help/index.html help/main-window.html orvia-sim orvia-training practice/site.net
        practice/site.obk)
    if(NOT EXISTS ${folder}/${file})
        message(SEND_ERROR "${file} is not beside ${program}")
    endif()
endforeach()

# What makes a shared archive lies where an administrator looks.
if(NOT EXISTS ${prefix}/share/orvia/sql/archive.sql)
    message(SEND_ERROR "share/orvia/sql/archive.sql is missing")
endif()

# A program at the console's place, started over a link as the console is, reads them there.
file(MAKE_DIRECTORY ${prefix}/home)
set(offscreen ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen HOME=${prefix}/home
    XDG_CONFIG_HOME=${prefix}/home XDG_DATA_HOME=${prefix}/home ASAN_OPTIONS=detect_leaks=0)
cmake_path(GET CHECK FILENAME check)
file(COPY ${CHECK} DESTINATION ${folder})
file(CREATE_LINK ${folder}/${check} ${prefix}/bin/${check} SYMBOLIC)
execute_process(COMMAND ${offscreen} ${prefix}/bin/${check} ${DATA}
    RESULT_VARIABLE wrong OUTPUT_VARIABLE read)
if(wrong)
    message(FATAL_ERROR "the installed catalogues are not read: ${wrong}\n${read}")
endif()

# The command starts: it shows its windows, and goes on until it is stopped.
execute_process(COMMAND ${offscreen} ${command}
    TIMEOUT 3 RESULT_VARIABLE ended ERROR_VARIABLE said)
if(NOT ended MATCHES "timeout")
    message(FATAL_ERROR "the installed console ended by itself: ${ended} ${said}")
endif()
