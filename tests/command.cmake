# The command as its users run it: natively, and the shipped program over the shipped DLL.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
if(WIN32)
    set(TAMRIX_COMMAND wine ${PROJECT_SOURCE_DIR}/build/release/bin/tamrix.exe)
    add_executable(press_button windows/press_button.cpp)
else()
    set(TAMRIX_COMMAND $<TARGET_FILE:tamrix>)
    enable_language(C)
    add_library(at_call MODULE command/at_call.c)
endif()

# tamrix_command_test(PART): tests/command/PART_test.py, run by CTest as command_PART.
function(tamrix_command_test part)
    add_test(NAME command_${part}
        COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/command/${part}_test.py ${TAMRIX_COMMAND})
    if(NOT WIN32)
        set_property(TEST command_${part} PROPERTY ENVIRONMENT TAMRIX_AT_CALL=$<TARGET_FILE:at_call>)
    else()
        set_property(TEST command_${part} PROPERTY ENVIRONMENT TAMRIX_PRESS_BUTTON=$<TARGET_FILE:press_button>)
    endif()
endfunction()

foreach(part mappings rename rest)
    tamrix_command_test(${part})
endforeach()
