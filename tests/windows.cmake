# Everything with windows, through the shipped DLL.
if(WIN32)
    add_executable(shipped_windows windows/scenario.cpp windows/calls.cpp windows/registry_text.cpp
                   windows/mapping_dialogs_test.cpp windows/browse_test.cpp windows/templates_test.cpp
                   windows/browse_texts.rc windows/test_dialogs.rc)
    target_include_directories(shipped_windows PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(shipped_windows PRIVATE GTest::gmock)
    target_compile_options(shipped_windows PRIVATE -Wall -Wextra)
    # What users do, under every code page; and once each call of it failing, or ending the process, in turn.
    add_test(NAME shipped_windows
        COMMAND shipped_windows Z:${TAMRIX_SHIPPED_DLL} --gtest_filter=-*WhicheverCall*)
    set_property(TEST shipped_windows PROPERTY LABELS codepage)
    add_test(NAME shipped_windows_failures
        COMMAND shipped_windows Z:${TAMRIX_SHIPPED_DLL} --gtest_filter=*WhicheverCall*)
endif()
