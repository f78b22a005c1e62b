# What `cmake --install` lays out: headers, libmoxcore, every file of libmoxccq4 and libmoxcc.a, and how CMake and
# pkg-config find them.
include(CMakePackageConfigHelpers)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/moxcc)

install(DIRECTORY include/moxcc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
install(TARGETS moxccq4 moxcore EXPORT moxcc LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Programs link the narrowest file; the dynamic linker puts one of these in its place where it can.
foreach(target ${MOXCC_WIDER})
    get_target_property(folder ${target} MOXCC_FOLDER)
    install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}${folder})
endforeach()
if(TARGET moxcc_static)
    install(TARGETS moxcc_static EXPORT moxcc ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

set_target_properties(moxccq4 PROPERTIES EXPORT_NAME moxcc)
install(EXPORT moxcc FILE moxcc-config.cmake NAMESPACE moxcc:: DESTINATION ${config})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/moxcc-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/moxcc-config-version.cmake DESTINATION ${config})

# Folders stand in the .pc files as they are, not from the file's own place: a program's RUNPATH that is made of them
# must not lead through a folder that only developers have. The prefix is known when the library is installed, so that
# is when the files are finished.
set(prefix @CMAKE_INSTALL_PREFIX@)
cmake_path(APPEND libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND includedir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
# moxcc_pkgconfig(<name> <what it is> <library>)
function(moxcc_pkgconfig name description library)
    set(unfinished ${PROJECT_BINARY_DIR}/${name}.pc.in)
    set(finished ${PROJECT_BINARY_DIR}/${name}.pc)
    configure_file(cmake/moxcc.pc.in ${unfinished} @ONLY)
    install(CODE "configure_file(\"${unfinished}\" \"${finished}\" @ONLY)")
    install(FILES ${finished} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
moxcc_pkgconfig(moxcc "${PROJECT_DESCRIPTION}" moxccq4)
if(TARGET moxcc_static)
    moxcc_pkgconfig(moxcc-static "${PROJECT_DESCRIPTION} (static library)" moxcc)
endif()
