# The resources of the Windows program, as objects for its link: the manifest and the version, and the icon, dialog and
# strings that both builds share. Sets CARDSONG_PROGRAM_RESOURCES.
set(resource_dir ${PROJECT_SOURCE_DIR}/device/windows)
set(built_device_dir ${CMAKE_BINARY_DIR}/device)
find_program(MINGW_WINDRES x86_64-w64-mingw32-windres REQUIRED)
configure_file(${resource_dir}/program.rc.in program.rc @ONLY)

set(CARDSONG_PROGRAM_RESOURCES)
foreach(source ${CMAKE_CURRENT_BINARY_DIR}/program.rc ${PROJECT_SOURCE_DIR}/device/strings/cardsong.rc)
    cmake_path(GET source STEM name)
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}_resources.obj)
    add_custom_command(
        OUTPUT ${object}
        COMMAND ${MINGW_WINDRES} --preprocessor=${CMAKE_CXX_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
            --preprocessor-arg=-DRC_INVOKED -c 65001 -I ${built_device_dir} ${source} ${object}
        DEPENDS ${source} ${built_device_dir}/cardsong.ico ${resource_dir}/cardsong.manifest
        COMMENT "Compiling the program's resources: ${name}" VERBATIM)
    list(APPEND CARDSONG_PROGRAM_RESOURCES ${object})
endforeach()
