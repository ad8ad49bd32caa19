# Code for the protocols of Wayland desktops that the display speaks, made of their descriptions.
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_get_variable(WAYLAND_PROTOCOLS_DIR wayland-protocols pkgdatadir)
if(NOT WAYLAND_PROTOCOLS_DIR)
    message(FATAL_ERROR "The descriptions of Wayland's protocols are missing: package wayland-protocols")
endif()

# cardsong_wayland_protocols(TARGET KIND...): makes client-header, server-header and private-code files, and lets the target
# include them. They are another's code: no warnings.
function(cardsong_wayland_protocols target)
    set(directory ${CMAKE_CURRENT_BINARY_DIR}/wayland)
    file(MAKE_DIRECTORY ${directory})
    foreach(kind ${ARGN})
        if(kind STREQUAL "private-code")
            set(ending protocol.c)
        else()
            string(REPLACE "-header" "-protocol.h" ending ${kind})
        endif()
        foreach(protocol stable/xdg-shell/xdg-shell staging/xdg-activation/xdg-activation-v1
                unstable/xdg-decoration/xdg-decoration-unstable-v1)
            cmake_path(GET protocol FILENAME name)
            set(made ${directory}/${name}-${ending})
            set(description ${WAYLAND_PROTOCOLS_DIR}/${protocol}.xml)
            add_custom_command(OUTPUT ${made} COMMAND ${WAYLAND_SCANNER} ${kind} ${description} ${made}
                DEPENDS ${description} VERBATIM)
            set_source_files_properties(${made} PROPERTIES HEADER_FILE_ONLY TRUE) # included, never compiled by itself
            target_sources(${target} PRIVATE ${made})
        endforeach()
    endforeach()
    target_include_directories(${target} SYSTEM PRIVATE ${directory})
endfunction()
