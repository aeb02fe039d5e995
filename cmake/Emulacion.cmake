# recalculo_programa(variable target) gives the path under which a test can start one of our programs. That is
# the program itself, or, where the target's programs run in an emulator, a script that starts it there: CMake
# puts the emulator before the commands of add_test, not before what those commands start.
function(recalculo_programa variable target)
    if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
        set(${variable} $<TARGET_FILE:${target}> PARENT_SCOPE)
        return()
    endif()
    set(script ${PROJECT_BINARY_DIR}/emulated/${target})
    set(${variable} ${script} PARENT_SCOPE)
    get_property(known GLOBAL PROPERTY RECALCULO_EMULATED)
    if(NOT target IN_LIST known)
        set_property(GLOBAL APPEND PROPERTY RECALCULO_EMULATED ${target})
        list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
        file(GENERATE OUTPUT ${script} CONTENT "#!/bin/sh\nexec ${emulator} '$<TARGET_FILE:${target}>' \"$@\"\n"
            FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    endif()
endfunction()
