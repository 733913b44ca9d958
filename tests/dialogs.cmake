# Dialog templates and the mapping dialogs.
if(NOT WIN32)
    tamrix_property(templates INPUTS 10000)
endif()
