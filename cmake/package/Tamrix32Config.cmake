# find_package(Tamrix32): defines the imported target Tamrix32::Tamrix32. GCC uses its own import library.
# Sets only the variables Tamrix32_FOUND and, if that is false, Tamrix32_NOT_FOUND_MESSAGE.
foreach(Tamrix32_component IN LISTS Tamrix32_FIND_COMPONENTS)
    if(Tamrix32_FIND_REQUIRED_${Tamrix32_component})
        set(Tamrix32_FOUND FALSE)
        set(Tamrix32_NOT_FOUND_MESSAGE "Tamrix32 has no components, so no ${Tamrix32_component}")
    endif()
endforeach()
unset(Tamrix32_component)

if(NOT TARGET Tamrix32::Tamrix32 AND NOT DEFINED Tamrix32_NOT_FOUND_MESSAGE)
    get_filename_component(Tamrix32_prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
    add_library(Tamrix32::Tamrix32 SHARED IMPORTED)
    # The minimum is C89 or C++98; a client may use a later standard.
    set_target_properties(Tamrix32::Tamrix32 PROPERTIES
        IMPORTED_LOCATION "${Tamrix32_prefix}/bin/Tamrix32.dll"
        IMPORTED_IMPLIB "${Tamrix32_prefix}/lib/Tamrix32.lib"
        INTERFACE_COMPILE_FEATURES "c_std_90;cxx_std_98"
        INTERFACE_INCLUDE_DIRECTORIES "${Tamrix32_prefix}/include")
    if(MINGW)
        set_property(TARGET Tamrix32::Tamrix32 PROPERTY IMPORTED_IMPLIB "${Tamrix32_prefix}/lib/libTamrix32.dll.a")
    endif()
    unset(Tamrix32_prefix)
endif()
