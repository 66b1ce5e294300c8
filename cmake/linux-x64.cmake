# Toolchain of the prebuilt module for Linux on x86-64. On Debian: g++ or g++-x86-64-linux-gnu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-linux-gnu-g++)
