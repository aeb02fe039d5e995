# 32-bit ARM with hardware floating point, with Debian's g++-arm-linux-gnueabihf. Programs run in qemu-arm.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc) # GoogleTest asks for one
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;/usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# Where scripts/packages.sh unpacks what the tool needs for this target.
set(CMAKE_LIBRARY_PATH ${CMAKE_CURRENT_LIST_DIR}/../../build/foreign/armhf/usr/lib/arm-linux-gnueabihf)
