# The library: libmoxcore, and libmoxccq4 built from the same sources for each processor level. A wider file lies in the
# folder where the dynamic linker looks first on a processor that has its level (glibc-hwcaps), so that no dispatch code
# is needed. The static library libmoxcc.a holds the same object code of all levels, behind slots.

# The levels, narrowest first, each with a name, the processor's features that its code asks for, and what else its
# compilation takes. The first is what any processor must have: its file is the one that programs link.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
    set(MOXCC_LEVELS v8)
    set(MOXCC_NAME_v8 NEON)
else()
    set(MOXCC_LEVELS v2 v3 v4 CACHE STRING "The processor levels to build, v2 first; tests leave some out to be short")
    set(MOXCC_NAME_v2 SSE4.2)
    set(MOXCC_FEATURES_v2 sse4.2)
    set(MOXCC_NAME_v3 AVX2)
    set(MOXCC_FEATURES_v3 avx2)
    if(MOXCC_EMULATE_AVX512)
        set(MOXCC_NAME_v4 AVX-512-emulated)
        set(MOXCC_FEATURES_v4 avx2)
        set(MOXCC_OPTIONS_v4 -DMOX_EMULATE_AVX512)
    else()
        set(MOXCC_NAME_v4 AVX-512)
        set(MOXCC_FEATURES_v4 avx512f avx512bw avx512dq avx512vl avx512cd)
        # The compiler's own headers start from registers that nothing has set.
        set(MOXCC_OPTIONS_v4 $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized> -Wno-uninitialized)
    endif()
endif()
foreach(level ${MOXCC_LEVELS})
    if(MOXCC_FEATURES_${level})
        list(TRANSFORM MOXCC_FEATURES_${level} PREPEND -m OUTPUT_VARIABLE features)
        list(APPEND MOXCC_OPTIONS_${level} ${features} -mno-fma)
        list(TRANSFORM MOXCC_FEATURES_${level} REPLACE "(.+)" "bool(__builtin_cpu_supports(\"\\1\"))" OUTPUT_VARIABLE test)
        list(JOIN test " && " MOXCC_TEST_${level})
    else()
        set(MOXCC_TEST_${level} true)
    endif()
    # Results are defined operation by operation: nothing may be contracted or reassociated, and nothing folded at
    # compile time that the caller's rounding mode decides.
    list(APPEND MOXCC_OPTIONS_${level} -ffp-contract=off -frounding-math
        $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-unsupported-floating-point-opt>)
endforeach()

file(GLOB MOXCC_SOURCES CONFIGURE_DEPENDS
    frame/*.cpp models/*.cpp video/*.cpp demosaic/*.cpp tone/*.cpp math/*.cpp)
list(FILTER MOXCC_SOURCES EXCLUDE REGEX "frame/(moxcore|slots)\\.cpp$")

# Tables are read-only data, written by small programs that run during the build: tools/<name>.cpp prints <name>.cpp.
set(generated ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})
foreach(name gamma_tables powx_data)
    add_executable(moxcc_${name} ${PROJECT_SOURCE_DIR}/tools/${name}.cpp)
    add_custom_command(OUTPUT ${generated}/${name}.cpp COMMAND moxcc_${name} > ${generated}/${name}.cpp
        DEPENDS moxcc_${name} VERBATIM)
    list(APPEND MOXCC_TABLES ${generated}/${name}.cpp)
endforeach()

# The C symbols of the exports: for each source <name>.cpp that has a table of entries, symbols/<name>.inc.
file(GLOB MOXCC_PROTOTYPES CONFIGURE_DEPENDS include/moxcc/*.h)
set(symbols ${generated}/symbols)
file(MAKE_DIRECTORY ${symbols})
foreach(source ${MOXCC_SOURCES})
    cmake_path(GET source STEM name)
    list(APPEND MOXCC_SYMBOLS ${symbols}/${name}.inc)
endforeach()
add_executable(moxcc_symbols ${PROJECT_SOURCE_DIR}/tools/symbols.cpp)
add_custom_command(OUTPUT ${generated}/symbols.stamp BYPRODUCTS ${MOXCC_SYMBOLS} ${symbols}/slots.inc
    COMMAND moxcc_symbols ${symbols} ${MOXCC_PROTOTYPES} -- ${MOXCC_SOURCES}
    COMMAND ${CMAKE_COMMAND} -E touch ${generated}/symbols.stamp
    DEPENDS moxcc_symbols ${MOXCC_PROTOTYPES} ${MOXCC_SOURCES} VERBATIM)

add_custom_target(moxcc_tables DEPENDS ${MOXCC_TABLES} ${generated}/symbols.stamp)

# Object code for both kinds of library: plain, without need of the C++ runtime; each function in a section of its own,
# so that a static link can leave it out; and no symbol that the linker makes unique in a program.
function(moxcc_objects target)
    add_library(${target} OBJECT ${ARGN})
    add_dependencies(${target} moxcc_tables)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${symbols})
    target_compile_options(${target} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-math-errno
        -ffunction-sections -fdata-sections $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    target_link_libraries(${target} PRIVATE moxcc_warnings)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        INTERPROCEDURAL_OPTIMIZATION OFF)
endfunction()

# A shared library of objects, with the usual links: libX.so, libX.so.2019, libX.so.2019.0.0.
function(moxcc_shared target objects name)
    add_library(${target} SHARED $<TARGET_OBJECTS:${objects}>)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LINKER_LANGUAGE CXX)
    if(NOT MOXCC_SANITIZE)
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE C)
        target_link_options(${target} PRIVATE -Wl,--as-needed -Wl,--no-undefined -Wl,-z,relro,-z,now)
    endif()
endfunction()

moxcc_objects(moxcore_objects ${PROJECT_SOURCE_DIR}/frame/moxcore.cpp)
moxcc_shared(moxcore moxcore_objects moxcore)

foreach(level ${MOXCC_LEVELS})
    set(objects moxccq4_${level}_objects)
    moxcc_objects(${objects} ${MOXCC_SOURCES} ${MOXCC_TABLES})
    target_compile_options(${objects} PRIVATE ${MOXCC_OPTIONS_${level}})

    if(NOT TARGET moxccq4)
        set(target moxccq4)
        set(folder "")
        set(rpath "$ORIGIN")
    else()
        set(target moxccq4_${level})
        set(folder /glibc-hwcaps/x86-64-${level})
        set(rpath "$ORIGIN/../..")
        list(APPEND MOXCC_WIDER ${target})
    endif()
    moxcc_shared(${target} ${objects} moxccq4)
    target_include_directories(${target} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${target} PRIVATE moxcore)
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib${folder}
        MOXCC_FOLDER "${folder}"
        BUILD_RPATH "${rpath}"
        BUILD_RPATH_USE_ORIGIN ON
        INSTALL_RPATH "${rpath}")
endforeach()
add_library(moxcc::moxcc ALIAS moxccq4)
if(MOXCC_WIDER)
    # Nothing links the wider files; who builds the one that is linked gets them, too.
    add_dependencies(moxccq4 ${MOXCC_WIDER})
endif()

# Sanitizers see the same objects in the shared files.
if(NOT MOXCC_SANITIZE)
    include(cmake/static.cmake)
endif()
