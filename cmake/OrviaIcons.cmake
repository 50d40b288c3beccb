# The icons are drawings, of which the build makes pictures in the sizes that screens of one to three
# times the usual fineness need: then nothing that reads a drawing goes along with the program.
find_program(ORVIA_RSVG rsvg-convert REQUIRED)

# Widths of icons as large as a line of text or a button, of the program's own, and of the picture
# shown at the start. What lies between two of them is made smaller by the toolkit, never larger.
set(ORVIA_WIDTHS 16 20 24 28 32 36 40 48 56 64 72 96)
set(ORVIA_WIDTHS_orvia 16 20 24 32 40 48 64 96 128 144 192 256 288)
set(ORVIA_WIDTHS_splash 480 600 720 960 1200 1440)

# orvia_icons(<target> <resource> <name>...): puts the drawings of these names into the target as the
# files :/icons/<name>/<width>.png.
function(orvia_icons target resource)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/pictures)
    set(list "<RCC>\n    <qresource prefix=\"/icons\">\n")
    foreach(name IN LISTS ARGN)
        set(drawing ${PROJECT_SOURCE_DIR}/data/icons/${name}.svg)
        set(widths ${ORVIA_WIDTHS})
        if(ORVIA_WIDTHS_${name})
            set(widths ${ORVIA_WIDTHS_${name}})
        endif()
        file(MAKE_DIRECTORY ${folder}/${name})
        set(made)
        set(commands)
        foreach(width IN LISTS widths)
            list(APPEND made ${folder}/${name}/${width}.png)
            list(APPEND commands COMMAND ${ORVIA_RSVG} --width ${width} --keep-aspect-ratio
                ${drawing} --output ${folder}/${name}/${width}.png)
            string(APPEND list "        <file>${name}/${width}.png</file>\n")
        endforeach()
        add_custom_command(OUTPUT ${made} ${commands} DEPENDS ${drawing}
            COMMENT "Drawing ${name}" VERBATIM)
        target_sources(${target} PRIVATE ${made})
    endforeach()
    file(CONFIGURE OUTPUT ${folder}/${resource}.qrc
        CONTENT "${list}    </qresource>\n</RCC>\n" @ONLY)
    target_sources(${target} PRIVATE ${folder}/${resource}.qrc)
endfunction()
