# CMake toolchain file: clang for the platform's C++ ABI, without a vendor's SDK. It needs clang, lld, llvm and
# MinGW-w64's headers and import libraries (Debian: clang lld llvm g++-mingw-w64-i686). Programs are linked with the
# start-up code in this package's lib/tamrix32-start.obj; msvc32.cmake in this folder contains the compiler options.
include(${CMAKE_CURRENT_LIST_DIR}/msvc32.cmake)
get_filename_component(Tamrix32_ROOT "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH "${Tamrix32_ROOT}")
foreach(language C CXX)
    set(CMAKE_${language}_STANDARD_LIBRARIES "\"${Tamrix32_ROOT}/lib/tamrix32-start.obj\" \"${TAMRIX_IMPORT_LIBRARIES}/libmsvcrt.a\" \"${TAMRIX_IMPORT_LIBRARIES}/libkernel32.a\"" CACHE STRING "" FORCE)
endforeach()
string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT
    " -Wl,/entry:mainCRTStartup -Wl,/safeseh:no -Xlinker /subsystem:console,4.0")
