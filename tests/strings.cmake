# Strings, names, UNC paths and the entry point.
tamrix_property(strings SOURCES properties/exhaustive_test.cpp)
set_property(TEST strings_property PROPERTY LABELS codepage)

tamrix_property(names INPUTS 8000)
set_property(TEST names_property PROPERTY LABELS codepage)
if(NOT WIN32)
    # Tries millions of names, so it compiles what it proves for itself: optimised, without sanitizers.
    add_executable(names_exhaustive_test properties/exhaustive_test.cpp native/name_globals.cpp
        ../src/macnames/name_codec.cpp ../src/macnames/names.cpp ../src/macnames/name_rules.cpp ../src/macnames/sbcs.cpp
        ../src/macnames/default_quotes.cpp ../src/macnames/character_table.cpp ../src/macnames/character_table_data.cpp)
    target_compile_options(names_exhaustive_test PRIVATE -O2 -Wall -Wextra -Wconversion -Wshadow -Werror)
    target_include_directories(names_exhaustive_test PRIVATE . ../src ../include)
    target_compile_definitions(names_exhaustive_test PRIVATE TAMRIX_STATIC TAMRIX_PROPERTY="properties/names.h")
    target_link_libraries(names_exhaustive_test PRIVATE tamrix_platform_headers GTest::gtest_main)
    add_test(NAME names_exhaustive_test COMMAND names_exhaustive_test)
endif()

tamrix_property(unc SOURCES properties/exhaustive_test.cpp)
set_property(TEST unc_property PROPERTY LABELS codepage)
# Their models take most of their time.
foreach(name strings names unc)
    target_compile_options(${name}_property PRIVATE -O2)
endforeach()

tamrix_suite(entry_test SOURCES entry_test.cpp)
set_property(TEST entry_test PROPERTY LABELS codepage)
