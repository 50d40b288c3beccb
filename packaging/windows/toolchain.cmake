# Builds for 64-bit Windows with Debian's g++-mingw-w64-x86-64-posix. The libraries made by libraries.sh
# lie in the folder that the variable ORVIA_WINDOWS_PREFIX, or the environment's, names.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

if(NOT ORVIA_WINDOWS_PREFIX)
    set(ORVIA_WINDOWS_PREFIX "$ENV{ORVIA_WINDOWS_PREFIX}")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ORVIA_WINDOWS_PREFIX)

# Programs that run here are the machine's own; everything that is linked is Windows'.
set(CMAKE_FIND_ROOT_PATH ${ORVIA_WINDOWS_PREFIX} /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
