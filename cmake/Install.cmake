# What `cmake --install` of the release preset puts where: all that the package holds. A folder that was installed can be
# moved; nothing in it names where it was.
include(CMakePackageConfigHelpers)

# Pages at the top, where who unpacks an archive looks first.
set(doc .)
set(packageFiles ${PROJECT_BINARY_DIR}/package)

install(TARGETS Tamrix32 RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS tamrix RUNTIME DESTINATION bin)
install(FILES $<TARGET_PDB_FILE:Tamrix32> DESTINATION bin)
install(DIRECTORY include/ ${PROJECT_BINARY_DIR}/include/ DESTINATION include)

# GCC's import library, twice: with -static GNU ld looks for libTamrix32.a, and would take Tamrix32.lib without one.
add_custom_command(OUTPUT ${packageFiles}/libTamrix32.dll.a
    COMMAND ${CMAKE_COMMAND} -E make_directory ${packageFiles}
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/gcc_import_library.py
            ${PROJECT_SOURCE_DIR}/src/resources/tamrix32.def ${packageFiles}/libTamrix32.dll.a
    DEPENDS src/resources/tamrix32.def scripts/gcc_import_library.py VERBATIM)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
install(FILES ${packageFiles}/libTamrix32.dll.a DESTINATION lib)
install(FILES ${packageFiles}/libTamrix32.dll.a DESTINATION lib RENAME libTamrix32.a)

# For clang without a vendor's SDK: a toolchain file, and the start-up that its programs lack.
add_library(tamrix_start OBJECT src/runtime/client_start.cpp)
target_link_libraries(tamrix_start PRIVATE tamrix_options)
target_include_directories(tamrix_start PRIVATE src)
add_custom_target(package_files ALL DEPENDS ${packageFiles}/libTamrix32.dll.a)
install(FILES $<TARGET_OBJECTS:tamrix_start> DESTINATION lib RENAME tamrix32-start.obj)
install(FILES cmake/msvc32.cmake DESTINATION share/tamrix32/cmake)
install(FILES cmake/package/clang-msvc32.cmake DESTINATION share/tamrix32/cmake)

write_basic_package_version_file(${packageFiles}/Tamrix32ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/package/Tamrix32Config.cmake ${packageFiles}/Tamrix32ConfigVersion.cmake
        DESTINATION lib/cmake/Tamrix32)
configure_file(cmake/package/tamrix32.pc.in ${packageFiles}/tamrix32.pc @ONLY)
install(FILES ${packageFiles}/tamrix32.pc DESTINATION lib/pkgconfig)

# Pages keep their places among each other, so that their links lead to one another.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${doc})
install(DIRECTORY docs/ DESTINATION ${doc}/docs FILES_MATCHING PATTERN "*.md" PATTERN "*.1" PATTERN "*.but" PATTERN "*.png" PATTERN "*.gif")
install(DIRECTORY build/reference/html/ DESTINATION ${doc}/reference OPTIONAL)
install(FILES build/help/ATHELP.HLP DESTINATION bin OPTIONAL)
install(FILES docs/tamrix.1 DESTINATION share/man/man1)
install(FILES share/completion/tamrix.bash DESTINATION share/bash-completion/completions RENAME tamrix)
install(FILES share/starter-mappings.txt DESTINATION share/tamrix32)
install(DIRECTORY share/examples DESTINATION share/tamrix32)
