# Builds for 64-bit Windows with Debian's mingw-w64, in its posix thread model (the other one has no std::mutex).
#
#   cmake -DCMAKE_TOOLCHAIN_FILE=packaging/windows/toolchain.cmake -DTOLVA_WINDOWS_QT=FOLDER ...
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# The Qt for Windows, whose tools are those of the machine that builds.
set(TOLVA_WINDOWS_QT "" CACHE PATH "Qt for Windows, as packaging/windows/build unpacks it")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOLVA_WINDOWS_QT)
set(QT_HOST_PATH /usr)
file(GLOB host_qt LIST_DIRECTORIES true /usr/lib/*/cmake/Qt6HostInfo)
if(host_qt)
  list(GET host_qt 0 host_qt)
  cmake_path(GET host_qt PARENT_PATH QT_HOST_PATH_CMAKE_DIR)
endif()

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${TOLVA_WINDOWS_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
