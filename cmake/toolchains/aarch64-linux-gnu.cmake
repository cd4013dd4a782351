# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# 64-bit Arm with Debian's cross compiler, and qemu-user to run what it made. Where ORVANE_SYSROOT is set, in the
# environment so that CMake's own trials see it too, libraries and headers beyond the compiler's come from there.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_FIND_ROOT_PATH $ENV{ORVANE_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's own C library, then the sysroot's libraries.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu
    -E LD_LIBRARY_PATH=$ENV{ORVANE_SYSROOT}/usr/lib:$ENV{ORVANE_SYSROOT}/usr/lib/aarch64-linux-gnu)
