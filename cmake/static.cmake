# The static library. The objects of a level are joined into one, whose only global names are <export>_<level>. Of
# functions that two levels have by the same name, inline ones of the C++ library among them, the linker would otherwise
# keep one, and a processor without AVX2 could meet AVX2 code.

set(names ${generated}/static)
file(MAKE_DIRECTORY ${names})
foreach(level ${MOXCC_LEVELS})
    set(joined ${names}/${level}.o)
    add_custom_command(OUTPUT ${joined}
        COMMAND sed "s/SLOT(\\(.*\\))/\\1 \\1_${level}/" ${symbols}/slots.inc > ${names}/${level}.names
        COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -Wl,--force-group-allocation -o ${joined}
            $<TARGET_OBJECTS:moxccq4_${level}_objects> $<TARGET_OBJECTS:moxcore_objects>
        COMMAND ${CMAKE_OBJCOPY} --redefine-syms=${names}/${level}.names --wildcard
            --keep-global-symbol=mox*_${level} ${joined}
        DEPENDS moxccq4_${level}_objects moxcore_objects ${generated}/symbols.stamp
            $<TARGET_OBJECTS:moxccq4_${level}_objects> $<TARGET_OBJECTS:moxcore_objects>
        COMMENT "Joining the objects of level ${level}"
        COMMAND_EXPAND_LISTS VERBATIM)
    list(APPEND MOXCC_JOINED ${joined})

    list(TRANSFORM MOXCC_FEATURES_${level} REPLACE "(.+)" "__builtin_cpu_supports(\"\\1\")" OUTPUT_VARIABLE test)
    list(JOIN test " && " test)
    list(APPEND MOXCC_LEVEL_TESTS ${test})
endforeach()
set_source_files_properties(${MOXCC_JOINED} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
list(JOIN MOXCC_LEVELS ", " levels)
list(JOIN MOXCC_LEVEL_TESTS ", " tests)

moxcc_objects(moxcc_slots ${PROJECT_SOURCE_DIR}/frame/slots.cpp)
target_compile_definitions(moxcc_slots PRIVATE "MOXCC_LEVELS=\"${levels}\"" "MOXCC_LEVEL_TESTS=${tests}")

add_library(moxcc_static STATIC $<TARGET_OBJECTS:moxcc_slots> ${MOXCC_JOINED})
target_include_directories(moxcc_static INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(moxcc_static PROPERTIES OUTPUT_NAME moxcc EXPORT_NAME static LINKER_LANGUAGE C)
add_library(moxcc::static ALIAS moxcc_static)
