# Strings, names, UNC paths and settings.
tamrix_property(strings SOURCES properties/strings_exhaustive_test.cpp)
target_compile_options(strings_property PRIVATE -O2)  # its model takes most of its time
set_property(TEST strings_property PROPERTY LABELS codepage)

tamrix_property(names INPUTS 8000)
set_property(TEST names_property PROPERTY LABELS codepage)
if(NOT WIN32)
    # Tries millions of names, so it compiles what it proves for itself: optimised, without sanitizers.
    add_executable(names_exhaustive_test properties/names_exhaustive_test.cpp ../src/macnames/name_codec.cpp ../src/macnames/names.cpp
        ../src/macnames/name_rules.cpp ../src/macnames/character_table.cpp ../src/macnames/character_table_data.cpp)
    target_compile_options(names_exhaustive_test PRIVATE -O2 -Wall -Wextra -Wconversion -Wshadow -Werror)
    target_include_directories(names_exhaustive_test PRIVATE . ../src ../include)
    target_compile_definitions(names_exhaustive_test PRIVATE TAMRIX_STATIC)
    target_link_libraries(names_exhaustive_test PRIVATE tamrix_platform_headers GTest::gtest_main)
    add_test(NAME names_exhaustive_test COMMAND names_exhaustive_test)
endif()

tamrix_property(unc SOURCES properties/unc_exhaustive_test.cpp)
set_property(TEST unc_property PROPERTY LABELS codepage)
# Their models take most of their time.
target_compile_options(names_property PRIVATE -O2)
target_compile_options(unc_property PRIVATE -O2)

tamrix_suite(settings_test SOURCES settings_test.cpp)
set_property(TEST settings_test PROPERTY LABELS codepage)
if(WIN32)
    target_sources(settings_test PRIVATE windows/unload_test.cpp)
else()
    target_sources(settings_test PRIVATE native/settings_faults_test.cpp)
endif()
