# Rules for `cmake --install` of the release preset, which creates the contents of the package. The installed folder can
# be moved: it contains no absolute paths.
include(CMakePackageConfigHelpers)

# The pages are in the top folder, where users look first.
set(doc .)
set(packageFiles ${PROJECT_BINARY_DIR}/package)

install(TARGETS Tamrix32 RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS tamrix RUNTIME DESTINATION bin)
install(FILES $<TARGET_PDB_FILE:Tamrix32> DESTINATION bin)
install(DIRECTORY include/ ${PROJECT_BINARY_DIR}/include/ DESTINATION include)

# GCC's import library has two names. With -static, GNU ld looks for libTamrix32.a; without it, ld would use
# Tamrix32.lib, which contains the names of the other compilers.
add_custom_command(OUTPUT ${packageFiles}/libTamrix32.dll.a
    COMMAND ${CMAKE_COMMAND} -E make_directory ${packageFiles}
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/gcc_import_library.py
            ${PROJECT_SOURCE_DIR}/src/resources/tamrix32.def ${packageFiles}/libTamrix32.dll.a
    DEPENDS src/resources/tamrix32.def scripts/gcc_import_library.py VERBATIM)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
install(FILES ${packageFiles}/libTamrix32.dll.a DESTINATION lib)
install(FILES ${packageFiles}/libTamrix32.dll.a DESTINATION lib RENAME libTamrix32.a)

# For clang without a vendor's SDK: a toolchain file, and the start-up code for its programs.
add_library(tamrix_start OBJECT src/runtime/client_start.cpp)
target_link_libraries(tamrix_start PRIVATE tamrix_options)
target_include_directories(tamrix_start PRIVATE src)
add_custom_target(package_files ALL DEPENDS ${packageFiles}/libTamrix32.dll.a)
install(FILES $<TARGET_OBJECTS:tamrix_start> DESTINATION lib RENAME tamrix32-start.obj)
install(FILES cmake/msvc32.cmake DESTINATION share/tamrix32/cmake)
install(FILES cmake/package/clang-msvc32.cmake DESTINATION share/tamrix32/cmake)

# The dialogs' help file, in the folder of the programs that open it; not built if halibut is missing. The Windows help
# viewer shows topics in its window and in popups. Wine 8's viewer has no popups: its PopupContext does nothing.
find_program(HALIBUT halibut)
if(HALIBUT)
    set(help ${packageFiles}/athelp.but)
    configure_file(docs/help/athelp.but ${help} @ONLY)
    add_custom_command(OUTPUT ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ATHELP.HLP
        COMMAND ${HALIBUT} --winhelp=${packageFiles}/unmapped.hlp ${help}
        COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/help_context_map.py ${help}
                ${PROJECT_SOURCE_DIR}/src/resources/dialogs.rc ${packageFiles}/unmapped.hlp
                ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ATHELP.HLP
        DEPENDS ${help} src/resources/dialogs.rc scripts/help_context_map.py VERBATIM)
    add_custom_target(help_file ALL DEPENDS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ATHELP.HLP)
endif()

write_basic_package_version_file(${packageFiles}/Tamrix32ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/package/Tamrix32Config.cmake ${packageFiles}/Tamrix32ConfigVersion.cmake
        DESTINATION lib/cmake/Tamrix32)
configure_file(cmake/package/tamrix32.pc.in ${packageFiles}/tamrix32.pc @ONLY)
install(FILES ${packageFiles}/tamrix32.pc DESTINATION lib/pkgconfig)

# The pages keep their relative paths, so that the links between them work.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${doc})
install(DIRECTORY docs/ DESTINATION ${doc}/docs FILES_MATCHING PATTERN "*.md" PATTERN "*.1" PATTERN "*.but" PATTERN "*.png" PATTERN "*.gif")
install(DIRECTORY build/reference/html/ DESTINATION ${doc}/reference OPTIONAL)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ATHELP.HLP DESTINATION bin OPTIONAL)
install(FILES docs/tamrix.1 DESTINATION share/man/man1)
install(FILES share/completion/tamrix.bash DESTINATION share/bash-completion/completions RENAME tamrix)
install(FILES share/starter-mappings.txt DESTINATION share/tamrix32)
install(DIRECTORY share/examples DESTINATION share/tamrix32)
