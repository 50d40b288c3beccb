# Where an installed console lies. Installed, the program lies with all that it looks for beside itself
# in a folder of its own; what stands among the commands is a link, behind which the program finds its
# folder. Where there are no links, all of it is one folder.
include(GNUInstallDirs)
if(WIN32)
    set(ORVIA_FOLDER .)
else()
    set(ORVIA_FOLDER ${CMAKE_INSTALL_LIBDIR}/orvia)
endif()

# orvia_command(<name>): a link among the commands to the program of that name.
function(orvia_command name)
    if(WIN32)
        return()
    endif()
    file(RELATIVE_PATH program /${CMAKE_INSTALL_BINDIR} /${ORVIA_FOLDER}/${name})
    install(CODE "
        set(commands \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(MAKE_DIRECTORY \"\${commands}\")
        file(CREATE_LINK ${program} \"\${commands}/${name}\" SYMBOLIC)")
endfunction()
