# Everything with windows, through the shipped DLL.
if(WIN32)
    add_executable(shipped_windows windows/scenario.cpp windows/calls.cpp windows/registry_text.cpp
                   windows/mapping_dialogs_test.cpp windows/browse_test.cpp windows/templates_test.cpp
                   windows/about_test.cpp windows/browse_texts.rc windows/test_dialogs.rc windows/test_resources.rc)
    target_include_directories(shipped_windows PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(shipped_windows PRIVATE GTest::gmock)
    target_compile_options(shipped_windows PRIVATE -Wall -Wextra)
    # What users do with dialogs, under every code page, and with the about box; once each call of it failing in turn.
    set(shipped_windows shipped_windows Z:${TAMRIX_SHIPPED_DLL})
    add_test(NAME shipped_windows COMMAND ${shipped_windows} --gtest_filter=-About*:Scenarios.*)
    set_property(TEST shipped_windows PROPERTY LABELS codepage)
    add_test(NAME shipped_windows_failures COMMAND ${shipped_windows} --gtest_filter=Scenarios.*)
    add_test(NAME about_screen COMMAND ${shipped_windows} --gtest_filter=About*)
    # What the about box needs of a palette on a screen of 256 colours.
    add_test(NAME about_screen_8bit COMMAND
        ${CMAKE_COMMAND} -E env --unset=DISPLAY SCREEN=1024x768x8 PREFIX=${PROJECT_BINARY_DIR}/wineprefix8
        ${PROJECT_SOURCE_DIR}/scripts/with-wine wine $<TARGET_FILE:shipped_windows> Z:${TAMRIX_SHIPPED_DLL}
        --gtest_filter=AboutBox.*:Scenarios.*)
    set_property(TEST about_screen_8bit PROPERTY RESOURCE_LOCK wineprefix8)
endif()
