# Language, warnings and sanitizers, the same for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(ORVIA_CCACHE ccache)
if(ORVIA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${ORVIA_CCACHE}")
endif()

add_library(orvia_options INTERFACE)
if(MSVC)
    target_compile_options(orvia_options INTERFACE /W4 /WX /utf-8 /permissive- /fp:precise)
    target_compile_definitions(orvia_options INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX)
else()
    target_compile_options(orvia_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wcast-align -Wold-style-cast -Wextra-semi -Werror
        # A flow figure is the same on every machine: no fused multiply-add.
        -ffp-contract=off)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
    # GCC bug 105651: a false alarm inside std::string's own operator+.
    target_compile_options(orvia_options INTERFACE -Wno-restrict)
endif()
if(ORVIA_SANITIZE)
    target_compile_options(orvia_options INTERFACE
        -fsanitize=${ORVIA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(orvia_options INTERFACE -fsanitize=${ORVIA_SANITIZE})
endif()
