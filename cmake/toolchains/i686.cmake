# 32-bit x86, with Debian's g++-i686-linux-gnu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc) # GoogleTest asks for one
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)

# Most x86-64 kernels run these programs themselves once they are told where the loader and the C library of
# the cross compiler lie; the others run them in qemu.
set(recalculo_root /usr/i686-linux-gnu)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${recalculo_root}/lib/ld-linux.so.2 -Wl,--disable-new-dtags -Wl,-rpath,${recalculo_root}/lib")
execute_process(COMMAND ${recalculo_root}/lib/ld-linux.so.2 --version
    RESULT_VARIABLE recalculo_result OUTPUT_QUIET ERROR_QUIET)
if(NOT recalculo_result EQUAL 0)
    set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386;-L;${recalculo_root})
endif()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# Where scripts/packages.sh unpacks what the tool needs for this target.
set(CMAKE_LIBRARY_PATH ${CMAKE_CURRENT_LIST_DIR}/../../build/foreign/i386/usr/lib/i386-linux-gnu)
