# orbconv_start_path(RESULT TARGET): the path by which a test starts a program. It is the program itself, or,
# where an emulator has to run it, a script that calls the emulator.
function(orbconv_start_path result target)
    set(path $<TARGET_FILE:${target}>)
    if(CMAKE_CROSSCOMPILING_EMULATOR AND NOT WIN32)
        set(script ${PROJECT_BINARY_DIR}/emulated-${target})
        file(GENERATE OUTPUT ${script}
            CONTENT "#!/bin/sh\nexec ${CMAKE_CROSSCOMPILING_EMULATOR} '${path}' \"$@\"\n"
            FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
        set(path ${script})
    endif()
    set(${result} ${path} PARENT_SCOPE)
endfunction()
