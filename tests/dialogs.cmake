# Dialog templates and the mapping dialogs.
tamrix_suite(dialog_template_test SOURCES dialog_template_test.cpp mapping_lines_test.cpp)
if(WIN32)
    target_sources(dialog_template_test PRIVATE windows/template_loader_test.cpp windows/test_dialogs.rc)
else()
    target_sources(dialog_template_test PRIVATE native/dialog_template_faults_test.cpp)
endif()
if(WIN32)
    tamrix_suite(extension_map_dialogs_test
        SOURCES windows/extension_map_dialogs_test.cpp windows/user.cpp windows/allocations.cpp)
endif()
