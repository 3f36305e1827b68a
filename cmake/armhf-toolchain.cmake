# Cross build for the head unit's processor, 32-bit ARM with hard float (Debian armhf).
#
#   scripts/armhf-sysroot.sh
#   cmake -S . -B build-armhf -DCMAKE_TOOLCHAIN_FILE=cmake/armhf-toolchain.cmake
#
# The compilers are Debian's cross compilers (g++-arm-linux-gnueabihf); the libraries
# and headers come from a sysroot of Debian armhf packages made by
# scripts/armhf-sysroot.sh (CANBUS_ARMHF_SYSROOT names another one). With qemu-arm
# (qemu-user-static or qemu-user) the built programs run on the build machine, so
# ctest runs the suites under emulation.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)

# CMake reads this file again for each compiler check, without the cache variables
# of the first run: the sysroot travels in the environment.
if(NOT CANBUS_ARMHF_SYSROOT)
    if(DEFINED ENV{CANBUS_ARMHF_SYSROOT})
        set(CANBUS_ARMHF_SYSROOT "$ENV{CANBUS_ARMHF_SYSROOT}")
    else()
        get_filename_component(CANBUS_ARMHF_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../.cache/armhf-sysroot" ABSOLUTE)
    endif()
endif()
set(CANBUS_ARMHF_SYSROOT "${CANBUS_ARMHF_SYSROOT}" CACHE PATH "Sysroot of Debian armhf packages")
set(ENV{CANBUS_ARMHF_SYSROOT} "${CANBUS_ARMHF_SYSROOT}")

find_program(CANBUS_ARMHF_CXX arm-linux-gnueabihf-g++)
find_program(CANBUS_ARMHF_CC arm-linux-gnueabihf-gcc)
if(NOT CANBUS_ARMHF_CXX OR NOT CANBUS_ARMHF_CC)
    message(FATAL_ERROR
        "No ARM cross compiler (arm-linux-gnueabihf-g++) on the PATH.\n"
        "Install it with: apt-get install g++-arm-linux-gnueabihf")
endif()
set(CMAKE_C_COMPILER "${CANBUS_ARMHF_CC}")
set(CMAKE_CXX_COMPILER "${CANBUS_ARMHF_CXX}")

if(NOT EXISTS "${CANBUS_ARMHF_SYSROOT}/usr/lib/arm-linux-gnueabihf/cmake/Qt5Core/Qt5CoreConfig.cmake")
    message(FATAL_ERROR
        "No armhf sysroot with Qt 5 at ${CANBUS_ARMHF_SYSROOT}.\n"
        "Make it with: scripts/armhf-sysroot.sh   (or set CANBUS_ARMHF_SYSROOT to one)")
endif()
set(CMAKE_SYSROOT "${CANBUS_ARMHF_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH "${CANBUS_ARMHF_SYSROOT}")
# Programs run on the build machine; libraries, headers and packages come only from the sysroot.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(CANBUS_QEMU_ARM NAMES qemu-arm-static qemu-arm)
if(NOT CANBUS_QEMU_ARM)
    message(FATAL_ERROR
        "No qemu-arm to run the ARM programs (tests, code checks) on this machine.\n"
        "Install it with: apt-get install qemu-user-static   (or qemu-user)")
endif()
# -L: the ARM programs find their loader and libraries in the sysroot.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CANBUS_QEMU_ARM};-L;${CANBUS_ARMHF_SYSROOT}")
