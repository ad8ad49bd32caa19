# cardsong_program_resources(TARGET DESCRIPTION source...): gives a Windows program its manifest and its version, and what
# further resource sources hold.
set(resource_dir ${PROJECT_SOURCE_DIR}/device/windows)
set(built_device_dir ${CMAKE_BINARY_DIR}/device)
find_program(MINGW_WINDRES x86_64-w64-mingw32-windres REQUIRED)

function(cardsong_program_resources target description)
    set(program_manifest ${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest)
    set(program_resources ${CMAKE_CURRENT_BINARY_DIR}/${target}_program.rc)
    configure_file(${resource_dir}/program.manifest.in ${program_manifest} @ONLY)
    configure_file(${resource_dir}/program.rc.in ${program_resources} @ONLY)
    foreach(source ${program_resources} ${ARGN})
        cmake_path(GET source STEM name)
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}_resources.obj)
        add_custom_command(
            OUTPUT ${object}
            COMMAND ${MINGW_WINDRES} --preprocessor=${CMAKE_CXX_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
                --preprocessor-arg=-DRC_INVOKED -c 65001 -I ${built_device_dir} ${source} ${object}
            DEPENDS ${source} ${built_device_dir}/cardsong.ico ${program_manifest}
            COMMENT "Compiling the program's resources: ${name}" VERBATIM)
        target_sources(${target} PRIVATE ${object})
    endforeach()
endfunction()
