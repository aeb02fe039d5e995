# recalculo_endurecer(target): the defences that cost little. Distributions bring the same with flags of their own.
option(RECALCULO_HARDENING "Build with stack protector, RELRO, BIND_NOW and position independent code" ON)
if(RECALCULO_HARDENING)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
endif()

function(recalculo_endurecer target)
    if(RECALCULO_HARDENING)
        # Position independent in an archive, too, so that every program can take it in.
        set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
        target_compile_options(${target} PRIVATE -fstack-protector-strong)
        target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
    endif()
endfunction()
