# What a program has in itself on Windows: icon, version, and the manifest by which it asks for UTF-8,
# sharp screens and long paths. MinGW's linker takes no manifest, so a resource carries it.
enable_language(RC)
find_program(ORVIA_PYTHON3 python3 REQUIRED)

# orvia_windows_resources(<target>): gives them to a program.
function(orvia_windows_resources target)
    set(folder ${PROJECT_BINARY_DIR}/windows)
    set(ORVIA_ICON ${folder}/orvia.ico)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/orvia.manifest.in
        ${folder}/orvia.manifest @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/orvia.rc.in ${folder}/${target}.rc @ONLY)
    set_source_files_properties(${folder}/${target}.rc PROPERTIES
        OBJECT_DEPENDS "${folder}/orvia.manifest;${ORVIA_ICON}" COMPILE_OPTIONS "-I${folder}")
    target_sources(${target} PRIVATE ${folder}/${target}.rc)
    add_dependencies(${target} orvia_icon)
endfunction()

# orvia_windows_icon(<picture>...): the icon, of pictures that the build makes.
function(orvia_windows_icon)
    set(icon ${PROJECT_BINARY_DIR}/windows/orvia.ico)
    set(tool ${PROJECT_SOURCE_DIR}/packaging/windows/make_icon.py)
    add_custom_command(OUTPUT ${icon}
        COMMAND ${ORVIA_PYTHON3} ${tool} ${icon} ${ARGN} DEPENDS ${tool} ${ARGN}
        COMMENT "Making the icon" VERBATIM)
    add_custom_target(orvia_icon DEPENDS ${icon})
endfunction()
