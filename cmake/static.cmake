# The static library. The objects of a level are joined into one, whose only global names are <export>_<level>. Of
# functions that two levels have by the same name, inline ones of the C++ library among them, the linker would otherwise
# keep one, and a processor without AVX2 could meet AVX2 code. Where there is one level only, its exports need no slots.

set(names ${generated}/static)
file(MAKE_DIRECTORY ${names})
list(LENGTH MOXCC_LEVELS count)
foreach(level ${MOXCC_LEVELS})
    if(count GREATER 1)
        set(suffix _${level})
    endif()
    set(joined ${names}/${level}.o)
    add_custom_command(OUTPUT ${joined}
        COMMAND sed "s/SLOT(\\(.*\\))/\\1 \\1${suffix}/" ${symbols}/slots.inc > ${names}/${level}.names
        COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -Wl,--force-group-allocation -o ${joined}
            $<TARGET_OBJECTS:moxccq4_${level}_objects> $<TARGET_OBJECTS:moxcore_objects>
        COMMAND ${CMAKE_OBJCOPY} --redefine-syms=${names}/${level}.names --wildcard
            --keep-global-symbol=mox*${suffix} ${joined}
        DEPENDS moxccq4_${level}_objects moxcore_objects ${generated}/symbols.stamp
            $<TARGET_OBJECTS:moxccq4_${level}_objects> $<TARGET_OBJECTS:moxcore_objects>
        COMMENT "Joining the objects of level ${level}"
        COMMAND_EXPAND_LISTS VERBATIM)
    list(APPEND MOXCC_JOINED ${joined})

    list(APPEND MOXCC_LEVEL_TESTS ${MOXCC_TEST_${level}})
endforeach()
set_source_files_properties(${MOXCC_JOINED} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
list(JOIN MOXCC_LEVELS ", " levels)
list(JOIN MOXCC_LEVEL_TESTS ", " tests)

add_library(moxcc_static STATIC ${MOXCC_JOINED})
if(count GREATER 1)
    moxcc_objects(moxcc_slots ${PROJECT_SOURCE_DIR}/frame/slots.cpp)
    target_compile_definitions(moxcc_slots PRIVATE "MOXCC_LEVELS=\"${levels}\"" "MOXCC_LEVEL_TESTS=${tests}")
    target_sources(moxcc_static PRIVATE $<TARGET_OBJECTS:moxcc_slots>)
endif()
target_include_directories(moxcc_static INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(moxcc_static PROPERTIES OUTPUT_NAME moxcc EXPORT_NAME static LINKER_LANGUAGE C)
add_library(moxcc::static ALIAS moxcc_static)
