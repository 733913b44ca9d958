# Dialog templates and the mapping dialogs.
if(NOT WIN32)
    tamrix_property(templates SOURCES dialogs_plain_test.cpp INPUTS 10000)
else()
    tamrix_suite(dialog_font_test SOURCES windows/dialog_font_test.cpp windows/test_dialogs.rc)
endif()
if(WIN32)
    tamrix_suite(extension_map_dialogs_test
        SOURCES windows/extension_map_dialogs_test.cpp windows/extension_map_refusals_test.cpp windows/user.cpp
                windows/allocations.cpp)
endif()
if(WIN32)
    add_executable(show_dialog windows/show_dialog.cpp)
    target_compile_options(show_dialog PRIVATE -Wall -Wextra)
endif()
