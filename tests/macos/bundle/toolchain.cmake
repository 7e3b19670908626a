# Builds for a Mac on another system: Debian's clang and linker, an SDK of headers and stubs in ORVANTILE_MACOS_SDK
# (see make_sdk.py), for the one processor in ORVANTILE_MACOS_ARCHITECTURE.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR ${ORVANTILE_MACOS_ARCHITECTURE})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ORVANTILE_MACOS_SDK ORVANTILE_MACOS_ARCHITECTURE)

set(CMAKE_OSX_DEPLOYMENT_TARGET 13.0 CACHE STRING "")
set(CMAKE_OSX_SYSROOT "${ORVANTILE_MACOS_SDK}" CACHE PATH "")
set(triple ${ORVANTILE_MACOS_ARCHITECTURE}-apple-macos13.0)

find_program(ORVANTILE_CLANG clang-14 REQUIRED)
find_program(ORVANTILE_CLANGXX clang++-14 REQUIRED)
set(CMAKE_C_COMPILER "${ORVANTILE_CLANG}")
set(CMAKE_C_COMPILER_TARGET ${triple})
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${ORVANTILE_CLANGXX}")
  set(CMAKE_${language}_COMPILER_TARGET ${triple})
  # What the headers of the standard library would be told by their configuration.
  string(JOIN " " CMAKE_${language}_FLAGS_INIT -stdlib=libc++ -nostdinc++ -nostdlibinc
    -D_LIBCPP_ABI_VERSION=1 -D_LIBCPP_ABI_NAMESPACE=__1 -D_LIBCPP_HARDENING_MODE=2 -D_LIBCPP_PSTL_CPU_BACKEND_SERIAL
    -D_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS
    -Xclang -fno-pch-timestamp # precompiled headers are the same each time, and so is what ccache knows by them
    -isystem "${ORVANTILE_MACOS_SDK}/usr/include/c++" -isystem "${ORVANTILE_MACOS_SDK}/usr/include/c++abi"
    -isystem "${ORVANTILE_MACOS_SDK}/usr/include" -iframework "${ORVANTILE_MACOS_SDK}/System/Library/Frameworks")
endforeach()
set(CMAKE_C_FLAGS_INIT "-nostdlibinc -isystem ${ORVANTILE_MACOS_SDK}/usr/include")
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-Qunused-arguments -fuse-ld=lld -F${ORVANTILE_MACOS_SDK}/System/Library/Frameworks -Wl,-adhoc_codesign")

find_program(CMAKE_AR llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-14 REQUIRED)

set(CMAKE_FIND_ROOT_PATH "${ORVANTILE_MACOS_SDK}")
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
