# The imported target Tamrix32::Tamrix32. GCC links the flat functions through its own kind of import library.
get_filename_component(prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
if(NOT TARGET Tamrix32::Tamrix32)
    add_library(Tamrix32::Tamrix32 SHARED IMPORTED)
    if(MINGW)
        set(library "${prefix}/lib/libTamrix32.dll.a")
    else()
        set(library "${prefix}/lib/Tamrix32.lib")
    endif()
    set_target_properties(Tamrix32::Tamrix32 PROPERTIES
        IMPORTED_LOCATION "${prefix}/bin/Tamrix32.dll"
        IMPORTED_IMPLIB "${library}"
        INTERFACE_INCLUDE_DIRECTORIES "${prefix}/include")
endif()
