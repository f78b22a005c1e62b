# What `cmake --install` lays out: headers, libmoxcore and the files of libmoxccq4, and how CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/moxcc)

install(DIRECTORY include/moxcc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
install(TARGETS moxccq4 moxcore EXPORT moxcc LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Programs link the SSE4.2 file; the dynamic linker puts the widest in its place that the processor has.
install(TARGETS moxccq4_v3 LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/glibc-hwcaps/x86-64-v3)
install(TARGETS moxccq4_v4 LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/glibc-hwcaps/x86-64-v4)

set_target_properties(moxccq4 PROPERTIES EXPORT_NAME moxcc)
install(EXPORT moxcc FILE moxcc-config.cmake NAMESPACE moxcc:: DESTINATION ${config})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/moxcc-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/moxcc-config-version.cmake DESTINATION ${config})

# pkg-config finds the rest from its own place, so that the tree may be moved.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE libdir)
file(RELATIVE_PATH MOXCC_PREFIX_FROM_PC ${libdir}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/moxcc.pc.in moxcc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/moxcc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
