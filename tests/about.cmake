# Custom resources and the about box.
if(NOT WIN32)
    tamrix_property(credits SOURCES about_plain_test.cpp INPUTS 10000)
endif()
if(WIN32)
    # Draws frames of the about box into files, to be looked at.
    add_executable(about_frames ${PROJECT_SOURCE_DIR}/tools/about_frames.cpp)
    target_link_libraries(about_frames PRIVATE Tamrix32 tamrix_resources)
    target_compile_options(about_frames PRIVATE -fno-rtti)
endif()
