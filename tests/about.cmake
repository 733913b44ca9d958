# Custom resources and the about box.
if(NOT WIN32)
    tamrix_property(credits SOURCES about_plain_test.cpp INPUTS 10000)
endif()
if(WIN32)
    # Draws frames of the about box into files, to be looked at.
    add_executable(about_frames ${PROJECT_SOURCE_DIR}/tools/about_frames.cpp)
    target_link_libraries(about_frames PRIVATE Tamrix32 tamrix_resources)
    target_compile_options(about_frames PRIVATE -fno-rtti)
    # The about box of the shipped DLL as its clients show it, and what it needs of a palette on a screen of 256 colours.
    add_executable(about_screen windows/about_test.cpp windows/scenario.cpp windows/calls.cpp
                   windows/registry_text.cpp windows/test_resources.rc)
    target_include_directories(about_screen PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(about_screen PRIVATE GTest::gmock)
    target_compile_options(about_screen PRIVATE -Wall -Wextra)
    add_test(NAME about_screen COMMAND about_screen Z:${TAMRIX_SHIPPED_DLL})
    add_test(NAME about_screen_8bit COMMAND
        ${CMAKE_COMMAND} -E env --unset=DISPLAY SCREEN=1024x768x8 PREFIX=${PROJECT_BINARY_DIR}/wineprefix8
        ${PROJECT_SOURCE_DIR}/scripts/with-wine wine $<TARGET_FILE:about_screen> Z:${TAMRIX_SHIPPED_DLL}
        --gtest_filter=AboutBox.*)
    set_property(TEST about_screen_8bit PROPERTY RESOURCE_LOCK wineprefix8)
endif()
