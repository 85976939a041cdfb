# Debian's cross compiler for 64-bit Windows, with the threads of the C++ standard library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# The compiler's libraries are on no user's machine.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# BLOCKHOUSE_WINDOWS_PREFIX: where Qt and QScintilla for Windows are installed.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${BLOCKHOUSE_WINDOWS_PREFIX})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BLOCKHOUSE_WINDOWS_PREFIX)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
